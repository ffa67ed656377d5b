#include "selection/RecordFields.h"

#include <algorithm>

#include "com/Error.h"
#include "com/LateObject.h"
#include "frame/Lookup.h"
#include "grid/RecordSource.h"

namespace tamvelo::selection {

namespace {

using com::LateObject;
using grid::CellKind;

constexpr long kMostChoices = 100;

/// What few record sets tell of their fields; Empty when this one does not.
com::Answer Ask(LateObject& field, const wchar_t* member) {
    return field.Answers(member) ? field.Call(member) : com::Answer({}, field.Role(), member);
}

} // namespace

std::vector<RecordField> ReadFields(grid::RecordCursor& records) {
    std::vector<RecordField> fields;
    for (grid::FieldInfo& info : records.ReadFields()) {
        RecordField& field = fields.emplace_back();
        field.caption = std::move(info.caption);
        field.name = std::move(info.name);
        field.kind = grid::KindOfField(info.type);
        field.size = info.definedSize;
        field.typed = field.kind != CellKind::Binary;
        field.mark = field.kind == CellKind::Check;
    }
    return fields;
}

std::vector<RecordField> ReadRecordFields(IDispatch* data) {
    const grid::RecordSource source(data);
    grid::RecordCursor records(source.Set());
    std::vector<RecordField> fields = ReadFields(records);
    LateObject objects(LateObject(source.Set(), L"Recordset").Call(L"Fields").ToObject().Get(), L"Fields");
    for (size_t i = 0; i < fields.size(); ++i) {
        LateObject object(objects.Call(L"Item", {static_cast<long>(i)}).ToObject().Get(), L"Field");
        fields[i].relation = Ask(object, L"Relacion").ToText();
        if (const com::Answer required = Ask(object, L"Required"); !required.IsEmpty()) {
            fields[i].required = required.ToBool();
        }
    }
    return fields;
}

std::optional<std::vector<Choice>> ReadChoices(const std::wstring& className) {
    try {
        const LateObject data = frame::MakeList({.className = className.c_str()});
        const grid::RecordSource source(data.Get());
        grid::RecordCursor cursor(source.Set());
        const long count = cursor.ReadSigns().count;
        if (count > kMostChoices) {
            return {};
        }
        std::vector<Choice> choices(static_cast<size_t>(count));
        const auto columns = static_cast<short>(std::min<size_t>(cursor.ReadFields().size(), 2));
        const grid::RecordCursor::Rows all{0, count - 1};
        cursor.Read(all, all, columns, [&](long row, short column, const VARIANT& value, bool error) {
            Choice& choice = choices.at(static_cast<size_t>(row));
            const std::wstring text = error ? std::wstring() : grid::Format(value, CellKind::Any);
            if (column == 0) {
                choice = {text, text};
            } else {
                choice.shown += L" - " + text;
            }
        });
        return choices;
    } catch (const com::Error&) {
        return {}; // the code can still be typed, or looked up, which then says what is wrong
    }
}

} // namespace tamvelo::selection
