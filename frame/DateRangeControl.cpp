#include "frame/DateRangeControl.h"

#include <commctrl.h>

#include <algorithm>

#include "base/Commands.h"
#include "frame/Resources.h"
#include "win/Clock.h"
#include "win/MessageHook.h"
#include "win/Picker.h"

namespace tamvelo::frame {

namespace {

constexpr wchar_t kPeriodBefore[] = L"{PERIODO_ANTERIOR}";
constexpr wchar_t kPeriodAfter[] = L"{PERIODO_SIGUIENTE}";
constexpr wchar_t kPeriodMenu[] = L"{MENU_PERIODO}";

base::Day Read(HWND picker) {
    SYSTEMTIME time{};
    DateTime_GetSystemtime(picker, &time);
    return win::DayOf(time);
}

void Write(HWND picker, base::Day day) {
    SYSTEMTIME time = win::SystemTimeOf(day);
    DateTime_SetSystemtime(picker, GDT_VALID, &time);
}

} // namespace

std::vector<win::LayoutRow> DateRangeControl::Rows() {
    return {
        {win::kOwn,
         {{IDC_LBLFECHA0}, {IDC_DTPICKER0}, {IDC_LBLFECHA1}, {IDC_DTPICKER1}, {IDC_CMDPERIODO}},
         IDC_FRMPARAM},
        {win::kOwn, {{IDC_LBLINTERVALO, win::kFill}}, IDC_FRMPARAM},
    };
}

HWND DateRangeControl::FirstFocus() const { return Control(IDC_DTPICKER0); }

base::DateRange DateRangeControl::Shown() const {
    return {Read(Control(IDC_DTPICKER0)), Read(Control(IDC_DTPICKER1))};
}

base::DateRange DateRangeControl::Range() {
    win::TakeTyped(Control(IDC_DTPICKER0));
    win::TakeTyped(Control(IDC_DTPICKER1));
    return Shown();
}

void DateRangeControl::Set(const base::DateRange& range) {
    Write(Control(IDC_DTPICKER0), range.first);
    Write(Control(IDC_DTPICKER1), range.last);
    ShowLength();
}

void DateRangeControl::ShowLength() {
    SetControlText(IDC_LBLINTERVALO, base::DescribeLength(Shown()));
    if (m_changed) {
        m_changed();
    }
}

void DateRangeControl::OnLoad() { Set(m_opening(win::Today())); }

void DateRangeControl::OnNotify(const NMHDR& header) {
    if (header.code == DTN_DATETIMECHANGE &&
        (header.idFrom == IDC_DTPICKER0 || header.idFrom == IDC_DTPICKER1)) {
        ShowLength();
    }
}

void DateRangeControl::ShowMenu() {
    std::vector<MenuItem> items;
    for (const base::DatePreset& preset : base::DatePresets()) {
        items.push_back({preset.command, preset.caption});
    }
    items.push_back({L"", nullptr});
    items.push_back({kPeriodBefore, L"Periodo anter&ior"});
    items.push_back({kPeriodAfter, L"Perio&do siguiente"});
    RunMenu(items, IDC_CMDPERIODO);
}

std::span<const KeyRow> DateRangeControl::Keys() const {
    static constexpr KeyRow kKeys[] = {{0, kCtrl | VK_PRIOR, kPeriodBefore},
                                       {0, kCtrl | VK_NEXT, kPeriodAfter},
                                       {IDC_CMDPERIODO, kClick, kPeriodMenu}};
    return kKeys;
}

bool DateRangeControl::OnCommand(std::wstring_view command) {
    if (command == kPeriodMenu) {
        ShowMenu();
        return true;
    }
    const auto presets = base::DatePresets();
    const auto preset = std::ranges::find(presets, command, &base::DatePreset::command);
    if (command == kPeriodBefore || command == kPeriodAfter) {
        Set(base::Step(Range(), command == kPeriodAfter ? 1 : -1));
    } else if (preset != presets.end()) {
        Set(preset->Of(win::Today()));
    } else {
        return false;
    }
    if (GetFocus() == Control(IDC_CMDPERIODO)) {
        SetFocus(FirstFocus()); // Enter goes on, and does not open the menu again
    }
    return true;
}

} // namespace tamvelo::frame
