// From nothing to the first German locale, and back to nothing.
//
// The rows are a start in a warm process: files are in the page cache, libraries are loaded. This
// library reads the control file and maps the objects of a language, a territory and a code page.
// ICU's data is part of a loaded library, so that it opens no file; u_cleanup() drops its caches.
// The C library maps a file for each category, and unmaps it with the last use.
#include <unicode/uclean.h>
#include <unicode/ucnv.h>
#include <unicode/udat.h>
#include <unicode/unum.h>

#include "bench.hpp"
#include "glibc.hpp"

namespace vlx::bench {

namespace {

void startVlx(benchmark::State& state)
{
    for (auto _ : state) {
        if (TSInit(localeDirectory(), nullptr, nullptr, nullptr, nullptr, 0, 0) != TS_ERR_NONE) {
            state.SkipWithError("no locale directory; build vlx_locale or set TS_LOCALEDIR");
            break;
        }
        TSLocale* const locale = TSGetLocale("German_Germany.MS1252", 0, nullptr);
        if (locale)
            TSReleaseLocale(locale);
        else
            state.SkipWithError("no German_Germany.MS1252 in the locale directory");
        TSTerm();
        if (!locale)
            break;
    }
}

// What ICU opens for German text: a converter, and where `formats` asks for it the number, currency
// and date values of the locale, which a locale of this library holds.
void startIcu(benchmark::State& state, bool formats)
{
    for (auto _ : state) {
        UErrorCode code = U_ZERO_ERROR;
        u_init(&code);
        UConverter* const converter = ucnv_open("windows-1252", &code);
        UNumberFormat* numbers = nullptr;
        UDateFormat* dates = nullptr;
        if (formats) {
            numbers = unum_open(UNUM_CURRENCY, nullptr, 0, "de_DE", nullptr, &code);
            dates = udat_open(UDAT_DEFAULT, UDAT_DEFAULT, "de_DE", nullptr, 0, nullptr, 0, &code);
        }
        udat_close(dates);
        unum_close(numbers);
        ucnv_close(converter);
        u_cleanup();
        if (U_FAILURE(code)) {
            state.SkipWithError(u_errorName(code));
            break;
        }
    }
}

void startGlibc(benchmark::State& state, const char* charmap)
{
    const std::string name = glibcLocaleName("de_DE", charmap);
    if (name.empty()) {
        state.SkipWithError("localedef cannot make the locale here");
        return;
    }
    for (auto _ : state)
        freelocale(newlocale(LC_ALL_MASK, name.c_str(), nullptr));
}

} // namespace

void addStartRows()
{
    benchmark::RegisterBenchmark("Start/German/vlx", startVlx);
    benchmark::RegisterBenchmark("Start/German/icu", startIcu, true);
    benchmark::RegisterBenchmark("Start/German/glibc_1252", startGlibc, "CP1252");
    benchmark::RegisterBenchmark("Start/German/glibc_utf8", startGlibc, "UTF-8");
    // Less than the others do, and so no peer: a case of its own.
    benchmark::RegisterBenchmark("Start/converter_alone/icu", startIcu, false);
}

} // namespace vlx::bench
