#include "grid/ColumnsObject.h"

#include <algorithm>

#include "com/Automation.h"
#include "grid/GridView.h"

namespace tamvelo::grid {

namespace {

using com::Invocation;
using com::Member;
using com::Run;
using com::Variant;

constexpr int kMostWidth = 10000; // pixels

std::shared_ptr<GridView> Alive(const std::weak_ptr<GridView>& view) {
    std::shared_ptr<GridView> alive = view.lock();
    if (!alive || !alive->Window()) {
        throw com::Error(CO_E_OBJNOTCONNECTED, L"El cuadro de datos ya no existe.");
    }
    return alive;
}

class ColumnObject final : public com::Automation {
public:
    ColumnObject(std::weak_ptr<GridView> view, short column) : m_view(std::move(view)), m_column(column) {}

    void Caption(Invocation& call) {
        Property(call, &GridColumn::caption,
                 [](GridColumn& column, const Variant& value) { column.caption = value.ToText(); });
    }
    void DataField(Invocation& call) { Property(call, &GridColumn::field, nullptr); }
    void Visible(Invocation& call) {
        Property(call, &GridColumn::visible,
                 [](GridColumn& column, const Variant& value) { column.visible = value.ToBool(); });
    }
    void Width(Invocation& call) {
        Property(call, &GridColumn::width, [](GridColumn& column, const Variant& value) {
            column.width = static_cast<int>(std::clamp<long>(value.ToLong(), 0, kMostWidth));
            column.guessed = false;
        });
    }
    void Alignment(Invocation& call) {
        Property(call, &GridColumn::alignment, [](GridColumn& column, const Variant& value) {
            const long wanted =
                std::clamp<long>(value.ToLong(), 0, static_cast<long>(grid::Alignment::General));
            column.alignment = static_cast<grid::Alignment>(wanted);
        });
    }
    void Order(Invocation& call) {
        const std::shared_ptr<GridView> view = Grid();
        if (!call.IsPut()) {
            call.Return(Variant(static_cast<long>(view->Columns().OrderOf(m_column))));
            return;
        }
        const int order = static_cast<int>(call.NewValue().ToLong());
        view->ChangeColumn(m_column,
                           [&](GridColumns& columns, GridColumn&) { columns.MoveTo(m_column, order); });
    }
    void Text(Invocation& call) { call.Return(Variant(Grid()->Text(m_column))); }
    void Value(Invocation& call) { call.Return(Grid()->Value(m_column)); }

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Caption", DISPID_VALUE, Member::GetPut, 0, 0, Run<&ColumnObject::Caption>},
            {L"DataField", 1, Member::Get, 0, 0, Run<&ColumnObject::DataField>},
            {L"Visible", 2, Member::GetPut, 0, 0, Run<&ColumnObject::Visible>},
            {L"Width", 3, Member::GetPut, 0, 0, Run<&ColumnObject::Width>},
            {L"Order", 4, Member::GetPut, 0, 0, Run<&ColumnObject::Order>},
            {L"Alignment", 5, Member::GetPut, 0, 0, Run<&ColumnObject::Alignment>},
            {L"Text", 6, Member::Get, 0, 0, Run<&ColumnObject::Text>},
            {L"Value", 7, Member::Get, 0, 0, Run<&ColumnObject::Value>},
        };
        return kMembers;
    }

private:
    /// The grid may have been bound to fewer columns since.
    std::shared_ptr<GridView> Grid() const {
        std::shared_ptr<GridView> view = Alive(m_view);
        view->Columns().At(m_column);
        return view;
    }
    template <class T, class Write>
    void Property(Invocation& call, T GridColumn::*property, Write&& write) {
        using Told = std::conditional_t<std::is_enum_v<T> || std::is_same_v<T, int>, long, const T&>;
        const std::shared_ptr<GridView> view = Grid();
        if (!call.IsPut()) {
            call.Return(Variant(static_cast<Told>(view->Columns()[m_column].*property)));
        } else if constexpr (!std::is_null_pointer_v<std::remove_cvref_t<Write>>) {
            view->ChangeColumn(m_column,
                               [&](GridColumns&, GridColumn& column) { write(column, call.NewValue()); });
        }
    }

    const std::weak_ptr<GridView> m_view;
    const short m_column;
};

class ColumnsObject final : public com::Automation {
public:
    explicit ColumnsObject(std::weak_ptr<GridView> view) : m_view(std::move(view)) {}

    void Count(Invocation& call) {
        call.Return(Variant(static_cast<long>(Alive(m_view)->Columns().Count())));
    }
    void Item(Invocation& call) {
        const std::shared_ptr<GridView> view = Alive(m_view);
        const short column =
            call[0].Type() == VT_BSTR ? view->Columns().Named(call[0].ToText()) : call[0].ToShort();
        view->Columns().At(column);
        call.Return(Variant(com::Make<ColumnObject>(m_view, column).Get()));
    }

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Item", DISPID_VALUE, Member::Get, 1, 1, Run<&ColumnsObject::Item>},
            {L"Count", 1, Member::Get, 0, 0, Run<&ColumnsObject::Count>},
        };
        return kMembers;
    }

private:
    const std::weak_ptr<GridView> m_view;
};

} // namespace

com::ComPtr<IDispatch> MakeColumnsObject(std::weak_ptr<GridView> view) {
    return com::ComPtr<IDispatch>(com::Make<ColumnsObject>(std::move(view)).Get());
}

} // namespace tamvelo::grid
