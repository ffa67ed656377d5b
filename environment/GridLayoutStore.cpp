#include "environment/GridLayoutStore.h"

#include "base/PathComponent.h"
#include "environment/Environment.h"
#include "environment/LayoutFile.h"

namespace tamvelo::environment {

std::optional<base::GridLayout> GridLayoutStore::Load(std::wstring& note) const {
    if (!IsKept()) {
        return {};
    }
    const std::wstring file = m_name + L".grx";
    const LayoutPlace place = Environment::Get().GetFiles().GridLayoutPlace(file);
    return place.saved ? LoadLayout(place.folder + file, base::ParseGridLayout, note) : std::nullopt;
}

void GridLayoutStore::Save(const base::GridLayout& layout) const {
    if (IsKept()) {
        const std::wstring file = m_name + L".grx";
        WriteLayoutFile(Environment::Get().GetFiles().GridLayoutPlace(file).folder + file,
                        base::FormatGridLayout(layout));
    }
}

bool GridLayoutStore::IsKept() const { return base::IsPlainPathComponent(m_name); }

} // namespace tamvelo::environment
