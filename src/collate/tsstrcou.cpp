// TSStrcollU: compares two 16-bit strings by the locale's sort.
#include "collate/collate.hpp"

TS_TRACE_UNIT("tsstrcou");

namespace {

constexpr uint32_t kKnownOptions = TS_OPT_IGNORE_WIDTH | TS_OPT_STRIP_BLANKS;

// Deliberate: the blank is two bytes as they are stored, which is U+0020 on a big-endian host
// alone.
TSChar16 storedBlank()
{
    const uint8_t bytes[] = {0x00, 0x20};
    TSChar16 blank;
    std::memcpy(&blank, bytes, sizeof blank);
    return blank;
}

} // namespace

int32_t TSStrcollU(TSLocale* handle, const TSChar16* string1, int32_t length1,
                   const TSChar16* string2, int32_t length2, uint32_t options)
{
    TS_TRACE(TSStrcollU);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~kKnownOptions)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    if (locale->flags & vlx::kLocaleBinarySort)
        TS_RETURN(TSStrcmpU(locale, string1, length1, string2, length2, vlx::codeOptions(options)));
    const vlx::UnicodeForm form{locale->codePage};
    if (options == 0) {
        const int32_t early =
            vlx::earlyDifference(*locale, form, string1, length1, string2, length2);
        if (early != 0)
            TS_RETURN(early);
    }
    const bool strips = (options & TS_OPT_STRIP_BLANKS) != 0;
    options &= ~TS_OPT_STRIP_BLANKS;
    const TSChar16 blank = storedBlank();
    std::optional<TSChar16> wide;
    if (strips && (options & TS_OPT_IGNORE_WIDTH) == TS_OPT_IGNORE_WIDTH)
        TSMapStringU(locale, &wide.emplace(), 1, &blank, 1, TS_MAP_FULL_WIDTH);
    length1 = vlx::comparedLength(string1, length1);
    length2 = vlx::comparedLength(string2, length2);
    if (strips) {
        length1 = vlx::withoutBlanks(string1, length1, blank, wide);
        length2 = vlx::withoutBlanks(string2, length2, blank, wide);
    }
    vlx::WorkArea area(length1, length2);
    std::optional<int32_t> result;
    if (options == 0) {
        result = vlx::compareElements(*locale, form, vlx::textOf(form, string1, length1),
                                      vlx::textOf(form, string2, length2), area);
    } else {
        result = vlx::compareKeys(
            area,
            [&](char* key, int32_t size) {
                return TSStrxfrmU(locale, key, size, string1, length1, options);
            },
            [&](char* key, int32_t size) {
                return TSStrxfrmU(locale, key, size, string2, length2, options);
            });
    }
    if (!result)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, 0, "Out of memory");
    TS_RETURN(*result);
}
