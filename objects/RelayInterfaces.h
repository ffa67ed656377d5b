#pragma once

#include "com/WinHeaders.h"

#include "Tamvelo.h" // from idl/Tamvelo.idl

namespace tamvelo::objects {

/// The event relay as a sink: one method per dialog result, each of which raises its event with the same
/// arguments. Every argument may be changed by whoever hears the event.
using IClsEventos = ::_ClsEventos;

/// The DISPID of the first method of IClsEventos; the others follow in order.
inline constexpr DISPID kFirstRelayMethod = 0x60030000;

/// The outgoing event interface of the relay.
inline constexpr IID kRelayEventsId{
    0x013a48d8, 0xa9f0, 0x4fd6, {0x80, 0x3c, 0x97, 0x78, 0x6e, 0x3e, 0x42, 0x5a}};

/// The DISPIDs of the relay's events.
enum RelayEvent : DISPID {
    ConfigurarColumnas = 1,
    AceptaSeleccion,
    AceptaSeleccionParam,
    AceptaRegistro,
    AceptaAbrir,
    AceptaConvertir,
    AceptaConvertirImprimir,
    AceptaBuscar,
    AceptaReportsParam,
    AceptaReportsParamMail,
    AceptaReportsParamHr,
    AceptaReportsInformesParam,
    AceptaReportsFchAuto,
    AceptaReports,
    AceptaInformesFchAuto,
    AceptaInformesFch,
    AceptaOrden,
    AceptaEtiqueta,
    AceptaListasParam,
    AceptaDocNumAut,
    AceptaFechaEntre
};

} // namespace tamvelo::objects
