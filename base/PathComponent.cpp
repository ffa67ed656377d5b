#include "base/PathComponent.h"

#include <algorithm>
#include <array>

#include "base/Text.h"

namespace tamvelo::base {

namespace {

constexpr std::size_t kMaxLength = 120;
constexpr std::wstring_view kForbidden = L"\\/:*?\"<>|";
constexpr std::array<std::wstring_view, 6> kDevices = {L"con", L"prn", L"aux", L"nul", L"conin$", L"conout$"};
constexpr std::array<std::wstring_view, 2> kNumberedDevices = {L"com", L"lpt"};
constexpr std::wstring_view kDeviceDigits = L"0123456789\u00B9\u00B2\u00B3"; // superscripts count for Windows

/// Windows takes "con.txt" and "con .txt" for the device too.
bool IsDeviceName(std::wstring_view text) {
    const std::wstring stem = Lower(Trim(text.substr(0, text.find(L'.'))));
    if (std::ranges::find(kDevices, stem) != kDevices.end()) {
        return true;
    }
    return stem.size() == 4 && kDeviceDigits.find(stem[3]) != std::wstring_view::npos &&
           std::ranges::find(kNumberedDevices, stem.substr(0, 3)) != kNumberedDevices.end();
}

} // namespace

bool IsPlainPathComponent(std::wstring_view text) {
    if (text.empty() || text.size() > kMaxLength || text.ends_with(L'.') || text.ends_with(L' ')) {
        return false;
    }
    const auto forbidden = [](wchar_t c) {
        return c < 0x20 || c == 0x7F || kForbidden.find(c) != std::wstring_view::npos;
    };
    return std::ranges::none_of(text, forbidden) && !IsDeviceName(text);
}

} // namespace tamvelo::base
