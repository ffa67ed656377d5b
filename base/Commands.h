#pragma once

#include <array>
#include <string_view>

/// The command identifiers that tools, keys and buttons feed to a form's dispatcher (compared exactly), and
/// the toolbar bands that group the tools.
namespace tamvelo::base {

inline constexpr wchar_t kAceptar[] = L"ID_Aceptar";
inline constexpr wchar_t kCancelar[] = L"ID_Cancelar";
inline constexpr wchar_t kCerrar[] = L"ID_Cerrar";
inline constexpr wchar_t kNuevo[] = L"ID_Nuevo";
inline constexpr wchar_t kModificar[] = L"ID_Modificar";
inline constexpr wchar_t kEliminar[] = L"ID_Eliminar";
inline constexpr wchar_t kMoveFirst[] = L"ID_MoveFirst";
inline constexpr wchar_t kMovePre[] = L"ID_MovePre";
inline constexpr wchar_t kMoveNext[] = L"ID_MoveNext";
inline constexpr wchar_t kMoveLast[] = L"ID_MoveLast";
inline constexpr wchar_t kImprimir[] = L"ID_Imprimir";
inline constexpr wchar_t kPreliminar[] = L"ID_Preliminar";
inline constexpr wchar_t kRegistro[] = L"ID_Registro";
inline constexpr wchar_t kOrdenAsc[] = L"ID_OrdenAsc";
inline constexpr wchar_t kOrdenDesc[] = L"ID_OrdenDesc";
inline constexpr wchar_t kFiltro[] = L"ID_Filtro";
inline constexpr wchar_t kFiltrar[] = L"ID_Filtrar";

inline constexpr std::array<std::wstring_view, 17> kAll = {
    kAceptar,  kCancelar, kCerrar,     kNuevo,    kModificar, kEliminar,  kMoveFirst, kMovePre, kMoveNext,
    kMoveLast, kImprimir, kPreliminar, kRegistro, kOrdenAsc,  kOrdenDesc, kFiltro,    kFiltrar,
};

inline constexpr wchar_t kBandRegistros[] = L"Registros";
inline constexpr wchar_t kBandRegistro[] = L"Registro";
inline constexpr wchar_t kBandEdicion[] = L"Edición";

} // namespace tamvelo::base
