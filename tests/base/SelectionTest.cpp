#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/FilterText.h"
#include "base/SelectionAnswers.h"
#include "base/Text.h"

namespace tamvelo::base {
namespace {

// The call as a host sees it that passed Column 4 and Indx 7.
std::wstring CallFor(const Answer& answer) {
    const auto number = [](NumberSource source) { return std::to_wstring(source.Resolve(4, 7)); };
    std::wstring call = answer.member == SinkMember::AceptarSeleccion ? L"Seleccion" : L"SeleccionParam";
    call += L"(" + number(answer.first);
    for (const NumberSource& column : answer.Columns()) {
        call += L", t" + number(column);
    }
    return call + L")";
}

TEST(SelectionAnswers, EachClassGetsItsCallInAnyCase) {
    struct Row {
        const wchar_t* className;
        const wchar_t* call;
    };
    const Row rows[] = {
        {L"hordenes", L"SeleccionParam(4, t4, t0, t2)"},
        {L"fases", L"SeleccionParam(4, t4, t0, t1)"},
        {L"pruebas", L"SeleccionParam(4, t4, t0, t1)"},
        {L"rutas", L"SeleccionParam(4, t4, t0, t1)"},
        {L"EMPLEADOS", L"SeleccionParam(4, t4, t0, t1)"},
        {L"Clientes_Direcciones", L"SeleccionParam(4, t4, t0, t1)"},
        {L"Ordenes", L"SeleccionParam(0, t0, t0, t1)"},
        {L"familias", L"Seleccion(7, t0)"},
        {L"Secciones", L"Seleccion(7, t0)"},
        {L"impuestos", L"Seleccion(7, t0)"},
        {L"clientes", L"Seleccion(4, t0)"},
        {L"proveedores", L"Seleccion(4, t0)"},
        {L"cuentas", L"Seleccion(4, t0)"},
        {L"pRODUCTOS", L"Seleccion(4, t1)"},
        {L"tipos_producto", L"Seleccion(4, t7)"},
        {L"ordenes_lineas", L"Seleccion(4, t7)"},
        {L"articulos", L"Seleccion(4, t7)"},
        {L"articulos_lotes", L"Seleccion(4, t4)"},
        {L"cliente", L"Seleccion(4, t4)"},
        {L" clientes", L"Seleccion(4, t4)"},
        {L"", L"Seleccion(4, t4)"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(CallFor(AnswerFor(row.className)), row.call) << ToUtf8(row.className);
    }
}

TEST(SelectionAnswers, TheBrowserGoesByIndx) {
    EXPECT_EQ(CallFor(AnswerInBrowser(L"HOrdenes")), L"SeleccionParam(7, t7, t0, t2)");
    EXPECT_EQ(CallFor(AnswerInBrowser(L"fases")), L"SeleccionParam(7, t7, t0, t1)");
    EXPECT_EQ(CallFor(AnswerInBrowser(L"Empleados")), L"SeleccionParam(7, t7, t0, t1)");
    for (const wchar_t* other : {L"ordenes", L"clientes", L"pruebas", L""}) {
        EXPECT_EQ(CallFor(AnswerInBrowser(other)), L"Seleccion(7, t7)") << ToUtf8(other);
    }
}

TEST(SelectionAnswers, TheAddPanelSendsAValueByIndx) {
    EXPECT_EQ(CallFor(AnswerInAddPanel(L"HOrdenes")), L"SeleccionParam(4, t4, t0, t2)");
    EXPECT_EQ(CallFor(AnswerInAddPanel(L"Articulos")), L"Seleccion(4, t0)");
    EXPECT_EQ(CallFor(AnswerInAddPanel(L"familias")), L"Seleccion(4, t7)");
    EXPECT_TRUE(AnswerInAddPanel(L"familias").asValue);
    EXPECT_FALSE(AnswerInAddPanel(L"hordenes").asValue);
}

TEST(SelectionAnswers, OnlyAFixedNumberIsALiteral) {
    // The host may change a number that it passed; the 0 of "ordenes" is not one of those, even when Column
    // is 0.
    EXPECT_EQ(AnswerFor(L"ordenes").first.kind, NumberSource::Kind::Fixed);
    EXPECT_EQ(AnswerFor(L"hordenes").first.kind, NumberSource::Kind::Column);
    EXPECT_EQ(AnswerFor(L"familias").first.kind, NumberSource::Kind::Indx);
}

TEST(SelectionAnswers, DoubleClickHasItsOwnAnswerForTwoClasses) {
    for (const wchar_t* className : {L"ordenes", L"Articulos_Lotes"}) {
        const std::optional<DoubleClickAnswer> answer = DoubleClickAnswerFor(className);
        ASSERT_TRUE(answer) << ToUtf8(className);
        EXPECT_EQ(answer->code, 2000);
        EXPECT_EQ(answer->column, 0);
    }
    EXPECT_FALSE(DoubleClickAnswerFor(L"clientes"));
    EXPECT_FALSE(DoubleClickAnswerFor(L"hordenes"));
}

TEST(SelectionAnswers, ColumnIsClampedOnlyAboveTheCount) {
    EXPECT_EQ(ClampColumn(6, 5), 0);
    EXPECT_EQ(ClampColumn(5, 5), 5);
    EXPECT_EQ(ClampColumn(-1, 5), -1);
    EXPECT_EQ(ClampColumn(32767, 100000), 32767);
}

TEST(SelectionAnswers, NamesAndFindRules) {
    EXPECT_EQ(SelectionName(false, false), L"seleccion");
    EXPECT_EQ(SelectionName(false, true), L"seleccionar");
    EXPECT_EQ(SelectionName(true, false), L"seleccion_stock");
    EXPECT_EQ(SelectionName(true, true), L"seleccion_stock");

    ASSERT_TRUE(FindRuleFor(0));
    EXPECT_FALSE(FindRuleFor(0)->number);
    EXPECT_EQ(FindRuleFor(1)->number, 1);
    EXPECT_EQ(FindRuleFor(2)->number, 2);
    EXPECT_FALSE(FindRuleFor(3));
    EXPECT_FALSE(FindRuleFor(-1));
}

TEST(FilterText, EmptyFragmentsLeaveNoJoin) {
    const auto join = [](const std::vector<std::wstring>& fragments) { return JoinAnd(fragments); };
    EXPECT_EQ(join({}), L"");
    EXPECT_EQ(join({L"", L""}), L"");
    EXPECT_EQ(join({L"", L"a=1", L"", L"b=2", L""}), L"a=1 And b=2");
}

} // namespace
} // namespace tamvelo::base
