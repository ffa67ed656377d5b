#pragma once

#include <span>
#include <string>

#include "frame/FormPart.h"

namespace tamvelo::search {

/// The list of values of which any may match, with their number above it; Delete takes the selected one out.
class ValueList final : public frame::FormPart {
public:
    explicit ValueList(frame::Form& form) : FormPart(form) {}

    long Count() const;
    void Add(std::span<const std::wstring> values);
    void Clear();
    com::ComPtr<objects::ControlObject> Object() const;

private:
    void OnLoad() override { ShowCount(); }
    std::span<const frame::KeyRow> Keys() const override;
    std::span<const frame::CommandRow> Commands() const override;
    void Remove();
    void ShowCount();
};

} // namespace tamvelo::search
