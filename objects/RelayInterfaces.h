#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::objects {

/// The event relay as a sink: one method per dialog result, each of which raises its event with the same
/// arguments. Methods in the order of the type library; every argument may be changed by whoever hears the
/// event.
struct IClsEventos : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE AceptarListasParam(IDispatch** reports, short* output, short* copies,
                                                         BSTR* condition) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarEtiqueta(IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ActualizaOrden(short* column, short* mode) = 0;
    virtual HRESULT STDMETHODCALLTYPE ActualizaColumnas(IDispatch** columns) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarSeleccion(short* index, IDispatch** ctl, VARIANT* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarSeleccionParam(short* index, IDispatch** ctl, VARIANT* value1,
                                                            VARIANT* value2, VARIANT* value3) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarConvertir() = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarConvertirImprimir(short* mode, VARIANT_BOOL* option1,
                                                               VARIANT_BOOL* option2, short* output,
                                                               short* copies) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarBuscar() = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarRegistro() = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarAbrir() = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarReports(IDispatch** reports, short* output, short* copies) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarReportsParam(IDispatch** reports, short* output, short* copies,
                                                          DATE* from, DATE* to, BSTR* condition,
                                                          short* option1, short* option2, BSTR* text1,
                                                          BSTR* text2) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarReportsParamMail(IDispatch** reports, short* output,
                                                              short* copies, DATE* from, DATE* to,
                                                              BSTR* condition, short* option1, short* option2,
                                                              BSTR* text1, BSTR* text2) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarReportsInformesParam(IDispatch** reports, short* output,
                                                                  short* copies, DATE* from, DATE* to,
                                                                  BSTR* condition, short* option1,
                                                                  short* option2, BSTR* text) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarReportsParamHr(IDispatch** reports, short* output, short* copies,
                                                            DATE* from, DATE* to, BSTR* condition,
                                                            VARIANT_BOOL* option1, VARIANT_BOOL* option2,
                                                            DATE* fromTime, DATE* toTime) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarReportsFchAuto(IDispatch** reports, short* output, short* copies,
                                                            DATE* from, DATE* to, VARIANT_BOOL* option) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarInformesFchAuto(IDispatch** reports, short* output,
                                                             short* copies, DATE* from, DATE* to,
                                                             VARIANT_BOOL* option) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarInformesFch(IDispatch** reports, short* output, short* copies,
                                                         DATE* from, DATE* to, BSTR* condition) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarDocNumAut(IDispatch** reports, short* output, short* copies,
                                                       VARIANT* from, VARIANT* to, VARIANT_BOOL* option) = 0;
    virtual HRESULT STDMETHODCALLTYPE AceptarFechaEntre(VARIANT* from, VARIANT* to) = 0;
};

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

__CRT_UUID_DECL(tamvelo::objects::IClsEventos, 0x18e14ba8, 0xca82, 0x4820, 0xbe, 0xcd, 0xac, 0x90, 0x77, 0xb2,
                0x03, 0x2f)
