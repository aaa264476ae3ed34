// Messages of a catalog, translation between numbered code pages, and the locale of a thread.
//
// The catalog has 20 sets of 50 messages of 60 bytes; the rows ask for all of them in a mixed
// order. catgets and gettext give a pointer, and the rows copy the text. gettext looks for a
// message by its English text, which has 60 bytes, too; its catalog is in the code page that the
// row asks for, or in UTF-8, which it converts when a text is first asked for and keeps. ICU keeps
// its texts in Unicode, and the row converts one that it already has: finding it in a resource
// bundle would come on top.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <libintl.h>
#include <locale.h>
#include <nl_types.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>
#include <unistd.h>

#include "bench.hpp"
#include "nls1.h"
#include "texts.hpp"

namespace vlx::bench {

namespace {

constexpr int kSets = 20;
constexpr int kMessages = 50;
constexpr std::size_t kLength = 60;
constexpr int kRoom = 256;

struct Turn {
    int set;
    int message;
};

// Each message once.
std::vector<Turn> allTurns()
{
    std::vector<Turn> turns;
    for (int i = 0; i < kSets * kMessages; ++i) {
        const int mixed = i * 617 % (kSets * kMessages); // 617 has no factor in common
        turns.push_back({1 + mixed / kMessages, 1 + mixed % kMessages});
    }
    return turns;
}

// In CP1252, with an umlaut now and then.
std::string textOf(int set, int message)
{
    std::string text = "Meldung " + std::to_string(set) + "/" + std::to_string(message) +
                       ": die Datei konnte nicht ge\xF6"
                       "ffnet werden, Grund unbekannt";
    text.resize(kLength, '.');
    return text;
}

// A directory that goes away with the process.
const std::filesystem::path& workplace()
{
    static const struct Place {
        Place()
            : path(std::filesystem::temp_directory_path() / ("vlxbench" + std::to_string(getpid())))
        {
            std::filesystem::create_directories(path);
        }
        ~Place()
        {
            std::error_code none;
            std::filesystem::remove_all(path, none);
        }
        std::filesystem::path path;
    } place;
    return place.path;
}

void putWord(std::string& bytes, std::uint32_t word)
{
    bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
}

// A catalog of this library, by the layout that docs/format-catalog.md tells.
std::string makeCatalog()
{
    constexpr std::uint32_t kHeader = 152;
    constexpr std::uint32_t kSet = 28;
    constexpr std::uint32_t kEntry = 12;
    constexpr std::uint32_t kBlock = kMessages * (kLength + 1);
    const std::uint32_t one = 1;
    const bool little = *reinterpret_cast<const char*>(&one) == 1;
    std::string file;
    for (const std::uint32_t word :
         {0x5A3C9E18u, 0x10000000u, little ? 2u : 1u, std::uint32_t{kSets}, kHeader})
        putWord(file, word);
    file += "German_Germany.MS1252";
    file.resize(kHeader);
    for (std::uint32_t set = 1; set <= kSets; ++set) {
        const std::uint32_t table =
            kHeader + kSets * kSet + (set - 1) * (kMessages * kEntry + kBlock);
        for (const std::uint32_t word :
             {set, set < kSets ? kHeader + set * kSet : 0u, std::uint32_t{kMessages}, table,
              table + kMessages * kEntry, kBlock, 0u})
            putWord(file, word);
    }
    for (int set = 1; set <= kSets; ++set) {
        for (std::uint32_t message = 1; message <= kMessages; ++message)
            for (const std::uint32_t word : {message, std::uint32_t{kLength + 1},
                                             (message - 1) * (std::uint32_t{kLength} + 1)})
                putWord(file, word);
        for (int message = 1; message <= kMessages; ++message)
            file += textOf(set, message) + '\0';
    }
    const std::string path = workplace() / "vlx.cat";
    std::ofstream(path, std::ios::binary) << file;
    return path;
}

// True if a command ran to its end.
bool ran(const std::string& command)
{
    return std::system((command + " 2>/dev/null").c_str()) == 0;
}

// The same messages for catgets.
std::string makeSystemCatalog()
{
    const std::string source = workplace() / "system.msg";
    const std::string path = workplace() / "system.cat";
    std::ofstream out(source, std::ios::binary);
    out << "$ codeset=CP1252\n";
    for (int set = 1; set <= kSets; ++set) {
        out << "$set " << set << '\n';
        for (int message = 1; message <= kMessages; ++message)
            out << message << ' ' << textOf(set, message) << '\n';
    }
    out.close();
    return ran("gencat " + path + " " + source) ? path : std::string();
}

// The locale in which gettext looks for a translation: any but C.
constexpr char kGettextLocale[] = "C.UTF-8";

// What the program would show without a catalog: the key of gettext.
std::string keyOf(int set, int message)
{
    std::string text = "Message " + std::to_string(set) + "/" + std::to_string(message) +
                       ": the file could not be opened, reason unknown";
    text.resize(kLength, '.');
    return text;
}

// The same messages for gettext, as the domain `charset`; false if it cannot be made.
bool makeTranslations(const std::string& charset)
{
    const std::filesystem::path folder = workplace() / kGettextLocale / "LC_MESSAGES";
    std::filesystem::create_directories(folder);
    const std::string source = workplace() / (charset + ".po");
    std::ofstream out(source, std::ios::binary);
    out << "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=" << charset << "\\n\"\n";
    for (const Turn& turn : allTurns()) {
        const std::string text = textOf(turn.set, turn.message);
        std::u16string units;
        for (const char byte : text) // no byte from 80 to 9F
            units += static_cast<unsigned char>(byte);
        out << "msgid \"" << keyOf(turn.set, turn.message) << "\"\nmsgstr \""
            << recoded(units, charset.c_str()) << "\"\n";
    }
    out.close();
    return ran("msgfmt -o " + (folder / (charset + ".mo")).string() + " " + source);
}

// Runs a row: `get` writes a message and is checked once for each.
template <class Get>
void run(benchmark::State& state, const Get& get)
{
    const std::vector<Turn> turns = allTurns();
    char output[kRoom];
    for (const Turn& turn : turns) {
        get(turn, output);
        if (textOf(turn.set, turn.message) != output) {
            state.SkipWithError("gives another text");
            return;
        }
    }
    std::size_t at = 0;
    for (auto _ : state) {
        get(turns[at], output);
        benchmark::DoNotOptimize(output);
        benchmark::ClobberMemory();
        at = at + 1 == turns.size() ? 0 : at + 1;
    }
}

void messageVlx(benchmark::State& state, std::uint32_t flags)
{
    const RowLocale locale(state, "German_Germany.MS1252");
    if (!locale)
        return;
    TSCatalog* const catalog = TSOpenCatalog(locale.get(), nullptr, makeCatalog().c_str(), flags);
    if (!catalog) {
        state.SkipWithError("the catalog cannot be opened");
        return;
    }
    run(state, [catalog](const Turn& turn, char* output) {
        TSGetMessage(catalog, turn.set, turn.message, output, kRoom, nullptr);
    });
    TSCloseCatalog(catalog);
}

void messageCatgets(benchmark::State& state)
{
    const std::string path = makeSystemCatalog();
    const nl_catd catalog = path.empty() ? reinterpret_cast<nl_catd>(-1) : catopen(path.c_str(), 0);
    if (catalog == reinterpret_cast<nl_catd>(-1)) {
        state.SkipWithError("gencat cannot make the catalog here");
        return;
    }
    run(state, [catalog](const Turn& turn, char* output) {
        std::strcpy(output, catgets(catalog, turn.set, turn.message, ""));
    });
    catclose(catalog);
}

void messageGettext(benchmark::State& state, const char* charset)
{
    const locale_t locale = newlocale(LC_ALL_MASK, kGettextLocale, nullptr);
    if (!locale || !makeTranslations(charset)) {
        state.SkipWithError("msgfmt cannot make the catalog here");
        return;
    }
    unsetenv("LANGUAGE");
    const locale_t previous = uselocale(locale);
    bindtextdomain(charset, workplace().c_str());
    bind_textdomain_codeset(charset, "CP1252");
    std::vector<std::string> keys;
    for (int i = 0; i < kSets * kMessages; ++i)
        keys.push_back(keyOf(1 + i / kMessages, 1 + i % kMessages));
    run(state, [&keys, charset](const Turn& turn, char* output) {
        const auto at = static_cast<std::size_t>((turn.set - 1) * kMessages + turn.message - 1);
        std::strcpy(output, dgettext(charset, keys[at].c_str()));
    });
    uselocale(previous);
    freelocale(locale);
}

void messageIcu(benchmark::State& state)
{
    UErrorCode code = U_ZERO_ERROR;
    UConverter* const converter = ucnv_open("ibm-5348_P100-1997", &code);
    std::vector<std::u16string> texts;
    for (int i = 0; i < kSets * kMessages; ++i) {
        const std::string text = textOf(1 + i / kMessages, 1 + i % kMessages);
        std::u16string units(kLength, u' ');
        ucnv_toUChars(converter, units.data(), kLength, text.data(), kLength, &code);
        code = U_FAILURE(code) ? code : U_ZERO_ERROR;
        texts.push_back(units);
    }
    if (U_FAILURE(code))
        state.SkipWithError(u_errorName(code));
    else
        run(state, [&](const Turn& turn, char* output) {
            UErrorCode error = U_ZERO_ERROR;
            const auto at = static_cast<std::size_t>((turn.set - 1) * kMessages + turn.message - 1);
            ucnv_fromUChars(converter, output, kRoom, texts[at].data(), kLength, &error);
        });
    ucnv_close(converter);
}

// Translation to 16-bit Unicode.
struct Source {
    const char* name;
    std::uint32_t id;
    const char* icu;
    const char* iconv;
    Script script;
};
constexpr Source kSources[] = {
    {"1252", 1252, "ibm-5348_P100-1997", "CP1252", Script::kGerman},
    {"930", 930, "ibm-930", "IBM930", Script::kJapanese},
};

// Runs a row: `translate` gives the 16-bit values written.
void runTranslation(
    benchmark::State& state, const Source& source, std::size_t size,
    const std::function<std::size_t(const std::string&, char16_t*, std::size_t)>& translate)
{
    const Piece piece = makePieces(source.script, source.iconv, size, 1).front();
    const std::string input = recoded(piece.units, source.iconv);
    std::vector<char16_t> output(piece.units.size() + 16);
    if (translate(input, output.data(), output.size()) != piece.units.size() ||
        std::memcmp(output.data(), piece.units.data(), 2 * piece.units.size()) != 0) {
        state.SkipWithError("gives another text");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(translate(input, output.data(), output.size()));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(input.size()));
}

void translateVlx(benchmark::State& state, const Source& source, std::size_t size)
{
    const RowLocale locale(state, "English");
    if (!locale)
        return;
    runTranslation(
        state, source, size, [&](const std::string& input, char16_t* output, std::size_t room) {
            std::uint32_t error = 0;
            const std::int32_t bytes = NLS1_TranslateString(
                1200, output, static_cast<std::int32_t>(2 * room), source.id, input.data(),
                static_cast<std::int32_t>(input.size()), nullptr, 0, &error);
            return bytes < 0 ? 0 : static_cast<std::size_t>(bytes) / 2;
        });
}

void translateIcu(benchmark::State& state, const Source& source, std::size_t size)
{
    UErrorCode code = U_ZERO_ERROR;
    UConverter* const converter = ucnv_open(source.icu, &code);
    if (U_FAILURE(code)) {
        state.SkipWithError(u_errorName(code));
        return;
    }
    runTranslation(
        state, source, size, [&](const std::string& input, char16_t* output, std::size_t room) {
            UErrorCode error = U_ZERO_ERROR;
            const std::int32_t units =
                ucnv_toUChars(converter, output, static_cast<std::int32_t>(room), input.data(),
                              static_cast<std::int32_t>(input.size()), &error);
            return U_FAILURE(error) ? 0 : static_cast<std::size_t>(units);
        });
    ucnv_close(converter);
}

void threadLocale(benchmark::State& state)
{
    const RowLocale locale(state, "English");
    if (!locale)
        return;
    for (auto _ : state)
        benchmark::DoNotOptimize(NLS1_PrivateFunction_GetThreadLocale());
}

} // namespace

void addMessageRows()
{
    benchmark::RegisterBenchmark("Message/preloaded/vlx", messageVlx, TS_CATALOG_PRELOAD);
    benchmark::RegisterBenchmark("Message/preloaded/catgets", messageCatgets);
    benchmark::RegisterBenchmark("Message/preloaded/gettext", messageGettext, "CP1252");
    benchmark::RegisterBenchmark("Message/preloaded/gettext_utf8", messageGettext, "UTF-8");
    benchmark::RegisterBenchmark("Message/preloaded/icu", messageIcu);
    benchmark::RegisterBenchmark("Message/slim/vlx", messageVlx, TS_CATALOG_SEARCH_ONCE);
    for (const Source& source : kSources)
        for (const auto& [name, size] :
             {std::pair("1KiB", std::size_t{1024}), std::pair("1MiB", kMebibyte)}) {
            const std::string row = std::string("Translate/") + source.name + "_" + name;
            benchmark::RegisterBenchmark((row + "/vlx").c_str(), translateVlx, source, size);
            benchmark::RegisterBenchmark((row + "/icu").c_str(), translateIcu, source, size);
        }
    benchmark::RegisterBenchmark("Facade/thread_locale/vlx", threadLocale);
}

} // namespace vlx::bench
