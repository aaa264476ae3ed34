// What the rows of numbers and times share: values that take turns, and a German locale.
#pragma once

#include <cstdint>
#include <string>

#include "bench.hpp"
#include "glibc.hpp"

namespace vlx::bench {

inline constexpr const char* kGermany = "German_Germany.MS1252";
inline constexpr std::size_t kValues = 256; // a power of two
inline constexpr std::int32_t kRoom = 128;

// Runs a row: `call(i)` gets an index of the values.
template <class Call>
void run(benchmark::State& state, const Call& call)
{
    std::size_t turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(turn));
        benchmark::ClobberMemory();
        turn = (turn + 1) % kValues;
    }
}

// A row of this library.
template <class Call>
void runVlx(benchmark::State& state, const Call& call)
{
    const RowLocale locale(state, kGermany);
    if (locale)
        run(state, [&](std::size_t i) { return call(locale.get(), i); });
}

// A row of the C library, in its German locale.
template <class Call>
void runGlibc(benchmark::State& state, const Call& call)
{
    const GlibcLocale locale("de_DE", "CP1252");
    if (!locale) {
        state.SkipWithError("localedef cannot make de_DE.CP1252 here");
        return;
    }
    run(state, call);
}

inline std::u16string wide(const std::string& text)
{
    std::u16string units;
    for (const char byte : text)
        units += static_cast<unsigned char>(byte);
    return units;
}

} // namespace vlx::bench
