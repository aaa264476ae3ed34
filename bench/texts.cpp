#include "texts.hpp"

#include <cstdint>
#include <cstdlib>
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
constexpr std::string_view kRare[] = {"2026年", "ﾃｽﾄ", "No.17", "「」", "\n"};
constexpr std::string_view kLogWords[] = {"open ",   "request ", "id=4711 ", "status=200 ",
                                          "user=a ", "cache ",   "retry ",   "bytes=1824 "};

std::string recoded(const std::string& utf8)
{
    const iconv_t converter = iconv_open("CP932", "UTF-8");
    if (converter == reinterpret_cast<iconv_t>(-1))
        std::abort();
    std::string output(utf8.size(), '\0');
    std::string input = utf8;
    char* from = input.data();
    char* to = output.data();
    std::size_t left = input.size();
    std::size_t room = output.size();
    if (iconv(converter, &from, &left, &to, &room) != 0) // every character has its own there
        std::abort();
    iconv_close(converter);
    output.resize(output.size() - room);
    return output;
}

template <std::size_t size>
std::vector<std::string> recodedAll(const std::string_view (&words)[size])
{
    std::vector<std::string> all;
    for (const std::string_view word : words)
        all.push_back(recoded(std::string(word)));
    return all;
}

// Adds pieces that `next` gives while they fit.
template <class Next>
std::string filled(Next next)
{
    std::string text;
    for (std::string piece = next(); text.size() + piece.size() <= kMebibyte; piece = next())
        text += piece;
    return text;
}

std::string makeJapanese()
{
    const auto words = recodedAll(kWords);
    const auto rare = recodedAll(kRare);
    std::minstd_rand random(932); // NOLINT: the same text in each run
    return filled([&] {
        constexpr unsigned rareIn = 16;
        return random() % rareIn == 0 ? rare[random() % rare.size()]
                                      : words[random() % words.size()];
    });
}

std::string makeAscii()
{
    const auto words = recodedAll(kWords);
    const auto log = recodedAll(kLogWords);
    std::minstd_rand random(932); // NOLINT: the same text in each run
    return filled([&] {
        std::string line = "2026-11-21T09:30:00 ";
        for (unsigned i = 0; i < 6; ++i)
            line += log[random() % log.size()];
        return line + words[random() % words.size()] + '\n';
    });
}

} // namespace

const std::string& japaneseText()
{
    static const std::string text = makeJapanese();
    return text;
}

const std::string& asciiText()
{
    static const std::string text = makeAscii();
    return text;
}

} // namespace vlx::bench
