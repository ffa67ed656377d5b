#include "demo/data/SampleNames.h"

namespace tamvelo::demo {

namespace {

constexpr std::string_view kFamilies[] = {"Prótesis fija",
                                          "Prótesis removible",
                                          "Ortodoncia",
                                          "Implantes",
                                          "Cerámica",
                                          "Metales y aleaciones",
                                          "Resinas",
                                          "Ceras",
                                          "Yesos y revestimientos",
                                          "Fresas y pulido",
                                          "Siliconas",
                                          "Instrumental",
                                          "Dientes",
                                          "Atornillados",
                                          "Férulas",
                                          "Fungible"};
constexpr std::string_view kPieces[] = {
    "Corona|Puente de tres piezas|Incrustación|Carilla|Muñón colado",
    "Prótesis completa|Parcial esquelético|Compostura|Rebase|Gancho labrado",
    "Placa activa|Arco vestibular|Tornillo de expansión|Mantenedor de espacio|Retenedor",
    "Pilar recto|Pilar angulado|Análogo|Tornillo de fijación|Cofia de impresión",
    "Polvo de dentina|Opáquer|Masa de incisal|Glaseado|Maquillaje",
    "Aleación|Lingote|Soldadura|Alambre|Fundente",
    "Resina acrílica|Monómero|Composite|Laca separadora|Adhesivo",
    "Cera en placas|Cera cervical|Preformado de cera|Hilo de cera|Cera de inmersión",
    "Escayola|Yeso extraduro|Revestimiento|Líquido expansor|Endurecedor",
    "Fresa|Disco de corte|Goma de pulir|Cepillo|Piedra montada",
    "Silicona de duplicar|Catalizador|Silicona laboratorio|Plancha termoplástica|Cubeta",
    "Espátula|Articulador|Pinza|Mechero|Cuchillo para yeso",
    "Dientes anteriores|Dientes posteriores|Tablilla de seis|Tablilla de ocho|Diente suelto",
    "Corona atornillada|Barra|Híbrida|Sobredentadura|Locator",
    "Férula de descarga|Férula de blanqueamiento|Protector bucal|Guía quirúrgica|Férula antirronquidos",
    "Guantes|Caja de envío|Bolsa de esterilizar|Papel de articular|Pincel"};
constexpr std::string_view kSections[] = {"Recepción",  "Yesos",  "Cerámica", "Metal",      "Resina",
                                          "Ortodoncia", "Diseño", "Acabados", "Expedición", "Administración"};
constexpr std::string_view kTaxes[] = {
    "Exento", "IVA superreducido 4 %", "IVA reducido 10 %", "IVA general 21 %", "IGIC 7 %", "Recargo 5,2 %"};
constexpr std::string_view kPhases[] = {"Vaciado de yeso",
                                        "Montaje en articulador",
                                        "Encerado",
                                        "Colado",
                                        "Repasado",
                                        "Diseño por ordenador",
                                        "Fresado",
                                        "Sinterizado",
                                        "Opáquer",
                                        "Carga de cerámica",
                                        "Montaje de dientes",
                                        "Enmuflado",
                                        "Pulido",
                                        "Soldadura",
                                        "Baño y glaseado",
                                        "Revisión final"};
constexpr std::string_view kTrials[] = {"Prueba de metal", "Prueba de dientes", "Prueba de bizcocho",
                                        "Rodete de cera",  "Ajuste de pilares", "Prueba estética",
                                        "Color y señales", "Oclusión"};
constexpr std::string_view kRoutes[] = {
    "Centro mañana", "Centro tarde", "Ensanche",           "Costa", "Sierra norte",
    "Ribera",        "Polígono sur", "Agencia peninsular", "Islas", "Recogida en mostrador"};
constexpr std::string_view kProductTypes[] = {
    "Metal-cerámica", "Zirconio",    "Disilicato",      "Esquelético",     "Acrílico",
    "Termoplástico",  "Provisional", "Ortodoncia fija", "Sobre implantes", "Reparación"};
constexpr std::string_view kJobs[] = {
    "Protésico dental",     "Ceramista",  "Auxiliar de laboratorio", "Diseñadora CAD",
    "Encargado de sección", "Repartidor", "Administrativa",          "Aprendiz"};
constexpr std::string_view kStates[] = {"Recibida",  "En curso",  "En prueba",
                                        "Terminada", "Entregada", "Facturada"};
constexpr std::string_view kSeries[] = {"A", "B", "C"};
constexpr std::string_view kZones[] = {"Norte", "Sur", "Este", "Oeste", "Centro"};
constexpr std::string_view kAccounts[] = {
    "Clientes nacionales",    "Proveedores",        "Mercaderías", "Caja",       "Banco, cuenta corriente",
    "Hacienda Pública, IVA",  "Sueldos y salarios", "Suministros", "Maquinaria", "Anticipos",
    "Devoluciones de ventas", "Transportes"};
constexpr std::string_view kRemarks[] = {
    "Llamar antes de enviar",      "Color tomado con guía Vita",  "Urge para el lunes",
    "Paciente alérgico al níquel", "Repetición sin cargo",        "Pendiente de señal",
    "Enviar con antagonista",      "Dueño de la clínica: avisar", "Embalaje reforzado"};
constexpr std::string_view kAppointmentTypes[] = {"Primera visita", "Toma de color", "Prueba",
                                                  "Entrega",        "Revisión",      "Compostura"};
constexpr std::string_view kGivenNames[] = {
    "María",  "José",   "Lucía",  "Antonio",    "Carmen",  "Iñaki",      "Ángela", "Óscar",
    "Begoña", "Álvaro", "Íñigo",  "Nuria",      "Jesús",   "Concepción", "Raúl",   "Sofía",
    "Andrés", "Rocío",  "Martín", "Úrsula",     "Joaquín", "Inés",       "Ramón",  "Elena",
    "Víctor", "Pilar",  "Adrián", "Montserrat", "Germán",  "Ainhoa",     "Tomás",  "Leonor"};
constexpr std::string_view kSurnames[] = {
    "García",  "Núñez",    "Martínez", "Peña",    "López",      "Ibáñez",   "Sánchez", "Muñoz",
    "Pérez",   "Ordóñez",  "Gómez",    "Castaño", "Jiménez",    "Zúñiga",   "Ruiz",    "Hernández",
    "Díaz",    "Moreno",   "Álvarez",  "Romero",  "Gutiérrez",  "Navarro",  "Torres",  "Domínguez",
    "Vázquez", "Ramos",    "Gil",      "Serrano", "Blanco",     "Suárez",   "Ortega",  "Rubio",
    "Marín",   "Iglesias", "Cañas",    "Güell",   "Echevarría", "Bermúdez", "Prieto",  "Avilés"};
constexpr std::string_view kStreetKinds[] = {"Calle", "Avenida", "Plaza", "Paseo", "Ronda", "Travesía"};
constexpr std::string_view kStreetNames[] = {"Mayor",         "de la Constitución",
                                             "de España",     "del Carmen",
                                             "San Antón",     "de los Reyes Católicos",
                                             "Cervantes",     "Miguel Ángel",
                                             "del Olmo",      "de la Viña",
                                             "Ramón y Cajal", "Alcalá",
                                             "del Puerto",    "Santa María",
                                             "de la Montaña", "Gran Vía",
                                             "del Molino",    "Isabel la Católica",
                                             "de la Peña",    "Colón",
                                             "del Río Miño",  "de la Fuente",
                                             "Jardín",        "Nueva"};
constexpr std::string_view kClinicKinds[] = {
    "Clínica Dental", "Centro Odontológico", "Consulta Dr.", "Ortodoncia",
    "Dental",         "Estudio Dental",      "Policlínica"};
constexpr std::string_view kSupplierKinds[] = {
    "Suministros Dentales", "Depósito Dental", "Cerámicas", "Aleaciones",
    "Importaciones",        "Distribuciones",  "Talleres"};
constexpr std::string_view kMaterials[] = {
    "zirconio", "cromo-cobalto", "titanio",   "disilicato", "acrílico", "cerámica",       "oro",
    "PMMA",     "níquel-cromo",  "composite", "silicona",   "acero",    "fibra de vidrio"};
constexpr std::string_view kShades[] = {"A1", "A2", "A3", "A3,5", "A4", "B1", "B2",
                                        "B3", "B4", "C1", "C2",   "C3", "D2", "D3"};

constexpr Place kPlaces[] = {
    {"Madrid", "Madrid", 28001},       {"Alcorcón", "Madrid", 28921},   {"Móstoles", "Madrid", 28931},
    {"Barcelona", "Barcelona", 8001},  {"Sabadell", "Barcelona", 8201}, {"Valencia", "Valencia", 46001},
    {"Gandía", "Valencia", 46701},     {"Sevilla", "Sevilla", 41001},   {"Écija", "Sevilla", 41401},
    {"Zaragoza", "Zaragoza", 50001},   {"Málaga", "Málaga", 29001},     {"Fuengirola", "Málaga", 29640},
    {"Murcia", "Murcia", 30001},       {"Cartagena", "Murcia", 30201},  {"Palma", "Illes Balears", 7001},
    {"Bilbao", "Bizkaia", 48001},      {"A Coruña", "A Coruña", 15001}, {"Vigo", "Pontevedra", 36201},
    {"Logroño", "La Rioja", 26001},    {"León", "León", 24001},         {"Cádiz", "Cádiz", 11001},
    {"Jaén", "Jaén", 23001},           {"Córdoba", "Córdoba", 14001},   {"Ávila", "Ávila", 5001},
    {"Peñaranda", "Salamanca", 37300}, {"Cáceres", "Cáceres", 10001},   {"Castellón", "Castellón", 12001},
    {"Gijón", "Asturias", 33201},      {"Santoña", "Cantabria", 39740}, {"Pamplona", "Navarra", 31001},
};

// In the order of Words.
constexpr WordList kLists[] = {
    kFamilies,    kPieces,           kSections,   kTaxes,    kPhases,      kTrials,
    kRoutes,      kProductTypes,     kJobs,       kStates,   kZones,       kAccounts,
    kRemarks,     kAppointmentTypes, kGivenNames, kSurnames, kStreetKinds, kStreetNames,
    kClinicKinds, kSupplierKinds,    kMaterials,  kShades,   kSeries};

} // namespace

WordList ListOf(Words words) { return kLists[static_cast<std::size_t>(words)]; }

std::span<const Place> Places() { return kPlaces; }

} // namespace tamvelo::demo
