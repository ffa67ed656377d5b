#pragma once

#include <span>

namespace tamvelo::selection {

/// What distinguishes one criteria dialog from another. The form's code is the same for all.
struct CriteriaDesign {
    const wchar_t* name;
    const wchar_t* caption;
    /// The selections that the look-ups of the fields are prepared with: one for each field that has a
    /// related class, in the fields' order.
    std::span<const wchar_t* const> selections;
    bool comparisons = false; // dates and numbers may also be bounds
    bool yesNoLists = false;  // yes/no fields are chosen from a list
};

extern const CriteriaDesign kSelecVenta;
extern const CriteriaDesign kSeleccionar;
extern const CriteriaDesign kSelecMinim;
extern const CriteriaDesign kSelecLab;
extern const CriteriaDesign kSelecRecibo;

} // namespace tamvelo::selection
