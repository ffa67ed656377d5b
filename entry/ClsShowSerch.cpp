#include "entry/ClsShowSerch.h"

#include <utility>

#include "com/Guard.h"
#include "com/TypedDispatch.h"
#include "contract/HostControl.h"
#include "dates/FrmCita.h"
#include "dates/FrmSeleccionFecha.h"
#include "entry/InOut.h"
#include "environment/Environment.h"
#include "frame/FormInstances.h"
#include "frame/Nested.h"
#include "gridconfig/FrmColumnas.h"
#include "gridconfig/FrmOrden.h"
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
        ShortInOut ownColumn(column, 0);
        ShortInOut ownIndx(indx, 0);
        BoolInOut ownFind(find, true);
        BoolInOut ownStock(stock, false);
        frame::DefaultInstance<selection::FrmSeleccion>()->Mostrar(*sink, *data, control, ownColumn, ownIndx,
                                                                   ownFind, ownStock, verify, controlVerify);
    });
}

/// A form with a grid that has one way to open.
template <class Form>
HRESULT ShowGrid(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column, short* indx,
                 VARIANT_BOOL* find) {
    return WithControl(sink, data, ctl, [&](contract::HostControl& control) {
        ShortInOut ownColumn(column, 0);
        ShortInOut ownIndx(indx, 0);
        BoolInOut ownFind(find, true);
        frame::DefaultInstance<Form>()->Mostrar(*sink, *data, control, ownColumn, ownIndx, ownFind);
    });
}

using ReportMethod = void (reports::ReportForm::*)(const reports::ReportForm::Request&);

/// A report dialog's show method. A by-reference text that the host left out reads as empty.
HRESULT OpenReports(const reports::ReportDesign& design, ReportMethod method, BSTR* cls, IDispatch** sink,
                    IDispatch** list, VARIANT_BOOL* showAuto, bool limited) {
    return Operation(
        [&] {
            TextInOut ownCls(cls, {});
            BoolInOut ownShowAuto(showAuto, true);
            const auto form = reports::ReportForm::Instance(design);
            ((*form).*method)({ownCls, *sink, *list, ownShowAuto, limited});
        },
        cls, sink, list);
}

HRESULT ShowReports(const reports::ReportDesign& design, BSTR* cls, IDispatch** sink, IDispatch** list,
                    VARIANT_BOOL* showAuto = nullptr, bool limited = false) {
    return OpenReports(design, &reports::ReportForm::Mostrar, cls, sink, list, showAuto, limited);
}

HRESULT ShowCriteria(const selection::CriteriaDesign& design, IDispatch** sink, IDispatch** data) {
    return Operation([&] { selection::CriteriaForm::Instance(design)->Mostrar(*sink, *data); }, sink, data);
}

HRESULT PrintReports(const reports::ReportDesign& design, BSTR* cls, IDispatch** sink, IDispatch** list,
                     VARIANT_BOOL* showAuto = nullptr) {
    return OpenReports(design, &reports::ReportForm::Aceptar, cls, sink, list, showAuto, false);
}

} // namespace

ClsShowSerch::ClsShowSerch() : m_description(com::OwnTypeInfo(__uuidof(IClsShowSerch))) {
    com::Check(m_description ? S_OK : TYPE_E_CANTLOADLIBRARY);
    environment::StartTraceIfAsked();
    frame::SetShowSerchFactory(
        [] { return com::ComPtr<IDispatch>(static_cast<IClsShowSerch*>(com::Make<ClsShowSerch>().Get())); });
}

HRESULT ClsShowSerch::GetTypeInfoCount(UINT* count) {
    if (!count) {
        return E_POINTER;
    }
    *count = 1;
    return S_OK;
}

HRESULT ClsShowSerch::GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) {
    if (!info) {
        return E_POINTER;
    }
    *info = nullptr;
    return index == 0 ? m_description.CopyTo(info) : DISP_E_BADINDEX;
}

HRESULT ClsShowSerch::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                    DISPID* ids) {
    return names && ids ? m_description->GetIDsOfNames(names, count, ids) : E_POINTER;
}

HRESULT ClsShowSerch::Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                             DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* thrown, UINT* wrong) {
    return com::InvokeTyped(m_description.Get(), static_cast<IClsShowSerch*>(this), id, flags, parameters,
                            result, thrown, wrong);
}

HRESULT ClsShowSerch::InterfaceSupportsErrorInfo(REFIID id) {
    return id == __uuidof(IClsShowSerch) ? S_OK : S_FALSE;
}

HRESULT ClsShowSerch::GetClassInfo(ITypeInfo** info) {
    if (!info) {
        return E_POINTER;
    }
    *info = com::OwnTypeInfo(kClsShowSerchId).Detach();
    return *info ? S_OK : TYPE_E_CANTLOADLIBRARY;
}

HRESULT ClsShowSerch::ShowSelecDate(IDispatch** sink) {
    return Operation([&] { frame::DefaultInstance<dates::FrmSeleccionFecha>()->Mostrar(*sink); }, sink);
}

HRESULT ClsShowSerch::ShowBuscar(IDispatch** sink, IDispatch** data, IDispatch** columns) {
    return Operation([&] { frame::DefaultInstance<search::FrmBuscar>()->Mostrar(*sink, *data, *columns); },
                     sink, data, columns);
}

HRESULT ClsShowSerch::ShowColums(IDispatch** sink, IDispatch** columns) {
    return Operation([&] { frame::DefaultInstance<gridconfig::FrmColumnas>()->Mostrar(*sink, *columns); },
                     sink, columns);
}

HRESULT ClsShowSerch::ShowSelec(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                short* indx, VARIANT_BOOL* find, VARIANT_BOOL* stock) {
    return ShowPanel(sink, data, ctl, column, indx, find, stock, false, false);
}

HRESULT ClsShowSerch::ShowSelecNoVerif(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                       short* indx, VARIANT_BOOL* /*find*/, VARIANT_BOOL* /*stock*/) {
    VARIANT_BOOL find = VARIANT_FALSE; // whatever the caller says
    VARIANT_BOOL stock = VARIANT_FALSE;
    return ShowPanel(sink, data, ctl, column, indx, &find, &stock, false, false);
}

HRESULT ClsShowSerch::ShowSelecVerif(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                     short* indx, VARIANT_BOOL* find, VARIANT_BOOL* stock) {
    return ShowPanel(sink, data, ctl, column, indx, find, stock, true, false);
}

HRESULT ClsShowSerch::ShowSelecControlVerif(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                            short* column, short* indx, VARIANT_BOOL* find,
                                            VARIANT_BOOL* stock) {
    return ShowPanel(sink, data, ctl, column, indx, find, stock, true, true);
}

HRESULT ClsShowSerch::ShowSelecTrueFalse(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                         short* indx, VARIANT_BOOL* find) {
    return ShowGrid<selection::FrmSeleccionTrueFalse>(sink, data, ctl, column, indx, find);
}

HRESULT ClsShowSerch::ShowSelecAdd(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                   short* indx, VARIANT_BOOL* find) {
    return ShowGrid<selection::FrmSelecAdd>(sink, data, ctl, column, indx, find);
}

HRESULT ClsShowSerch::ShowRegistros(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                    short* indx, VARIANT_BOOL* find) {
    return ShowGrid<search::FrmRegistros>(sink, data, ctl, column, indx, find);
}

HRESULT ClsShowSerch::ShowSelecDirecta(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                       short* indx, VARIANT_BOOL* find, short* modal) {
    return WithControl(sink, data, ctl, [&](contract::HostControl& control) {
        ShortInOut ownColumn(column, 0);
        ShortInOut ownIndx(indx, 0);
        BoolInOut ownFind(find, true);
        ShortInOut ownModal(modal, 1);
        frame::DefaultInstance<selection::FrmSeleccion>()->MostrarBuscando(*sink, *data, control, ownColumn,
                                                                           ownIndx, ownFind, ownModal);
    });
}

HRESULT ClsShowSerch::ShowSelecInDirecta(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                         BSTR* text, VARIANT_BOOL* find, short* modal) {
    return WithControl(sink, data, ctl, [&](contract::HostControl& control) {
        ShortInOut ownColumn(column, 0);
        TextInOut ownText(text, {});
        BoolInOut ownFind(find, true);
        ShortInOut ownModal(modal, 1);
        frame::DefaultInstance<selection::FrmSeleccion>()->MostrarBusquedaIndirecta(
            *sink, *data, control, ownColumn, ownText, ownFind, ownModal);
    });
}

HRESULT ClsShowSerch::ShowOrder(short* mode, IDispatch** sink, IDispatch** columns) {
    return Operation([&] { frame::DefaultInstance<gridconfig::FrmOrden>()->Mostrar(*mode, *sink, *columns); },
                     mode, sink, columns);
}

HRESULT ClsShowSerch::ShowRpt(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return ShowReports(reports::kRpts, cls, sink, reports);
}

HRESULT ClsShowSerch::ShowSql(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return ShowReports(reports::kSql, cls, sink, reports);
}

HRESULT ClsShowSerch::ShowEtiq(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return ShowReports(reports::kSelecEti, cls, sink, reports);
}

HRESULT ClsShowSerch::PrintEtiq(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return PrintReports(reports::kSelecEti, cls, sink, reports);
}

HRESULT ClsShowSerch::ShowRptCond(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return ShowReports(reports::kRptsCond, cls, sink, reports);
}

HRESULT ClsShowSerch::ShowRptMailCond(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return ShowReports(reports::kRptsMailCond, cls, sink, reports);
}

HRESULT ClsShowSerch::ShowRptBorrador(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return ShowReports(reports::kRptsMailCond, cls, sink, reports, nullptr, true);
}

HRESULT ClsShowSerch::ShowRptListas(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return ShowReports(reports::kRptsListas, cls, sink, reports);
}

HRESULT ClsShowSerch::ShowRptInfCond(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return ShowReports(reports::kRptsInfCond, cls, sink, reports);
}

HRESULT ClsShowSerch::ShowRptCondHr(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return ShowReports(reports::kRptsCondHr, cls, sink, reports);
}

HRESULT ClsShowSerch::ShowRptFchAuto(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                     VARIANT_BOOL* showAuto) {
    return ShowReports(reports::kRptsFchAuto, cls, sink, reports, showAuto);
}

HRESULT ClsShowSerch::ShowRptFchAutoInf(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                        VARIANT_BOOL* showAuto) {
    return ShowReports(reports::kRptsFchAutoInf, cls, sink, reports, showAuto);
}

HRESULT ClsShowSerch::ShowRptInfOrdenes(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                        VARIANT_BOOL* showAuto) {
    return ShowReports(reports::kRptsInfOrdenes, cls, sink, reports, showAuto);
}

HRESULT ClsShowSerch::ShowRptFchCliDirec(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return ShowReports(reports::kRptsFchCliDirec, cls, sink, reports);
}

HRESULT ClsShowSerch::ShowRptsInfFch(BSTR* cls, IDispatch** sink, IDispatch** reports) {
    return ShowReports(reports::kRptsInfFch, cls, sink, reports);
}

HRESULT ClsShowSerch::ShowRptNumAut(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                    VARIANT_BOOL* showAuto) {
    return ShowReports(reports::kRptNumAut, cls, sink, reports, showAuto);
}

HRESULT ClsShowSerch::PrintRptNumAut(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                     VARIANT_BOOL* showAuto) {
    return PrintReports(reports::kRptNumAut, cls, sink, reports, showAuto);
}

HRESULT ClsShowSerch::ShowSeleccionar(IDispatch** sink, IDispatch** data) {
    return ShowCriteria(selection::kSelecVenta, sink, data);
}

HRESULT ClsShowSerch::ShowSelecLab(IDispatch** sink, IDispatch** data) {
    return ShowCriteria(selection::kSelecLab, sink, data);
}

HRESULT ClsShowSerch::ShowNuevaCita(IDispatch** sink, IDispatch** data, long* hwnd, DATE* date) {
    return Operation(
        [&] {
            const auto owner = reinterpret_cast<HWND>(static_cast<LONG_PTR>(*hwnd));
            frame::DefaultInstance<dates::FrmCita>()->Mostrar(*sink, *data, owner, *date);
        },
        sink, data, hwnd, date);
}

HRESULT ClsShowSerch::ShowSelecMinim(IDispatch** sink, IDispatch** data) {
    return ShowCriteria(selection::kSelecMinim, sink, data);
}

HRESULT ClsShowSerch::ShowSeleccionarComp(IDispatch** sink, IDispatch** data) {
    return ShowCriteria(selection::kSeleccionar, sink, data);
}

HRESULT ClsShowSerch::ShowSeleccionarRecibo(IDispatch** sink, IDispatch** data) {
    return ShowCriteria(selection::kSelecRecibo, sink, data);
}

} // namespace tamvelo::entry
