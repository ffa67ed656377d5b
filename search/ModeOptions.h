#pragma once

#include <functional>

#include "base/SearchModes.h"
#include "frame/FormPart.h"

namespace tamvelo::search {

/// The options that say how the typed values compare, side by side in their frame; Ctrl and a number choose
/// one from everywhere.
class ModeOptions final : public frame::FormPart {
public:
    static constexpr int kCount = static_cast<int>(base::kSearchModes.size());

    /// `chosen` is asked to Set the mode; `enter`: the user is done with choosing, and goes on to typing.
    ModeOptions(frame::Form& form, std::function<void(int mode, bool enter)> chosen)
        : FormPart(form), m_chosen(std::move(chosen)) {}

    int Chosen() const { return m_mode; }
    const base::SearchMode& Mode() const { return base::kSearchModes.at(static_cast<size_t>(m_mode)); }
    void Set(int mode);
    HWND Option() const;
    void Show(bool shown);
    /// After the frame around them moved.
    void Place() const;

private:
    void OnLoad() override;
    void OnControl(int control, int code) override;
    std::span<const frame::KeyRow> Keys() const override;
    std::span<const frame::CommandRow> Commands() const override;
    void Choose(int option);
    void ChooseNext() { m_chosen((m_mode + 1) % kCount, false); }
    void ChoosePrevious() { m_chosen((m_mode + kCount - 1) % kCount, false); }
    void ShowChosen() const;

    const std::function<void(int mode, bool enter)> m_chosen;
    int m_mode = 0;
    POINT m_places[kCount] = {}; // in the frame
};

} // namespace tamvelo::search
