// TSConvertLocale: the native id of a locale.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/locale.hpp"
#include "locale/native.hpp"

TS_TRACE_UNIT("tscnvloc");

namespace {

constexpr std::uint32_t kNoOverride = 1; // accepted, and without effect here

// Narrows the map key by key. A row counts only while all keys found earlier still hold, so each
// stage looks at the rows from the last match on.
class NativeSearch {
  public:
    // Goes on to the first row that has the key, among those that still hold.
    bool narrow(std::uint16_t TSLocaleMapRow::*key, std::uint16_t value)
    {
        for (int i = first_; i < end_; ++i) {
            if (vlx::kLocaleMap[i].*key != value)
                continue;
            first_ = i;
            while (i < end_ && vlx::kLocaleMap[i].*key == value)
                ++i;
            end_ = i;
            nativeId_ = vlx::kLocaleMap[first_].nativeId;
            return true;
        }
        return false;
    }

    // Of the last match; 0 if there was none.
    std::uint32_t nativeId() const { return nativeId_; }

  private:
    int first_ = 0;
    int end_ = vlx::kLocaleMapCount;
    std::uint32_t nativeId_ = 0;
};

} // namespace

int32_t TSConvertLocale(TSLocale* handle, uint32_t* native, uint32_t options)
{
    TS_TRACE(TSConvertLocale);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~(kNoOverride | TS_LOCALE_FALLBACK))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    const std::uint16_t sort = locale->sort ? locale->sort->id : std::uint16_t{0};
    NativeSearch search;
    const bool exact = search.narrow(&TSLocaleMapRow::language, locale->language->id) &&
                       search.narrow(&TSLocaleMapRow::territory, locale->territory->id) &&
                       search.narrow(&TSLocaleMapRow::codePage, locale->codePage->id) &&
                       search.narrow(&TSLocaleMapRow::sort, sort);
    if (!exact && !(options & TS_LOCALE_FALLBACK))
        TS_FAIL(locale->lastError, TS_ERR_NO_NATIVE, 0, "No native id for %s", locale->fullName);
    *native = search.nativeId();
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(1);
}
