// The lines of a text with their keys, and how they are shown to a reader.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "failure.hpp"
#include "infile.hpp"
#include "keys.hpp"
#include "lines.hpp"

namespace vlx::cli {

class KeyedLines {
  public:
    KeyedLines(const std::string& file, const LineEnds& ends, KeyBuilder& keys, Progress& progress);

    // False at the end of the text. What the others give is good until the next call.
    bool next() { return reader_.next(line_); }

    const Line& line() const { return line_; }
    std::string_view key()
    {
        return made([&] { return keys_.keyOf(line_.content); });
    }
    std::vector<MadeKey> keyParts()
    {
        return made([&] { return keys_.partsOf(line_.content); });
    }

    std::uint64_t number() const { return reader_.number(); }
    const std::string& file() const { return input_.shown(); }
    std::string place() const; // as in "file:12"

  private:
    // A key, or a failure that tells the line.
    template <class Make>
    std::invoke_result_t<Make> made(const Make& make)
    {
        try {
            return make();
        } catch (const Failure& failure) {
            throw Failure(place() + ": " + failure.what());
        }
    }

    const InputFile input_;
    LineReader reader_;
    KeyBuilder& keys_;
    Line line_;
};

// Text of the locale's code page in UTF-8, as it is.
std::string plainText(TSLocale* locale, std::string_view text);

// The same for a reader: control characters as symbols, and in ASCII where that is all he can read.
std::string shownText(TSLocale* locale, std::string_view text, bool utf8);

} // namespace vlx::cli
