#pragma once

#include <string>

#include "base/MessageText.h"
#include "com/LateObject.h"

namespace tamvelo::contract {

/// A grid's column collection (`Columns`), the host's or the library's own: both have the same shape.
class ColumnCollection {
public:
    /// One column, reached by its place from 0.
    class Column {
    public:
        explicit Column(IDispatch* object) : m_object(object, L"Column") {}
        std::wstring Caption() {
            return base::Shortened(m_object.Call(L"Caption").ToText(), base::kLongestLabel);
        }
        std::wstring DataField() { return m_object.Call(L"DataField").ToText(); }
        bool Visible() { return m_object.Call(L"Visible").ToBool(); }
        void SetVisible(bool visible) { m_object.Put(L"Visible", visible); }

    private:
        com::LateObject m_object;
    };

    ColumnCollection() = default;
    explicit ColumnCollection(IDispatch* object) : m_object(object, L"Columns") {}
    explicit operator bool() const { return static_cast<bool>(m_object); }
    IDispatch* Get() const { return m_object.Get(); }
    void Reset() { m_object.Reset(); }

    short Count();
    Column Item(short index);
    /// The place of the grid's current column (`Col`); the first when the collection does not tell it, or
    /// tells one that it does not have.
    short Current();

private:
    com::LateObject m_object;
};

} // namespace tamvelo::contract
