// The one list of what the library calls, against the sources that call, the documentation and the type
// library.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "base/Text.h"
#include "com/Error.h"
#include "com/Variant.h"
#include "contract/Members.h"
#include "tests/hosts/Server.h"
#include "tests/support/Operations.h"

namespace tamvelo::hosts {
namespace {

using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::Not;

const std::filesystem::path kSources = std::filesystem::path(TAMVELO_HOSTS) / ".." / "..";
constexpr const char* kStoreys[] = {"com",   "contract", "win",       "objects",    "grid",    "environment",
                                    "frame", "search",   "selection", "gridconfig", "reports", "dates"};

std::string ReadAll(const std::filesystem::path& file) {
    std::ostringstream all;
    all << std::ifstream(kSources / file, std::ios::binary).rdbuf();
    EXPECT_FALSE(all.str().empty()) << file;
    return all.str();
}

std::string Narrow(const wchar_t* text) { return base::ToUtf8(text); }

/// The library's sources, but the list itself.
std::string Sources() {
    std::string all;
    for (const char* storey : kStoreys) {
        for (const auto& file : std::filesystem::directory_iterator(kSources / storey)) {
            const auto extension = file.path().extension();
            if ((extension == ".cpp" || extension == ".h") && file.path().stem() != "Members") {
                all += ReadAll(file.path());
            }
        }
    }
    return all;
}

/// A member's name as it is called; the sign of a property that is written is none of it.
std::string NameOf(const contract::Member& row) {
    std::string name = Narrow(row.name);
    name.erase(name.find_last_not_of('=') + 1);
    return name;
}

TEST(Members, AreThoseThatTheSourcesCall) {
    const std::string sources = Sources();
    std::set<std::string> listed{"ShowColums", "ShowSelec", "Index"}; // of our own objects
    for (const contract::Member& row : contract::Members()) {
        listed.insert(NameOf(row));
        EXPECT_NE(sources.find("L\"" + NameOf(row) + "\""), std::string::npos)
            << NameOf(row) << " is listed and not called";
    }
    const std::regex calls(
        R"re(\b(?:Call|Put|Answers|Offer|IsTrue|Ask|FindMember|Hand|OptionalMember \w+)[({](?:\w+(?:\.Get\(\))?, )?L"(\w+)")re");
    size_t found = 0;
    for (std::sregex_iterator at(sources.begin(), sources.end(), calls), end; at != end; ++at, ++found) {
        EXPECT_TRUE(listed.contains((*at)[1])) << (*at)[1] << " is called and not listed";
    }
    EXPECT_GT(found, 120U) << "the calls are written in another way now";
}

TEST(Members, AreTheDocumentedOnes) {
    std::string calls;
    std::string object;
    std::set<std::string> written;
    const std::string environment = ReadAll("docs/environment.md");
    for (const contract::Member& row : contract::Members()) {
        if (row.object == std::wstring_view(L"Configuracion")) { // there and below, the environment
            object = "environment";
        }
        if (object == "environment") {
            EXPECT_NE(environment.find("`" + NameOf(row) + "("), std::string::npos)
                << NameOf(row) << " is not in docs/environment.md";
            continue;
        }
        const std::string line =
            Narrow(row.object) + "." + Narrow(row.name) + "(" + Narrow(row.arguments) + ")\n";
        if (written.insert(line).second) { // an empty line before what others are asked for
            const bool part = Narrow(row.object).starts_with("Field") || Narrow(row.object) == "Column" ||
                              Narrow(row.object) == "informe";
            calls += !object.empty() && object != Narrow(row.object) && !part ? "\n" + line : line;
            object = Narrow(row.object);
        }
    }
    const std::string document = ReadAll("docs/host-contract.md");
    const size_t at = document.find("```\n", document.find("## Every call")) + 4;
    EXPECT_EQ(document.substr(at, document.find("```", at) - at), calls)
        << "what docs/host-contract.md should list";
}

/// The members of the objects that an operation needs so, each with its object where it is not the first one.
std::string Needed(std::initializer_list<std::wstring_view> objects, contract::Need need, size_t operation) {
    std::string names;
    for (const contract::Member& row : contract::Members()) {
        const std::string name =
            "`" + (row.object == *objects.begin() ? "" : Narrow(row.object) + ".") + NameOf(row) + "`";
        if (row.need == need && row.operations & contract::Bit(operation) &&
            !Narrow(row.name).ends_with("=") && std::ranges::find(objects, row.object) != objects.end() &&
            names.find(name) == std::string::npos) {
            names += (names.empty() ? "" : need == contract::Need::EitherOf ? " o " : " ") + name;
        }
    }
    return names;
}

TEST(Members, AreThoseOfTheTableForHosts) {
    using Rows = std::vector<std::pair<std::string, std::string>>; // what, and for which operations
    Rows needs;
    Rows answers;
    const auto add = [](Rows& rows, const std::string& what, const std::string& name) {
        const auto known = std::ranges::find(rows, what, &Rows::value_type::first);
        if (known != rows.end()) {
            known->second += ", " + name;
        } else {
            rows.emplace_back(what, name);
        }
    };
    for (size_t i = 0; i < contract::Operations().size(); ++i) {
        using enum contract::Need;
        const std::string name = "`" + Narrow(contract::Operations()[i].name) + "`";
        const std::string always = Needed({L"MyClase", L"Columns", L"Column"}, Always, i);
        if (!always.empty()) {
            add(needs, always + " | " + Needed({L"MyClase"}, Command, i), name);
        }
        add(answers, Needed({L"objClsEvents"}, Always, i) + Needed({L"objClsEvents"}, EitherOf, i), name);
    }
    const auto written = [](const Rows& rows) {
        std::string lines;
        for (const auto& [what, names] : rows) {
            lines += "| " + names + " | " + what + " |\n";
        }
        return lines;
    };
    std::string text =
        "| operaciones | de `MyClase` y de las columnas, siempre | de `MyClase`, para alguna orden "
        "|\n|---|---|---|\n" +
        written(needs);
    text += "\nDel conjunto de registros, en las que lo tienen: " +
            Needed({L"Recordset", L"Fields", L"Field"}, contract::Need::Always, 3) + ", y " +
            Needed({L"Recordset"}, contract::Need::EitherOf, 3) +
            ".\n\n| operaciones | responden con |\n|---|---|\n" + written(answers);
    const std::string document = ReadAll("docs/escribir-su-programa.md");
    const std::string begin = "<!-- lista -->\n";
    const size_t at = document.find(begin) + begin.size();
    if (document.substr(at, document.find("<!-- fin", at) - at) != text) {
        std::ofstream("lista.md", std::ios::binary) << text;
        FAIL() << "docs/escribir-su-programa.md says something else: lista.md in the build folder is what it "
                  "should list.";
    }
}

TEST(Members, AreListedForTheOperationsOfTheTypeLibrary) {
    std::vector<std::wstring> described;
    std::vector<std::wstring> listed;
    for (const auto& operation : tamvelo::testing::Operations()) {
        described.push_back(operation.name);
    }
    for (const contract::Operation& operation : contract::Operations()) {
        listed.emplace_back(operation.name);
    }
    EXPECT_THAT(listed, ElementsAreArray(described));
    contract::OperationSet hearing = 0; // each ends with an answer
    for (const contract::Member& row : contract::Members()) {
        hearing |= row.object == std::wstring_view(L"objClsEvents") ? row.operations : 0;
    }
    EXPECT_EQ(hearing, contract::Bit(listed.size()) - 1);
}

std::wstring HelpOf(ITypeInfo* info, MEMBERID member) {
    com::Bstr help;
    com::Check(info->GetDocumentation(member, nullptr, help.Address(), nullptr, nullptr));
    return std::wstring(help.View());
}

// What an object browser shows. Parameters have no texts of their own there.
TEST(TypeLibraryHelp, SaysWhatEachFunctionAndParameterIs) {
    com::ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLibEx((Folder() + L"\\" TAMVELO_LIBRARY).c_str(), REGKIND_NONE, &library), S_OK);
    size_t functions = 0;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        com::ComPtr<ITypeInfo> info;
        ASSERT_EQ(library->GetTypeInfo(i, &info), S_OK);
        EXPECT_NE(HelpOf(info.Get(), MEMBERID_NIL), L"");
        for (const auto& function : tamvelo::testing::Functions(info.Get())) {
            SCOPED_TRACE(base::ToUtf8(function.name));
            const std::string help = base::ToUtf8(HelpOf(info.Get(), function.id));
            EXPECT_GT(help.size(), 10U);
            EXPECT_THAT(help, Not(HasSubstr("Ã"))); // letters of another set
            for (const auto& parameter : function.parameters) {
                EXPECT_THAT(help, HasSubstr(". " + base::ToUtf8(parameter.name) + ": "));
            }
            ++functions;
        }
    }
    EXPECT_EQ(functions, 36U + 21U + 21U);
    com::ComPtr<ITypeInfo> info;
    ASSERT_EQ(library->GetTypeInfo(0, &info), S_OK);
    for (size_t i = 0; i < tamvelo::testing::Operations().size(); ++i) {
        const contract::Operation& operation = contract::Operations()[i];
        const std::wstring help = HelpOf(info.Get(), tamvelo::testing::Operations()[i].id);
        EXPECT_THAT(help, HasSubstr(std::wstring(L" (") + operation.form + L"); responde con "));
        const size_t at = help.find(L"responde con ") + 13;
        const std::wstring member = help.substr(at, help.find_first_of(L".(", at) - at);
        EXPECT_TRUE(std::ranges::any_of(contract::Members(), [&](const contract::Member& row) {
            return row.name == member && row.operations & contract::Bit(i);
        })) << base::ToUtf8(std::wstring(operation.name) + L": " + member);
    }
}

} // namespace
} // namespace tamvelo::hosts
