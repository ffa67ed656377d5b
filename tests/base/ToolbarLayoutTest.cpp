#include "base/ToolbarLayout.h"

#include <gtest/gtest.h>

#include "base/Commands.h"
#include "base/Text.h"

namespace tamvelo::base {
namespace {

const ToolbarLayout kDesign = {
    {{kBandRegistros, false}, {kBandEdicion, true}},
    {{kMoveFirst, kBandRegistros, true},
     {kMoveLast, kBandRegistros, true},
     {kAceptar, kBandEdicion, true},
     {kFiltro, kBandEdicion, true},
     {kCancelar, kBandEdicion, true}},
};

// "a b -c | X -Y": tools in order and bands, a dash before what is hidden.
std::string Summary(const ToolbarLayout& layout) {
    std::wstring text;
    for (const auto& tool : layout.tools) {
        text += (tool.visible ? L"" : L"-") + tool.id + L"@" + tool.band + L" ";
    }
    text += L"|";
    for (const auto& band : layout.bands) {
        text += (band.visible ? L" " : L" -") + band.name;
    }
    return ToUtf8(text);
}

TEST(ToolbarLayout, TheFileIsStable) {
    const ToolbarLayout layout = {{{L"Edición", true}},
                                  {{L"ID_Filtro", L"Edición", false}, {L"a]=\n", L" x", true}}};
    const std::string text =
        "Tamvelo barra 1\n\n[banda Edición]\nvisible=1\n\n[herramienta ID_Filtro]\nbanda=Edición\nvisible=0\n"
        "\n[herramienta a\\005D\\003D\\000A]\nbanda=\\0020x\nvisible=1\n";
    EXPECT_EQ(FormatToolbarLayout(layout), text);
    EXPECT_EQ(std::get<ToolbarLayout>(ParseToolbarLayout(text)), layout);
}

TEST(ToolbarLayout, BadFilesAreRefusedWithTheLine) {
    struct Row {
        const char* text;
        int line;
    };
    const Row rows[] = {
        {"Tamvelo cuadrícula 1\n", 1},
        {"Tamvelo barra 1\n[banda]", 2},
        {"Tamvelo barra 1\n[herramienta \\00]", 2},
        {"Tamvelo barra 1\n[banda a]\n[herramienta a]\n[banda a]", 4},
        {"Tamvelo barra 1\n[herramienta a]\n[herramienta a]", 3},
        {"Tamvelo barra 1\n[banda a]\nvisible=no", 3},
        {"Tamvelo barra 1\n[herramienta a]\nbanda=b\nbanda=b", 4},
    };
    for (const Row& row : rows) {
        const auto parsed = ParseToolbarLayout(row.text);
        ASSERT_TRUE(std::holds_alternative<LayoutError>(parsed)) << row.text;
        EXPECT_EQ(std::get<LayoutError>(parsed).line, row.line) << row.text;
    }
}

TEST(ToolbarLayout, WhatIsWrittenCanAlwaysBeRead) {
    ToolbarLayout layout = {{{L"b", true}, {L"b", false}, {L"", true}},
                            {{L"t", L"b", false}, {L"t", L"b", true}, {L"", L"b", true}}};
    EXPECT_EQ(Summary(std::get<ToolbarLayout>(ParseToolbarLayout(FormatToolbarLayout(layout)))), "-t@b | b");
    for (int i = 0; i < 1100; ++i) {
        layout.tools.push_back({std::to_wstring(i), std::wstring(300, L'b'), true});
    }
    EXPECT_EQ(std::get<ToolbarLayout>(ParseToolbarLayout(FormatToolbarLayout(layout))).tools.size(), 1000U);
}

TEST(ToolbarMerge, SavedOrderAndVisibilityWin) {
    const ToolbarLayout saved = {
        {{kBandEdicion, false}, {kBandRegistros, true}},
        {{kCancelar, kBandEdicion, true},
         {kFiltro, kBandEdicion, false},
         {kMoveLast, kBandEdicion, true},
         {kAceptar, kBandEdicion, true},
         {kMoveFirst, kBandRegistros, false}},
    };
    EXPECT_EQ(Summary(Merge(kDesign, saved)),
              "ID_Cancelar@Edición -ID_Filtro@Edición ID_MoveLast@Edición ID_Aceptar@Edición "
              "-ID_MoveFirst@Registros | Registros -Edición");
}

TEST(ToolbarMerge, WhatOnlyOneSideKnows) {
    EXPECT_EQ(Merge(kDesign, {}), kDesign);
    EXPECT_EQ(Merge({}, kDesign), ToolbarLayout{});
    // An old file: no Filtro, no first tool of Registros; tools and bands of its own; a repeated tool.
    const ToolbarLayout saved = {
        {{L"Vieja", true}},
        {{kCancelar, L"Vieja", true},
         {L"ID_Vieja", kBandEdicion, true},
         {kAceptar, kBandEdicion, false},
         {kMoveLast, kBandRegistros, true},
         {kAceptar, kBandEdicion, true}},
    };
    EXPECT_EQ(Summary(Merge(kDesign, saved)),
              "ID_Cancelar@Edición -ID_Aceptar@Edición ID_Filtro@Edición ID_MoveFirst@Registros "
              "ID_MoveLast@Registros | -Registros Edición");
}

} // namespace
} // namespace tamvelo::base
