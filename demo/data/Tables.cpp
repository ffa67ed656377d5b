#include "demo/data/Tables.h"

#include <algorithm>

#include "base/Text.h"

namespace tamvelo::demo {

namespace {

using namespace recipe;
using Kind = Recipe::Kind;

// A dental laboratory: clinics order prostheses for their patients.
// field, caption, type, width, longest input, related class, sample data

constexpr Column kArticulos[] = {
    {L"codigo", L"Código", Type::Text, 10, 8, L"", Of(Kind::ArticleCode)},
    {L"descripcion", L"Descripción", Type::Text, 44, 60, L"", Of(Kind::Article)},
    {L"familia", L"Familia", Type::Text, 8, 2, L"familias", Of(Kind::ArticleFamily)},
    {L"precio", L"Precio", Type::Money, 11, 12, L"", Amount(3, 900)},
    {L"existencias", L"Existencias", Type::Integer, 11, 9, L"", Number(0, 500)},
    {L"impuesto", L"Impuesto", Type::Text, 8, 2, L"impuestos", Reference()},
    {L"proveedor", L"Proveedor", Type::Text, 10, 5, L"proveedores", Reference().OrNull(8)},
    {L"alta", L"Alta", Type::Date, 11, 10, L"", Of(Kind::Date)},
    {L"activo", L"Activo", Type::Boolean, 7, 1, L"", Flag(95)},
    {L"observaciones", L"Observaciones", Type::Text, 30, 80, L"", Any(Words::Remarks).OrNull(85)},
};

constexpr Column kClientes[] = {
    {L"codigo", L"Código", Type::Text, 8, 6, L"", Code()},
    {L"nombre", L"Nombre", Type::Text, 40, 60, L"", Of(Kind::Clinic)},
    {L"poblacion", L"Población", Type::Text, 24, 40, L"", Of(Kind::Town)},
    {L"direccion", L"Dirección", Type::Text, 34, 60, L"", Of(Kind::Street)},
    {L"cp", L"C. P.", Type::Text, 7, 5, L"", Of(Kind::PostCode)},
    {L"provincia", L"Provincia", Type::Text, 18, 30, L"", Of(Kind::Province)},
    {L"telefono", L"Teléfono", Type::Text, 12, 15, L"", Of(Kind::Phone).OrNull(5)},
    {L"nif", L"NIF", Type::Text, 11, 10, L"", Of(Kind::TaxId)},
    {L"saldo", L"Saldo", Type::Money, 12, 12, L"", Amount(-500, 9000)},
    {L"ruta", L"Ruta", Type::Text, 6, 2, L"rutas", Reference().OrNull(20)},
    {L"alta", L"Alta", Type::Date, 11, 10, L"", Of(Kind::DateAlong)},
    {L"activo", L"Activo", Type::Boolean, 7, 1, L"", Flag(92)},
};

// The search panel looks for its four kinds of search under these field names.
constexpr Column kOrdenes[] = {
    {L"Orden", L"Orden", Type::Integer, 9, 9, L"", Code(100001)},
    {L"Paciente", L"Paciente", Type::Text, 32, 60, L"", Of(Kind::Person)},
    {L"Caja", L"Caja", Type::Integer, 7, 5, L"", Number(1, 999)},
    {L"Prescripción", L"Prescripción", Type::Integer, 12, 9, L"", Number(1000000, 9999999).OrNull(10)},
    {L"cliente", L"Cliente", Type::Text, 8, 6, L"clientes", Reference()},
    {L"fecha", L"Fecha", Type::Date, 11, 10, L"", Of(Kind::DateAlong)},
    {L"estado", L"Estado", Type::Text, 14, 15, L"", Any(Words::States)},
    {L"importe", L"Importe", Type::Money, 11, 12, L"", Amount(30, 2500)},
    {L"urgente", L"Urgente", Type::Boolean, 8, 1, L"", Flag(6)},
    {L"hora", L"Hora", Type::Text, 7, 5, L"", Of(Kind::Time)},
    {L"serie", L"Serie", Type::Text, 6, 2, L"", Any(Words::Series)},
    {L"tipo", L"Tipo", Type::Text, 6, 2, L"tipos_producto", Reference()},
    {L"repeticion", L"Repetición", Type::Boolean, 10, 1, L"", Flag(8)},
};

constexpr Column kEmpleados[] = {
    {L"codigo", L"Código", Type::Text, 8, 3, L"", Code()},
    {L"nombre", L"Nombre", Type::Text, 34, 60, L"", Of(Kind::Person)},
    {L"seccion", L"Sección", Type::Text, 8, 2, L"secciones", Reference()},
    {L"cargo", L"Cargo", Type::Text, 24, 40, L"", Any(Words::Jobs)},
    {L"telefono", L"Teléfono", Type::Text, 12, 15, L"", Of(Kind::Phone)},
    {L"alta", L"Alta", Type::Date, 11, 10, L"", Of(Kind::Date)},
    {L"Planificar", L"Planificar", Type::Boolean, 10, 1, L"", Flag(50)},
};

constexpr Column kProveedores[] = {
    {L"codigo", L"Código", Type::Text, 8, 5, L"", Code()},
    {L"nombre", L"Nombre", Type::Text, 40, 60, L"", Of(Kind::Supplier)},
    {L"poblacion", L"Población", Type::Text, 24, 40, L"", Of(Kind::Town)},
    {L"direccion", L"Dirección", Type::Text, 34, 60, L"", Of(Kind::Street)},
    {L"cp", L"C. P.", Type::Text, 7, 5, L"", Of(Kind::PostCode)},
    {L"telefono", L"Teléfono", Type::Text, 12, 15, L"", Of(Kind::Phone)},
    {L"nif", L"NIF", Type::Text, 11, 10, L"", Of(Kind::TaxId)},
};

constexpr Column kFamilias[] = {
    {L"codigo", L"Código", Type::Text, 8, 2, L"", Code()},
    {L"nombre", L"Familia", Type::Text, 30, 40, L"", Each(Words::Families)},
    {L"seccion", L"Sección", Type::Text, 8, 2, L"secciones", Reference()},
    {L"Planificar", L"Planificar", Type::Boolean, 10, 1, L"", Flag(0)},
};

constexpr Column kSecciones[] = {
    {L"codigo", L"Código", Type::Text, 8, 2, L"", Code()},
    {L"nombre", L"Sección", Type::Text, 30, 40, L"", Each(Words::Sections)},
    {L"responsable", L"Responsable", Type::Text, 12, 3, L"empleados", Reference()},
};

constexpr Column kImpuestos[] = {
    {L"codigo", L"Código", Type::Text, 8, 2, L"", Code()},
    {L"nombre", L"Impuesto", Type::Text, 30, 40, L"", Each(Words::Taxes)},
    {L"cuenta", L"Cuenta", Type::Text, 11, 9, L"cuentas", Reference()},
};

constexpr Column kProductos[] = {
    {L"codigo", L"Código", Type::Text, 8, 5, L"", Code()},
    {L"nombre", L"Producto", Type::Text, 40, 60, L"", Of(Kind::Article)},
    {L"tipo", L"Tipo", Type::Text, 8, 2, L"tipos_producto", Reference()},
    {L"precio", L"Precio", Type::Money, 11, 12, L"", Amount(40, 1800)},
    {L"dias", L"Días", Type::Integer, 6, 3, L"", Number(1, 30)},
    {L"activo", L"Activo", Type::Boolean, 7, 1, L"", Flag(90)},
};

constexpr Column kTiposProducto[] = {
    {L"codigo", L"Código", Type::Text, 8, 2, L"", Code()},
    {L"nombre", L"Tipo", Type::Text, 30, 40, L"", Each(Words::ProductTypes)},
    {L"familia", L"Familia", Type::Text, 8, 2, L"familias", Reference()},
    {L"Planificar", L"Planificar", Type::Boolean, 10, 1, L"", Flag(0)},
};

constexpr Column kOrdenesLineas[] = {
    {L"linea", L"Línea", Type::Integer, 9, 9, L"", Code()},
    {L"descripcion", L"Descripción", Type::Text, 44, 60, L"", FromReference(3, 1)},
    {L"Orden", L"Orden", Type::Integer, 9, 9, L"Ordenes", Reference()},
    {L"articulo", L"Artículo", Type::Text, 10, 8, L"articulos", Reference()},
    {L"cantidad", L"Cantidad", Type::Integer, 9, 5, L"", Number(1, 6)},
    {L"precio", L"Precio", Type::Money, 11, 12, L"", FromReference(3, 3)},
    {L"importe", L"Importe", Type::Money, 11, 12, L"", Times(4, 5)},
};

constexpr Column kFases[] = {
    {L"codigo", L"Código", Type::Text, 8, 2, L"", Code()},
    {L"nombre", L"Fase", Type::Text, 30, 40, L"", Each(Words::Phases)},
    {L"seccion", L"Sección", Type::Text, 8, 2, L"secciones", Reference()},
    {L"minutos", L"Minutos", Type::Integer, 9, 4, L"", Number(5, 180)},
    {L"Planificar", L"Planificar", Type::Boolean, 10, 1, L"", Flag(30)},
    {L"Planificar_2", L"Planificar", Type::Boolean, 10, 1, L"", Flag(10)},
};

constexpr Column kPruebas[] = {
    {L"codigo", L"Código", Type::Text, 8, 2, L"", Code()},
    {L"nombre", L"Prueba", Type::Text, 30, 40, L"", Each(Words::Trials)},
    {L"fase", L"Fase", Type::Text, 8, 2, L"fases", Reference()},
    {L"dias", L"Días", Type::Integer, 6, 3, L"", Number(1, 10)},
};

constexpr Column kRutas[] = {
    {L"codigo", L"Código", Type::Text, 8, 2, L"", Code()},
    {L"nombre", L"Ruta", Type::Text, 30, 40, L"", Each(Words::Routes)},
    {L"zona", L"Zona", Type::Text, 20, 20, L"", Any(Words::Zones)},
    {L"salida", L"Salida", Type::Text, 8, 5, L"", Of(Kind::Time)},
};

constexpr Column kHordenes[] = {
    {L"hoja", L"Hoja", Type::Integer, 9, 9, L"", Code(5001)},
    {L"fase", L"Fase", Type::Text, 24, 40, L"", Any(Words::Phases)},
    {L"Orden", L"Orden", Type::Integer, 9, 9, L"Ordenes", Reference()},
    {L"empleado", L"Empleado", Type::Text, 10, 3, L"empleados", Reference().OrNull(15)},
    {L"nombre_empleado", L"Nombre", Type::Text, 30, 60, L"", FromReference(3, 1)},
    {L"fecha", L"Fecha", Type::Date, 11, 10, L"", Of(Kind::DateAlong)},
    {L"minutos", L"Minutos", Type::Integer, 9, 4, L"", Number(5, 240)},
    {L"Planificar", L"Planificar", Type::Boolean, 10, 1, L"", Flag(40)},
    {L"Planificar_2", L"Planificar", Type::Boolean, 10, 1, L"", Flag(10)},
};

constexpr Column kCuentas[] = {
    {L"cuenta", L"Cuenta", Type::Text, 11, 9, L"", Code(430000001)},
    {L"titulo", L"Título", Type::Text, 40, 60, L"", Any(Words::Accounts)},
    {L"saldo", L"Saldo", Type::Money, 13, 13, L"", Amount(-20000, 90000)},
};

constexpr Column kClientesDirecciones[] = {
    {L"codigo", L"Código", Type::Text, 8, 6, L"", Code()},
    {L"direccion", L"Dirección", Type::Text, 34, 60, L"", Of(Kind::Street)},
    {L"poblacion", L"Población", Type::Text, 24, 40, L"", Of(Kind::Town)},
    {L"cp", L"C. P.", Type::Text, 7, 5, L"", Of(Kind::PostCode)},
    {L"provincia", L"Provincia", Type::Text, 18, 30, L"", Of(Kind::Province)},
    {L"cliente", L"Cliente", Type::Text, 8, 6, L"clientes", Reference()},
};

constexpr Column kArticulosLotes[] = {
    {L"lote", L"Lote", Type::Text, 11, 9, L"", Code(240000001)},
    {L"descripcion", L"Descripción", Type::Text, 44, 60, L"", FromReference(2, 1)},
    {L"articulo", L"Artículo", Type::Text, 10, 8, L"articulos", Reference()},
    {L"caducidad", L"Caducidad", Type::Date, 11, 10, L"", Of(Kind::Date).OrNull(10)},
    {L"cantidad", L"Cantidad", Type::Integer, 9, 5, L"", Number(1, 200)},
};

constexpr Column kCitas[] = {
    {L"cita", L"Cita", Type::Integer, 8, 9, L"", Code()},
    {L"nombre", L"Cliente", Type::Text, 34, 60, L"", FromReference(4, 1)},
    {L"fecha", L"Fecha", Type::Date, 11, 10, L"", Of(Kind::DateAlong)},
    {L"hora", L"Hora", Type::Text, 7, 5, L"", Of(Kind::Time)},
    {L"cliente", L"Código", Type::Text, 8, 6, L"clientes", Reference()},
    {L"comentario", L"Comentario", Type::Text, 30, 200, L"", Any(Words::Remarks).OrNull(60)},
    {L"empleado", L"Empleado", Type::Text, 10, 3, L"empleados", Reference()},
    {L"nombre_empleado", L"Nombre", Type::Text, 30, 60, L"", FromReference(6, 1)},
    {L"box", L"Box", Type::Text, 5, 4, L"", Number(1, 6)},
    {L"tipo", L"Tipo", Type::Text, 20, 20, L"", Any(Words::AppointmentTypes)},
};

constexpr Column kTiposCita[] = {
    {L"codigo", L"Código", Type::Text, 8, 2, L"", Code()},
    {L"nombre", L"Tipo", Type::Text, 30, 20, L"", Each(Words::AppointmentTypes)},
    {L"minutos", L"Minutos", Type::Integer, 9, 4, L"", Number(15, 60)},
};

// The search panel offers its simple layout to the class of exactly this name, capital included.
constexpr std::wstring_view kClassOfOrders = L"Ordenes";

constexpr TableInfo kTables[] = {
    {L"articulos", L"articulos", L"Artículos", kArticulos, {0, 100}},
    {L"clientes", L"clientes", L"Clientes", kClientes, {0, 40}},
    {kClassOfOrders, L"ordenes", L"Órdenes", kOrdenes, {0, 400}},
    {L"empleados", L"empleados", L"Empleados", kEmpleados, {60, 0}},
    {L"proveedores", L"proveedores", L"Proveedores", kProveedores, {300, 0}},
    {L"familias", L"familias", L"Familias", kFamilias, {}},
    {L"secciones", L"secciones", L"Secciones", kSecciones, {}},
    {L"impuestos", L"impuestos", L"Impuestos", kImpuestos, {}},
    {L"productos", L"productos", L"Productos", kProductos, {400, 0}},
    {L"tipos_producto", L"tipos_producto", L"Tipos de producto", kTiposProducto, {}},
    {L"ordenes_lineas", L"ordenes_lineas", L"Líneas de órdenes", kOrdenesLineas, {20000, 0}},
    {L"fases", L"fases", L"Fases", kFases, {}},
    {L"pruebas", L"pruebas", L"Pruebas", kPruebas, {}},
    {L"rutas", L"rutas", L"Rutas", kRutas, {}},
    {L"hordenes", L"hordenes", L"Hojas de órdenes", kHordenes, {5000, 0}},
    {L"cuentas", L"cuentas", L"Cuentas", kCuentas, {1000, 0}},
    {L"clientes_direcciones",
     L"clientes_direcciones",
     L"Direcciones de clientes",
     kClientesDirecciones,
     {3000, 0}},
    {L"articulos_lotes", L"articulos_lotes", L"Lotes de artículos", kArticulosLotes, {4000, 0}},
    {L"citas", L"citas", L"Citas", kCitas, {500, 0}},
    {L"tipos_cita", L"tipos_cita", L"Tipos de cita", kTiposCita, {}},
};

} // namespace

const Column* TableInfo::FindColumn(std::wstring_view field) const {
    const auto found =
        std::ranges::find(columns, base::Lower(field), [](const Column& c) { return base::Lower(c.field); });
    return found != columns.end() ? &*found : nullptr;
}

std::span<const TableInfo> Tables() { return kTables; }

const TableInfo* FindTable(std::wstring_view className) {
    const auto found = std::ranges::find(kTables, base::Lower(className),
                                         [](const TableInfo& t) { return base::Lower(t.className); });
    return found != std::end(kTables) ? found : nullptr;
}

} // namespace tamvelo::demo
