// The texts of the benchmarks: made by rule, the same in every run.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vlx::bench {

inline constexpr std::size_t kMebibyte = 1 << 20;

// A text as Unicode and in a code page.
struct Piece {
    std::u16string units;
    std::string bytes;
};

// What a text is made of: log lines with a word of another script in each, which is German or
// Japanese, or sentences.
enum class Script { kLog, kGerman, kJapaneseLog, kJapanese };

// Texts of whole characters in the code page that iconv(3) calls `page`, each of `size` bytes or a
// few less. They begin at different places of one long text.
std::vector<Piece> makePieces(Script script, const char* page, std::size_t size, std::size_t count);

// A text of pieces in another code page.
std::string recoded(const std::u16string& units, const char* page);

// Text in CP932 of at most a mebibyte, a few bytes less, of whole characters.
const std::string& japaneseText(); // kana, kanji, some digits and half-width katakana
const std::string& asciiText();    // log lines, each with a Japanese word

} // namespace vlx::bench
