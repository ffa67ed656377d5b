#include "tests/support/Contract.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <vector>

#include "base/Text.h"
#include "contract/Members.h"
#include "tests/support/Fake.h"

namespace tamvelo::testing {

namespace {

/// One listed call: for each argument the types it may have, and how many there are at least.
struct Call {
    std::vector<std::vector<VARTYPE>> arguments;
    size_t least = 0;
};
struct Member {
    std::vector<Call> calls;
    std::vector<Call> puts;
};

constexpr VARTYPE kAny = VT_ILLEGAL;

VARTYPE TypeNamed(std::wstring_view name) {
    static const std::map<std::wstring_view, VARTYPE> types{
        {L"Integer", VT_I2},      {L"Long", VT_I4},     {L"Boolean", VT_BOOL},
        {L"Date", VT_DATE},       {L"String", VT_BSTR}, {L"Object", VT_DISPATCH},
        {L"Variant", VT_VARIANT}, {L"Empty", VT_EMPTY}, {L"Array", VT_ARRAY | VT_VARIANT},
        {L"Value", kAny}};
    const bool reference = name.starts_with(L"&");
    const VARTYPE type = types.at(reference ? name.substr(1) : name);
    return static_cast<VARTYPE>(reference ? type | VT_BYREF : type);
}

std::vector<std::wstring> Split(const std::wstring& text, wchar_t at) {
    std::vector<std::wstring> parts;
    std::wstringstream stream(text);
    for (std::wstring part; std::getline(stream, part, at);) {
        parts.push_back(part);
    }
    return parts;
}

/// "String[, Integer]": what is from the bracket on may be left out.
Call Parsed(const std::wstring& list) {
    Call call;
    bool optional = false;
    for (const std::wstring& argument : Split(list, L',')) {
        optional = optional || argument.starts_with(L"[");
        std::wstring types = argument;
        std::erase_if(types, [](wchar_t c) { return c == L'[' || c == L']' || c == L' '; });
        auto& allowed = call.arguments.emplace_back();
        for (const std::wstring& type : Split(types, L'|')) {
            allowed.push_back(TypeNamed(type));
        }
        call.least += optional ? 0 : 1;
        optional = optional || argument.ends_with(L"[");
    }
    return call;
}

/// By object, then by member in small letters.
using Contract = std::map<std::wstring, std::map<std::wstring, Member>>;

constexpr std::wstring_view kEnvironment[] = {L"Configuracion", L"Archivos", L"Errores",
                                              L"Clases",        L"Citas",    L"Foco"};

Contract Read() {
    Contract listed;
    for (const contract::Member& row : contract::Members()) {
        std::wstring name = base::Lower(row.name);
        const bool put = name.ends_with(L"=");
        name.erase(put ? name.size() - 1 : name.size());
        // The tests' environment is all its components in one.
        const bool component = std::ranges::find(kEnvironment, row.object) != std::end(kEnvironment);
        Member& member = listed[component ? L"Entorno" : row.object][name];
        (put ? member.puts : member.calls).push_back(Parsed(row.arguments));
    }
    return listed;
}

const Contract& Listed() {
    static const Contract listed = Read();
    return listed;
}

bool Fits(const Call& call, const DISPPARAMS& parameters) {
    if (parameters.cArgs < call.least || parameters.cArgs > call.arguments.size()) {
        return false;
    }
    for (UINT i = 0; i < parameters.cArgs; ++i) {
        const auto& allowed = call.arguments[i];
        const VARTYPE type = parameters.rgvarg[parameters.cArgs - 1 - i].vt;
        if (std::ranges::find(allowed, type) == allowed.end() &&
            (type & VT_BYREF || std::ranges::find(allowed, kAny) == allowed.end())) {
            return false;
        }
    }
    return true;
}

} // namespace

bool IsListed(const std::wstring& object, const std::wstring& member) {
    const auto found = Listed().find(object);
    return found == Listed().end() || found->second.contains(base::Lower(member));
}

bool IsListed(const std::wstring& object, const std::wstring& member, bool put,
              const DISPPARAMS& parameters) {
    const auto found = Listed().find(object);
    if (found == Listed().end()) {
        return true;
    }
    const auto known = found->second.find(base::Lower(member));
    if (known == found->second.end()) {
        return member == kOwnValue && object == L"informe"; // a report's own value may be its title
    }
    return std::ranges::any_of(put ? known->second.puts : known->second.calls,
                               [&](const Call& call) { return Fits(call, parameters); });
}

} // namespace tamvelo::testing
