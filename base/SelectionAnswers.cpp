#include "base/SelectionAnswers.h"

#include <algorithm>

#include "base/FilterText.h"
#include "base/Text.h"

namespace tamvelo::base {

namespace {

constexpr NumberSource kColumn{NumberSource::Kind::Column, 0};
constexpr NumberSource kIndx{NumberSource::Kind::Indx, 0};
constexpr NumberSource Fixed(short number) { return {NumberSource::Kind::Fixed, number}; }

constexpr Answer One(NumberSource first, NumberSource text) {
    return {SinkMember::AceptarSeleccion, first, {text, {}, {}}, false};
}
constexpr Answer Three(NumberSource first, NumberSource text, NumberSource second, NumberSource third) {
    return {SinkMember::AceptarSeleccionParam, first, {text, second, third}, false};
}

constexpr Answer kWithDescription = Three(kColumn, kColumn, Fixed(0), Fixed(1));
constexpr Answer kCodeToIndx = One(kIndx, Fixed(0));
constexpr Answer kCode = One(kColumn, Fixed(0));
constexpr Answer kOrderSheet = Three(kColumn, kColumn, Fixed(0), Fixed(2));
constexpr Answer kTextOfIndx = One(kColumn, kIndx);
constexpr Answer kTextOfColumn = One(kColumn, kColumn);

struct ClassAnswer {
    std::wstring_view className;
    Answer answer;
};

constexpr ClassAnswer kAnswers[] = {
    {L"hordenes", kOrderSheet},
    {L"fases", kWithDescription},
    {L"pruebas", kWithDescription},
    {L"rutas", kWithDescription},
    {L"empleados", kWithDescription},
    {L"clientes_direcciones", kWithDescription},
    {L"ordenes", Three(Fixed(0), Fixed(0), Fixed(0), Fixed(1))},
    {L"familias", kCodeToIndx},
    {L"secciones", kCodeToIndx},
    {L"impuestos", kCodeToIndx},
    {L"clientes", kCode},
    {L"proveedores", kCode},
    {L"cuentas", kCode},
    {L"productos", One(kColumn, Fixed(1))},
    {L"tipos_producto", kTextOfIndx},
    {L"ordenes_lineas", kTextOfIndx},
    {L"articulos", kTextOfIndx},
};

constexpr ClassAnswer kBrowserAnswers[] = {
    {L"hordenes", Three(kIndx, kIndx, Fixed(0), Fixed(2))},
    {L"fases", Three(kIndx, kIndx, Fixed(0), Fixed(1))},
    {L"empleados", Three(kIndx, kIndx, Fixed(0), Fixed(1))},
};

constexpr Answer Value(NumberSource column) {
    return {SinkMember::AceptarSeleccion, kColumn, {column, {}, {}}, true};
}

constexpr ClassAnswer kAddPanelAnswers[] = {
    {L"hordenes", kOrderSheet},
    {L"articulos", Value(Fixed(0))},
};

Answer Find(std::span<const ClassAnswer> answers, std::wstring_view className, const Answer& other) {
    const auto entry = std::ranges::find(answers, Lower(className), &ClassAnswer::className);
    return entry != answers.end() ? entry->answer : other;
}

/// The code by which the host tells a double click from an acceptance; no grid has that many columns.
constexpr short kDoubleClickCode = 2000;

} // namespace

std::span<const NumberSource> Answer::Columns() const {
    return {columns.data(), member == SinkMember::AceptarSeleccionParam ? columns.size() : 1};
}

Answer AnswerFor(std::wstring_view className) { return Find(kAnswers, className, kTextOfColumn); }

Answer AnswerInBrowser(std::wstring_view className) {
    return Find(kBrowserAnswers, className, One(kIndx, kIndx));
}

Answer AnswerInAddPanel(std::wstring_view className) {
    return Find(kAddPanelAnswers, className, Value(kIndx));
}

std::optional<DoubleClickAnswer> DoubleClickAnswerFor(std::wstring_view className) {
    const std::wstring lower = Lower(className);
    if (lower == L"ordenes" || lower == L"articulos_lotes") {
        return DoubleClickAnswer{kDoubleClickCode, 0};
    }
    return std::nullopt;
}

short ClampColumn(short column, long count) { return column > count ? short{0} : column; }

std::wstring_view SelectionName(bool stock, bool verify) {
    if (stock) {
        return kSeleccionStock;
    }
    return verify ? kSeleccionar : kSeleccion;
}

std::optional<FindRule> FindRuleFor(short column) {
    switch (column) {
    case 0:
        return FindRule{};
    case 1:
    case 2:
        return FindRule{column};
    default:
        return std::nullopt;
    }
}

} // namespace tamvelo::base
