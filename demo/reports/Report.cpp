#include "demo/reports/Report.h"

#include "demo/data/Values.h"

namespace tamvelo::demo {

namespace {

using Shape = ReportInfo::Shape;
using Line = Report::Line;

/// Adds up the columns that have totals.
class Sums {
public:
    explicit Sums(const std::vector<ReportColumn>& columns) : m_columns(columns), m_sums(columns.size()) {}

    void Add(std::size_t column, const Value& value) {
        const auto* number = std::get_if<std::int64_t>(&value);
        m_sums[column] += number != nullptr ? *number : 0;
    }
    void CountRow() { ++m_rows; }
    bool Any() const { return m_rows > 0; }
    /// The line of the sums so far, which begin anew.
    Line Take(Line::Kind kind, const wchar_t* name) {
        Line line{kind, std::vector<std::wstring>(m_columns.size())};
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            if (m_columns[i].total) {
                line.cells[i] = Shown(m_columns[i], m_sums[i]);
            }
        }
        line.cells[0] = name + (L" (" + ShowCount(m_rows) + L')');
        *this = Sums(m_columns);
        return line;
    }
    /// What is added up has its thousands told apart; a number that names something has not.
    static std::wstring Shown(const ReportColumn& column, const Value& value) {
        const auto* number = std::get_if<std::int64_t>(&value);
        return number != nullptr && column.total && column.type == Type::Integer
                   ? ShowCount(*number)
                   : ShowValue(column.type, value);
    }
    Sums& operator=(const Sums& other) {
        m_sums = other.m_sums;
        m_rows = other.m_rows;
        return *this;
    }
    Sums(const Sums&) = default;

private:
    const std::vector<ReportColumn>& m_columns;
    std::vector<std::int64_t> m_sums;
    std::int64_t m_rows = 0;
};

/// Gives the query its conditions and answers those that it has as one text.
std::wstring BindAll(Statement& query, const Parameters& parameters) {
    std::wstring conditions;
    for (const Parameter& parameter : parameters) {
        if (query.BindNamed(parameter.name, parameter.value) && !parameter.shown.empty()) {
            conditions += (conditions.empty() ? L"" : L"; ") + parameter.shown;
        }
    }
    if (!conditions.empty()) { // the first begins the sentence
        conditions[0] = static_cast<wchar_t>(towupper(static_cast<wint_t>(conditions[0])));
    }
    return conditions;
}

} // namespace

Report Produce(Database& database, const ReportInfo& info, const Parameters& parameters) {
    Report report{info.shape, info.title, {}, {}, info.columns, {}};
    Statement query(database, info.sql);
    report.conditions = BindAll(query, parameters);
    for (const Parameter& parameter : parameters) {
        const auto* text = std::get_if<std::wstring>(&parameter.value);
        if (parameter.name == std::string_view(kDocument) && text != nullptr) {
            report.stamp = *text;
        }
    }

    const bool groups = info.shape == Shape::Groups;
    Sums ofGroup(report.columns);
    Sums ofAll(report.columns);
    std::wstring group;
    const auto endGroup = [&] {
        if (groups && ofGroup.Any() && report.rows <= kMostRows) {
            report.lines.push_back(ofGroup.Take(Line::Subtotal, L"Suma"));
        }
    };
    while (query.Step()) {
        if (groups) {
            if (std::wstring next = ShowValue(Type::Text, query.Cell(0)); report.rows == 0 || next != group) {
                endGroup();
                group = std::move(next);
                if (report.rows < kMostRows) {
                    report.lines.push_back({Line::Group, {group}});
                }
            }
        }
        Line line{Line::Row, {}};
        for (std::size_t i = 0; i < report.columns.size(); ++i) {
            const Value value = query.Cell(static_cast<int>(i) + (groups ? 1 : 0));
            ofGroup.Add(i, value);
            ofAll.Add(i, value);
            if (report.rows < kMostRows) {
                line.cells.push_back(Sums::Shown(report.columns[i], value));
            }
        }
        ofGroup.CountRow();
        ofAll.CountRow();
        if (report.rows++ < kMostRows) {
            report.lines.push_back(std::move(line));
        }
    }
    endGroup();
    if (report.rows > kMostRows) {
        report.lines.push_back(
            {Line::Group,
             {L"Se muestran las " + ShowCount(kMostRows) + L" primeras líneas; los totales son de todas."}});
    }
    if (info.shape != Shape::Labels) {
        report.lines.push_back(ofAll.Take(Line::Total, L"Total"));
    }
    return report;
}

} // namespace tamvelo::demo
