#pragma once

#include <optional>
#include <span>

#include "base/PeriodName.h"
#include "contract/Sink.h"
#include "frame/FieldRows.h"

namespace tamvelo::reports {

class ReportForm;

/// A condition that the host applies to the reports: a row of the frame below the list.
using Condition = frame::Field;

/// A text condition that is kept from one use to the next.
struct KeptText {
    short index; // TxtFields(index)
    const wchar_t* name;
    const wchar_t* sesion = nullptr; // of the keys of a session; null: it is kept with the screen's choices
    bool (*applies)(const ReportForm& form) = nullptr; // null: on every screen
    bool eachTime = false;                             // read whenever the dialog is shown
};

/// What distinguishes one report dialog from another. The form's code is the same for all.
struct ReportDesign {
    const wchar_t* name;
    const wchar_t* caption;
    /// Hands the result to the host's sink; reads the conditions from the form.
    void (*deliver)(ReportForm& form, contract::ReportChoice& choice);

    bool output = true; // output list, copies box and printer button
    std::span<const wchar_t* const> ownOutputs = {};
    /// Whether copies and printer belong to the output that is called "Impresora" wherever it stands, instead
    /// of to the first.
    bool printerByName = false;
    bool labels = false; // the list holds labels, not reports

    bool dates = false;
    std::span<const Condition> conditions = {};
    const wchar_t* note = nullptr;
    /// What of the dates stands beside the title of the selected report, in a line of its own.
    std::optional<base::PeriodParts> period = {};

    /// When the form is loaded, after the conditions got their opening values.
    void (*prepare)(ReportForm& form) = nullptr;
    /// Each time it is shown, after the choices were restored.
    void (*opened)(ReportForm& form) = nullptr;
    /// Another entry of the list is the selected one, by keys or by a click on it or on its tick.
    void (*chosen)(ReportForm& form, int entry) = nullptr;
    std::optional<KeptText> kept = {};
    std::span<const frame::KeyRow> keys = {};
};

} // namespace tamvelo::reports
