#include "selection/Criteria.h"

#include "base/FilterText.h"

namespace tamvelo::selection {

namespace {

using base::kSelecc;
using base::kSeleccion;
using base::kSeleccionMixta;

constexpr const wchar_t* kOfVenta[] = {kSeleccion, kSeleccionMixta, kSeleccion};
constexpr const wchar_t* kOfComp[] = {kSeleccionMixta, kSeleccion, kSeleccion};
constexpr const wchar_t* kOfMinim[] = {kSeleccion, kSeleccion, kSelecc, kSeleccion};
constexpr const wchar_t* kOfLab[] = {kSeleccion, kSeleccionMixta, kSelecc, kSeleccion};
constexpr const wchar_t* kOfRecibo[] = {kSeleccion, kSeleccion, kSeleccion};

} // namespace

const CriteriaDesign kSelecVenta{L"frmSelecVenta", L"Criterios de ventas", kOfVenta};
const CriteriaDesign kSeleccionar{L"frmSeleccionar", L"Criterios de compras", kOfComp};
const CriteriaDesign kSelecMinim{L"frmSelecMinim", L"Criterios de mínimos", kOfMinim, true};
const CriteriaDesign kSelecLab{L"frmSelecLab", L"Criterios de laboratorio", kOfLab, true, true};
const CriteriaDesign kSelecRecibo{L"frmSelecRecibo", L"Criterios de recibos", kOfRecibo, true};

} // namespace tamvelo::selection
