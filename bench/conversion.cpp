// Conversion between code pages and Unicode and between code pages, of texts of 16 bytes, a
// kibibyte and a mebibyte. The short texts take turns, so that no branch predictor knows them by
// heart. Every row whose output is not the one expected is refused.
#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>

#include <iconv.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include "bench.hpp"
#include "texts.hpp"

namespace vlx::bench {

namespace {

// A code page by its three names.
struct Page {
    const char* locale;
    const char* icu;
    const char* iconv;
};
constexpr Page k1252{"German_Germany.MS1252", "ibm-5348_P100-1997", "CP1252"};
constexpr Page k932{"Japanese_Japan.MS932", "ibm-943_P15A-2003", "CP932"};
constexpr Page k930{"Japanese_Japan.IBM930", "ibm-930", "IBM930"};
constexpr Page kUtf8{"German_Germany.UTF-8", "UTF-8", "UTF-8"};
constexpr Page k037{"German_Germany.IBM037", "ibm-37", "IBM037"};
constexpr Page kUnicode{nullptr, nullptr, "UTF-16LE"};

struct Size {
    const char* name;
    std::size_t bytes;
    std::size_t texts;
};
constexpr Size kSizes[] = {{"16", 16, 256}, {"1KiB", 1024, 8}, {"1MiB", kMebibyte, 1}};

// The input of a row and what it has to become; 16-bit text as bytes.
struct Work {
    std::string input;
    std::string expected;
};

std::string asBytes(const std::u16string& units)
{
    std::string bytes(units.size() * sizeof(char16_t), '\0');
    std::memcpy(bytes.data(), units.data(), bytes.size());
    return bytes;
}

std::string inPage(const Piece& piece, const Page& page)
{
    return page.icu ? recoded(piece.units, page.iconv) : asBytes(piece.units);
}

std::vector<Work> makeWork(Script script, const Page& from, const Page& to, const Size& size)
{
    std::vector<Work> all;
    for (const Piece& piece : makePieces(script, from.iconv, size.bytes, size.texts))
        all.push_back({inPage(piece, from), inPage(piece, to)});
    return all;
}

// Runs a row: `convert` takes an input and an output and gives the bytes written.
template <class Convert>
void run(benchmark::State& state, const std::vector<Work>& work, const Convert& convert)
{
    std::size_t most = 0;
    std::size_t bytes = 0;
    for (const Work& one : work) {
        most = std::max(most, one.expected.size());
        bytes += one.input.size();
    }
    std::vector<char16_t> area(most / 2 + 16); // aligned for units
    auto* const output = reinterpret_cast<char*>(area.data());
    const std::size_t room = area.size() * sizeof(char16_t);
    for (const Work& one : work) {
        const std::size_t written = convert(one.input, output, room);
        if (written != one.expected.size() ||
            std::memcmp(output, one.expected.data(), written) != 0) {
            state.SkipWithError("gives another text");
            return;
        }
    }
    std::size_t turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(convert(work[turn].input, output, room));
        benchmark::ClobberMemory();
        turn = turn + 1 == work.size() ? 0 : turn + 1;
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(static_cast<double>(state.iterations()) *
                                                      static_cast<double>(bytes) /
                                                      static_cast<double>(work.size())));
}

int32_t asLength(std::size_t size)
{
    return static_cast<int32_t>(size);
}

const TSChar16* unitsIn(const std::string& text)
{
    return reinterpret_cast<const TSChar16*>(text.data());
}

const UChar* icuUnits(const std::string& text)
{
    return reinterpret_cast<const UChar*>(text.data());
}

void runVlx(benchmark::State& state, const std::vector<Work>& work, const Page& from,
            const Page& to)
{
    const RowLocale source(state, (from.locale ? from : to).locale);
    const RowLocale target(state, (to.locale ? to : from).locale);
    if (!source || !target)
        return;
    const bool shifts = &from == &k930 || &to == &k930;
    if (!to.locale) {
        run(state, work, [&](const std::string& input, char* output, std::size_t room) {
            auto* const units = reinterpret_cast<TSChar16*>(output);
            const int32_t count = asLength(room / sizeof(TSChar16));
            const int32_t written =
                shifts ? TSStringToUnicodeEx(units, count, source.get(), input.data(), 0,
                                             asLength(input.size()), 0)
                       : TSStringToUnicode(units, count, source.get(), input.data(),
                                           asLength(input.size()), 0);
            return static_cast<std::size_t>(written) * sizeof(TSChar16);
        });
    } else if (!from.locale) {
        run(state, work, [&](const std::string& input, char* output, std::size_t room) {
            const int32_t count = asLength(input.size() / sizeof(TSChar16));
            // With a terminator, and so with the last shift byte.
            const int32_t written =
                shifts ? TSUnicodeToStringEx(target.get(), output, 0, asLength(room),
                                             unitsIn(input), count, TS_OPT_TERMINATE) -
                             1
                       : TSUnicodeToString(target.get(), output, asLength(room), unitsIn(input),
                                           count, 0);
            return static_cast<std::size_t>(written);
        });
    } else {
        run(state, work, [&](const std::string& input, char* output, std::size_t room) {
            return static_cast<std::size_t>(TSConvertString(target.get(), output, asLength(room),
                                                            source.get(), input.data(),
                                                            asLength(input.size()), 0));
        });
    }
}

// The same text through a conversion handle, in slices.
void runSlices(benchmark::State& state, const std::vector<Work>& work, const Page& from,
               const Page& to)
{
    const RowLocale source(state, from.locale);
    const RowLocale target(state, to.locale);
    if (!source || !target)
        return;
    run(state, work, [&](const std::string& input, char* output, std::size_t room) {
        constexpr int32_t kSlice = 32 * 1024;
        TSConversion* const handle = TSOpenConversion(target.get(), source.get());
        char* at = output;
        int32_t free = asLength(room);
        const char* from_ = input.data();
        for (int32_t left = asLength(input.size()); left > 0;) {
            int32_t slice = std::min(left, kSlice);
            left -= slice;
            TSConvertBuffer(handle, &at, &free, &from_, &slice);
        }
        TSCloseConversion(handle);
        return static_cast<std::size_t>(at - output);
    });
}

class Converter {
  public:
    explicit Converter(const Page& page)
        : converter_(page.icu ? ucnv_open(page.icu, &code_) : nullptr)
    {
    }
    ~Converter() { ucnv_close(converter_); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    UConverter* get() const { return converter_; }

  private:
    UErrorCode code_ = U_ZERO_ERROR;
    UConverter* converter_;
};

void runIcu(benchmark::State& state, const std::vector<Work>& work, const Page& from,
            const Page& to)
{
    const Converter source(from);
    const Converter target(to);
    run(state, work, [&](const std::string& input, char* output, std::size_t room) {
        UErrorCode code = U_ZERO_ERROR;
        if (!to.icu)
            return sizeof(UChar) * static_cast<std::size_t>(
                                       ucnv_toUChars(source.get(), reinterpret_cast<UChar*>(output),
                                                     asLength(room / sizeof(UChar)), input.data(),
                                                     asLength(input.size()), &code));
        if (!from.icu)
            return static_cast<std::size_t>(
                ucnv_fromUChars(target.get(), output, asLength(room), icuUnits(input),
                                asLength(input.size() / sizeof(UChar)), &code));
        UChar pivot[1024];
        UChar* pivotSource = pivot;
        UChar* pivotTarget = pivot;
        char* at = output;
        const char* read = input.data();
        ucnv_convertEx(target.get(), source.get(), &at, output + room, &read, read + input.size(),
                       pivot, &pivotSource, &pivotTarget, pivot + std::size(pivot), true, true,
                       &code);
        return static_cast<std::size_t>(at - output);
    });
}

// ICU's functions for UTF-8 alone, which need no converter.
void runIcuUtf8(benchmark::State& state, const std::vector<Work>& work, const Page& to)
{
    run(state, work, [&](const std::string& input, char* output, std::size_t room) {
        UErrorCode code = U_ZERO_ERROR;
        int32_t written = 0;
        if (to.icu) {
            u_strToUTF8(output, asLength(room), &written, icuUnits(input),
                        asLength(input.size() / sizeof(UChar)), &code);
            return static_cast<std::size_t>(written);
        }
        u_strFromUTF8(reinterpret_cast<UChar*>(output), asLength(room / sizeof(UChar)), &written,
                      input.data(), asLength(input.size()), &code);
        return static_cast<std::size_t>(written) * sizeof(UChar);
    });
}

void runIconv(benchmark::State& state, const std::vector<Work>& work, const Page& from,
              const Page& to)
{
    const std::unique_ptr<void, decltype(&iconv_close)> converter(iconv_open(to.iconv, from.iconv),
                                                                  iconv_close);
    run(state, work, [&](const std::string& input, char* output, std::size_t room) {
        char* read = const_cast<char*>(input.data());
        char* at = output;
        std::size_t left = input.size();
        iconv(converter.get(), nullptr, nullptr, nullptr, nullptr);
        iconv(converter.get(), &read, &left, &at, &room);
        iconv(converter.get(), nullptr, nullptr, &at, &room);
        return static_cast<std::size_t>(at - output);
    });
}

using Run = std::function<void(benchmark::State&, const std::vector<Work>&)>;

void addRow(const std::string& name, Script script, const Page& from, const Page& to,
            const Size& size, const Run& runner)
{
    benchmark::RegisterBenchmark(name.c_str(), [=, &from, &to, &size](benchmark::State& state) {
        runner(state, makeWork(script, from, to, size));
    });
}

struct Case {
    const char* name;
    Script script;
    const Page& from;
    const Page& to;
};

void addCase(const char* work, const Case& one, const Size& size)
{
    const Page& from = one.from;
    const Page& to = one.to;
    const std::string name = std::string(work) + '/' + one.name + '/' + size.name + '/';
    const auto add = [&](const char* who, const Run& runner) {
        addRow(name + who, one.script, from, to, size, runner);
    };
    const auto with = [&](const auto& runner) {
        return [&from, &to, runner](benchmark::State& state, const std::vector<Work>& all) {
            runner(state, all, from, to);
        };
    };
    add("vlx", with(runVlx));
    add("icu", with(runIcu));
    const bool isUtf8Alone = (&from == &kUtf8 && !to.icu) || (&to == &kUtf8 && !from.icu);
    if (isUtf8Alone)
        add("icu_utf8", [&to](benchmark::State& state, const std::vector<Work>& all) {
            runIcuUtf8(state, all, to);
        });
    add("iconv", with(runIconv));
    if (&from == &k037 && size.bytes == kMebibyte) {
        const std::string slices = std::string(work) + '/' + one.name + "_slices/" + size.name;
        addRow(slices + "/vlx", one.script, from, to, size, with(runSlices));
        addRow(slices + "/icu", one.script, from, to, size, with(runIcu));
        addRow(slices + "/iconv", one.script, from, to, size, with(runIconv));
    }
}

} // namespace

void addConversionRows()
{
    static const Case toUnicode[] = {
        {"1252_log", Script::kLog, k1252, kUnicode},
        {"1252_german", Script::kGerman, k1252, kUnicode},
        {"932_log", Script::kJapaneseLog, k932, kUnicode},
        {"932_japanese", Script::kJapanese, k932, kUnicode},
        {"930_log", Script::kJapaneseLog, k930, kUnicode},
        {"930_japanese", Script::kJapanese, k930, kUnicode},
        {"utf8_log", Script::kJapaneseLog, kUtf8, kUnicode},
        {"utf8_german", Script::kGerman, kUtf8, kUnicode},
        {"utf8_japanese", Script::kJapanese, kUtf8, kUnicode},
    };
    static const Case recode[] = {
        {"037_1252", Script::kGerman, k037, k1252},
        {"932_utf8_log", Script::kJapaneseLog, k932, kUtf8},
        {"932_utf8_japanese", Script::kJapanese, k932, kUtf8},
        {"utf8_932_log", Script::kJapaneseLog, kUtf8, k932},
        {"utf8_932_japanese", Script::kJapanese, kUtf8, k932},
        {"1252_utf8_log", Script::kLog, k1252, kUtf8},
        {"1252_utf8_german", Script::kGerman, k1252, kUtf8},
        {"utf8_1252_log", Script::kLog, kUtf8, k1252},
        {"utf8_1252_german", Script::kGerman, kUtf8, k1252},
    };
    for (const Case& one : toUnicode) {
        for (const Size& size : kSizes)
            addCase("ToUnicode", one, size);
        for (const Size& size : kSizes)
            addCase("FromUnicode", {one.name, one.script, one.to, one.from}, size);
    }
    for (const Case& one : recode)
        for (const Size& size : kSizes)
            addCase("Recode", one, size);
}

} // namespace vlx::bench
