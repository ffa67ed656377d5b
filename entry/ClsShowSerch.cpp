#include "entry/ClsShowSerch.h"

#include <utility>

#include "com/DualDispatch.h"
#include "com/Guard.h"
#include "contract/HostControl.h"
#include "dates/FrmCita.h"
#include "dates/FrmSeleccionFecha.h"
#include "environment/Environment.h"
#include "frame/FormInstances.h"
#include "frame/Lookup.h"
#include "gridconfig/ColumnsForm.h"
#include "reports/Dialogs.h"
#include "search/FrmBuscar.h"
#include "search/FrmRegistros.h"
#include "selection/Criteria.h"
#include "selection/CriteriaForm.h"
#include "selection/FrmSelecAdd.h"
#include "selection/FrmSeleccion.h"
#include "selection/FrmSeleccionTrueFalse.h"

namespace tamvelo::entry {

namespace {

// A by-reference argument that the host may leave out.
short Number(const short* given, short omitted) { return given ? *given : omitted; }
bool Flag(const VARIANT_BOOL* given, bool omitted) { return given ? *given != VARIANT_FALSE : omitted; }
std::wstring Text(const BSTR* given) {
    return given && *given ? std::wstring(*given, SysStringLen(*given)) : std::wstring();
}

template <class Body, class... Required>
HRESULT Operation(const Body& body, Required*... required) {
    return com::Guard(__uuidof(IClsShowSerch), [&] {
        if ((!required || ...)) {
            throw com::Error(E_POINTER, L"Falta un argumento obligatorio.");
        }
        body();
    });
}

/// An operation that works for a control of the host. A dialog may put another control in its place; the host
/// gets that one when the dialog has ended well.
template <class Body>
HRESULT WithControl(IDispatch** sink, IDispatch** data, IDispatch** ctl, const Body& body) {
    return Operation(
        [&] {
            contract::HostControl control(*ctl);
            body(control);
            if (IDispatch* const replaced = std::exchange(*ctl, control.Reference().Detach())) {
                replaced->Release();
            }
        },
        sink, data, ctl);
}

HRESULT ShowPanel(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column, short* indx,
                  VARIANT_BOOL* find, VARIANT_BOOL* stock, bool verify, bool controlVerify) {
    return WithControl(sink, data, ctl, [&](contract::HostControl& control) {
        frame::DefaultInstance<selection::FrmSeleccion>()->Mostrar(*sink, *data, control, Number(column, 0),
                                                                   Number(indx, 0), Flag(find, true),
                                                                   Flag(stock, false), verify, controlVerify);
    });
}

/// A form with a grid that has one way to open.
template <class Form>
HRESULT ShowGrid(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column, short* indx,
                 VARIANT_BOOL* find) {
    return WithControl(sink, data, ctl, [&](contract::HostControl& control) {
        frame::DefaultInstance<Form>()->Mostrar(*sink, *data, control, Number(column, 0), Number(indx, 0),
                                                Flag(find, true));
    });
}

using ReportMethod = void (reports::ReportForm::*)(const reports::ReportForm::Request&);

/// A report dialog's show method. A by-reference text that the host left out reads as empty.
HRESULT OpenReports(const reports::ReportDesign& design, ReportMethod method, BSTR* cls, IDispatch** sink,
                    IDispatch** list, VARIANT_BOOL* showAuto, bool limited) {
    return Operation(
        [&] {
            const auto form = frame::InstanceOf<reports::ReportForm>(design);
            ((*form).*method)({Text(cls), *sink, *list, Flag(showAuto, true), limited});
        },
        cls, sink, list);
}

HRESULT ShowReports(const reports::ReportDesign& design, BSTR* cls, IDispatch** sink, IDispatch** list,
                    VARIANT_BOOL* showAuto = nullptr, bool limited = false) {
    return OpenReports(design, &reports::ReportForm::Mostrar, cls, sink, list, showAuto, limited);
}

HRESULT ShowCriteria(const selection::CriteriaDesign& design, IDispatch** sink, IDispatch** data) {
    return Operation([&] { frame::InstanceOf<selection::CriteriaForm>(design)->Mostrar(*sink, *data); }, sink,
                     data);
}

HRESULT PrintReports(const reports::ReportDesign& design, BSTR* cls, IDispatch** sink, IDispatch** list,
                     VARIANT_BOOL* showAuto = nullptr) {
    return OpenReports(design, &reports::ReportForm::Aceptar, cls, sink, list, showAuto, false);
}

/// It holds nothing of a dialog: each operation takes the calling thread's instance of its form and hands it
/// the host's arguments.
class ShowSerch final : public com::DualDispatch<IClsShowSerch, ISupportErrorInfo, IProvideClassInfo> {
public:
    ShowSerch() { com::Check(IsDescribed() ? S_OK : TYPE_E_CANTLOADLIBRARY); }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
        return id == __uuidof(IClsShowSerch) ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override {
        if (!info) {
            return E_POINTER;
        }
        *info = com::OwnTypeInfo(kClsShowSerchId).Detach();
        return *info ? S_OK : TYPE_E_CANTLOADLIBRARY;
    }

    HRESULT STDMETHODCALLTYPE ShowSelecDate(IDispatch** sink) override {
        return Operation([&] { frame::DefaultInstance<dates::FrmSeleccionFecha>()->Mostrar(*sink); }, sink);
    }

    HRESULT STDMETHODCALLTYPE ShowBuscar(IDispatch** sink, IDispatch** data, IDispatch** columns) override {
        return Operation(
            [&] { frame::DefaultInstance<search::FrmBuscar>()->Mostrar(*sink, *data, *columns); }, sink, data,
            columns);
    }

    HRESULT STDMETHODCALLTYPE ShowColums(IDispatch** sink, IDispatch** columns) override {
        return Operation(
            [&] {
                frame::InstanceOf<gridconfig::ColumnsForm>(gridconfig::kColumnas)->Mostrar(*sink, *columns);
            },
            sink, columns);
    }

    HRESULT STDMETHODCALLTYPE ShowSelec(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                        short* indx, VARIANT_BOOL* find, VARIANT_BOOL* stock) override {
        return ShowPanel(sink, data, ctl, column, indx, find, stock, false, false);
    }

    HRESULT STDMETHODCALLTYPE ShowSelecNoVerif(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                               short* column, short* indx, VARIANT_BOOL* /*find*/,
                                               VARIANT_BOOL* /*stock*/) override {
        VARIANT_BOOL find = VARIANT_FALSE; // whatever the caller says
        VARIANT_BOOL stock = VARIANT_FALSE;
        return ShowPanel(sink, data, ctl, column, indx, &find, &stock, false, false);
    }

    HRESULT STDMETHODCALLTYPE ShowSelecVerif(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                             short* column, short* indx, VARIANT_BOOL* find,
                                             VARIANT_BOOL* stock) override {
        return ShowPanel(sink, data, ctl, column, indx, find, stock, true, false);
    }

    HRESULT STDMETHODCALLTYPE ShowSelecControlVerif(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                    short* column, short* indx, VARIANT_BOOL* find,
                                                    VARIANT_BOOL* stock) override {
        return ShowPanel(sink, data, ctl, column, indx, find, stock, true, true);
    }

    HRESULT STDMETHODCALLTYPE ShowSelecTrueFalse(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                 short* column, short* indx, VARIANT_BOOL* find) override {
        return ShowGrid<selection::FrmSeleccionTrueFalse>(sink, data, ctl, column, indx, find);
    }

    HRESULT STDMETHODCALLTYPE ShowSelecAdd(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                           short* indx, VARIANT_BOOL* find) override {
        return ShowGrid<selection::FrmSelecAdd>(sink, data, ctl, column, indx, find);
    }

    HRESULT STDMETHODCALLTYPE ShowRegistros(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                            short* column, short* indx, VARIANT_BOOL* find) override {
        return ShowGrid<search::FrmRegistros>(sink, data, ctl, column, indx, find);
    }

    HRESULT STDMETHODCALLTYPE ShowSelecDirecta(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                               short* column, short* indx, VARIANT_BOOL* find,
                                               short* modal) override {
        return WithControl(sink, data, ctl, [&](contract::HostControl& control) {
            frame::DefaultInstance<selection::FrmSeleccion>()->MostrarBuscando(
                *sink, *data, control, Number(column, 0), Number(indx, 0), Flag(find, true),
                Number(modal, 1));
        });
    }

    HRESULT STDMETHODCALLTYPE ShowSelecInDirecta(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                 short* column, BSTR* text, VARIANT_BOOL* find,
                                                 short* modal) override {
        return WithControl(sink, data, ctl, [&](contract::HostControl& control) {
            frame::DefaultInstance<selection::FrmSeleccion>()->MostrarBusquedaIndirecta(
                *sink, *data, control, Number(column, 0), Text(text), Flag(find, true), Number(modal, 1));
        });
    }

    HRESULT STDMETHODCALLTYPE ShowOrder(short* mode, IDispatch** sink, IDispatch** columns) override {
        return Operation(
            [&] {
                frame::InstanceOf<gridconfig::ColumnsForm>(gridconfig::kOrden)
                    ->Mostrar(*sink, *columns, *mode);
            },
            mode, sink, columns);
    }

    HRESULT STDMETHODCALLTYPE ShowRpt(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return ShowReports(reports::kRpts, cls, sink, reports);
    }

    HRESULT STDMETHODCALLTYPE ShowSql(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return ShowReports(reports::kSql, cls, sink, reports);
    }

    HRESULT STDMETHODCALLTYPE ShowEtiq(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return ShowReports(reports::kSelecEti, cls, sink, reports);
    }

    HRESULT STDMETHODCALLTYPE PrintEtiq(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return PrintReports(reports::kSelecEti, cls, sink, reports);
    }

    HRESULT STDMETHODCALLTYPE ShowRptCond(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return ShowReports(reports::kRptsCond, cls, sink, reports);
    }

    HRESULT STDMETHODCALLTYPE ShowRptMailCond(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return ShowReports(reports::kRptsMailCond, cls, sink, reports);
    }

    HRESULT STDMETHODCALLTYPE ShowRptBorrador(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return ShowReports(reports::kRptsMailCond, cls, sink, reports, nullptr, true);
    }

    HRESULT STDMETHODCALLTYPE ShowRptListas(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return ShowReports(reports::kRptsListas, cls, sink, reports);
    }

    HRESULT STDMETHODCALLTYPE ShowRptInfCond(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return ShowReports(reports::kRptsInfCond, cls, sink, reports);
    }

    HRESULT STDMETHODCALLTYPE ShowRptCondHr(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return ShowReports(reports::kRptsCondHr, cls, sink, reports);
    }

    HRESULT STDMETHODCALLTYPE ShowRptFchAuto(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                             VARIANT_BOOL* showAuto) override {
        return ShowReports(reports::kRptsFchAuto, cls, sink, reports, showAuto);
    }

    HRESULT STDMETHODCALLTYPE ShowRptFchAutoInf(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                                VARIANT_BOOL* showAuto) override {
        return ShowReports(reports::kRptsFchAutoInf, cls, sink, reports, showAuto);
    }

    HRESULT STDMETHODCALLTYPE ShowRptInfOrdenes(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                                VARIANT_BOOL* showAuto) override {
        return ShowReports(reports::kRptsInfOrdenes, cls, sink, reports, showAuto);
    }

    HRESULT STDMETHODCALLTYPE ShowRptFchCliDirec(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return ShowReports(reports::kRptsFchCliDirec, cls, sink, reports);
    }

    HRESULT STDMETHODCALLTYPE ShowRptsInfFch(BSTR* cls, IDispatch** sink, IDispatch** reports) override {
        return ShowReports(reports::kRptsInfFch, cls, sink, reports);
    }

    HRESULT STDMETHODCALLTYPE ShowRptNumAut(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                            VARIANT_BOOL* showAuto) override {
        return ShowReports(reports::kRptNumAut, cls, sink, reports, showAuto);
    }

    HRESULT STDMETHODCALLTYPE PrintRptNumAut(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                             VARIANT_BOOL* showAuto) override {
        return PrintReports(reports::kRptNumAut, cls, sink, reports, showAuto);
    }

    HRESULT STDMETHODCALLTYPE ShowSeleccionar(IDispatch** sink, IDispatch** data) override {
        return ShowCriteria(selection::kSelecVenta, sink, data);
    }

    HRESULT STDMETHODCALLTYPE ShowSelecLab(IDispatch** sink, IDispatch** data) override {
        return ShowCriteria(selection::kSelecLab, sink, data);
    }

    HRESULT STDMETHODCALLTYPE ShowNuevaCita(IDispatch** sink, IDispatch** data, long* hwnd,
                                            DATE* date) override {
        return Operation(
            [&] {
                const auto owner = reinterpret_cast<HWND>(static_cast<LONG_PTR>(*hwnd));
                frame::DefaultInstance<dates::FrmCita>()->Mostrar(*sink, *data, owner, *date);
            },
            sink, data, hwnd, date);
    }

    HRESULT STDMETHODCALLTYPE ShowSelecMinim(IDispatch** sink, IDispatch** data) override {
        return ShowCriteria(selection::kSelecMinim, sink, data);
    }

    HRESULT STDMETHODCALLTYPE ShowSeleccionarComp(IDispatch** sink, IDispatch** data) override {
        return ShowCriteria(selection::kSeleccionar, sink, data);
    }

    HRESULT STDMETHODCALLTYPE ShowSeleccionarRecibo(IDispatch** sink, IDispatch** data) override {
        return ShowCriteria(selection::kSelecRecibo, sink, data);
    }
};

} // namespace

com::ComPtr<IDispatch> MakeClsShowSerch() {
    environment::StartTraceIfAsked();
    frame::SetShowSerchFactory(MakeClsShowSerch);
    return com::ComPtr<IDispatch>(com::Make<ShowSerch>().Get());
}

} // namespace tamvelo::entry
