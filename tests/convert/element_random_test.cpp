// The conversions to 16-bit and 32-bit elements against the oracle.
#include "convert/conversions.hpp"

namespace vlx::test {
namespace {

TEST(ConversionAgainstOracle, TSConvertStringW)
{
    convertEverywhere([](Conversion& c) {
        const TSChar32* const input = c.usePacked();
        return c.compareSizes(
            Sizes::kUnits, c.target,
            [&](std::int32_t size) {
                return oracle::convertStringW(c.target.reference(), {0, size}, c.source.reference(),
                                              c.packedInput(), c.options);
            },
            [&](TSChar32* output, std::int32_t size) {
                return TSConvertStringW(c.target.handle, output, size, c.source.handle, input,
                                        c.length, c.options);
            });
    });
}

TEST(ConversionAgainstOracle, TSStringToUnicode)
{
    convertEverywhere([](Conversion& c) {
        const char* const input = c.useText();
        return c.compareSizes(
            Sizes::kUnits, c.source,
            [&](std::int32_t size) {
                return oracle::stringToUnicode({0, size}, c.source.reference(), c.input(),
                                               c.options);
            },
            [&](TSChar16* output, std::int32_t size) {
                return TSStringToUnicode(output, size, c.source.handle, input, c.length, c.options);
            });
    });
}

TEST(ConversionAgainstOracle, TSStringToUnicodeEx)
{
    convertEverywhere([](Conversion& c) {
        const char* const input = c.useText();
        return c.compareSizes(
            Sizes::kUnits, c.source,
            [&](std::int32_t size) {
                return oracle::stringToUnicodeEx({0, size}, c.source.reference(), c.input(),
                                                 c.options);
            },
            [&](TSChar16* output, std::int32_t size) {
                return TSStringToUnicodeEx(output, size, c.source.handle, input, c.sourceState,
                                           c.length, c.options);
            });
    });
}

TEST(ConversionAgainstOracle, TSStringToUnicodeW)
{
    convertEverywhere([](Conversion& c) {
        const TSChar32* const input = c.usePacked();
        return c.compareSizes(
            Sizes::kUnits, c.source,
            [&](std::int32_t size) {
                return oracle::stringToUnicodeW({0, size}, c.source.reference(), c.packedInput(),
                                                c.options);
            },
            [&](TSChar16* output, std::int32_t size) {
                return TSStringToUnicodeW(output, size, c.source.handle, input, c.length,
                                          c.options);
            });
    });
}

TEST(ConversionAgainstOracle, TSUnicodeToStringW)
{
    convertEverywhere([](Conversion& c) {
        const TSChar16* const input = c.useUnicode();
        return c.compareSizes(
            Sizes::kUnits, c.target,
            [&](std::int32_t size) {
                return oracle::unicodeToStringW(c.target.reference(), {0, size}, c.unicodeInput(),
                                                c.options);
            },
            [&](TSChar32* output, std::int32_t size) {
                return TSUnicodeToStringW(c.target.handle, output, size, input, c.length,
                                          c.options);
            });
    });
}

TEST(ConversionAgainstOracle, TSMbToWide)
{
    convertEverywhere([](Conversion& c) {
        const char* const input = c.useText();
        return c.compareSizes(
            Sizes::kUnits, c.source,
            [&](std::int32_t size) {
                return oracle::mbToWide(c.source.reference(), {0, size}, c.input(), c.options);
            },
            [&](TSChar32* output, std::int32_t size) {
                return TSMbToWide(c.source.handle, output, size, input, c.length, c.options);
            });
    });
}

TEST(ConversionAgainstOracle, TSMbToWideEx)
{
    convertEverywhere([](Conversion& c) {
        const char* const input = c.useText();
        return c.compareSizes(
            Sizes::kUnits, c.source,
            [&](std::int32_t size) {
                return oracle::mbToWideEx(c.source.reference(), {0, size}, c.input(), c.options);
            },
            [&](TSChar32* output, std::int32_t size) {
                return TSMbToWideEx(c.source.handle, output, size, input, c.sourceState, c.length,
                                    c.options);
            });
    });
}

} // namespace
} // namespace vlx::test
