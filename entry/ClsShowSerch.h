#pragma once

#include "com/Object.h"
#include "entry/Interfaces.h"

namespace tamvelo::entry {

/// The public class. It holds nothing of a dialog: each operation takes the calling thread's instance of its
/// form and hands it the host's arguments.
class ClsShowSerch final : public com::Object<IClsShowSerch, ISupportErrorInfo, IProvideClassInfo> {
public:
    /// Throws com::Error when the library's own description cannot be read.
    ClsShowSerch();

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* thrown,
                                     UINT* wrong) override;
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override;
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;

    HRESULT STDMETHODCALLTYPE ShowSelecDate(IDispatch** sink) override;
    HRESULT STDMETHODCALLTYPE ShowBuscar(IDispatch** sink, IDispatch** data, IDispatch** columns) override;
    HRESULT STDMETHODCALLTYPE ShowColums(IDispatch** sink, IDispatch** columns) override;
    HRESULT STDMETHODCALLTYPE ShowSelec(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                        short* indx, VARIANT_BOOL* find, VARIANT_BOOL* stock) override;
    HRESULT STDMETHODCALLTYPE ShowSelecNoVerif(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                               short* column, short* indx, VARIANT_BOOL* find,
                                               VARIANT_BOOL* stock) override;
    HRESULT STDMETHODCALLTYPE ShowSelecVerif(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                             short* column, short* indx, VARIANT_BOOL* find,
                                             VARIANT_BOOL* stock) override;
    HRESULT STDMETHODCALLTYPE ShowSelecControlVerif(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                    short* column, short* indx, VARIANT_BOOL* find,
                                                    VARIANT_BOOL* stock) override;
    HRESULT STDMETHODCALLTYPE ShowSelecTrueFalse(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                 short* column, short* indx, VARIANT_BOOL* find) override;
    HRESULT STDMETHODCALLTYPE ShowSelecAdd(IDispatch** sink, IDispatch** data, IDispatch** ctl, short* column,
                                           short* indx, VARIANT_BOOL* find) override;
    HRESULT STDMETHODCALLTYPE ShowRegistros(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                            short* column, short* indx, VARIANT_BOOL* find) override;
    HRESULT STDMETHODCALLTYPE ShowSelecDirecta(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                               short* column, short* indx, VARIANT_BOOL* find,
                                               short* modal) override;
    HRESULT STDMETHODCALLTYPE ShowSelecInDirecta(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                 short* column, BSTR* text, VARIANT_BOOL* find,
                                                 short* modal) override;
    HRESULT STDMETHODCALLTYPE ShowOrder(short* mode, IDispatch** sink, IDispatch** columns) override;
    HRESULT STDMETHODCALLTYPE ShowRpt(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ShowSql(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ShowEtiq(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE PrintEtiq(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ShowRptCond(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ShowRptMailCond(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ShowRptBorrador(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ShowRptListas(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ShowRptInfCond(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ShowRptCondHr(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ShowRptFchAuto(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                             VARIANT_BOOL* showAuto) override;
    HRESULT STDMETHODCALLTYPE ShowRptFchAutoInf(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                                VARIANT_BOOL* showAuto) override;
    HRESULT STDMETHODCALLTYPE ShowRptInfOrdenes(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                                VARIANT_BOOL* showAuto) override;
    HRESULT STDMETHODCALLTYPE ShowRptFchCliDirec(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ShowRptsInfFch(BSTR* cls, IDispatch** sink, IDispatch** reports) override;
    HRESULT STDMETHODCALLTYPE ShowRptNumAut(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                            VARIANT_BOOL* showAuto) override;
    HRESULT STDMETHODCALLTYPE PrintRptNumAut(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                             VARIANT_BOOL* showAuto) override;
    HRESULT STDMETHODCALLTYPE ShowSeleccionar(IDispatch** sink, IDispatch** data) override;
    HRESULT STDMETHODCALLTYPE ShowSelecLab(IDispatch** sink, IDispatch** data) override;
    HRESULT STDMETHODCALLTYPE ShowNuevaCita(IDispatch** sink, IDispatch** data, long* hwnd,
                                            DATE* date) override;
    HRESULT STDMETHODCALLTYPE ShowSelecMinim(IDispatch** sink, IDispatch** data) override;
    HRESULT STDMETHODCALLTYPE ShowSeleccionarComp(IDispatch** sink, IDispatch** data) override;
    HRESULT STDMETHODCALLTYPE ShowSeleccionarRecibo(IDispatch** sink, IDispatch** data) override;

private:
    com::ComPtr<ITypeInfo> m_description;
};

} // namespace tamvelo::entry
