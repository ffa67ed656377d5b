#include "bench/Report.h"

#include <algorithm>
#include <cstdio>

namespace tamvelo::bench {

namespace {

template <class... Values>
std::string Formatted(const char* format, Values... values) {
    char text[200];
    snprintf(text, sizeof text, format, values...);
    return text;
}

std::string Spanish(std::string number) {
    std::replace(number.begin(), number.end(), '.', ',');
    return number;
}

std::string Time(double seconds) {
    if (seconds >= 1e-3) {
        return Spanish(Formatted("%.2f ms", seconds * 1e3));
    }
    return Spanish(seconds >= 1e-6 ? Formatted("%.2f µs", seconds * 1e6)
                                   : Formatted("%.0f ns", seconds * 1e9));
}

/// Columns line up by characters; UTF-8 has more bytes than those.
std::string Padded(const std::string& text, int width, bool right = true) {
    const auto characters = std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
    const std::string fill(static_cast<size_t>(std::max<long>(0, width - static_cast<long>(characters))),
                           ' ');
    return right ? fill + text : text + fill;
}

void PrintLine(const std::string& what, const std::string& value, const std::string& base,
               const std::string& result, const std::string& limit, const std::string& verdict) {
    const std::string line = Padded(what, 62, false) + Padded(value, 12) + Padded(base, 12) +
                             Padded(result, 12) + Padded(limit, 12) + "  " + verdict;
    puts(line.c_str());
}

const char* Verdict(bool met) { return met ? "cumple" : "NO CUMPLE"; }

} // namespace

void Report::Ratio(const std::string& id, const std::string& what, double value, double base, double limit) {
    const double ratio = value / base;
    const bool met = ratio <= limit;
    m_rows.push_back(
        {id, what, Time(value), Time(base), Spanish(Formatted("%.2f", ratio)),
         Spanish(Formatted("%.2f", limit)),
         Formatted("bench;%s;%.9f;%.9f;%.3f;%.3f;%s", id.c_str(), value, base, ratio, limit, Verdict(met)),
         met});
}

void Report::Amount(const std::string& id, const std::string& what, double value, double limit,
                    const std::string& unit) {
    const bool met = value <= limit;
    const char* format = unit == "MiB" ? "%.2f " : "%.0f ";
    m_rows.push_back({id, what, "", "", Spanish(Formatted(format, value)) + unit,
                      Spanish(Formatted(format, limit)) + unit,
                      Formatted("bench;%s;%.3f;;;%.3f;%s", id.c_str(), value, limit, Verdict(met)), met});
}

void Report::Print() const {
    PrintLine("Medida", "valor", "suelo", "resultado", "máximo", "");
    for (const Row& row : m_rows) {
        PrintLine(row.what, row.value, row.base, row.result, row.limit, Verdict(row.met));
    }
    puts("");
    for (const Row& row : m_rows) {
        puts(row.forPrograms.c_str());
    }
}

bool Report::AllMet() const {
    return std::all_of(m_rows.begin(), m_rows.end(), [](const Row& row) { return row.met; });
}

} // namespace tamvelo::bench
