#include "demo/reports/Catalog.h"

namespace tamvelo::demo {

namespace {

using Shape = ReportInfo::Shape;

/// The orders that the conditions let through, as `o`. A text for "type or customer" may be either.
const std::wstring kOrders =
    LR"(
with c as (select codigo from clientes where codigo in (:cliente, :texto)
        or sin_acentos(nombre) like '%' || sin_acentos(coalesce(:cliente, :texto)) || '%'),
    t as (select codigo from tipos_producto where codigo in (:tipo, :texto)
        or sin_acentos(nombre) like '%' || sin_acentos(coalesce(:tipo, :texto)) || '%'),
    o as (select *, estado = 'Facturada' as facturada from ordenes
        where (:desde is null or fecha between :desde and :hasta)
        and (:cliente is null or cliente in c)
        and (:tipo is null or tipo in t)
        and (:texto is null or cliente in c or tipo in t)
        and (:serie is null or serie = :serie)
        and (:repetidas is null or repeticion = :repetidas)
        and (:facturadas is null or (estado = 'Facturada') = :facturadas)
        and (:hora1 is null or hora between :hora1 and :hora2)
        and (:numero1 is null or Orden >= :numero1)
        and (:numero2 is null or Orden <= :numero2)
        and (:marcados is null or tipo in (select codigo from tipos_producto where Planificar)))
)";

/// What was sold in those orders, as `v`.
const std::wstring kSales = kOrders +
                            LR"(, v as (
    select l.*, o.fecha, o.serie, a.familia, f.nombre as nombre_familia, f.seccion
        from ordenes_lineas l join o on o.Orden = l.Orden join articulos a on a.codigo = l.articulo
        join familias f on f.codigo = a.familia)
)";

/// The price lists: what of the price each asks for, in hundredths. TDS stands for all of them.
const std::wstring kPrices =
    LR"(
with listas(codigo, parte) as (values ('PRC', 100), ('SL1', 95), ('SL2', 90), ('SL3', 85), ('SL4', 80),
        ('SL5', 75), ('SM1', 110), ('SM2', 120), ('SM3', 130)),
    p as (select 'Lista ' || l.codigo as lista, a.*, a.precio * l.parte / 100 as tarifa
        from listas l join articulos a on a.activo
        where l.codigo = coalesce(:lista, 'PRC') or :lista = 'TDS')
)";

constexpr ReportColumn kCode{L"Código", Type::Text, 9};
constexpr ReportColumn kArticle{L"Descripción", Type::Text, 40};
constexpr ReportColumn kPrice{L"Precio", Type::Money, 11};
constexpr ReportColumn kStock{L"Existencias", Type::Integer, 11, true};
constexpr ReportColumn kDay{L"Fecha", Type::Date, 10};
constexpr ReportColumn kOrder{L"Orden", Type::Text, 8};
constexpr ReportColumn kPatient{L"Paciente", Type::Text, 28};
constexpr ReportColumn kCustomer{L"Cliente", Type::Text, 34};
constexpr ReportColumn kState{L"Estado", Type::Text, 11};
constexpr ReportColumn kCount{L"Órdenes", Type::Integer, 10, true};
constexpr ReportColumn kUnits{L"Unidades", Type::Integer, 10, true};
constexpr ReportColumn kAmount{L"Importe", Type::Money, 13, true};

std::vector<CatalogEntry> Make() {
    constexpr unsigned kArticles = CatalogEntry::Articles;
    constexpr unsigned kCustomers = CatalogEntry::Customers;
    constexpr unsigned kOrderScreen = CatalogEntry::Orders;
    const std::wstring orderRows = kOrders + L"select Orden, fecha, Paciente, estado, importe from o ";
    const std::vector<ReportColumn> orderColumns{kOrder, kDay, kPatient, kState, kAmount};
    return {
        {kArticles,
         {Shape::Groups,
          L"Artículos por familia",
          L"select f.codigo || ' ' || f.nombre, a.codigo, a.descripcion, a.precio, a.existencias,"
          L" a.precio * a.existencias from articulos a join familias f on f.codigo = a.familia"
          L" where :seccion is null or f.seccion = :seccion order by f.codigo, a.codigo",
          {kCode, kArticle, kPrice, kStock, {L"Valor", Type::Money, 14, true}}}},
        {kArticles,
         {Shape::List,
          L"Artículos bajo mínimos",
          L"select codigo, descripcion, proveedor, precio, existencias from articulos"
          L" where activo and existencias < 10 order by existencias, codigo",
          {kCode, kArticle, {L"Proveedor", Type::Text, 9}, kPrice, kStock}}},
        {kArticles,
         {Shape::Groups,
          L"Lista de precios",
          kPrices + L"select lista, codigo, descripcion, familia, tarifa from p order by lista, codigo",
          {kCode, kArticle, {L"Familia", Type::Text, 8}, kPrice}}},
        {kArticles,
         {Shape::List,
          L"Valoración de existencias",
          L"select f.codigo, f.nombre, count(*), sum(a.existencias), sum(a.precio * a.existencias)"
          L" from articulos a join familias f on f.codigo = a.familia"
          L" where :seccion is null or f.seccion = :seccion group by f.codigo order by f.codigo",
          {kCode,
           {L"Familia", Type::Text, 30},
           {L"Artículos", Type::Integer, 10, true},
           kStock,
           {L"Valor", Type::Money, 16, true}}}},
        {kArticles,
         {Shape::List,
          L"Altas de artículos",
          L"select alta, codigo, descripcion, precio from articulos"
          L" where :desde is null or alta between :desde and :hasta order by alta, codigo",
          {{L"Alta", Type::Date, 10}, kCode, kArticle, kPrice}}},
        {kArticles,
         {Shape::List,
          L"Artículos por proveedor",
          L"select p.codigo, p.nombre, count(*), sum(a.existencias) from articulos a"
          L" join proveedores p on p.codigo = a.proveedor group by p.codigo order by p.codigo",
          {kCode, {L"Proveedor", Type::Text, 40}, {L"Artículos", Type::Integer, 10, true}, kStock}}},
        {kArticles,
         {Shape::List,
          L"Ventas por artículo",
          kSales + L"select articulo, descripcion, sum(cantidad), sum(importe) from v group by articulo"
                   L" order by 4 desc, 1",
          {kCode, kArticle, kUnits, kAmount}}},
        {kArticles,
         {Shape::List,
          L"Ventas por familia",
          kSales + L"select familia, nombre_familia, sum(cantidad), sum(importe) from v group by familia"
                   L" order by familia",
          {kCode, {L"Familia", Type::Text, 30}, kUnits, kAmount}}},
        {kArticles,
         {Shape::List,
          L"Ventas por meses",
          kSales + L"select substr(fecha, 6, 2) || '/' || substr(fecha, 1, 4), count(distinct Orden),"
                   L" sum(cantidad), sum(importe) from v group by substr(fecha, 1, 7)"
                   L" order by substr(fecha, 1, 7)",
          {{L"Mes", Type::Text, 10}, kCount, kUnits, kAmount}}},
        {kArticles,
         {Shape::List,
          L"Lotes que caducan",
          L"select caducidad, lote, articulo, descripcion, cantidad from articulos_lotes"
          L" where caducidad is not null and (:desde is null or caducidad between :desde and :hasta)"
          L" order by caducidad, lote",
          {{L"Caducidad", Type::Date, 10}, {L"Lote", Type::Text, 10}, kCode, kArticle, kUnits}}},
        // The eleventh, which the dialog of series asks a series for.
        {kArticles,
         {Shape::Groups,
          L"Ventas por serie",
          kSales + L"select 'Serie ' || serie, familia, nombre_familia, sum(cantidad), sum(importe) from v"
                   L" group by serie, familia order by serie, familia",
          {kCode, {L"Familia", Type::Text, 30}, kUnits, kAmount}}},
        {kArticles,
         {Shape::Groups,
          L"Salidas de almacén por sección",
          kSales + L"select s.codigo || ' ' || s.nombre, v.fecha, v.Orden, v.articulo, v.descripcion,"
                   L" v.cantidad from v join secciones s on s.codigo = v.seccion"
                   L" where :seccion is null or v.seccion = :seccion order by s.codigo, v.fecha, v.linea",
          {kDay, kOrder, kCode, kArticle, kUnits}}},
        {kArticles,
         {Shape::List,
          L"Artículos dados de baja",
          L"select codigo, descripcion, precio, existencias from articulos where not activo order by codigo",
          {kCode, kArticle, kPrice, kStock}}},

        {kCustomers,
         {Shape::Groups,
          L"Clientes por población",
          L"select poblacion, codigo, nombre, telefono, saldo from clientes"
          L" where :cliente is null or codigo = :cliente order by poblacion, codigo",
          {kCode, kCustomer, {L"Teléfono", Type::Text, 12}, {L"Saldo", Type::Money, 13, true}}}},
        {kCustomers,
         {Shape::List,
          L"Saldos deudores",
          L"select codigo, nombre, poblacion, saldo from clientes where saldo > 0 and activo"
          L" order by saldo desc, codigo",
          {kCode, kCustomer, {L"Población", Type::Text, 20}, {L"Saldo", Type::Money, 13, true}}}},
        {kCustomers,
         {Shape::Groups,
          L"Clientes por ruta de reparto",
          L"select r.codigo || ' ' || r.nombre, c.codigo, c.nombre, c.direccion, c.poblacion"
          L" from clientes c join rutas r on r.codigo = c.ruta order by r.codigo, c.codigo",
          {kCode, kCustomer, {L"Dirección", Type::Text, 30}, {L"Población", Type::Text, 18}}}},

        {kOrderScreen, {Shape::List, L"Órdenes entre fechas", orderRows + L"order by Orden", orderColumns}},
        {kCustomers | kOrderScreen,
         {Shape::Groups, L"Órdenes por cliente",
          kOrders + L"select k.codigo || ' ' || k.nombre, o.Orden, o.fecha, o.Paciente, o.estado, o.importe"
                    L" from o join clientes k on k.codigo = o.cliente order by k.codigo, o.Orden",
          orderColumns}},
        {kCustomers | kOrderScreen,
         {Shape::List,
          L"Resumen por meses",
          kOrders + L"select substr(fecha, 6, 2) || '/' || substr(fecha, 1, 4), count(*), sum(repeticion),"
                    L" sum(facturada), sum(importe) from o group by substr(fecha, 1, 7)"
                    L" order by substr(fecha, 1, 7)",
          {{L"Mes", Type::Text, 10},
           kCount,
           {L"Repetidas", Type::Integer, 10, true},
           {L"Facturadas", Type::Integer, 10, true},
           kAmount}}},
        {kOrderScreen,
         {Shape::List, L"Órdenes urgentes", orderRows + L"where urgente order by Orden", orderColumns}},
        {kOrderScreen,
         {Shape::List,
          L"Órdenes por estado",
          kOrders + L"select estado, count(*), sum(importe) from o group by estado order by estado",
          {kState, kCount, kAmount}}},
        {kOrderScreen,
         {Shape::List, L"Órdenes repetidas", orderRows + L"where repeticion order by Orden", orderColumns}},
        {kOrderScreen,
         {Shape::List, L"Órdenes pendientes de facturar", orderRows + L"where not facturada order by Orden",
          orderColumns}},
        {kOrderScreen,
         {Shape::List,
          L"Órdenes por tipo de producto",
          kOrders + L"select p.codigo, p.nombre, count(*), sum(o.importe) from o"
                    L" join tipos_producto p on p.codigo = o.tipo group by p.codigo order by p.codigo",
          {kCode, {L"Tipo", Type::Text, 30}, kCount, kAmount}}},
        {kOrderScreen,
         {Shape::List,
          L"Órdenes por hora de entrada",
          kOrders +
              L"select substr(hora, 1, 2) || ':00', count(*), sum(importe) from o group by 1 order by 1",
          {{L"Hora", Type::Text, 8}, kCount, kAmount}}},
        {kOrderScreen,
         {Shape::List,
          L"Trabajo por empleado",
          L"select empleado, nombre_empleado, count(*), sum(minutos) from hordenes"
          L" where empleado is not null and (:desde is null or fecha between :desde and :hasta)"
          L" group by empleado order by empleado",
          {kCode,
           {L"Empleado", Type::Text, 34},
           {L"Hojas", Type::Integer, 8, true},
           {L"Minutos", Type::Integer, 10, true}}}},
        // The eleventh of the orders.
        {kCustomers | kOrderScreen,
         {Shape::Groups, L"Órdenes por serie",
          kOrders + L"select 'Serie ' || serie, Orden, fecha, Paciente, estado, importe from o"
                    L" order by serie, Orden",
          orderColumns}},
        {kCustomers | kOrderScreen,
         {Shape::List,
          L"Clientes con más pedidos",
          kOrders + L"select k.codigo, k.nombre, count(*), sum(o.importe) from o"
                    L" join clientes k on k.codigo = o.cliente group by k.codigo order by 4 desc, 1",
          {kCode, kCustomer, kCount, kAmount}}},
        {kOrderScreen,
         {Shape::Groups,
          L"Órdenes con sus líneas",
          kOrders + L"select o.Orden || ' ' || o.Paciente, l.articulo, l.descripcion, l.precio, l.cantidad,"
                    L" l.importe from o join ordenes_lineas l on l.Orden = o.Orden order by o.Orden, l.linea",
          {kCode, kArticle, kPrice, kUnits, kAmount}}},

        {kArticles,
         {Shape::Labels,
          L"Etiquetas de precio",
          kPrices + L"select descripcion, codigo, tarifa from p where existencias > 0 order by lista, codigo",
          {{L"", Type::Text, 30}, {L"", Type::Text, 10}, {L"Precio:", Type::Money, 10}}}},
        {kArticles,
         {Shape::Labels,
          L"Etiquetas de lote",
          L"select 'Lote ' || lote, descripcion, caducidad from articulos_lotes"
          L" where :desde is null or caducidad between :desde and :hasta order by lote",
          {{L"", Type::Text, 10}, {L"", Type::Text, 30}, {L"Caduca:", Type::Date, 10}}}},
        {kCustomers,
         {Shape::Labels,
          L"Etiquetas de envío",
          L"select nombre, direccion, cp || ' ' || poblacion, provincia from clientes"
          L" where activo and (:cliente is null or codigo = :cliente) order by ruta, codigo",
          {{L"", Type::Text, 30}, {L"", Type::Text, 30}, {L"", Type::Text, 30}, {L"", Type::Text, 30}}}},
        {kCustomers | kOrderScreen,
         {Shape::Labels,
          L"Etiquetas de caja",
          kOrders + L"select 'Caja ' || o.Caja, k.nombre, o.Orden, o.Paciente from o"
                    L" join clientes k on k.codigo = o.cliente where not facturada order by o.Orden",
          {{L"", Type::Text, 10}, {L"", Type::Text, 30}, {L"Orden:", Type::Text, 8}, {L"", Type::Text, 30}}}},
    };
}

} // namespace

const std::vector<CatalogEntry>& Catalog() {
    static const std::vector<CatalogEntry> kCatalog = Make();
    return kCatalog;
}

} // namespace tamvelo::demo
