#include <gtest/gtest.h>

#include <optional>

#include "com/LateObject.h"
#include "demo/data/SampleData.h"
#include "demo/host/DataClass.h"
#include "demo/host/HostError.h"
#include "demo/host/HostObjects.h"

namespace tamvelo::demo {

namespace {

using com::Argument;
using com::ComPtr;
using com::Invocation;
using com::LateObject;
using com::Member;
using com::Variant;

constexpr long kArticles = 320;

/// The number of the error that the body ends with; 0 when it does not, or when the error says nothing.
template <class Body>
HRESULT ErrorOf(Body&& body) {
    try {
        body();
    } catch (const com::Error& error) {
        return error.description.empty() ? 0 : error.number;
    }
    return 0;
}

/// A list of typed values for a field, as the search panel has one.
class TypedList : public com::Automation {
public:
    std::vector<std::wstring> items;

protected:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"DataField", 1, Member::Get, 0, 0, com::Run<&TypedList::DataField>},
            {L"ListCount", 2, Member::Get, 0, 0, com::Run<&TypedList::ListCount>},
            {L"List", 3, Member::Get, 1, 1, com::Run<&TypedList::List>},
            {L"Selected", 4, Member::Get, 1, 1, nullptr}, // tells it from a list that drops down
        };
        return kMembers;
    }

private:
    void DataField(Invocation& call) { call.Return(Variant(L"CODIGO")); }
    void ListCount(Invocation& call) { call.Return(Variant(static_cast<long>(items.size()))); }
    void List(Invocation& call) {
        call.Return(Variant(items.at(static_cast<std::size_t>(call[0].ToLong()))));
    }
};

class DemoHost : public testing::Test {
protected:
    void TearDown() override {
        articles.Reset();
        set.Reset();
        box.Reset();
        DestroyWindow(edit);
        EXPECT_TRUE(com::Module::Unused()) << "an object is still referred to";
    }

    long CountOf(const wchar_t* condition) {
        return static_cast<long>(
            database->Number(std::wstring(L"select count(*) from articulos where ") + condition));
    }
    long Rows() { return set.Call(L"RecordCount").ToLong(); }
    long Position(LateObject& of) { return of.Call(L"AbsolutePosition").ToLong(); }
    Variant Value(LateObject& of, const wchar_t* field) {
        return LateObject(of.Call(L"Fields", {field}).ToObject().Get(), L"Field").Call(L"Value");
    }
    std::wstring Code() { return Value(set, L"codigo").ToText(); }
    LateObject Clone() { return LateObject(set.Call(L"Clone", {short{1}}).ToObject().Get(), L"Clone"); }

    /// What the data class makes of a text typed into a box for the field.
    std::wstring FilterFor(const wchar_t* field, const wchar_t* typed, std::optional<short> bound = {}) {
        box.Put(L"DataField", field);
        box.Put(L"Text", typed);
        ComPtr<IDispatch> control = box.Get();
        return (bound ? articles.Call(L"CreateFilter", {Argument::Ref(control), *bound})
                      : articles.Call(L"CreateFilter", {Argument::Ref(control)}))
            .ToText();
    }

    std::shared_ptr<Database> database = std::make_shared<Database>(OpenSampleData(L":memory:", kArticles));
    LateObject articles{MakeDataClass(database, L"ARTICULOS").Get(), L"MyClase"};
    LateObject set{articles.Call(L"Recordset").ToObject().Get(), L"Recordset"};
    HWND edit = CreateWindowW(L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, HWND_MESSAGE, nullptr,
                              nullptr, nullptr);
    LateObject box{MakeTextControl(edit, L"TxtFields", 3).Get(), L"ctl"};
};

TEST_F(DemoHost, FieldsShowEveryKindOfValueInItsOwnType) {
    database->Execute(
        L"update articulos set precio = -123456, alta = '2024-02-29', activo = 1,"
        L" existencias = 7, proveedor = null where id = 1");
    articles.Call(L"Requery");
    EXPECT_EQ(Value(set, L"precio").Get().cyVal.int64, -12345600);
    EXPECT_EQ(Value(set, L"precio").Type(), VT_CY);
    EXPECT_EQ(Value(set, L"alta").Type(), VT_DATE);
    EXPECT_EQ(Value(set, L"alta").ToDate(), 45351.0);
    EXPECT_EQ(Value(set, L"ACTIVO").Get().boolVal, VARIANT_TRUE);
    EXPECT_EQ(Value(set, L"existencias").ToLong(), 7);
    EXPECT_TRUE(Value(set, L"proveedor").IsNull());

    LateObject fields(set.Call(L"Fields").ToObject().Get(), L"Fields");
    EXPECT_EQ(fields.Call(L"Count").ToLong(), 10);
    LateObject name(fields.Call(L"Item", {1L}).ToObject().Get(), L"Field");
    EXPECT_EQ(name.Call(L"Name").ToText(), L"descripcion");
    EXPECT_EQ(name.Call(L"Caption").ToText(), L"Descripción");
    EXPECT_EQ(name.Call(L"Type").ToLong(), 202);
    EXPECT_EQ(name.Call(L"DefinedSize").ToLong(), 60);
    EXPECT_EQ(ErrorOf([&] { fields.Call(L"Item", {10L}); }), kItemNotFound);
    EXPECT_EQ(ErrorOf([&] { fields.Call(L"Item", {L"id"}); }), kItemNotFound);

    // As typed or as a value, it is in the database at once, and the record stays current.
    set.Put(L"AbsolutePosition", 5L);
    const auto put = [&](const wchar_t* field, const Variant& value) {
        LateObject(set.Call(L"Fields", {field}).ToObject().Get(), L"Field").Put(L"Value", value);
    };
    const long version = set.Call(L"DataVersion").ToLong();
    put(L"alta", Variant::Date(45351.0));
    put(L"precio", Variant(L"1.234,5"));
    put(L"proveedor", Variant::Null());
    EXPECT_EQ(CountOf(L"id = 5 and alta = '2024-02-29' and precio = 123450 and proveedor is null"), 1);
    EXPECT_EQ(Value(set, L"precio").ToDouble(), 1234.5);
    EXPECT_EQ(Position(set), 5);
    EXPECT_NE(set.Call(L"DataVersion").ToLong(), version);
    EXPECT_EQ(ErrorOf([&] { put(L"existencias", Variant(L"muchas")); }), kInvalidArgument);
    EXPECT_EQ(ErrorOf([&] { put(L"codigo", Variant(L"")); }), kInvalidArgument);
}

TEST_F(DemoHost, ACloneShowsTheSameRowsFromAPositionOfItsOwn) {
    set.Put(L"AbsolutePosition", 40L);
    LateObject clone = Clone();
    EXPECT_FALSE(com::SameObject(clone.Get(), set.Get()));
    clone.Call(L"MoveLast");
    EXPECT_EQ(Position(clone), kArticles);
    EXPECT_EQ(Position(set), 40);

    clone.Put(L"Bookmark", set.Call(L"Bookmark"));
    EXPECT_EQ(Position(clone), 40);
    const Variant marked = set.Call(L"Bookmark");
    short column = 1;
    articles.Call(L"SetOrder", {Argument::Ref(column), L" DESC", L"seleccion"});
    EXPECT_EQ(set.Call(L"Sort").ToText(), L"descripcion DESC");
    EXPECT_EQ(clone.Call(L"Sort").ToText(), L"descripcion DESC");
    const std::wstring code = Code();
    set.Call(L"MoveFirst");
    set.Put(L"Bookmark", marked);
    EXPECT_EQ(Code(), code) << "the order keeps the current record, and its bookmark stays good";

    // Fewer rows than the clone's position: it stands at the end, and can step back.
    clone.Call(L"MoveLast");
    articles.Call(L"AplyFilter", {L"id <= 3"});
    EXPECT_EQ(clone.Call(L"RecordCount").ToLong(), 3);
    EXPECT_TRUE(clone.Call(L"EOF").ToBool());
    clone.Call(L"MovePrevious");
    EXPECT_EQ(Position(clone), 3);
    EXPECT_EQ(ErrorOf([&] { set.Put(L"Bookmark", Variant(40.0)); }), kNoCurrentRecord);
}

TEST_F(DemoHost, TheEndsAndAnEmptySetHaveNoRecord) {
    set.Call(L"MovePrevious");
    EXPECT_TRUE(set.Call(L"BOF").ToBool());
    EXPECT_EQ(Position(set), -2);
    EXPECT_EQ(ErrorOf([&] { Value(set, L"codigo"); }), kNoCurrentRecord);
    set.Call(L"MoveLast");
    set.Call(L"MoveNext");
    set.Call(L"MoveNext");
    EXPECT_EQ(Position(set), -3);
    EXPECT_EQ(ErrorOf([&] { set.Call(L"Bookmark"); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { set.Put(L"AbsolutePosition", kArticles + 1); }), kInvalidArgument);

    // The data class's own moves end on a record.
    for (const auto& [move, position] : {std::pair{L"MoveNext", kArticles},
                                         {L"MoveFirst", 1L},
                                         {L"MovePrevious", 1L},
                                         {L"MoveLast", kArticles},
                                         {L"MovePrevious", kArticles - 1}}) {
        articles.Call(move);
        EXPECT_EQ(Position(set), position);
    }
    articles.Call(L"AplyFilter", {L"id < 0"});
    for (const wchar_t* move : {L"MoveFirst", L"MoveLast", L"MoveNext", L"MovePrevious"}) {
        articles.Call(move);
        EXPECT_TRUE(set.Call(L"BOF").ToBool() && set.Call(L"EOF").ToBool());
        set.Call(move);
        EXPECT_TRUE(set.Call(L"BOF").ToBool() && set.Call(L"EOF").ToBool());
    }
    EXPECT_FALSE(articles.Call(L"existenregistros").ToBool());
    EXPECT_EQ(ErrorOf([&] { set.Call(L"GetRows"); }), kNoCurrentRecord);
}

TEST_F(DemoHost, GetRowsReadsABlockByFieldAndRecord) {
    const auto cell = [](const Variant& block, LONG field, LONG row) {
        LONG place[] = {field, row};
        Variant value;
        EXPECT_EQ(SafeArrayGetElement(block.Get().parray, place, value.Address()), S_OK);
        return value.ToText();
    };
    const auto extent = [](const Variant& block, int dimension) {
        return block.Get().parray->rgsabound[1 - dimension].cElements;
    };
    set.Put(L"AbsolutePosition", 61L); // across a block of the cache
    Variant block = set.Call(L"GetRows", {10L});
    EXPECT_EQ(extent(block, 0), 10U);
    EXPECT_EQ(extent(block, 1), 10U);
    EXPECT_EQ(Position(set), 71);
    set.Put(L"AbsolutePosition", 68L);
    EXPECT_EQ(cell(block, 0, 7), Code());
    EXPECT_EQ(cell(block, 1, 7), Value(set, L"descripcion").ToText());

    const Variant here = set.Call(L"Bookmark");
    set.Call(L"MoveFirst");
    block = set.Call(L"GetRows", {-1L, here, L"descripcion"});
    EXPECT_EQ(extent(block, 0), 1U);
    EXPECT_EQ(extent(block, 1), static_cast<ULONG>(kArticles - 67));
    EXPECT_TRUE(set.Call(L"EOF").ToBool());
    EXPECT_EQ(ErrorOf([&] { set.Call(L"GetRows", {1L}); }), kNoCurrentRecord);
    block = set.Call(L"GetRows", {5L, 2L, 0L});
    EXPECT_EQ(extent(block, 1), 1U) << "from the last record";
    EXPECT_EQ(ErrorOf([&] { set.Call(L"GetRows", {1L, 1L, L"color"}); }), kItemNotFound);
    EXPECT_EQ(ErrorOf([&] { set.Call(L"GetRows", {0L}); }), kInvalidArgument);
}

TEST_F(DemoHost, SelectionsAndFiltersLimitTheRowsAndAFailureChangesNothing) {
    database->Execute(L"update articulos set existencias = 0 where familia = '02' and id % 2 = 0");
    articles.Call(L"Requery", {L"seleccion_stock"});
    EXPECT_EQ(Rows(), CountOf(L"existencias > 0"));
    articles.Call(L"AplyFilter", {L"familia = '01' Or familia = '02' -- todo"});
    EXPECT_EQ(Rows(), CountOf(L"existencias > 0 and familia in ('01', '02')"));
    const long rows = Rows();
    ASSERT_GT(rows, 3);

    set.Put(L"AbsolutePosition", 3L);
    const std::wstring code = Code();
    EXPECT_EQ(ErrorOf([&] { articles.Call(L"AplyFilter", {L"familia ="}); }), kInvalidArgument);
    EXPECT_EQ(ErrorOf([&] { articles.Call(L"Requery", {L"selección"}); }), kInvalidArgument);
    short column = 99;
    EXPECT_EQ(ErrorOf([&] {
                  articles.Call(L"SetOrder", {Argument::Ref(column), L"", L"seleccion"});
              }),
              kInvalidArgument);
    articles.Call(L"Requery", {L"selec"});
    EXPECT_EQ(Rows(), rows);
    EXPECT_EQ(Code(), code);
    EXPECT_EQ(Position(set), 3);

    articles.Call(L"AplyFilter", {L""});
    EXPECT_EQ(Rows(), CountOf(L"existencias > 0"));
    articles.Call(L"Requery", {L"Seleccionar"});
    EXPECT_EQ(Rows(), CountOf(L"activo = 1"));
    articles.Call(L"AplyFilter", {L"familia = '01'"});
    articles.Call(L"Requery", {L"seleccion"});
    EXPECT_EQ(Rows(), kArticles);

    std::wstring filter = L"familia = '02'";
    articles.Call(L"SetFilter", {Argument::Ref(filter), L"FilterSelec"});
    EXPECT_EQ(articles.Call(L"GetFilter", {L"FilterSelec"}).ToText(), filter);
    EXPECT_EQ(articles.Call(L"GetFilter", {L"Filter"}).ToText(), L"");
    EXPECT_EQ(Rows(), kArticles) << "stored, not applied";

    articles.Call(L"FindRecord", {code});
    EXPECT_EQ(Code(), code);
    articles.Call(L"FindRecord", {L"no hay tal cosa", short{1}});
    EXPECT_EQ(Code(), code);
    LateObject taxes(MakeDataClass(database, L"impuestos").Get(), L"MyClase");
    taxes.Call(L"Requery", {L"seleccionar"}); // a table without that mark
    EXPECT_TRUE(taxes.Call(L"existenregistros").ToBool());
}

TEST_F(DemoHost, WhatIsTypedBecomesAFilter) {
    const auto found = [&](const std::wstring& filter) {
        articles.Call(L"AplyFilter", {filter});
        return Rows();
    };
    database->Execute(L"update articulos set descripcion = 'Cerámica ÑANDÚ' where id <= 2");
    EXPECT_EQ(found(FilterFor(L"Descripcion", L"ceramica ñ")), 2);
    EXPECT_EQ(found(FilterFor(L"descripcion", L"*ÑANDU")), 2);
    EXPECT_EQ(found(FilterFor(L"descripcion", L"ceramica ñ", 0)), 0); // "=" means equal
    EXPECT_EQ(found(FilterFor(L"descripcion", L"CERAMICA ñandú", 0)), 2);
    EXPECT_EQ(FilterFor(L"descripcion", L"*"), L"");
    EXPECT_EQ(found(FilterFor(L"existencias", L"100", 1) + L" And " + FilterFor(L"existencias", L"200", 2)),
              CountOf(L"existencias between 100 and 200"));
    EXPECT_EQ(ErrorOf([&] { FilterFor(L"existencias", L"cien"); }), kInvalidArgument);
    EXPECT_EQ(ErrorOf([&] { FilterFor(L"color", L"rojo"); }), kItemNotFound);
    EXPECT_EQ(ErrorOf([&] { FilterFor(L"precio", L"1", 3); }), kInvalidArgument);

    articles.Call(L"Requery", {L"seleccion"});
    const auto list = com::Make<TypedList>();
    list->items = {Code(), L"sin ninguno"};
    set.Call(L"MoveLast");
    list->items.push_back(Code());
    EXPECT_EQ(found(articles.Call(L"CreateFilter", {list.Get(), short{0}}).ToText()), 2);
}

TEST_F(DemoHost, TheDataClassJudgesWhatIsTyped) {
    const auto keyAfter = [&](const wchar_t* field, short key, bool accepted = true) {
        box.Put(L"DataField", field);
        const Variant answer = articles.Call(L"ValidaKey", {box.Get(), Argument::Ref(key)});
        EXPECT_EQ(answer.ToBool(), accepted);
        return static_cast<wchar_t>(key);
    };
    EXPECT_EQ(keyAfter(L"codigo", L'ñ'), L'Ñ');
    EXPECT_EQ(keyAfter(L"familia", L'a'), L'A');
    EXPECT_EQ(keyAfter(L"descripcion", L'a'), L'a');
    EXPECT_EQ(keyAfter(L"codigo", VK_BACK), VK_BACK);
    keyAfter(L"existencias", L'x', false);

    box.Put(L"DataField", L"alta");
    box.Put(L"Text", L"31/2/2024");
    EXPECT_FALSE(articles.Call(L"ValidaValue", {box.Get()}).ToBool());
    box.Put(L"Text", L"29/2/2024");
    EXPECT_TRUE(articles.Call(L"ValidaValue", {box.Get()}).ToBool());
    EXPECT_EQ(articles.Call(L"ValidaDefinedSize", {box.Get()}).ToLong(), 10);

    box.Put(L"DataField", L"descuentos"); // none of ours
    short key = L'x';
    EXPECT_TRUE(articles.Call(L"ValidaKey", {box.Get(), Argument::Ref(key)}).IsNull());
    EXPECT_TRUE(articles.Call(L"ValidaValue", {box.Get()}).IsNull());
    EXPECT_GT(articles.Call(L"ValidaDefinedSize", {box.Get()}).ToLong(), 0);
    EXPECT_EQ(ErrorOf([&] { articles.Call(L"ValidaValue", {Variant::Null()}); }), kInvalidArgument);
}

TEST_F(DemoHost, MarksAndNewRecordsReachTheDatabase) {
    Variant connection = articles.Call(L"GetConnection");
    articles.Call(L"Denegar_todos", {Argument::Ref(connection)});
    EXPECT_EQ(CountOf(L"activo = 1"), 0);
    articles.Call(L"Aceptar_todos", {Argument::Ref(connection)});
    EXPECT_EQ(CountOf(L"activo = 1"), kArticles);
    EXPECT_EQ(ErrorOf([&] { articles.Call(L"Denegar_todos", {set.Get()}); }), kInvalidArgument);

    const std::wstring code = articles.Call(L"NuevoCodigo_Fam", {L"01"}).ToText();
    EXPECT_EQ(CountOf((L"codigo = '" + code + L"'").c_str()), 0);
    EXPECT_EQ(ErrorOf([&] { articles.Call(L"NuevoCodigo_Fam", {L"XX"}); }), kInvalidArgument);

    // The record set need not show every table in the order of its codes: the new record is found by itself.
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 5);
    auto* values = static_cast<VARIANT*>(array->pvData);
    LONG next = 0;
    for (const wchar_t* text : {code.c_str(), L"Corona de prueba", L"01", L"12,50", L""}) {
        values[next++] = Variant(text).Detach();
    }
    VARIANT raw;
    raw.vt = VT_ARRAY | VT_VARIANT;
    raw.parray = array;
    const Variant record = Variant::Attach(raw);
    articles.Call(L"InsertarArticulo", {record});
    EXPECT_EQ(Code(), code);
    EXPECT_EQ(CountOf(L"precio = 1250 and existencias is null and descripcion = 'Corona de prueba'"), 1);
    EXPECT_EQ(Rows(), kArticles + 1);
    EXPECT_EQ(ErrorOf([&] { articles.Call(L"InsertarArticulo", {record}); }), kInvalidArgument);
    EXPECT_EQ(ErrorOf([&] { articles.Call(L"InsertarArticulo", {L"uno"}); }), kInvalidArgument);
    EXPECT_EQ(Rows(), kArticles + 1);
}

TEST_F(DemoHost, ADataSourceHandsOutTheRecordSet) {
    ComPtr<DataSource> source;
    ASSERT_EQ(articles.Get()->QueryInterface(kDataSourceId, reinterpret_cast<void**>(&source)), S_OK);
    EXPECT_TRUE(com::SameObject(source.Get(), articles.Get()));
    source->AddRef();
    EXPECT_EQ(source->Release(), 2U) << "each interface counts";
    com::Bstr member;
    ASSERT_EQ(source->getDataMemberName(0, member.Address()), S_OK);
    for (const DataMember name : {member.Get(), DataMember{}}) {
        ComPtr<IUnknown> found;
        EXPECT_EQ(source->getDataMember(name, IID_IDispatch, &found), S_OK);
        EXPECT_TRUE(com::SameObject(found.Get(), set.Get()));
    }
    ComPtr<IUnknown> none;
    EXPECT_TRUE(FAILED(source->getDataMember(com::Bstr(L"Secundario").Get(), IID_IDispatch, &none)));
    EXPECT_EQ(none.Get(), nullptr);
    EXPECT_EQ(ErrorOf([&] { MakeDataClass(database, L"facturas"); }), kItemNotFound);
    EXPECT_EQ(LateObject(MakeDataClass(database, L"ordenes").Get(), L"MyClase").Call(L"sClassName").ToText(),
              L"Ordenes");
}

TEST_F(DemoHost, TheSinkForwardsEveryCallAndMayChangeArguments) {
    std::wstring heard;
    LateObject sink(MakeSink([&](std::wstring_view member, Invocation& call) {
                        heard = std::wstring(member) + L'/' + std::to_wstring(call.Count());
                        if (member == L"ActualizaOrden") {
                            call.WriteBack(0, Variant(short{7}));
                        } else if (member == L"AceptarSeleccion") {
                            LateObject(call[1].ToObject().Get(), L"ctl").Put(L"Text", call[2]);
                        } else if (member == L"AceptarEtiqueta") {
                            throw com::Error(static_cast<HRESULT>(0x800A0029), L"No hay impresora.");
                        }
                    }).Get(),
                    L"objClsEvents");
    short column = 1;
    short mode = 2;
    sink.Call(L"actualizaorden", {Argument::Ref(column), Argument::Ref(mode)});
    EXPECT_EQ(heard, L"ActualizaOrden/2");
    EXPECT_EQ(column, 7);
    EXPECT_EQ(mode, 2);
    ComPtr<IDispatch> control = box.Get();
    sink.Call(L"AceptarSeleccion", {Argument::Ref(column), Argument::Ref(control), L"01000001"});
    EXPECT_EQ(box.Call(L"Text").ToText(), L"01000001");
    sink.Call(L"AceptarInformesFchAuto", {set.Get(), column, mode, Variant::Date(1), Variant::Date(2)});
    EXPECT_EQ(heard, L"AceptarInformesFchAuto/5");
    sink.Call(L"AceptarFechaEntre", {Variant::Date(1), Variant::Date(2)});
    EXPECT_EQ(heard, L"AceptarFechaEntre/2");
    EXPECT_EQ(ErrorOf([&] { sink.Call(L"AceptarEtiqueta", {set.Get()}); }), static_cast<HRESULT>(0x800A0029));
    EXPECT_EQ(ErrorOf([&] { sink.Call(L"AceptarBuscar", {column}); }), DISP_E_BADPARAMCOUNT);
}

TEST_F(DemoHost, ATextControlIsTheWindowsOwn) {
    EXPECT_EQ(box.Call(L"Name").ToText(), L"TxtFields");
    EXPECT_EQ(box.Call(L"Index").ToShort(), 3);
    EXPECT_EQ(box.Call(L"hWnd").ToLong(), static_cast<long>(reinterpret_cast<LONG_PTR>(edit)));
    box.Put(L"Text", L"Señal de prueba");
    wchar_t shown[32];
    GetWindowTextW(edit, shown, ARRAYSIZE(shown));
    EXPECT_STREQ(shown, L"Señal de prueba");
    box.Put(L"SelStart", 6L);
    box.Put(L"SelLength", 2L);
    EXPECT_EQ(box.Call(L"SelStart").ToLong(), 6);
    EXPECT_EQ(box.Call(L"SelLength").ToLong(), 2);
    box.Put(L"Enabled", false);
    box.Put(L"Visible", false);
    EXPECT_FALSE(IsWindowEnabled(edit));
    EXPECT_FALSE(box.Call(L"Visible").ToBool());
    EXPECT_EQ(box.Call(L"MaxLength").ToLong(), 0);
    box.Put(L"MaxLength", 4L);
    EXPECT_EQ(SendMessageW(edit, EM_GETLIMITTEXT, 0, 0), 4);

    DestroyWindow(edit);
    EXPECT_EQ(ErrorOf([&] { box.Call(L"Text"); }), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(box.Call(L"Name").ToText(), L"TxtFields");
}

TEST_F(DemoHost, ColumnsReportsAndDataClassesAreHandedOut) {
    LateObject columns(MakeColumns(L"articulos").Get(), L"Columns");
    EXPECT_EQ(columns.Call(L"Count").ToLong(), 10);
    LateObject(columns.Call(L"Item", {short{3}}).ToObject().Get(), L"Column").Put(L"Visible", false);
    LateObject price(columns.Call(L"Item", {L"precio"}).ToObject().Get(), L"Column");
    EXPECT_FALSE(price.Call(L"Visible").ToBool()) << "the column is the same one";
    EXPECT_EQ(price.Call(L"Caption").ToText(), L"Precio");
    EXPECT_EQ(price.Call(L"DataField").ToText(), L"precio");
    EXPECT_EQ(ErrorOf([&] { columns.Call(L"Item", {short{10}}); }), kItemNotFound);

    LateObject reports(MakeReports({L"Listado", L"Etiquetas"}).Get(), L"cReports");
    EXPECT_EQ(reports.Call(L"Count").ToLong(), 2);
    LateObject report(reports.Call(L"Item", {2L}).ToObject().Get(), L"Report");
    EXPECT_EQ(report.Call(L"Titulo").ToText(), L"Etiquetas");

    LateObject classes(MakeDataClasses(database).Get(), L"Clases");
    LateObject taxes(classes.Call(L"CrearClase", {L"IMPUESTOS"}).ToObject().Get(), L"MyClase");
    EXPECT_EQ(taxes.Call(L"sClassName").ToText(), L"impuestos");
    EXPECT_EQ(ErrorOf([&] { classes.Call(L"CrearClase", {L"facturas"}); }), kItemNotFound);
    EXPECT_EQ(classes.Call(L"ClaseRelacionada", {L"Ordenes", L"CLIENTE"}).ToText(), L"clientes");
    EXPECT_EQ(classes.Call(L"ClaseRelacionada", {L"Ordenes", L"Orden"}).ToText(), L"");
}

TEST_F(DemoHost, AnAppointmentIsKeptOnItsDay) {
    constexpr DATE kDay = 60000;
    const auto save = [&](const wchar_t* name, double hour, const wchar_t* place) {
        LateObject(MakeAppointments(database).Get(), L"Citas")
            .Call(L"GuardarCita", {Variant::Date(kDay), Variant::Date(hour), L"000", name, L"-.-", L"003",
                                   L"Eva", place, L"Prueba", static_cast<IDispatch*>(nullptr)});
    };
    save(L"Tarde", 17.75 / 24, L"2");
    save(L"", 9.25 / 24, L"0");
    EXPECT_EQ(AppointmentsOn(*database, kDay),
              (std::vector<std::wstring>{L"09:15   Prueba   Eva", L"17:45   Tarde   Prueba   Eva"}));
    EXPECT_EQ(AppointmentsOn(*database, kDay + 1), std::vector<std::wstring>());
}

} // namespace

} // namespace tamvelo::demo
