// What the options of `vlx sort` say: sizes, separators, fields.
#include <charconv>
#include <limits>
#include <string_view>

#include <fmt/format.h>

#include "failure.hpp"
#include "sort.hpp"
#include "wide.hpp"

namespace vlx::cli {

namespace {

// The options that stand behind a position, or beside -k for all parts that have none.
struct Letters {
    bool skipsBlanks = false;
    bool ignoresCase = false;
    bool ignoresWidth = false;
    bool numeric = false;
    bool reversed = false;

    bool any() const { return skipsBlanks || ignoresCase || ignoresWidth || numeric || reversed; }
};

std::uint32_t optionsOf(const Letters& letters)
{
    if (letters.ignoresCase && letters.ignoresWidth)
        throw Failure("case and width cannot be ignored together: the library's keys leave out one "
                      "of them");
    if (letters.numeric && (letters.ignoresCase || letters.ignoresWidth))
        throw Failure("a key of numbers has neither case nor width");
    if (letters.ignoresCase)
        return TS_OPT_IGNORE_CASE;
    return letters.ignoresWidth ? TS_OPT_IGNORE_WIDTH : 0;
}

KeyPart partOf(const Letters& letters, std::optional<FieldRange> range)
{
    return {range, letters.numeric ? KeyPart::Kind::kNumber : KeyPart::Kind::kText,
            optionsOf(letters), letters.reversed};
}

// Reads F[.C][LETTERS][,F[.C][LETTERS]].
class KeyReader {
  public:
    explicit KeyReader(const std::string& text) : text_(text), rest_(text) {}

    KeyPart read(const Letters& usual)
    {
        FieldRange range;
        range.begin = place(1);
        const bool beginSkips = letters();
        if (take(',')) {
            range.end = place(0);
            range.end->skipsBlanks = letters();
        }
        if (!rest_.empty())
            fail(fmt::format("there is no option {}; they are b, f, n, r and w", rest_.front()));
        range.begin.skipsBlanks = beginSkips;
        if (letters_.any() || beginSkips || (range.end && range.end->skipsBlanks))
            return partOf(letters_, range);
        range.begin.skipsBlanks = usual.skipsBlanks;
        if (range.end)
            range.end->skipsBlanks = usual.skipsBlanks;
        return partOf(usual, range);
    }

  private:
    [[noreturn]] void fail(const std::string& why) const
    {
        throw Failure(fmt::format("-k {}: {}; a key is F[.C][bfnrw][,F[.C][bfnrw]], with fields "
                                  "and characters from 1",
                                  text_, why));
    }

    bool take(char wanted)
    {
        if (rest_.empty() || rest_.front() != wanted)
            return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::size_t number(std::size_t least)
    {
        std::size_t value = 0;
        const char* const end = rest_.data() + rest_.size();
        const auto [stop, error] = std::from_chars(rest_.data(), end, value);
        if (error == std::errc::result_out_of_range)
            value = std::numeric_limits<std::size_t>::max();
        else if (error != std::errc())
            fail("a number is missing");
        if (value < least)
            fail("0 is no number of a field or of a first character");
        rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()));
        return value;
    }

    FieldPlace place(std::size_t leastCharacter)
    {
        FieldPlace place;
        place.field = number(1);
        if (take('.'))
            place.character = number(leastCharacter);
        return place;
    }

    // Whether blanks at the beginning of this place's field are skipped; the other letters count
    // for the whole part.
    bool letters()
    {
        bool skipsBlanks = false;
        for (;;) {
            if (take('b'))
                skipsBlanks = true;
            else if (take('f'))
                letters_.ignoresCase = true;
            else if (take('w'))
                letters_.ignoresWidth = true;
            else if (take('n'))
                letters_.numeric = true;
            else if (take('r'))
                letters_.reversed = true;
            else
                return skipsBlanks;
        }
    }

    const std::string& text_;
    std::string_view rest_;
    Letters letters_;
};

// The character between fields in the locale's code page.
std::optional<std::string> separatorOf(TSLocale* locale, const std::string& separator)
{
    if (separator.empty())
        return std::nullopt;
    const Units units = unitsOf(separator == "\\t" ? std::string("\t") : separator);
    if (units.size() != 1)
        throw Failure(fmt::format("-t {}: give one character, or \\t for a tab", separator));
    char bytes[8];
    const std::int32_t size = TSUnicodeToString(locale, bytes, sizeof bytes, units.data(), 1, 0);
    TSChar16 back = 0;
    TSStringToUnicodeEx(&back, 1, locale, bytes, size > 1, size, 0);
    if (back != units[0])
        throw Failure(
            fmt::format("-t {}: the locale's code page has no such character", separator));
    return std::string(bytes, static_cast<std::size_t>(size));
}

// The whole line, unless blanks at its beginning do not count.
KeyPart wholeLine(const Letters& letters)
{
    FieldRange range;
    range.begin.skipsBlanks = true;
    return partOf(letters, letters.skipsBlanks ? std::optional(range) : std::nullopt);
}

} // namespace

KeyBuilder keyBuilderOf(TSLocale* locale, const SortOptions& options)
{
    const Letters usual{options.skipsBlanks, options.ignoresCase, options.ignoresWidth,
                        options.numeric, options.reversed};
    std::vector<KeyPart> parts;
    for (const std::string& key : options.keys)
        parts.push_back(KeyReader(key).read(usual));
    if (parts.empty())
        parts.push_back(wholeLine(usual));
    return {locale, std::move(parts), separatorOf(locale, options.separator)};
}

std::size_t bytesOfSize(const std::string& size)
{
    constexpr std::string_view units = "bKMGT"; // each 1024 times the one before
    constexpr std::size_t most = std::numeric_limits<std::ptrdiff_t>::max() / 2;
    std::size_t value = 0;
    const char* const end = size.data() + size.size();
    const auto [stop, error] = std::from_chars(size.data(), end, value);
    std::size_t unit = 1; // without a letter
    if (stop != end)
        unit = units.find(*stop == 'k' ? 'K' : *stop);
    if (error != std::errc() || end - stop > 1 || unit == std::string_view::npos || value == 0)
        throw Failure(
            fmt::format("-S {}: give a number of KiB, or a number with b, K, M, G or T", size));
    for (; unit > 0; --unit) {
        if (value > most >> 10)
            throw Failure(fmt::format("-S {}: no machine has so much memory", size));
        value <<= 10;
    }
    return value;
}

} // namespace vlx::cli
