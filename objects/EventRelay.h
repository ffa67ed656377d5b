#pragma once

#include <functional>
#include <map>

#include "com/Automation.h"
#include "com/ConnectionPoint.h"
#include "objects/RelayInterfaces.h"

namespace tamvelo::objects {

/// `ClsEventos`: a sink that raises an event for each result it is given, with the same arguments, by
/// reference.
class EventRelay final : public com::Object<IClsEventos, IConnectionPointContainer> {
public:
    EventRelay();

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* thrown,
                                     UINT* wrong) override;

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

    HRESULT STDMETHODCALLTYPE AceptarListasParam(IDispatch** reports, short* output, short* copies,
                                                 BSTR* condition) override;
    HRESULT STDMETHODCALLTYPE AceptarEtiqueta(IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ActualizaOrden(short* column, short* mode) override;
    HRESULT STDMETHODCALLTYPE ActualizaColumnas(IDispatch** columns) override;
    HRESULT STDMETHODCALLTYPE AceptarSeleccion(short* index, IDispatch** ctl, VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE AceptarSeleccionParam(short* index, IDispatch** ctl, VARIANT* value1,
                                                    VARIANT* value2, VARIANT* value3) override;
    HRESULT STDMETHODCALLTYPE AceptarConvertir() override;
    HRESULT STDMETHODCALLTYPE AceptarConvertirImprimir(short* mode, VARIANT_BOOL* option1,
                                                       VARIANT_BOOL* option2, short* output,
                                                       short* copies) override;
    HRESULT STDMETHODCALLTYPE AceptarBuscar() override;
    HRESULT STDMETHODCALLTYPE AceptarRegistro() override;
    HRESULT STDMETHODCALLTYPE AceptarAbrir() override;
    HRESULT STDMETHODCALLTYPE AceptarReports(IDispatch** reports, short* output, short* copies) override;
    HRESULT STDMETHODCALLTYPE AceptarReportsParam(IDispatch** reports, short* output, short* copies,
                                                  DATE* from, DATE* to, BSTR* condition, short* option1,
                                                  short* option2, BSTR* text1, BSTR* text2) override;
    HRESULT STDMETHODCALLTYPE AceptarReportsParamMail(IDispatch** reports, short* output, short* copies,
                                                      DATE* from, DATE* to, BSTR* condition, short* option1,
                                                      short* option2, BSTR* text1, BSTR* text2) override;
    HRESULT STDMETHODCALLTYPE AceptarReportsInformesParam(IDispatch** reports, short* output, short* copies,
                                                          DATE* from, DATE* to, BSTR* condition,
                                                          short* option1, short* option2,
                                                          BSTR* text) override;
    HRESULT STDMETHODCALLTYPE AceptarReportsParamHr(IDispatch** reports, short* output, short* copies,
                                                    DATE* from, DATE* to, BSTR* condition,
                                                    VARIANT_BOOL* option1, VARIANT_BOOL* option2,
                                                    DATE* fromTime, DATE* toTime) override;
    HRESULT STDMETHODCALLTYPE AceptarReportsFchAuto(IDispatch** reports, short* output, short* copies,
                                                    DATE* from, DATE* to, VARIANT_BOOL* option) override;
    HRESULT STDMETHODCALLTYPE AceptarInformesFchAuto(IDispatch** reports, short* output, short* copies,
                                                     DATE* from, DATE* to, VARIANT_BOOL* option) override;
    HRESULT STDMETHODCALLTYPE AceptarInformesFch(IDispatch** reports, short* output, short* copies,
                                                 DATE* from, DATE* to, BSTR* condition) override;
    HRESULT STDMETHODCALLTYPE AceptarDocNumAut(IDispatch** reports, short* output, short* copies,
                                               VARIANT* from, VARIANT* to, VARIANT_BOOL* option) override;
    HRESULT STDMETHODCALLTYPE AceptarFechaEntre(VARIANT* from, VARIANT* to) override;

private:
    template <class... Arguments>
    HRESULT Raise(RelayEvent event, Arguments... arguments) noexcept;

    com::ComPtr<ITypeInfo> m_description;
    com::ConnectionPoint m_point;
};

/// A form's own relay and its ear: the relay is the sink of a nested call, and what it raises runs the
/// handlers.
class OwnRelay {
public:
    using Handler = std::function<void(com::Invocation&)>;
    /// Handlers by event; other events are ignored. What a handler throws goes back to whoever called the
    /// sink. Their calls out belong to the window in `window`, a variable of the owner's.
    OwnRelay(const HWND* window, std::map<DISPID, Handler> handlers);
    OwnRelay(const OwnRelay&) = delete;
    OwnRelay& operator=(const OwnRelay&) = delete;

    /// The sink to hand to a nested operation.
    IDispatch* Sink() const { return m_relay.Get(); }

private:
    com::ComPtr<EventRelay> m_relay;
    com::Subscription m_subscription;
};

} // namespace tamvelo::objects
