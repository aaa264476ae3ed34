// The lines of a text in any code page.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "charwalk.hpp"
#include "infile.hpp"
#include "progress.hpp"

namespace vlx::cli {

// What ends a line in a code page: a line feed, with or without a carriage return before it, or one
// of two bytes more, such as the two record ends of EBCDIC. No code page has these bytes inside of
// a character. So such a byte ends a line in any case, also where a character or a shift to the
// multi-byte state before it was cut off.
class LineEnds {
  public:
    explicit LineEnds(TSLocale* locale);

    // The first byte that ends a line, or `end`.
    const char* find(const char* begin, const char* end) const;

    // The bytes at the end of a line that ends with the byte at `last`.
    std::size_t sizeAt(const char* begin, const char* last) const;

    // The end for a line that has none: the one of the line before it, if there is one. A line that
    // is in the multi-byte state leaves it first.
    std::string missingFor(std::string_view content, std::string_view before) const;

  private:
    TSLocale* const locale_;
    const CharacterWalk walk_;
    std::array<bool, 256> isEnd_{};
    bool lineFeedAlone_ = false; // all line ends are the line feed
    char lineFeed_ = 0;
    char carriageReturn_ = 0;
};

// Every line begins in the single-byte state.
struct Line {
    std::string_view content;
    std::string_view end; // never empty
};

class LineReader {
  public:
    LineReader(const InputFile& input, const LineEnds& ends, Progress& progress);

    // False at the end of the text. The views are good until the next call.
    bool next(Line& line);

    std::uint64_t number() const { return number_; } // of the last line, from 1

  private:
    Line lineOf(std::size_t size, std::size_t endSize);
    bool fill();

    static constexpr std::size_t kPiece = 1 << 16;

    const InputFile& input_;
    const LineEnds& ends_;
    Progress& progress_;
    std::vector<char> buffer_ = std::vector<char>(kPiece);
    std::size_t begin_ = 0;   // of the next line
    std::size_t scanned_ = 0; // no line ends between
    std::size_t filled_ = 0;
    bool ended_ = false;
    std::uint64_t number_ = 0;
    std::string lastEnd_;
    std::string missing_;
};

} // namespace vlx::cli
