#pragma once

#include <vector>

#include "base/SelectionAnswers.h"
#include "frame/SearchStrip.h"

namespace tamvelo::frame {

/// How a form with a grid hands the record that the user wants to the host's sink, and goes.
class RecordAnswer final : public FormPart {
public:
    RecordAnswer(Form& form, RecordRequest& request, RecordGrid& grid, SearchStrip& search)
        : FormPart(form), m_request(request), m_grid(grid), m_search(search) {}

    /// "ID_Aceptar": whether the current record is what the user wants now. What was typed in the box and not
    /// searched yet is searched first, and meant only when it leaves one record.
    bool HasRecord();
    /// Those of the current record that the answer carries.
    std::vector<com::Variant> TextsFor(const base::Answer& answer);
    /// Hands the current record to the sink; for Deliver and Accept.
    void Send(const base::Answer& answer);
    /// From here on the column is one of the grid's.
    void ClampColumn();
    /// What accepting comes to: hides the form, runs `tell`, which calls the sink, and unloads. If the sink
    /// fails the form comes back as it was, with the records read again.
    template <class Tell>
    void Deliver(const Tell& tell) {
        Host().Deliver([&] { Call(tell); });
    }
    /// The same in a selection panel, which takes the filter away afterwards.
    template <class Tell>
    void DeliverSelection(const Tell& tell) {
        ClampColumn();
        Host().Deliver([&] {
            Call(tell);
            if (IsLoaded()) {
                // The record is delivered: whatever becomes of the filter, the panel has done its work.
                Host().Tried([&] { m_request.data.AplyFilter(L""); });
            }
        });
    }

private:
    std::span<const CommandRow> Commands() const override;
    /// A double click on a record of a class that gets a code for it.
    void DeliverCode();
    template <class Tell>
    void Call(const Tell& tell) {
        m_grid.AskHost(tell);
        m_request.TakeControlBack();
    }

    RecordRequest& m_request;
    RecordGrid& m_grid;
    SearchStrip& m_search;
};

} // namespace tamvelo::frame
