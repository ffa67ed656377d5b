#pragma once

#include <string>

namespace tamvelo::frame {

/// The text of a layout file. Throws com::Error with the reason and the file's name: missing, locked, too
/// large.
std::string ReadLayoutFile(const std::wstring& path);

/// Writes a layout file whole or not at all: to a temporary name beside it, then renamed. Makes the folder if
/// need be. Throws com::Error with the reason and the file's name.
void WriteLayoutFile(const std::wstring& path, const std::string& text);

} // namespace tamvelo::frame
