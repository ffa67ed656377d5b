#include "objects/EventRelay.h"

#include <array>

#include "com/DualDispatch.h"
#include "com/Guard.h"

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

class EventRelay final : public com::DualDispatch<IClsEventos, IConnectionPointContainer> {
public:
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
        return m_point.EnumOnly(points);
    }

    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
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

    HRESULT STDMETHODCALLTYPE AceptarListasParam(IDispatch** reports, short* output, short* copies,
                                                 BSTR* condition) override {
        return Raise(AceptaListasParam, reports, output, copies, condition);
    }

    HRESULT STDMETHODCALLTYPE AceptarEtiqueta(IDispatch** reports) override {
        return Raise(AceptaEtiqueta, reports);
    }

    HRESULT STDMETHODCALLTYPE ActualizaOrden(short* column, short* mode) override {
        return Raise(AceptaOrden, column, mode);
    }

    HRESULT STDMETHODCALLTYPE ActualizaColumnas(IDispatch** columns) override {
        return Raise(ConfigurarColumnas, columns);
    }

    HRESULT STDMETHODCALLTYPE AceptarSeleccion(short* index, IDispatch** ctl, VARIANT* value) override {
        return Raise(AceptaSeleccion, index, ctl, value);
    }

    HRESULT STDMETHODCALLTYPE AceptarSeleccionParam(short* index, IDispatch** ctl, VARIANT* value1,
                                                    VARIANT* value2, VARIANT* value3) override {
        return Raise(AceptaSeleccionParam, index, ctl, value1, value2, value3);
    }

    HRESULT STDMETHODCALLTYPE AceptarConvertir() override { return Raise(AceptaConvertir); }

    HRESULT STDMETHODCALLTYPE AceptarConvertirImprimir(short* mode, VARIANT_BOOL* option1,
                                                       VARIANT_BOOL* option2, short* output,
                                                       short* copies) override {
        return Raise(AceptaConvertirImprimir, mode, Flag{option1}, Flag{option2}, output, copies);
    }

    HRESULT STDMETHODCALLTYPE AceptarBuscar() override { return Raise(AceptaBuscar); }

    HRESULT STDMETHODCALLTYPE AceptarRegistro() override { return Raise(AceptaRegistro); }

    HRESULT STDMETHODCALLTYPE AceptarAbrir() override { return Raise(AceptaAbrir); }

    HRESULT STDMETHODCALLTYPE AceptarReports(IDispatch** reports, short* output, short* copies) override {
        return Raise(AceptaReports, reports, output, copies);
    }

    HRESULT STDMETHODCALLTYPE AceptarReportsParam(IDispatch** reports, short* output, short* copies,
                                                  DATE* from, DATE* to, BSTR* condition, short* option1,
                                                  short* option2, BSTR* text1, BSTR* text2) override {
        return Raise(AceptaReportsParam, reports, output, copies, from, to, condition, option1, option2,
                     text1, text2);
    }

    HRESULT STDMETHODCALLTYPE AceptarReportsParamMail(IDispatch** reports, short* output, short* copies,
                                                      DATE* from, DATE* to, BSTR* condition, short* option1,
                                                      short* option2, BSTR* text1, BSTR* text2) override {
        return Raise(AceptaReportsParamMail, reports, output, copies, from, to, condition, option1, option2,
                     text1, text2);
    }

    HRESULT STDMETHODCALLTYPE AceptarReportsInformesParam(IDispatch** reports, short* output, short* copies,
                                                          DATE* from, DATE* to, BSTR* condition,
                                                          short* option1, short* option2,
                                                          BSTR* text) override {
        return Raise(AceptaReportsInformesParam, reports, output, copies, from, to, condition, option1,
                     option2, text);
    }

    HRESULT STDMETHODCALLTYPE AceptarReportsParamHr(IDispatch** reports, short* output, short* copies,
                                                    DATE* from, DATE* to, BSTR* condition,
                                                    VARIANT_BOOL* option1, VARIANT_BOOL* option2,
                                                    DATE* fromTime, DATE* toTime) override {
        return Raise(AceptaReportsParamHr, reports, output, copies, from, to, condition, Flag{option1},
                     Flag{option2}, fromTime, toTime);
    }

    HRESULT STDMETHODCALLTYPE AceptarReportsFchAuto(IDispatch** reports, short* output, short* copies,
                                                    DATE* from, DATE* to, VARIANT_BOOL* option) override {
        return Raise(AceptaReportsFchAuto, reports, output, copies, from, to, Flag{option});
    }

    HRESULT STDMETHODCALLTYPE AceptarInformesFchAuto(IDispatch** reports, short* output, short* copies,
                                                     DATE* from, DATE* to, VARIANT_BOOL* option) override {
        return Raise(AceptaInformesFchAuto, reports, output, copies, from, to, Flag{option});
    }

    HRESULT STDMETHODCALLTYPE AceptarInformesFch(IDispatch** reports, short* output, short* copies,
                                                 DATE* from, DATE* to, BSTR* condition) override {
        return Raise(AceptaInformesFch, reports, output, copies, from, to, condition);
    }

    HRESULT STDMETHODCALLTYPE AceptarDocNumAut(IDispatch** reports, short* output, short* copies,
                                               VARIANT* from, VARIANT* to, VARIANT_BOOL* option) override {
        return Raise(AceptaDocNumAut, reports, output, copies, from, to, Flag{option});
    }

    HRESULT STDMETHODCALLTYPE AceptarFechaEntre(VARIANT* from, VARIANT* to) override {
        return Raise(AceptaFechaEntre, from, to);
    }

private:
    template <class... Arguments>
    HRESULT Raise(RelayEvent event, Arguments... arguments) noexcept {
        return com::Guard(__uuidof(IClsEventos), [&] {
            // Automation wants the arguments in reverse.
            std::array<VARIANT, sizeof...(Arguments) + 1> cells{};
            size_t at = sizeof...(Arguments);
            ((cells[--at] = ByReference(arguments)), ...);
            DISPPARAMS parameters{cells.data(), nullptr, static_cast<UINT>(sizeof...(Arguments)), 0};
            m_point.Raise(event, parameters);
        });
    }

    com::ConnectionPoint m_point{*this, kRelayEventsId};
};

} // namespace

com::ComPtr<IClsEventos> MakeEventRelay() { return com::ComPtr<IClsEventos>(com::Make<EventRelay>().Get()); }

OwnRelay::OwnRelay(const HWND* window, std::map<DISPID, Handler> handlers) : m_relay(MakeEventRelay()) {
    const com::ComPtr<Listener> listener = com::Make<Listener>(window, std::move(handlers));
    m_subscription = com::Subscription(m_relay.Get(), kRelayEventsId, listener.Get());
}

} // namespace tamvelo::objects
