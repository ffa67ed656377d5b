#include "bench/HostCalls.h"

#include "bench/Clock.h"
#include "com/Error.h"
#include "contract/DataClass.h"

namespace tamvelo::bench {

namespace {

constexpr int kCallsAtOnce = 2000; // one alone is too short for the clock
constexpr wchar_t kSought[] = L"500";
constexpr short kColumn = 0;

/// What anybody who calls late must do: the arguments in their cells, the call, the answer thrown away.
void Invoke(IDispatch* object, DISPID id, VARIANT* arguments, UINT count) {
    DISPPARAMS parameters{arguments, nullptr, count, 0};
    VARIANT result;
    VariantInit(&result);
    EXCEPINFO thrown{};
    com::Check(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                              &parameters, &result, &thrown, nullptr));
    VariantClear(&result);
}

template <class Work>
double TimeOf(const Work& work) {
    const double start = Now();
    for (int i = 0; i < kCallsAtOnce; ++i) {
        work();
    }
    return (Now() - start) / kCallsAtOnce;
}

template <class Adapter, class Bare>
HostCall Measure(int repetitions, const Adapter& adapter, const Bare& bare) {
    std::vector<double> ofAdapter;
    std::vector<double> ofBare;
    TimeOf(adapter);
    TimeOf(bare);
    for (int i = 0; i < repetitions; ++i) {
        ofAdapter.push_back(TimeOf(adapter));
        ofBare.push_back(TimeOf(bare));
    }
    return {Typical(ofAdapter), Typical(ofBare)};
}

} // namespace

HostCall MeasureMoveNext(IDispatch* data, int repetitions) {
    contract::DataClass adapter(data);
    const DISPID id = com::FindMember(data, L"MoveNext");
    return Measure(
        repetitions, [&] { adapter.MoveNext(); }, [&] { Invoke(data, id, nullptr, 0); });
}

HostCall MeasureFindRecord(IDispatch* data, int repetitions) {
    contract::DataClass adapter(data);
    const DISPID id = com::FindMember(data, L"FindRecord");
    return Measure(
        repetitions, [&] { adapter.FindRecord(kSought, kColumn); },
        [&] {
            VARIANT arguments[2]; // the last one first
            arguments[0].vt = VT_I2;
            arguments[0].iVal = kColumn;
            arguments[1].vt = VT_BSTR;
            arguments[1].bstrVal = SysAllocString(kSought);
            Invoke(data, id, arguments, ARRAYSIZE(arguments));
            SysFreeString(arguments[1].bstrVal);
        });
}

} // namespace tamvelo::bench
