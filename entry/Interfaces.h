#pragma once

#include "com/WinHeaders.h"

namespace tamvelo::entry {

/// The public class as an early-bound host sees it: the operations in the order of the type library. Objects
/// and strings belong to the caller; a null pointer stands for an optional argument that was left out.
struct IClsShowSerch : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE ShowSelecDate(IDispatch** sink) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowBuscar(IDispatch** sink, IDispatch** data, IDispatch** columns) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowColums(IDispatch** sink, IDispatch** columns) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSelec(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                short* column, short* indx, VARIANT_BOOL* find,
                                                VARIANT_BOOL* stock) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSelecNoVerif(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                       short* column, short* indx, VARIANT_BOOL* find,
                                                       VARIANT_BOOL* stock) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSelecVerif(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                     short* column, short* indx, VARIANT_BOOL* find,
                                                     VARIANT_BOOL* stock) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSelecControlVerif(IDispatch** sink, IDispatch** data,
                                                            IDispatch** ctl, short* column, short* indx,
                                                            VARIANT_BOOL* find, VARIANT_BOOL* stock) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSelecTrueFalse(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                         short* column, short* indx, VARIANT_BOOL* find) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSelecAdd(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                   short* column, short* indx, VARIANT_BOOL* find) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRegistros(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                    short* column, short* indx, VARIANT_BOOL* find) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSelecDirecta(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                       short* column, short* indx, VARIANT_BOOL* find,
                                                       short* modal) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSelecInDirecta(IDispatch** sink, IDispatch** data, IDispatch** ctl,
                                                         short* column, BSTR* text, VARIANT_BOOL* find,
                                                         short* modal) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowOrder(short* mode, IDispatch** sink, IDispatch** columns) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRpt(BSTR* cls, IDispatch** sink, IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSql(BSTR* cls, IDispatch** sink, IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowEtiq(BSTR* cls, IDispatch** sink, IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE PrintEtiq(BSTR* cls, IDispatch** sink, IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptCond(BSTR* cls, IDispatch** sink, IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptMailCond(BSTR* cls, IDispatch** sink, IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptBorrador(BSTR* cls, IDispatch** sink, IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptListas(BSTR* cls, IDispatch** sink, IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptInfCond(BSTR* cls, IDispatch** sink, IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptCondHr(BSTR* cls, IDispatch** sink, IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptFchAuto(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                                     VARIANT_BOOL* showAuto) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptFchAutoInf(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                                        VARIANT_BOOL* showAuto) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptInfOrdenes(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                                        VARIANT_BOOL* showAuto) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptFchCliDirec(BSTR* cls, IDispatch** sink,
                                                         IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptsInfFch(BSTR* cls, IDispatch** sink, IDispatch** reports) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowRptNumAut(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                                    VARIANT_BOOL* showAuto) = 0;
    virtual HRESULT STDMETHODCALLTYPE PrintRptNumAut(BSTR* cls, IDispatch** sink, IDispatch** reports,
                                                     VARIANT_BOOL* showAuto) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSeleccionar(IDispatch** sink, IDispatch** data) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSelecLab(IDispatch** sink, IDispatch** data) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowNuevaCita(IDispatch** sink, IDispatch** data, long* hwnd,
                                                    DATE* date) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSelecMinim(IDispatch** sink, IDispatch** data) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSeleccionarComp(IDispatch** sink, IDispatch** data) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShowSeleccionarRecibo(IDispatch** sink, IDispatch** data) = 0;
};

/// The DISPID of the first operation; the others follow in order.
inline constexpr DISPID kFirstOperation = 0x60030000;

inline constexpr GUID kLibraryId{
    0x283a5031, 0xa929, 0x41d5, {0x87, 0xcb, 0x3a, 0x29, 0x5c, 0xa1, 0x3e, 0x47}};
inline constexpr CLSID kClsShowSerchId{
    0x043d9058, 0x66c9, 0x47c8, {0xb6, 0xb5, 0x86, 0xe7, 0x43, 0xaf, 0x17, 0x3d}};

} // namespace tamvelo::entry

__CRT_UUID_DECL(tamvelo::entry::IClsShowSerch, 0xdc1603ac, 0x63cf, 0x4adb, 0xa9, 0x6d, 0xb0, 0x63, 0x21, 0x42,
                0x71, 0xc5)
