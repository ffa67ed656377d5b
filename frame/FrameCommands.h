#pragma once

#include "frame/Commands.h"

namespace tamvelo::frame {

class Form;

/// What every form can do, and the keys for it.
class FrameCommands final : public CommandTarget {
public:
    explicit FrameCommands(Form& form) : m_form(form) {}
    std::span<const KeyRow> Keys() const override;
    std::span<const CommandRow> Commands() const override;

private:
    void Close();
    void GoToNextControl();
    void CustomizeToolbar();
    void ShowEditingBandOnly();

    Form& m_form;
};

} // namespace tamvelo::frame
