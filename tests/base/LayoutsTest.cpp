// Files: layouts of grids and toolbars, and their names.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/Commands.h"
#include "base/GridLayout.h"
#include "base/PathComponent.h"
#include "base/Text.h"
#include "base/ToolbarLayout.h"

namespace tamvelo::base {
namespace {

const std::string kTitle = "Tamvelo cuadrícula 1\n";

GridLayout Parsed(const std::string& text) {
    const auto parsed = ParseGridLayout(text);
    const auto* error = std::get_if<LayoutError>(&parsed);
    EXPECT_EQ(error, nullptr) << (error ? std::to_string(error->line) + ": " + ToUtf8(error->reason) : "");
    return error ? GridLayout{} : std::get<GridLayout>(parsed);
}

/// Where it was refused; -1 when it was not.
template <class Layout>
int BadLine(const std::variant<Layout, LayoutError>& parsed) {
    const auto* error = std::get_if<LayoutError>(&parsed);
    return error ? error->line : -1;
}

std::wstring Unit(int code) { return std::wstring(1, static_cast<wchar_t>(code)); }

TEST(GridLayout, TheFileIsStable) {
    GridLayout layout;
    layout.dpi = 144;
    layout.font = {L"Segoe UI", 95, true, false, true};
    layout.columns = {{L"CÓDIGO", 80, true, 1}, {L"NOMBRE", 240, false, 0}, {L"CÓDIGO", 60, true, 2}};
    const std::string text =
        kTitle +
        "ppp=144\n\n[fuente]\nnombre=Segoe UI\ndécimas=95\nnegrita=1\ncursiva=0\nsubrayado=1\n"
        "\n[columna CÓDIGO]\norden=1\nancho=80\nvisible=1\n"
        "\n[columna NOMBRE]\norden=0\nancho=240\nvisible=0\n"
        "\n[columna CÓDIGO#2]\norden=2\nancho=60\nvisible=1\n";
    EXPECT_EQ(FormatGridLayout(layout), text);
    EXPECT_EQ(Parsed(text), layout);
    EXPECT_EQ(FindColumn(layout, L"CÓDIGO", 2), &layout.columns[2]);
    EXPECT_EQ(FindColumn(layout, L"CÓDIGO", 3), nullptr);
    EXPECT_EQ(FindColumn(layout, L"Nombre", 1), nullptr);
}

TEST(GridLayout, AnyColumnNameSurvives) {
    GridLayout layout;
    layout.font.face = L" [=\\] ";
    for (const std::wstring& name :
         {std::wstring(), std::wstring(L" "), std::wstring(L"  a  b  "), std::wstring(L"a]b[c"),
          std::wstring(L"a=b"), std::wstring(L"a#2"), std::wstring(L"#"), std::wstring(L"\\005D"),
          std::wstring(L"a\r\nb\tc"), std::wstring(L"a\0b", 3), std::wstring(L"😀"), L"a" + Unit(0xD83D),
          Unit(0xDE00) + L"a", Unit(0xFEFF), std::wstring(L"\u00A0\u2028"), std::wstring(L"columna x")}) {
        layout.columns.push_back({name, 10, true, 0});
        layout.columns.push_back({name, 20, true, 1});
    }
    EXPECT_EQ(Parsed(FormatGridLayout(layout)), layout);
}

TEST(GridLayout, HandWrittenAndNewerFilesAreRead) {
    const GridLayout layout =
        Parsed("\xEF\xBB\xBF" + kTitle +
               "  ppp = 120 \r\ncolor=rojo\r\n\r\n[sección nueva]\r\nancho=abc\r\nancho=abc\r\n"
               "[columna  NOMBRE ]\r\nancho\t=\t7\r\nfuturo=\\\r\n[columna NOMBRE  #2 ]\r\n[columna]");
    EXPECT_EQ(layout.dpi, 120);
    EXPECT_EQ(layout.font, GridLayout::Font{});
    EXPECT_EQ(layout.columns, (std::vector<GridLayout::Column>{
                                  {L"NOMBRE", 7, true, 0}, {L"NOMBRE", 100, true, 0}, {L"", 100, true, 0}}));
    EXPECT_EQ(Parsed("Tamvelo cuadrícula 1"), GridLayout{});
}

TEST(GridLayout, BadFilesAndLinesAreRefusedWithTheirNumber) {
    for (const char* text : {"", "\n", "Tamvelo cuadrícula 2\n", "Tamvelo cuadrícula\n", "Tamvelo barra 1\n",
                             "\nTamvelo cuadrícula 1\n", "\xFF\xFE", "tamvelo cuadrícula 1\n"}) {
        EXPECT_EQ(BadLine(ParseGridLayout(text)), 1) << text;
    }
    const struct {
        const char* body; // begins in line 2
        int line;
        const wchar_t* reason; // part of it
    } rows[] = {
        {"ppp=47", 2, L"entre 48 y 960"},
        {"ppp=961", 2, L"«ppp»"},
        {"ppp=", 2, L"número"},
        {"ppp=96 ppp", 2, L"número"},
        {"ppp=96\nppp=96", 3, L"repetida"},
        {"ppp", 2, L"nombre=valor"},
        {"=96", 2, L"nombre=valor"},
        {"\n\n[", 4, L"encabezado"},
        {"[]", 2, L"encabezado"},
        {"[ ]", 2, L"encabezado"},
        {"[columna a", 2, L"encabezado"},
        {"[columna a]]", 2, L"encabezado"},
        {"[columna a] ancho=1", 2, L"encabezado"},
        {"[fuente]\ndécimas=39", 3, L"entre 40 y 960"},
        {"[fuente]\ndécimas=961", 3, L"entre 40 y 960"},
        {"[fuente]\nnegrita=2", 3, L"entre 0 y 1"},
        {"[fuente]\nnegrita=sí", 3, L"entre 0 y 1"},
        {"[fuente]\nnombre=12345678901234567890123456789012", 3, L"caracteres"},
        {"[fuente]\nnombre=Arial\\00", 3, L"bien escrito"},
        {"[fuente]\nnombre=\\00g0", 3, L"bien escrito"},
        {"[fuente]\n[fuente]", 3, L"repetida"},
        {"[columna a]\nancho=10001", 3, L"entre 0 y 10000"},
        {"[columna a]\nancho=-1", 3, L"entre 0 y 10000"},
        {"[columna a]\nancho=99999999999999", 3, L"entre 0 y 10000"},
        {"[columna a]\norden=1000", 3, L"entre 0 y 999"},
        {"[columna a]\n[columna b]\n[columna a]", 4, L"repetida"},
        {"[columna a]\n[columna \\0061]", 3, L"repetida"},
        {"[columna a#2]", 2, L"Falta"},
        {"[columna a]\n[columna a#3]", 3, L"Falta"},
        {"[columna a#1]", 2, L"nombre de la columna"},
        {"[columna a#x]", 2, L"nombre de la columna"},
        {"[columna a#2#3]", 2, L"nombre de la columna"},
        {"[columna \\]", 2, L"nombre de la columna"},
        {"\nfuturo=\xC3\x28", 3, L"UTF-8"},
    };
    for (const auto& row : rows) {
        const auto parsed = ParseGridLayout(kTitle + row.body + "\n");
        const auto* error = std::get_if<LayoutError>(&parsed);
        ASSERT_NE(error, nullptr) << row.body;
        EXPECT_EQ(error->line, row.line) << row.body;
        EXPECT_NE(error->reason.find(row.reason), std::wstring::npos)
            << row.body << ": " << ToUtf8(error->reason);
    }
}

TEST(GridLayout, SizesAreLimitedAndWhatIsWrittenCanAlwaysBeRead) {
    std::string text = kTitle;
    for (int i = 0; i < 1000; ++i) {
        text += "[columna c" + std::to_string(i) + "]\n";
    }
    EXPECT_EQ(Parsed(text).columns.size(), 1000U);
    EXPECT_EQ(BadLine(ParseGridLayout(text + "[columna uno]\n")), 1002);
    const std::string full = kTitle + std::string((1 << 20) - kTitle.size(), '\n');
    EXPECT_EQ(BadLine(ParseGridLayout(full)), -1);
    EXPECT_NE(BadLine(ParseGridLayout(full + "\n")), -1);
    GridLayout layout;
    layout.dpi = 5;
    layout.font = {std::wstring(40, L'f'), 10000};
    layout.columns.assign(1200, {L"a", 20000, true, -3});
    const GridLayout read = Parsed(FormatGridLayout(layout));
    EXPECT_EQ(read.dpi, 48);
    EXPECT_EQ(read.font, (GridLayout::Font{std::wstring(31, L'f'), 960}));
    EXPECT_EQ(read.columns, std::vector<GridLayout::Column>(1000, {L"a", 10000, true, 0}));
    // Names that no file has room for are left out, and all of that name with them.
    for (std::size_t i = 0; i < layout.columns.size(); ++i) {
        layout.columns[i].field = i % 2 == 0 ? L"c" : std::wstring(i < 10 ? 1'000'000 : 1000, L'\n');
    }
    const std::vector<GridLayout::Column> kept = Parsed(FormatGridLayout(layout)).columns;
    EXPECT_GT(std::ranges::count(kept, L"c", &GridLayout::Column::field), 100);
    EXPECT_GT(std::ranges::count(kept, std::wstring(1000, L'\n'), &GridLayout::Column::field), 100);
    EXPECT_EQ(Parsed(kTitle + "[columna a]\n[columna " + std::string(1001, 'x') + "]\n").columns.size(), 1U);
}

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
    const std::pair<const char*, int> rows[] = {
        {"Tamvelo cuadrícula 1\n", 1},
        {"Tamvelo barra 1\n[banda]", 2},
        {"Tamvelo barra 1\n[herramienta \\00]", 2},
        {"Tamvelo barra 1\n[banda a]\n[herramienta a]\n[banda a]", 4},
        {"Tamvelo barra 1\n[herramienta a]\n[herramienta a]", 3},
        {"Tamvelo barra 1\n[banda a]\nvisible=no", 3},
        {"Tamvelo barra 1\n[herramienta a]\nbanda=b\nbanda=b", 4},
    };
    for (const auto& [text, line] : rows) {
        EXPECT_EQ(BadLine(ParseToolbarLayout(text)), line) << text;
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

TEST(ToolbarMerge, SavedOrderAndVisibilityWinAndEachSideMayKnowMore) {
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
    EXPECT_EQ(Merge(kDesign, {}), kDesign);
    EXPECT_EQ(Merge({}, kDesign), ToolbarLayout{});
    // An old file: no Filtro, no first tool of Registros; tools and bands of its own; a repeated tool.
    const ToolbarLayout old = {
        {{L"Vieja", true}},
        {{kCancelar, L"Vieja", true},
         {L"ID_Vieja", kBandEdicion, true},
         {kAceptar, kBandEdicion, false},
         {kMoveLast, kBandRegistros, true},
         {kAceptar, kBandEdicion, true}},
    };
    EXPECT_EQ(Summary(Merge(kDesign, old)),
              "ID_Cancelar@Edición -ID_Aceptar@Edición ID_Filtro@Edición ID_MoveFirst@Registros "
              "ID_MoveLast@Registros | -Registros Edición");
}

TEST(PathComponent, IsAnOrdinaryNameThatStaysInTheFolder) {
    for (const wchar_t* name :
         {L"clientes", L"frmSelecclientes.grx", L"Artículos año 2024", L".oculto", L"a..b", L"console",
          L"com", L"com10", L"comx", L"lpt.1", L"nulo", L"aux1", L"conin"}) {
        EXPECT_TRUE(IsPlainPathComponent(name)) << ToUtf8(name);
    }
    for (const wchar_t* name :
         {L"",       L".",        L"..",       L"...",   L"a\\b",      L"a/b",         L"..\\a",
          L"c:",     L"a:flujo",  L"a*",       L"a?",    L"\"a\"",     L"<a",          L"a>",
          L"a|b",    L"a\nb",     L"a\x1F",    L"a\x7F", L"a.",        L"a ",          L" ",
          L"con",    L"PRN",      L"Aux",      L"nul",   L"NUL.txt",   L"nul.tar.gz",  L"con .txt",
          L" con",   L"COM0",     L"com1.grx", L"lpt9",  L"LPT\u00B9", L"com\u00B2.x", L"com\u00B3",
          L"CONIN$", L"conout$.a"}) {
        EXPECT_FALSE(IsPlainPathComponent(name)) << ToUtf8(name);
    }
    EXPECT_TRUE(IsPlainPathComponent(std::wstring(120, L'a')));
    EXPECT_FALSE(IsPlainPathComponent(std::wstring(121, L'a')));
    EXPECT_FALSE(IsPlainPathComponent(std::wstring_view(L"a\0b", 3)));
}

} // namespace
} // namespace tamvelo::base
