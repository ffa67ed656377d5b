#include "bench/GridPart.h"

#include <cstdio>

#include "base/Text.h"
#include "bench/Clock.h"
#include "com/Error.h"
#include "grid/Grid.h"
#include "tests/support/RecordSets.h"

namespace tamvelo::bench {

namespace {

/// A grid in a window of its own over its own records.
class Subject : private grid::GridEvents {
public:
    explicit Subject(long rows)
        : m_window(CreateWindowW(L"STATIC", nullptr, WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, kWidth,
                                 kHeight, nullptr, nullptr, nullptr, nullptr)),
          m_set(com::Make<testing::MemoryRecordSet>(testing::RecordSetOptions{.rows = rows})),
          m_grid(m_window, 1, *this) {
        SetWindowPos(m_grid.Window(), nullptr, 0, 0, kWidth, kHeight, SWP_NOZORDER);
        m_grid.SetDataSource(m_set.Get());
        Paint();
    }
    virtual ~Subject() { DestroyWindow(m_window); }

    double Filter(bool on) {
        m_set->SetFilter(on ? L"pares" : L"");
        return Time([&] { m_grid.Requeried(); });
    }
    double Order(bool descending) {
        m_set->SetSort(descending ? L"Codigo DESC" : L"");
        return Time([&] { m_grid.HostChanged(); });
    }

private:
    static constexpr int kWidth = 640;
    static constexpr int kHeight = 400;

    template <class Work>
    double Time(const Work& work) {
        const double start = Now();
        work();
        Paint();
        return Now() - start;
    }
    void Paint() {
        RedrawWindow(m_window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        GdiFlush();
    }

    void RowActivated() override {}
    void HeadingClicked(short) override {}
    void ContextMenuAsked(POINT) override {}
    void CurrentRowChanged() override {}
    void LayoutChanged() override {}
    void Failed(const com::Error& error) noexcept override {
        // A measurement of a grid that fails would be worth nothing.
        fprintf(stderr, "%s\n", base::ToUtf8(error.description).c_str());
        ExitProcess(2);
    }

    const HWND m_window;
    const com::ComPtr<testing::MemoryRecordSet> m_set;
    grid::Grid m_grid;
};

/// In turns, so that whatever else the machine does weighs on both alike.
GridPart Measure(long few, long many, int repetitions, double (Subject::*change)(bool)) {
    Subject small(few);
    Subject large(many);
    std::vector<double> ofSmall;
    std::vector<double> ofLarge;
    for (int i = -2; i < repetitions; ++i) { // the first two are for warming up
        const bool on = i % 2 == 0;
        const double took = (small.*change)(on);
        const double tookLarge = (large.*change)(on);
        if (i >= 0) {
            ofSmall.push_back(took);
            ofLarge.push_back(tookLarge);
        }
    }
    return {Typical(ofSmall), Typical(ofLarge)};
}

} // namespace

GridPart MeasureFilter(long few, long many, int repetitions) {
    return Measure(few, many, repetitions, &Subject::Filter);
}

GridPart MeasureOrder(long few, long many, int repetitions) {
    return Measure(few, many, repetitions, &Subject::Order);
}

} // namespace tamvelo::bench
