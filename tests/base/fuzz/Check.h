#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Text.h"

inline void Check(bool good) {
    if (!good) {
        std::abort();
    }
}

/// Text from outside may be anything: what is no UTF-8 becomes a character for each byte.
inline std::wstring AnyText(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (auto text = tamvelo::base::FromUtf8(bytes)) {
        Check(tamvelo::base::ToUtf8(*text) == bytes);
        return *text;
    }
    return {data, data + size};
}

/// Whatever a layout file holds, reading it must not fail, and what it was read as must survive being
/// written.
template <class Layout, class Parse, class Format>
void CheckRoundTrip(const std::uint8_t* data, std::size_t size, std::string_view title, Parse parse,
                    Format format) {
    // Half of the inputs get the title, or hardly any would come past the first line.
    std::string text(data, data + size);
    if (size % 2 == 0) {
        text.insert(0, std::string(title) + "\n");
    }
    const auto first = parse(text);
    if (const auto* layout = std::get_if<Layout>(&first)) {
        const auto second = parse(format(*layout));
        const auto* again = std::get_if<Layout>(&second);
        Check(again != nullptr && *again == *layout);
    }
}
