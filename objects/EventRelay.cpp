#include "objects/EventRelay.h"

#include <array>

#include "com/Guard.h"
#include "com/TypedDispatch.h"

namespace tamvelo::objects {

namespace {

/// The variant type of a by-reference argument, by what it points at.
constexpr VARTYPE TypeOf(short*) { return VT_I2; }
constexpr VARTYPE TypeOf(DATE*) { return VT_DATE; }
constexpr VARTYPE TypeOf(BSTR*) { return VT_BSTR; }
constexpr VARTYPE TypeOf(IDispatch**) { return VT_DISPATCH; }
constexpr VARTYPE TypeOf(VARIANT*) { return VT_VARIANT; }

template <class T>
VARIANT ByReference(T* argument) {
    VARIANT value;
    if (!argument) { // an early-bound caller left it out
        value.vt = VT_ERROR;
        value.scode = DISP_E_PARAMNOTFOUND;
        return value;
    }
    value.vt = static_cast<VARTYPE>(TypeOf(argument) | VT_BYREF);
    value.byref = argument;
    return value;
}

/// VARIANT_BOOL and short are one C++ type; this wrapper tells them apart.
struct Flag {
    VARIANT_BOOL* value;
};

VARIANT ByReference(Flag flag) {
    VARIANT value = ByReference(flag.value);
    if (flag.value) {
        value.vt = VT_BOOL | VT_BYREF;
    }
    return value;
}

/// Forwards events to handlers; it belongs to the relay's connection, not to the form.
class Listener final : public com::Object<IDispatch> {
public:
    Listener(const HWND* window, std::map<DISPID, OwnRelay::Handler> handlers)
        : m_window(window), m_handlers(std::move(handlers)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME; // events come by number
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT*,
                                     EXCEPINFO* thrown, UINT*) override {
        const com::FloatGuard floats;
        const com::Watch watch(m_window);
        const auto found = m_handlers.find(id);
        if (found == m_handlers.end()) {
            return DISP_E_MEMBERNOTFOUND;
        }
        try {
            com::Invocation call(*parameters, flags);
            found->second(call);
            return S_OK;
        } catch (...) {
            return com::FillExcepInfo(com::CurrentError(), thrown);
        }
    }

private:
    const HWND* m_window;
    std::map<DISPID, OwnRelay::Handler> m_handlers;
};

} // namespace

EventRelay::EventRelay()
    : m_description(com::OwnTypeInfo(__uuidof(IClsEventos))), m_point(*this, kRelayEventsId) {}

HRESULT EventRelay::GetTypeInfoCount(UINT* count) {
    if (!count) {
        return E_POINTER;
    }
    *count = m_description ? 1 : 0;
    return S_OK;
}

HRESULT EventRelay::GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) {
    if (!info) {
        return E_POINTER;
    }
    *info = nullptr;
    return index == 0 && m_description ? m_description.CopyTo(info) : DISP_E_BADINDEX;
}

HRESULT EventRelay::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                  DISPID* ids) {
    return m_description ? m_description->GetIDsOfNames(names, count, ids) : TYPE_E_CANTLOADLIBRARY;
}

HRESULT EventRelay::Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                           DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* thrown, UINT* wrong) {
    const com::ComPtr<IDispatch> alive(this);
    return m_description ? com::InvokeTyped(m_description.Get(), static_cast<IClsEventos*>(this), id, flags,
                                            parameters, result, thrown, wrong)
                         : TYPE_E_CANTLOADLIBRARY;
}

HRESULT EventRelay::EnumConnectionPoints(IEnumConnectionPoints** points) { return m_point.EnumOnly(points); }

HRESULT EventRelay::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    if (!point) {
        return E_POINTER;
    }
    *point = nullptr;
    // A listener that knows no type library asks for the plain event dispatch interface.
    if (id != m_point.Events() && id != IID_IDispatch) {
        return CONNECT_E_NOCONNECTION;
    }
    *point = &m_point;
    AddRef();
    return S_OK;
}

template <class... Arguments>
HRESULT EventRelay::Raise(RelayEvent event, Arguments... arguments) noexcept {
    return com::Guard(__uuidof(IClsEventos), [&] {
        // Automation wants the arguments in reverse.
        std::array<VARIANT, sizeof...(Arguments) + 1> cells{};
        size_t at = sizeof...(Arguments);
        ((cells[--at] = ByReference(arguments)), ...);
        DISPPARAMS parameters{cells.data(), nullptr, static_cast<UINT>(sizeof...(Arguments)), 0};
        m_point.Raise(event, parameters);
    });
}

HRESULT EventRelay::AceptarListasParam(IDispatch** reports, short* output, short* copies, BSTR* condition) {
    return Raise(AceptaListasParam, reports, output, copies, condition);
}

HRESULT EventRelay::AceptarEtiqueta(IDispatch** reports) { return Raise(AceptaEtiqueta, reports); }

HRESULT EventRelay::ActualizaOrden(short* column, short* mode) { return Raise(AceptaOrden, column, mode); }

HRESULT EventRelay::ActualizaColumnas(IDispatch** columns) { return Raise(ConfigurarColumnas, columns); }

HRESULT EventRelay::AceptarSeleccion(short* index, IDispatch** ctl, VARIANT* value) {
    return Raise(AceptaSeleccion, index, ctl, value);
}

HRESULT EventRelay::AceptarSeleccionParam(short* index, IDispatch** ctl, VARIANT* value1, VARIANT* value2,
                                          VARIANT* value3) {
    return Raise(AceptaSeleccionParam, index, ctl, value1, value2, value3);
}

HRESULT EventRelay::AceptarConvertir() { return Raise(AceptaConvertir); }

HRESULT EventRelay::AceptarConvertirImprimir(short* mode, VARIANT_BOOL* option1, VARIANT_BOOL* option2,
                                             short* output, short* copies) {
    return Raise(AceptaConvertirImprimir, mode, Flag{option1}, Flag{option2}, output, copies);
}

HRESULT EventRelay::AceptarBuscar() { return Raise(AceptaBuscar); }

HRESULT EventRelay::AceptarRegistro() { return Raise(AceptaRegistro); }

HRESULT EventRelay::AceptarAbrir() { return Raise(AceptaAbrir); }

HRESULT EventRelay::AceptarReports(IDispatch** reports, short* output, short* copies) {
    return Raise(AceptaReports, reports, output, copies);
}

HRESULT EventRelay::AceptarReportsParam(IDispatch** reports, short* output, short* copies, DATE* from,
                                        DATE* to, BSTR* condition, short* option1, short* option2,
                                        BSTR* text1, BSTR* text2) {
    return Raise(AceptaReportsParam, reports, output, copies, from, to, condition, option1, option2, text1,
                 text2);
}

HRESULT EventRelay::AceptarReportsParamMail(IDispatch** reports, short* output, short* copies, DATE* from,
                                            DATE* to, BSTR* condition, short* option1, short* option2,
                                            BSTR* text1, BSTR* text2) {
    return Raise(AceptaReportsParamMail, reports, output, copies, from, to, condition, option1, option2,
                 text1, text2);
}

HRESULT EventRelay::AceptarReportsInformesParam(IDispatch** reports, short* output, short* copies, DATE* from,
                                                DATE* to, BSTR* condition, short* option1, short* option2,
                                                BSTR* text) {
    return Raise(AceptaReportsInformesParam, reports, output, copies, from, to, condition, option1, option2,
                 text);
}

HRESULT EventRelay::AceptarReportsParamHr(IDispatch** reports, short* output, short* copies, DATE* from,
                                          DATE* to, BSTR* condition, VARIANT_BOOL* option1,
                                          VARIANT_BOOL* option2, DATE* fromTime, DATE* toTime) {
    return Raise(AceptaReportsParamHr, reports, output, copies, from, to, condition, Flag{option1},
                 Flag{option2}, fromTime, toTime);
}

HRESULT EventRelay::AceptarReportsFchAuto(IDispatch** reports, short* output, short* copies, DATE* from,
                                          DATE* to, VARIANT_BOOL* option) {
    return Raise(AceptaReportsFchAuto, reports, output, copies, from, to, Flag{option});
}

HRESULT EventRelay::AceptarInformesFchAuto(IDispatch** reports, short* output, short* copies, DATE* from,
                                           DATE* to, VARIANT_BOOL* option) {
    return Raise(AceptaInformesFchAuto, reports, output, copies, from, to, Flag{option});
}

HRESULT EventRelay::AceptarInformesFch(IDispatch** reports, short* output, short* copies, DATE* from,
                                       DATE* to, BSTR* condition) {
    return Raise(AceptaInformesFch, reports, output, copies, from, to, condition);
}

HRESULT EventRelay::AceptarDocNumAut(IDispatch** reports, short* output, short* copies, VARIANT* from,
                                     VARIANT* to, VARIANT_BOOL* option) {
    return Raise(AceptaDocNumAut, reports, output, copies, from, to, Flag{option});
}

HRESULT EventRelay::AceptarFechaEntre(VARIANT* from, VARIANT* to) {
    return Raise(AceptaFechaEntre, from, to);
}

OwnRelay::OwnRelay(const HWND* window, std::map<DISPID, Handler> handlers)
    : m_relay(com::Make<EventRelay>()) {
    const com::ComPtr<Listener> listener = com::Make<Listener>(window, std::move(handlers));
    m_subscription =
        com::Subscription(static_cast<IClsEventos*>(m_relay.Get()), kRelayEventsId, listener.Get());
}

} // namespace tamvelo::objects
