#include "host/posix/hostpict.hpp"

#include <cstring>

namespace vlx::host {

namespace {

// What a conversion is in a picture, and without a leading zero or blank.
struct Conversion {
    char letter;
    const char* picture;
    const char* unpadded;
};
constexpr Conversion kConversions[] = {
    {'d', "dd", "d"},    {'e', "d", "d"},       {'m', "MM", "M"}, {'b', "MMM", "MMM"},
    {'h', "MMM", "MMM"}, {'B', "MMMM", "MMMM"}, {'y', "yy", "y"}, {'Y', "yyyy", "yyyy"},
    {'a', "ddd", "ddd"}, {'A', "dddd", "dddd"}, {'H', "HH", "H"}, {'k', "H", "H"},
    {'I', "hh", "h"},    {'l', "h", "h"},       {'M', "mm", "m"}, {'S', "ss", "s"},
    {'p', "tt", "tt"},   {'P', "tt", "tt"},     {'n', " ", " "},  {'t', " ", " "},
};

// Conversions that stand for formats.
constexpr struct {
    char letter;
    const char* format;
} kShort[] = {{'T', "%H:%M:%S"}, {'R', "%H:%M"}, {'D', "%m/%d/%y"}, {'F', "%Y-%m-%d"}};

constexpr int kMaxDepth = 2; // of formats inside formats

class Writer {
  public:
    Writer(char* picture, std::uint32_t size) : at_(picture), end_(picture + size) {}

    bool put(const char* text)
    {
        for (; *text; ++text)
            if (!put(*text))
                return false;
        return true;
    }
    bool put(char character)
    {
        if (end_ - at_ < 2)
            return false;
        *at_++ = character;
        *at_ = 0;
        return true;
    }

  private:
    char* at_;
    char* const end_;
};

class Translator {
  public:
    Translator(const char* twelveHours, Writer writer) : twelveHours_(twelveHours), writer_(writer)
    {
    }

    bool translate(const char* format, int depth)
    {
        while (*format)
            if (!(*format == '%' ? conversion(format, depth) : literal(format)))
                return false;
        return true;
    }

  private:
    // Text that could be taken for a picture is quoted.
    bool literal(const char*& format)
    {
        constexpr const char* kLetters = "dMyghHmst";
        const std::size_t length = std::strcspn(format, "%'");
        if (length == 0) // a quote
            return false;
        const char* const end = format + length;
        const bool quoted = std::strcspn(format, kLetters) < length;
        if (quoted && !writer_.put('\''))
            return false;
        while (format != end)
            if (!writer_.put(*format++))
                return false;
        return !quoted || writer_.put('\'');
    }

    bool conversion(const char*& format, int depth)
    {
        ++format;
        const bool unpadded = *format == '-';
        format +=
            std::strspn(format, "-_0^#EO"); // how it is written, which a picture has no word for
        const char letter = *format;
        if (letter == 0)
            return false;
        ++format;
        for (const Conversion& each : kConversions)
            if (each.letter == letter)
                return writer_.put(unpadded ? each.unpadded : each.picture);
        if (depth == kMaxDepth)
            return false;
        if (letter == 'r')
            return *twelveHours_ && translate(twelveHours_, depth + 1);
        for (const auto& each : kShort)
            if (each.letter == letter)
                return translate(each.format, depth + 1);
        return false;
    }

    const char* const twelveHours_;
    Writer writer_;
};

} // namespace

bool pictureOf(const char* format, const char* twelveHours, char* picture, std::uint32_t size)
{
    if (*format == 0)
        return false;
    return Translator(twelveHours, Writer(picture, size)).translate(format, 0);
}

} // namespace vlx::host
