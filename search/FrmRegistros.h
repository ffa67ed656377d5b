#pragma once

#include <string>

#include "frame/GridForm.h"

namespace tamvelo::search {

/// The record browser: the host's records in a grid, to look through, narrow down, sort, and pick one for a
/// control of the host. New, modified and deleted records are the host's own business.
class FrmRegistros final : public frame::GridForm {
public:
    static constexpr wchar_t kName[] = L"frmRegistros";
    FrmRegistros();

private:
    void Aceptar();
    void Nuevo();
    void Modificar();
    void Eliminar();
    void Filtro();
    void PassOn(const wchar_t* member, const wchar_t* refusal);
    bool ConfirmsDeletion();

    void OnLoad() override;
    void OnRowActivated() override;
    void OnSearchStrip(bool shown) override;
    std::wstring Heading(const std::wstring& filter) const override;
    std::span<const frame::CommandRow> Commands() const override;
    std::span<const frame::MenuItem> OwnMenu() const override;
};

} // namespace tamvelo::search
