// What the rows over texts share: each runs over pieces, one after the other.
#pragma once

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <unicode/utypes.h>

#include "bench.hpp"
#include "glibc.hpp"
#include "texts.hpp"

namespace vlx::bench {

struct Size { // of a text, and how many of them take turns
    const char* name;
    std::size_t bytes;
    std::size_t texts;
};

inline std::int32_t asLength(std::size_t size)
{
    return static_cast<std::int32_t>(size);
}

inline const TSChar16* asUnits(const std::u16string& units)
{
    return reinterpret_cast<const TSChar16*>(units.data());
}

inline const UChar* asUChars(const std::u16string& units)
{
    return units.data();
}

// Runs a row: `call` gets one piece after the other, each `bytes` long.
template <class Call>
void run(benchmark::State& state, const std::vector<Piece>& pieces, const Call& call)
{
    std::size_t bytes = 0;
    for (const Piece& piece : pieces)
        bytes += piece.bytes.size();
    std::size_t turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(pieces[turn]));
        benchmark::ClobberMemory();
        turn = turn + 1 == pieces.size() ? 0 : turn + 1;
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(static_cast<double>(state.iterations()) *
                                                      static_cast<double>(bytes) /
                                                      static_cast<double>(pieces.size())));
}

// The same, after `call` gave what `expected` gives for every piece.
template <class Call, class Expected>
void runChecked(benchmark::State& state, const std::vector<Piece>& pieces, const Call& call,
                const Expected& expected)
{
    for (const Piece& piece : pieces) {
        if (call(piece) != expected(piece)) {
            state.SkipWithError("gives another result");
            return;
        }
    }
    run(state, pieces, call);
}

using Run = std::function<void(benchmark::State&, const std::vector<Piece>&)>;

inline void addRow(const std::string& name, const Size& size, Script script, const char* page,
                   const Run& runner)
{
    const std::size_t at = name.rfind('/');
    const std::string full = name.substr(0, at) + '/' + size.name + name.substr(at);
    benchmark::RegisterBenchmark(full.c_str(), [=, &size](benchmark::State& state) {
        runner(state, makePieces(script, page, size.bytes, size.texts));
    });
}

// Gives a row its locale.
template <class Body>
Run withLocale(const char* name, const Body& body)
{
    return [=](benchmark::State& state, const std::vector<Piece>& pieces) {
        const RowLocale locale(state, name);
        if (locale)
            body(state, pieces, locale.get());
    };
}

template <class Body>
Run withGlibc(const char* source, const char* charmap, const Body& body)
{
    return [=](benchmark::State& state, const std::vector<Piece>& pieces) {
        const GlibcLocale locale(source, charmap);
        if (locale)
            body(state, pieces, uselocale(nullptr));
        else
            state.SkipWithError("localedef cannot make the locale here");
    };
}

using Pieces = const std::vector<Piece>&;

} // namespace vlx::bench
