#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "contract/DataClass.h"
#include "frame/FormPart.h"
#include "win/EditWatch.h"

namespace tamvelo::frame {

/// Text boxes that the host's data class checks: each character before it is typed, and the whole text when
/// the box is left. A refused value calls the focus back; a check that fails is reported and lets the user
/// go. The dialog may close with a refused value in a box.
class CheckedBoxes final : public FormPart {
public:
    /// What a form adds for a box; any may be empty.
    struct Hooks {
        std::function<bool()> checked;                        // whether the host is asked at all just now
        std::function<bool(const std::wstring& text)> pasted; // as EditWatch has it
        std::function<void(bool valid)> judged;               // after the value was checked
    };

    /// `data` is the form's own, which it may let go of at any time.
    CheckedBoxes(Form& form, contract::DataClass& data) : FormPart(form), m_data(data) {}

    void Add(com::ComPtr<objects::ControlObject> box, Hooks hooks = {});
    /// Checks what was left and not checked yet, before a command that must not run otherwise. False when a
    /// box called the focus back or the form is gone.
    bool Settle();
    /// The same, and the box that is being typed into counts as left.
    bool SettleAll();

private:
    struct Box {
        com::ComPtr<objects::ControlObject> object;
        Hooks hooks;
        std::shared_ptr<win::EditWatch> watch;
    };
    void Typed(const Box& box, wchar_t& letter);
    bool Left(const Box& box);
    bool Judge(const Box& box);
    void OnUnload() noexcept override { m_boxes.clear(); }

    contract::DataClass& m_data;
    std::vector<std::shared_ptr<Box>> m_boxes;
};

} // namespace tamvelo::frame
