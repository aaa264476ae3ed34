// The texts of the benchmarks: made by rule, the same in every run.
#pragma once

#include <cstddef>
#include <string>

namespace vlx::bench {

inline constexpr std::size_t kMebibyte = 1 << 20;

// Text in CP932 of at most a mebibyte, a few bytes less, of whole characters.
const std::string& japaneseText(); // kana, kanji, some digits and half-width katakana
const std::string& asciiText();    // log lines, each with a Japanese word

} // namespace vlx::bench
