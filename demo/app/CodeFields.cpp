#include "demo/app/CodeFields.h"

#include <windowsx.h>

#include <algorithm>
#include <iterator>

#include "demo/app/Accessible.h"
#include "demo/app/Resources.h"
#include "demo/data/Tables.h"

namespace tamvelo::demo {

namespace {

struct Field {
    int box;
    const wchar_t* className; // null: the table chosen in the form

    constexpr int Button() const { return box + 1; }
    constexpr int Name() const { return box + 2; }
};

constexpr Field kFields[] = {
    {IDC_ORDEN, L"Ordenes"},      {IDC_CLIENTE, L"clientes"},   {IDC_DIRECCION, L"clientes_direcciones"},
    {IDC_ARTICULO, L"articulos"}, {IDC_FAMILIA, L"familias"},   {IDC_PROVEEDOR, L"proveedores"},
    {IDC_IMPUESTO, L"impuestos"}, {IDC_EMPLEADO, L"empleados"}, {IDC_VALOR, nullptr},
};
} // namespace

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

void CodeFields::Attach(HWND window) {
    m_window = window;
    for (const Field& field : kFields) {
        const TableInfo* const table = field.className ? FindTable(field.className) : nullptr;
        SetAccessibleName(GetDlgItem(m_window, field.Button()),
                          L"Seleccionar en " + (table ? std::wstring(table->title) : L"la tabla"));
    }
}

std::size_t CodeFields::Count() { return std::size(kFields); }

std::optional<std::size_t> CodeFields::At(int control) {
    const auto found = std::ranges::find_if(
        kFields, [&](const Field& f) { return f.box == control || f.Button() == control; });
    return found != std::end(kFields) ? std::optional(static_cast<std::size_t>(found - kFields))
                                      : std::nullopt;
}

bool CodeFields::IsButton(int control) {
    return std::ranges::find(kFields, control, &Field::Button) != std::end(kFields);
}

HWND CodeFields::Name(std::size_t field) const { return GetDlgItem(m_window, kFields[field].Name()); }

HWND CodeFields::Box(std::size_t field) const { return GetDlgItem(m_window, kFields[field].box); }

std::size_t CodeFields::For(std::wstring_view className) const {
    const TableInfo* const wanted = FindTable(className);
    for (std::size_t i = 0; i < Value(); ++i) {
        if (FindTable(kFields[i].className) == wanted) {
            return i;
        }
    }
    ComboBox_SetCurSel(GetDlgItem(m_window, IDC_TABLA), static_cast<int>(wanted - Tables().data()));
    return Value();
}

void CodeFields::Type(std::size_t field, const std::wstring& text) const {
    const HWND box = Box(field);
    SetWindowTextW(box, text.c_str());
    SetFocus(box);
}

void CodeFields::Clear() const {
    for (const Field& field : kFields) {
        SetDlgItemTextW(m_window, field.box, L"");
    }
}

std::wstring CodeFields::ClassOf(std::size_t field) const {
    if (const wchar_t* const fixed = kFields[field].className) {
        return fixed;
    }
    const int chosen = ComboBox_GetCurSel(GetDlgItem(m_window, IDC_TABLA));
    return std::wstring(Tables()[static_cast<std::size_t>(chosen)].className);
}

void CodeFields::ShowName(std::size_t field) const {
    const std::wstring code = TextOf(Box(field));
    Tell(field, NameFor(field, code).value_or(L"").c_str());
}

std::optional<std::wstring> CodeFields::NameFor(std::size_t field, const std::wstring& code) const {
    if (code.empty()) {
        return L"";
    }
    const TableInfo& table = *FindTable(ClassOf(field));
    Statement look(*m_database, L"select " + std::wstring(table.columns[1].field) + L" from " +
                                    std::wstring(table.sqlName) + L" where " +
                                    std::wstring(table.Code().field) + L" = ?");
    look.Bind(1, demo::Value(code));
    if (!look.Step()) {
        return std::nullopt;
    }
    const demo::Value name = look.Cell(0);
    const auto* const text = std::get_if<std::wstring>(&name);
    return text ? *text : L"";
}

void CodeFields::Tell(std::size_t field, const wchar_t* text) const { SetWindowTextW(Name(field), text); }

} // namespace tamvelo::demo
