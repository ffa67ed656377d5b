#pragma once

#include "tests/support/RecordSets.h"

namespace tamvelo::testing {

/// The kinds of record sets that hosts may bring, by what they do otherwise than the fullest one.
inline constexpr std::string_view kRecordSetKinds[] = {
    "full",
    "no Sort",
    "no Sort, no version",
    "no clone",
    "no clone, no Sort, no version",
    "no GetRows",
    "no GetRows, no Sort",
    "no count",
    "no count, no Sort, no version",
    "no position, no Sort, no version",
    "snapshot, no Sort, no version",
    "snapshot, record's fields, no GetRows, no Sort, no version",
    "script, no clone, no GetRows, no Sort, no version, no bookmark, no types",
    "script, no clone, no GetRows, no position, no types",
    "script, record's fields, no clone, no GetRows",
    "no clone, no GetRows, no Sort, no version, no position, no types",
    "no clone, no GetRows, no Sort, no version, no bookmark, record's fields",
    "no count, no end, no clone, no Sort, no version, no position",
    "no count, no end, no clone, no Sort, no version, no bookmark",
};

inline RecordSetOptions OptionsOf(std::string_view kind, long rows) {
    using Options = RecordSetOptions;
    constexpr std::pair<std::string_view, bool Options::*> kWords[] = {
        {"no clone", &Options::clone},        {"no GetRows", &Options::getRows},
        {"no bookmark", &Options::bookmarks}, {"no position", &Options::absolutePosition},
        {"no types", &Options::fieldTypes},   {"no version", &Options::dataVersion},
        {"no count", &Options::knowsCount},   {"no Sort", &Options::filterAndSort},
        {"snapshot", &Options::snapshots},    {"no end", &Options::ends},
        {"fields", &Options::recordFields},
    };
    Options options{.rows = rows};
    for (const auto& [word, ability] : kWords) {
        if (kind.find(word) != kind.npos) {
            options.*ability = !(options.*ability);
        }
    }
    return options;
}

/// The set as its host hands it over.
inline com::ComPtr<IDispatch> Reach(std::string_view kind, MemoryRecordSet* set) {
    return kind.starts_with("script") ? AsScript(set) : com::ComPtr<IDispatch>(set);
}

} // namespace tamvelo::testing
