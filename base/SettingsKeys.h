#pragma once

#include <string>
#include <string_view>

/// Paths of the settings keys. They are relative to the root that the settings object keeps them under.
namespace tamvelo::base {

/// The key of one form's placement and choices; ends in a backslash.
std::wstring FormKey(std::wstring_view company, std::wstring_view product, int major, int minor,
                     std::wstring_view form);

/// A key that every product of the company shares; `path` is one of the kSesion... below.
std::wstring SesionKey(std::wstring_view company, std::wstring_view path);

/// Whether a text that came from the host may be the name of one key: it may hold anything but what separates
/// keys or ends a text.
bool IsKeyName(std::wstring_view text);

inline constexpr wchar_t kSesionTerminal[] = L"Terminal";
inline constexpr wchar_t kSesionClientes[] = L"Clientes";
inline constexpr wchar_t kSesionOrdenes[] = L"Ordenes";
inline constexpr wchar_t kSesionOrdenesInformes[] = L"Ordenes\\Informes";
inline constexpr wchar_t kSesionPersonalClientes[] = L"Personal\\Clientes";

} // namespace tamvelo::base
