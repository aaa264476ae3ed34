// The benchmarks. Peers stand in the same run, since figures move between machines and ratios do
// not; bench/ratios.py prints the ratios.
#include <cstdlib>

#include "bench.hpp"

namespace vlx::bench {

const char* localeDirectory()
{
    return std::getenv("TS_LOCALEDIR") ? nullptr : VLX_BENCH_LOCALE;
}

RowLocale::RowLocale(benchmark::State& state, const char* name)
{
    const std::int32_t code = TSInit(localeDirectory(), nullptr, nullptr, nullptr, nullptr, 0, 0);
    started_ = code == TS_ERR_NONE || code == TS_ERR_NO_CONTROL_FILE;
    if (started_)
        locale_ = TSGetLocale(name, 0, nullptr);
    if (!locale_)
        state.SkipWithError("no such locale; build the target vlx_locale or set TS_LOCALEDIR");
}

RowLocale::~RowLocale()
{
    if (locale_)
        TSReleaseLocale(locale_);
    if (started_)
        TSTerm();
}

} // namespace vlx::bench

int main(int argc, char** argv)
{
    vlx::bench::addStartRows();
    vlx::bench::addSteppingRows();
    vlx::bench::addConversionRows();
    vlx::bench::addStringRows();
    vlx::bench::addCollationRows();
    vlx::bench::addMessageRows();
    vlx::bench::addSearchRows();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
