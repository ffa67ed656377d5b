#include "search/ModeOptions.h"

#include "search/Resources.h"

namespace tamvelo::search {

using namespace frame::tables;

namespace {

constexpr wchar_t kChooseMode[] = L"{MODO}";
constexpr wchar_t kNextMode[] = L"{MODO_SIGUIENTE}";
constexpr wchar_t kPreviousMode[] = L"{MODO_ANTERIOR}";

constexpr frame::Controls kOptions{IDC_OPTBUSCAR0, IDC_OPTBUSCAR4};

} // namespace

std::span<const KeyRow> ModeOptions::Keys() const {
    static constexpr KeyRow kKeys[] = {
        {0, kCtrl | '1', kChooseMode, IDC_OPTBUSCAR0},
        {0, kCtrl | '2', kChooseMode, IDC_OPTBUSCAR1},
        {0, kCtrl | '3', kChooseMode, IDC_OPTBUSCAR2},
        {0, kCtrl | '4', kChooseMode, IDC_OPTBUSCAR3},
        {0, kCtrl | '5', kChooseMode, IDC_OPTBUSCAR4},
        // The system would choose and so send the focus to a box: the arrows could not go on to the next.
        {kOptions, VK_RIGHT, kNextMode},
        {kOptions, VK_DOWN, kNextMode},
        {kOptions, VK_LEFT, kPreviousMode},
        {kOptions, VK_UP, kPreviousMode},
        {kOptions, kClick, kChooseMode},
    };
    return kKeys;
}

std::span<const CommandRow> ModeOptions::Commands() const {
    using M = ModeOptions;
    static constexpr CommandRow kCommands[] = {
        {kChooseMode, Do<&M::Choose>},
        {kNextMode, Do<&M::ChooseNext>},
        {kPreviousMode, Do<&M::ChoosePrevious>},
    };
    return kCommands;
}

void ModeOptions::OnLoad() {
    for (int option = 0; option < kCount; ++option) {
        RECT place{};
        GetWindowRect(Control(IDC_OPTBUSCAR0 + option), &place);
        MapWindowPoints(nullptr, Control(IDC_FRMOPTION), reinterpret_cast<POINT*>(&place), 1);
        m_places[option] = {place.left, place.top};
    }
    ShowChosen();
}

void ModeOptions::Choose(int option) { m_chosen(option - IDC_OPTBUSCAR0, true); }

void ModeOptions::Set(int mode) {
    m_mode = mode;
    if (IsLoaded()) {
        ShowChosen();
    }
}

void ModeOptions::ShowChosen() const {
    CheckRadioButton(Host().Window(), IDC_OPTBUSCAR0, IDC_OPTBUSCAR4, IDC_OPTBUSCAR0 + m_mode);
}

void ModeOptions::OnControl(int control, int code) {
    if (kOptions.Has(control) && code == BN_CLICKED) {
        ShowChosen(); // one that is clicked shows itself as chosen
    }
}

HWND ModeOptions::Option() const { return Control(IDC_OPTBUSCAR0 + m_mode); }

void ModeOptions::Show(bool shown) {
    Host().ShowControl(IDC_FRMOPTION, shown);
    for (int option = 0; option < kCount; ++option) {
        Host().ShowControl(IDC_OPTBUSCAR0 + option, shown);
    }
}

void ModeOptions::Place() const {
    for (int option = 0; option < kCount; ++option) {
        POINT place = m_places[option];
        MapWindowPoints(Control(IDC_FRMOPTION), Host().Window(), &place, 1);
        SetWindowPos(Control(IDC_OPTBUSCAR0 + option), nullptr, place.x, place.y, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

} // namespace tamvelo::search
