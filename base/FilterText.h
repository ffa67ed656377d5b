#pragma once

#include <span>
#include <string>

namespace tamvelo::base {

/// What a search box holds when it asks for every record: it makes no filter.
inline constexpr wchar_t kAnyText[] = L"*";

/// Slots under which the data class keeps a filter: the first for the search panel and the pick dialogs, the
/// second for the panels with a grid.
inline constexpr wchar_t kSlotFilter[] = L"Filter";
inline constexpr wchar_t kSlotFilterSelec[] = L"FilterSelec";

/// Names of the record selections that a panel asks of the data class.
inline constexpr wchar_t kSeleccion[] = L"seleccion";
inline constexpr wchar_t kSeleccionar[] = L"seleccionar";
inline constexpr wchar_t kSeleccionStock[] = L"seleccion_stock";
inline constexpr wchar_t kSelec[] = L"selec";
/// What the look-ups of the criteria dialogs are prepared with, besides the first.
inline constexpr wchar_t kSeleccionMixta[] = L"seleccionmixta";
inline constexpr wchar_t kSelecc[] = L"selecc";

/// One filter from the fragments of the search boxes, in box order, joined with " And "; empty ones are
/// skipped.
std::wstring JoinAnd(std::span<const std::wstring> fragments);

} // namespace tamvelo::base
