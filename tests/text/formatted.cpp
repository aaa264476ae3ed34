#include "text/formatted.hpp"

namespace vlx::test {

namespace {

constexpr char kFill = '~';
constexpr std::size_t kRoom = 200;

} // namespace

std::ostream& operator<<(std::ostream& out, const Written& written)
{
    return out << ::testing::PrintToString(written.text) << ", result " << written.result
               << ", code " << written.code;
}

// The text is all up to the last byte that was touched.
template <class Call>
Written Formatted::written(const Call& call)
{
    char memory[kRoom];
    std::fill(std::begin(memory), std::end(memory), kFill);
    const std::int32_t result = call(memory);
    std::size_t length = kRoom;
    while (length > 0 && memory[length - 1] == kFill)
        --length;
    return {{memory, length}, result, record().lastError};
}

Written Formatted::number(std::int32_t value, std::uint32_t options, std::int32_t size)
{
    return written([&](char* to) { return TSLongToString(handle(), value, to, size, options); });
}

Written Formatted::number(double value, std::uint32_t options, std::int32_t size)
{
    return written([&](char* to) { return TSDoubleToString(handle(), value, to, size, options); });
}

Written Formatted::money(double value, std::uint32_t options, std::int32_t size)
{
    return written(
        [&](char* to) { return TSCurrencyToString(handle(), value, to, size, options); });
}

Written Formatted::time(const TSTimeFields& time, const std::string& pattern, std::uint32_t options,
                        std::int32_t size)
{
    return written([&](char* to) {
        return TSTimeToString(handle(), &time, to, size, pattern.data(),
                              static_cast<std::int32_t>(pattern.size()), options);
    });
}

Written Formatted::numberEx(std::int32_t value, std::int32_t state, std::uint32_t options,
                            std::int32_t size)
{
    return written(
        [&](char* to) { return TSLongToStringEx(handle(), value, to, state, size, options); });
}

Written Formatted::numberEx(double value, std::int32_t state, std::uint32_t options,
                            std::int32_t size)
{
    return written(
        [&](char* to) { return TSDoubleToStringEx(handle(), value, to, state, size, options); });
}

Written Formatted::moneyEx(double value, std::int32_t state, std::uint32_t options,
                           std::int32_t size)
{
    return written(
        [&](char* to) { return TSCurrencyToStringEx(handle(), value, to, state, size, options); });
}

Written Formatted::timeEx(const TSTimeFields& time, const std::string& pattern, std::int32_t state,
                          std::uint32_t options, std::int32_t size)
{
    return written([&](char* to) {
        return TSTimeToStringEx(handle(), &time, to, state, size, pattern.data(), 0,
                                static_cast<std::int32_t>(pattern.size()), options);
    });
}

std::u16string textOf(const TSChar16* units, std::int32_t count)
{
    return {units, units + count};
}

std::u32string textOf(const TSChar32* units, std::int32_t count)
{
    return {units, units + count};
}

} // namespace vlx::test
