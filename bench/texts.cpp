#include "texts.hpp"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <random>
#include <string_view>
#include <vector>

#include <iconv.h>

namespace vlx::bench {

namespace {

constexpr std::string_view kWords[] = {
    "図書館", "朝",   "駅前の", "新しい", "道を",   "ゆっくり", "歩いて", "言葉",
    "ノート", "が",   "は",     "に",     "町の",   "橋まで",   "雨",     "、",
    "。",     "です", "ました", "青い",   "窓から", "声",       "手紙を", "書く",
};
constexpr std::string_view kGerman[] = {
    "Größe",  "und",   "die",    "über",   "Bücherei", "morgens", "Brücke",
    "nicht",  "lesen", "Straße", "Wetter", "geöffnet", "Nummer",  "schön",
    "Garten", "wir",   "wollen", "ins",    "Fenster",  "früh",
};
constexpr std::string_view kRare[] = {"2026年", "ﾃｽﾄ", "No.17", "「」", "\n"};
constexpr std::string_view kLogWords[] = {"open ",   "request ", "id=4711 ", "status=200 ",
                                          "user=a ", "cache ",   "retry ",   "bytes=1824 "};

class Iconv {
  public:
    Iconv(const char* to, const char* from) : converter_(iconv_open(to, from))
    {
        if (converter_ == reinterpret_cast<iconv_t>(-1))
            std::abort();
    }
    ~Iconv() { iconv_close(converter_); }
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;

    // Converts as much as `room` bytes take, with the end of a stateful text, and gives the bytes
    // of the input that it took.
    std::size_t convert(const void* input, std::size_t size, std::string& output, std::size_t room)
    {
        constexpr std::size_t kEnd = 1; // a shift byte
        output.resize(room);
        char* from = static_cast<char*>(const_cast<void*>(input));
        char* to = output.data();
        std::size_t left = size;
        std::size_t free = room - kEnd;
        iconv(converter_, nullptr, nullptr, nullptr, nullptr);
        iconv(converter_, &from, &left, &to, &free);
        free += kEnd;
        iconv(converter_, nullptr, nullptr, &to, &free);
        output.resize(room - free);
        return size - left;
    }

  private:
    iconv_t converter_;
};

template <class Piece>
const Piece& anyOf(std::minstd_rand& random, const Piece* pieces, std::size_t count)
{
    return pieces[random() % count];
}

std::string logLine(std::minstd_rand& random, std::string_view word)
{
    std::string line = "2026-11-21T09:30:00 ";
    for (unsigned i = 0; i < 6; ++i)
        line += anyOf(random, kLogWords, std::size(kLogWords));
    return line.append(word) + '\n';
}

std::string nextWords(Script script, std::minstd_rand& random)
{
    constexpr unsigned rareIn = 16;
    switch (script) {
    case Script::kLog:
        return logLine(random, anyOf(random, kGerman, std::size(kGerman)));
    case Script::kJapaneseLog:
        return logLine(random, anyOf(random, kWords, std::size(kWords)));
    case Script::kGerman:
        return std::string(anyOf(random, kGerman, std::size(kGerman))) + ' ';
    default:
        if (random() % rareIn == 0)
            return std::string(anyOf(random, kRare, std::size(kRare)));
        return std::string(anyOf(random, kWords, std::size(kWords)));
    }
}

// Some more than a mebibyte of 16-bit values, so that texts of a mebibyte can begin anywhere.
std::u16string makeUnits(Script script)
{
    std::minstd_rand random(932); // NOLINT: the same text in each run
    std::string text;
    while (text.size() < 4 * kMebibyte)
        text += nextWords(script, random);
    std::string units;
    Iconv("UTF-16LE", "UTF-8").convert(text.data(), text.size(), units, 2 * text.size());
    std::u16string made(units.size() / 2, 0);
    std::memcpy(made.data(), units.data(), units.size());
    return made;
}

const std::u16string& unitsOf(Script script)
{
    static const std::u16string all[] = {makeUnits(Script::kLog), makeUnits(Script::kGerman),
                                         makeUnits(Script::kJapaneseLog),
                                         makeUnits(Script::kJapanese)};
    return all[static_cast<std::size_t>(script)];
}

} // namespace

std::vector<Piece> makePieces(Script script, const char* page, std::size_t size, std::size_t count)
{
    const std::u16string& units = unitsOf(script);
    Iconv iconv(page, "UTF-16LE");
    std::minstd_rand random(16); // NOLINT: the same texts in each run
    std::vector<Piece> pieces(count);
    for (Piece& piece : pieces) {
        const std::u16string from = units.substr(count == 1 ? 0 : random() % 4096, size);
        const std::size_t taken =
            iconv.convert(from.data(), from.size() * sizeof(char16_t), piece.bytes, size);
        piece.units = from.substr(0, taken / sizeof(char16_t));
    }
    return pieces;
}

std::string recoded(const std::u16string& units, const char* page)
{
    std::string output;
    const std::size_t size = units.size() * sizeof(char16_t);
    if (Iconv(page, "UTF-16LE").convert(units.data(), size, output, 4 * units.size() + 4) != size)
        std::abort(); // every character has its own there
    return output;
}

const std::string& japaneseText()
{
    static const std::string text = makePieces(Script::kJapanese, "CP932", kMebibyte, 1)[0].bytes;
    return text;
}

const std::string& asciiText()
{
    static const std::string text =
        makePieces(Script::kJapaneseLog, "CP932", kMebibyte, 1)[0].bytes;
    return text;
}

} // namespace vlx::bench
