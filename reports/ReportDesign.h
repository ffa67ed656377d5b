#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "base/PeriodName.h"
#include "contract/Sink.h"
#include "frame/Form.h"
#include "frame/Lookup.h"

namespace tamvelo::reports {

class ReportForm;

/// A condition that the host applies to the reports: a control with its label in the frame below the list.
struct Condition {
    enum class Kind { Text, Hour, Choice, Check, Button };
    Kind kind;
    short index; // in its control array: TxtFields (also hours), CmbFields, chkFields or Command
    const wchar_t* caption;
    const wchar_t* opening = L""; // the text, or the entry that is selected; any text ticks a check box
    std::span<const wchar_t* const> entries = {};
    int width = 60;                // of the control, in dialog units
    const wchar_t* note = nullptr; // stands after the control
    frame::Lookup lookup = {};     // opened by a button beside it, or by the button that it is
    bool beside = false;           // on the same row as the condition before
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
    /// The user changed a condition.
    void (*changed)(ReportForm& form, const Condition& condition) = nullptr;
    /// Keeps what is the dialog's own, when the choices are saved.
    void (*save)(ReportForm& form) = nullptr;

    std::span<const frame::KeyRow> keys = {};
};

} // namespace tamvelo::reports
