#include "frame/DateRangeControl.h"

#include <commctrl.h>

#include "frame/Resources.h"
#include "win/Clock.h"
#include "win/MessageHook.h"
#include "win/Picker.h"

namespace tamvelo::frame {

namespace {

constexpr wchar_t kPeriod[] = L"{PERIODO}"; // which one: its place among the presets
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

std::vector<win::LayoutRow> DateRangeControl::Layout() {
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
    Host().SetControlText(IDC_LBLINTERVALO, base::DescribeLength(Shown()));
    if (m_changed) {
        m_changed();
    }
}

void DateRangeControl::OnLoad() { Set(m_opening(win::Today())); }

bool DateRangeControl::OnNotify(NMHDR& header, LRESULT& /*answer*/) {
    if (header.code == DTN_DATETIMECHANGE &&
        (header.idFrom == IDC_DTPICKER0 || header.idFrom == IDC_DTPICKER1)) {
        ShowLength();
    }
    return false;
}

std::span<const KeyRow> DateRangeControl::Keys() const {
    static constexpr KeyRow kKeys[] = {{0, kCtrl | VK_PRIOR, kPeriodBefore},
                                       {0, kCtrl | VK_NEXT, kPeriodAfter},
                                       {IDC_CMDPERIODO, kClick, kPeriodMenu}};
    return kKeys;
}

std::span<const CommandRow> DateRangeControl::Commands() const {
    using C = DateRangeControl;
    static constexpr CommandRow kCommands[] = {
        {kPeriodMenu, Do<&C::ShowMenu>},
        {kPeriod, Do<&C::ChoosePreset>},
        {kPeriodBefore, Do<&C::GoToPeriodBefore>},
        {kPeriodAfter, Do<&C::GoToPeriodAfter>},
    };
    return kCommands;
}

void DateRangeControl::ShowMenu() {
    std::vector<MenuItem> items;
    for (const base::DatePreset& preset : base::DatePresets()) {
        items.push_back({kPeriod, preset.caption, static_cast<int>(items.size())});
    }
    items.push_back({L"", nullptr});
    items.push_back({kPeriodBefore, L"Periodo anter&ior"});
    items.push_back({kPeriodAfter, L"Perio&do siguiente"});
    Host().RunMenu(items, IDC_CMDPERIODO);
}

void DateRangeControl::ChoosePreset(int preset) {
    Choose(base::DatePresets()[static_cast<size_t>(preset)].Of(win::Today()));
}

void DateRangeControl::Choose(const base::DateRange& range) {
    Set(range);
    if (GetFocus() == Control(IDC_CMDPERIODO)) {
        SetFocus(FirstFocus()); // Enter goes on, and does not open the menu again
    }
}

} // namespace tamvelo::frame
