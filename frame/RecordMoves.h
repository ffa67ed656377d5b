#pragma once

#include "contract/DataClass.h"
#include "frame/FormPart.h"

namespace tamvelo::frame {

/// Walking through the host's records in a form that shows none: the four commands, and their keys with Ctrl,
/// so that boxes and lists keep the plain ones. Ctrl+Enter accepts from everywhere.
class RecordMoves final : public FormPart {
public:
    /// `data` is the form's own.
    RecordMoves(Form& form, contract::DataClass& data) : FormPart(form), m_data(data) {}

private:
    std::span<const KeyRow> Keys() const override;
    std::span<const CommandRow> Commands() const override;
    void MoveFirst() { m_data.MoveFirst(); }
    void MovePrevious() { m_data.MovePrevious(); }
    void MoveNext() { m_data.MoveNext(); }
    void MoveLast() { m_data.MoveLast(); }

    contract::DataClass& m_data;
};

} // namespace tamvelo::frame
