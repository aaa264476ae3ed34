// The conversions from bytes and to bytes against the oracle.
#include "convert/conversions.hpp"

namespace vlx::test {
namespace {

// In characters, the bytes of an output are not bounded by its size.
Sizes sizesOf(const Conversion& c)
{
    return (c.options & TS_OPT_CHAR_COUNT) != 0 ? Sizes::kCharacters : Sizes::kUnits;
}

char* asText(unsigned char* bytes)
{
    return reinterpret_cast<char*>(bytes);
}

TEST(ConversionAgainstOracle, TSConvertString)
{
    convertEverywhere([](Conversion& c) {
        const char* const input = c.useText();
        return c.compareSizes(
            sizesOf(c), c.target,
            [&](std::int32_t size) {
                return oracle::convertString(c.target.reference(), {0, size}, c.source.reference(),
                                             c.input(), c.options);
            },
            [&](unsigned char* output, std::int32_t size) {
                return TSConvertString(c.target.handle, asText(output), size, c.source.handle,
                                       input, c.length, c.options);
            });
    });
}

TEST(ConversionAgainstOracle, TSConvertStringEx)
{
    convertEverywhere([](Conversion& c) {
        const char* const input = c.useText();
        return c.compareSizes(
            sizesOf(c), c.target,
            [&](std::int32_t size) {
                return oracle::convertStringEx(c.target.reference(), {c.targetState, size},
                                               c.source.reference(), c.input(), c.options);
            },
            [&](unsigned char* output, std::int32_t size) {
                return TSConvertStringEx(c.target.handle, asText(output), c.targetState, size,
                                         c.source.handle, input, c.sourceState, c.length,
                                         c.options);
            });
    });
}

TEST(ConversionAgainstOracle, TSUnicodeToString)
{
    convertEverywhere([](Conversion& c) {
        const TSChar16* const input = c.useUnicode();
        return c.compareSizes(
            sizesOf(c), c.target,
            [&](std::int32_t size) {
                return oracle::unicodeToString(c.target.reference(), {0, size}, c.unicodeInput(),
                                               c.options);
            },
            [&](unsigned char* output, std::int32_t size) {
                return TSUnicodeToString(c.target.handle, asText(output), size, input, c.length,
                                         c.options);
            });
    });
}

TEST(ConversionAgainstOracle, TSUnicodeToStringEx)
{
    convertEverywhere([](Conversion& c) {
        const TSChar16* const input = c.useUnicode();
        return c.compareSizes(
            sizesOf(c), c.target,
            [&](std::int32_t size) {
                return oracle::unicodeToStringEx(c.target.reference(), {c.targetState, size},
                                                 c.unicodeInput(), c.options);
            },
            [&](unsigned char* output, std::int32_t size) {
                return TSUnicodeToStringEx(c.target.handle, asText(output), c.targetState, size,
                                           input, c.length, c.options);
            });
    });
}

TEST(ConversionAgainstOracle, TSWideToMb)
{
    convertEverywhere([](Conversion& c) {
        const TSChar32* const input = c.usePacked();
        return c.compareSizes(
            sizesOf(c), c.source,
            [&](std::int32_t size) {
                return oracle::wideToMb(c.source.reference(), {0, size}, c.packedInput(),
                                        c.options);
            },
            [&](unsigned char* output, std::int32_t size) {
                return TSWideToMb(c.source.handle, asText(output), size, input, c.length,
                                  c.options);
            });
    });
}

TEST(ConversionAgainstOracle, TSWideToMbEx)
{
    convertEverywhere([](Conversion& c) {
        const TSChar32* const input = c.usePacked();
        return c.compareSizes(
            sizesOf(c), c.source,
            [&](std::int32_t size) {
                return oracle::wideToMbEx(c.source.reference(), {c.sourceState, size},
                                          c.packedInput(), c.options);
            },
            [&](unsigned char* output, std::int32_t size) {
                return TSWideToMbEx(c.source.handle, asText(output), c.sourceState, size, input,
                                    c.length, c.options);
            });
    });
}

} // namespace
} // namespace vlx::test
