#include "tests/support/Contract.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <vector>

#include "base/Text.h"

namespace tamvelo::testing {

namespace {

constexpr char kDocument[] =
#include "HostContract.inc"
    ;

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

Contract Read() {
    Contract contract;
    bool listed = false;
    for (const std::wstring& line : Split(*base::FromUtf8(kDocument), L'\n')) {
        listed = line.starts_with(L"```") ? !listed : listed;
        const size_t dot = line.find(L'.');
        const size_t open = line.find(L'(');
        if (!listed || dot == std::wstring::npos || open == std::wstring::npos) {
            continue;
        }
        const bool put = line[open - 1] == L'=';
        const std::wstring name = base::Lower(line.substr(dot + 1, open - dot - 1 - (put ? 1 : 0)));
        Member& member = contract[line.substr(0, dot)][name];
        (put ? member.puts : member.calls)
            .push_back(Parsed(line.substr(open + 1, line.rfind(L')') - open - 1)));
    }
    return contract;
}

const Contract& Listed() {
    static const Contract contract = Read();
    return contract;
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
        return false;
    }
    return std::ranges::any_of(put ? known->second.puts : known->second.calls,
                               [&](const Call& call) { return Fits(call, parameters); });
}

} // namespace tamvelo::testing
