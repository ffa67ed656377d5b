#include "frame/GridLayoutStore.h"

#include "base/PathComponent.h"
#include "com/Error.h"
#include "frame/Environment.h"
#include "frame/LayoutFile.h"

namespace tamvelo::frame {

std::wstring GridLayoutStore::FileName() const {
    if (!base::IsPlainPathComponent(m_name)) {
        throw com::Error(
            E_INVALIDARG,
            L"El nombre de clase no sirve para guardar el diseño de la cuadrícula: «" + m_name + L"».");
    }
    return m_name + L".grx";
}

std::optional<base::GridLayout> GridLayoutStore::Load() const {
    const std::wstring file = FileName();
    const LayoutPlace place = Environment::Get().GetFiles().GridLayoutPlace(file);
    if (!place.saved) {
        return {};
    }
    auto parsed = base::ParseGridLayout(ReadLayoutFile(place.folder + file));
    if (const auto* wrong = std::get_if<base::LayoutError>(&parsed)) {
        throw com::Error(E_INVALIDARG, L"El fichero de diseño «" + place.folder + file +
                                           L"» no es válido (línea " + std::to_wstring(wrong->line) + L"): " +
                                           wrong->reason);
    }
    return std::get<base::GridLayout>(std::move(parsed));
}

void GridLayoutStore::Save(const base::GridLayout& layout) const {
    const std::wstring file = FileName();
    WriteLayoutFile(Environment::Get().GetFiles().GridLayoutPlace(file).folder + file,
                    base::FormatGridLayout(layout));
}

} // namespace tamvelo::frame
