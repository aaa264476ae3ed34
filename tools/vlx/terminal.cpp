#include "terminal.hpp"

#include <cstring>

#include <langinfo.h>
#include <locale.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "environment.hpp"
#include "failure.hpp"

namespace vlx::cli {

namespace {

bool between(std::uint16_t value, std::uint16_t low, std::uint16_t high)
{
    return value >= low && value <= high;
}

// Characters without a shape of their own: C1 controls, joiners, direction marks, line separators.
bool isHidden(std::uint16_t value)
{
    return between(value, 0x80, 0x9F) || value == 0xAD || between(value, 0x200B, 0x200F) ||
           between(value, 0x2028, 0x202E) || between(value, 0x2060, 0x206F) || value == 0xFEFF ||
           between(value, 0xD800, 0xDFFF);
}

void requireWritten(bool written)
{
    if (!written)
        throw Failure(fmt::format(
            "the output could not be written: {}; see that there is room for it and try again",
            systemReason()));
}

} // namespace

Terminal standardOutput()
{
    Terminal terminal;
    if (const locale_t user = newlocale(LC_CTYPE_MASK, "", nullptr)) {
        terminal.utf8 = std::strcmp(nl_langinfo_l(CODESET, user), "UTF-8") == 0;
        freelocale(user);
    }
    if (!isatty(STDOUT_FILENO))
        return terminal;
    terminal.colour = !environment("NO_COLOR");
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        terminal.width = size.ws_col;
    return terminal;
}

void Output::write()
{
    const bool written = std::fwrite(text_.data(), 1, text_.size(), stdout) == text_.size();
    text_.clear();
    requireWritten(written);
}

void Output::finish()
{
    write();
    requireWritten(std::fflush(stdout) == 0);
}

std::string utf8(std::uint16_t value)
{
    constexpr std::uint16_t replacement = 0xFFFD;
    if (between(value, 0xD800, 0xDFFF))
        value = replacement;
    const auto byte = [](int bits) { return static_cast<char>(bits); };
    if (value < 0x80)
        return {byte(value)};
    if (value < 0x800)
        return {byte(0xC0 | value >> 6), byte(0x80 | (value & 0x3F))};
    return {byte(0xE0 | value >> 12), byte(0x80 | (value >> 6 & 0x3F)),
            byte(0x80 | (value & 0x3F))};
}

std::string visible(std::uint16_t value)
{
    constexpr std::uint16_t pictures = 0x2400; // the symbols of 00 to 20
    constexpr std::uint16_t deletePicture = 0x2421;
    constexpr std::uint16_t newLinePicture = 0x2424;
    constexpr std::uint16_t middleDot = 0x00B7;
    if (value <= 0x20)
        return utf8(static_cast<std::uint16_t>(pictures + value));
    if (value == 0x7F)
        return utf8(deletePicture);
    if (value == 0x85)
        return utf8(newLinePicture);
    return utf8(isHidden(value) ? middleDot : value);
}

} // namespace vlx::cli
