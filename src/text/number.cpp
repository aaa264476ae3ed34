#include "text/number.hpp"

namespace vlx {

std::int32_t bytesFromEnd(const TSLocale& locale, const char* text, std::int32_t length,
                          std::int32_t zeros, char zero, std::int32_t count)
{
    const std::int32_t most = length + zeros + 1;
    if (count >= most || (locale.flags & kLocaleSingleByte))
        return std::clamp(count, 0, most);
    // Nearly all zeros are counted off without writing them down.
    constexpr std::int32_t kWrittenZeros = 8;
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    const std::int32_t step =
        page.cpFlags & kStateful ? 1 : page.charLength[static_cast<std::uint8_t>(zero)];
    const std::int32_t skipped =
        zeros > kWrittenZeros ? std::min((zeros - kWrittenZeros) / step, count) : 0;
    const std::int32_t left = zeros - skipped * step;
    if (left > 2 * kWrittenZeros) // the characters end among them
        return skipped * step;

    char reversed[Amount<char>::kMostWritten + 2 * kWrittenZeros];
    std::fill_n(reversed, left, zero);
    std::reverse_copy(text, text + length, reversed + left);
    const std::int32_t bytes =
        TSCpCharsToBytesWithin(locale.codePage, reversed, 0, count - skipped, left + length);
    return std::clamp(skipped * step + bytes, 0, most);
}

} // namespace vlx
