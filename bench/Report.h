#pragma once

#include <string>
#include <vector>

namespace tamvelo::bench {

/// The budgets and what was measured against them.
class Report {
public:
    /// `value` may be `limit` times `base`; both in seconds.
    void Ratio(const std::string& id, const std::string& what, double value, double base, double limit);
    /// `value` itself may be `limit`; `unit` is what both count.
    void Amount(const std::string& id, const std::string& what, double value, double limit,
                const std::string& unit);

    /// The table, then a line for programs per row: bench;id;value;base;ratio;limit;verdict (seconds, or the
    /// row's unit; base is empty for an amount).
    void Print() const;
    bool AllMet() const;

private:
    struct Row {
        std::string id;
        std::string what;
        std::string value;
        std::string base;
        std::string result; // the ratio, or the amount itself
        std::string limit;
        std::string forPrograms;
        bool met;
    };
    std::vector<Row> m_rows;
};

} // namespace tamvelo::bench
