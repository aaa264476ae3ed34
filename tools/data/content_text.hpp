// What the compilers of language and territory objects share: the TOML source with its lines, the
// way from UTF-8 to 16-bit units and back, the rules that a text has to keep, the block of texts
// behind a content header.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "content.hpp"
#include "frame/endian.hpp"
#include "object.hpp"

namespace vlx::data {

// The functions that format and parse times and amounts read a text into 32 bytes, terminator
// included; a longer one would be cut.
inline constexpr std::size_t kShortText = 31;
// Sections of an object file have a 16-bit size.
inline constexpr std::size_t kLargestSection = 65535;
inline constexpr std::uint16_t kUtf8 = 57352;

// The units of a UTF-8 text; nothing if it is not well-formed, holds U+0000, or holds a character
// above U+FFFF, which the objects cannot carry. `complaint` then tells which.
std::optional<std::u16string> unitsOf(std::string_view utf8, std::string& complaint);
// The reverse. A surrogate is written as U+FFFD, so that a bad content can be shown too.
std::string utf8Of(std::u16string_view units);
// A text in quotes as TOML takes it; blanks other than U+0020 and invisible characters are escaped.
std::string quoted(std::u16string_view units);

// What a text has to keep: the result is empty if it does, otherwise a complaint.
using TextRule = std::function<std::string(std::u16string_view)>;
std::string plainText(std::u16string_view text);  // no surrogates, no control characters
std::string filledText(std::u16string_view text); // and not empty
// At most 31 bytes in the code page. The single-byte and double-byte pages that languages have as
// their default are known; every other page counts like UTF-8, so that the count is never too low.
TextRule shortText(std::uint16_t codePage);
// Both rules; the first complaint counts.
TextRule both(TextRule first, TextRule second);

// A text of a content header by its key in the source.
struct TextField {
    std::string key;
    TextRule rule;
};

// One replacement of a case mapping as the source tells it: one or two characters on either side.
struct SourcePair {
    std::u16string from;
    std::u16string to;
};

// A text of several lines.
struct SourceText {
    std::string text;
    int line = 0; // of its first character in the source
};

// A TOML source. One that is not TOML at all is reported at once, and is not good() for anything
// else. Every reader takes a dotted key, reports what is wrong at its line and then gives
// a harmless value, so that one run finds all errors of a file.
class Source {
  public:
    Source(const std::string& path, Diagnostics& out);
    ~Source();
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    bool good() const { return good_; } // no error so far
    SourceHead head(std::uint8_t type);
    std::uint16_t number(const std::string& key, int lowest, int highest);
    bool flag(const std::string& key);
    bool has(const std::string& key);  // for keys that may be left out
    void know(const std::string& key); // a key with others below it, all of them known
    std::u16string text(const std::string& key, const TextRule& rule = {});
    SourceText lines(const std::string& key);
    std::vector<std::u16string> texts(const std::string& key, std::size_t least, std::size_t most);
    // The character of a text that has one; 0 for an empty text.
    char16_t character(const std::string& key);
    std::vector<SourcePair> pairs(const std::string& key);
    // The id of the object that the key names; the sort Binary is 0.
    std::uint16_t reference(const std::string& key, std::uint8_t type, const Catalogue& catalogue);

    void refuse(const std::string& key, const std::string& message); // at the key's line
    // Holds texts to the rules of their fields, one for one.
    void check(const std::vector<TextField>& fields, const std::vector<std::u16string>& texts);
    // Refuses the keys that nobody has asked for, and makes the object if the source is good.
    std::optional<Object> finish(const SourceHead& head, const std::optional<Bytes>& content);

  private:
    struct Tree;
    void report(int line, const std::string& message);

    std::string path_;
    Diagnostics& out_;
    std::unique_ptr<Tree> tree_;
    bool good_ = true;
};

std::optional<SourceHead> readHead(const std::string& path, std::uint8_t type, Diagnostics& out);

// Texts and tables behind a content header, under construction.
class TextBlock {
  public:
    explicit TextBlock(std::size_t headerSize) : headerSize_(headerSize) {}

    // Puts the texts with their terminators, and their offsets into the header words from
    // `firstWord` on.
    template <class Header>
    void put(const std::vector<std::u16string>& texts, Header& header, int firstWord)
    {
        auto* word = reinterpret_cast<Le16*>(&header) + firstWord;
        for (const std::u16string& text : texts)
            *word++ = putText(text);
    }
    template <class Record>
    void append(const Record& record)
    {
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&record);
        bytes_.insert(bytes_.end(), bytes, bytes + sizeof record);
    }
    std::uint16_t end() const { return static_cast<std::uint16_t>(headerSize_ + bytes_.size()); }
    // Header and block as a section; nothing if that is larger than a section may be.
    template <class Header>
    std::optional<Bytes> behind(const Header& header) const
    {
        if (sizeof header + bytes_.size() > kLargestSection)
            return std::nullopt;
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&header);
        Bytes content(bytes, bytes + sizeof header);
        content.insert(content.end(), bytes_.begin(), bytes_.end());
        return content;
    }

  private:
    std::uint16_t putText(std::u16string_view text);

    std::size_t headerSize_;
    Bytes bytes_;
};

} // namespace vlx::data
