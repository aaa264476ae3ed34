// Locales by ids: handles, and the default locale.
#include <cstdio>

#include "facade/facade.hpp"

TS_TRACE_UNIT_OF("*", "vlxnls1");

namespace {

// What an id of a pair, or a code page's, adds to a locale name.
struct NamePart {
    std::uint16_t type;
    const char* delimiter;
    const char* what;
    std::int32_t codeIfMissing;
};
constexpr NamePart kLanguagePart{TS_OBJ_LANGUAGE, "", "Language", TS_ERR_LANGUAGE};
constexpr NamePart kTerritoryPart{TS_OBJ_TERRITORY, "_", "Territory", TS_ERR_TERRITORY};
constexpr NamePart kCodePagePart{TS_OBJ_CODEPAGE, ".", "Codepage", TS_ERR_CODEPAGE};

// A locale name, put together from the names of objects by their ids.
class LocaleName {
  public:
    explicit LocaleName(vlx::TraceGuard& trace) : tsTrace(trace) {}

    // Loads the objects of the ids that are not 0, until there is a code.
    void append(std::int32_t ids, std::int32_t codePage, std::int32_t& code)
    {
        const vlx::IdPair pair(ids);
        // Deliberate: the lookup of the language clears a code that stood there before.
        if (pair.language != 0)
            append(kLanguagePart, pair.language, code);
        if (code == TS_ERR_NONE && pair.territory != 0)
            append(kTerritoryPart, pair.territory, code);
        if (code == TS_ERR_NONE && codePage != 0)
            append(kCodePagePart, codePage, code);
    }

    const char* text() const { return text_; }

  private:
    void append(const NamePart& part, std::int32_t id, std::int32_t& code)
    {
        std::int32_t unused = TS_ERR_NONE;
        const TSObject* const object = TSGetObjFromID(vlx::objectManager(), part.type,
                                                      static_cast<std::uint16_t>(id), 0, &unused);
        code = object ? TS_ERR_NONE : part.codeIfMissing;
        if (object) {
            length_ += std::snprintf(text_ + length_, sizeof text_ - static_cast<unsigned>(length_),
                                     "%s%s", part.delimiter, object->name);
        } else {
            TS_PRINT(TRC1_DETAIL, "Invalid %s %d", part.what, id);
        }
    }

    vlx::TraceGuard& tsTrace; // of the function that asks
    char text_[128] = "";     // three names and what parts them
    int length_ = 0;
};
static_assert(3 * (sizeof(TSObject::name) + 1) < 128);

} // namespace

TSLocale* NLS1_GetLocale(int32_t ids, int32_t codePage, uint32_t options, int32_t* code)
{
    TS_TRACE(NLS1_GetLocale);
    TSLocale* const none = nullptr;
    int32_t unused = TS_ERR_NONE;
    int32_t& result = code ? *code : unused;
    if (!vlx::facadeRuns())
        TS_FAIL(result, TS_ERR_FAILED, none, "The library does not run");
    result = TS_ERR_NONE;
    LocaleName name(tsTrace);
    name.append(ids, codePage, result);
    if (result != TS_ERR_NONE)
        TS_RETURN(none);
    TS_RETURN(TSGetLocale(name.text(), options, &result));
}

int32_t NLS1_SetLocale(int32_t ids, int32_t codePage, uint32_t options)
{
    TS_TRACE(NLS1_SetLocale);
    if (!vlx::facadeRuns()) {
        TS_PRINT(TRC1_ERRORS, "The library does not run");
        TS_RETURN(TS_ERR_NO_OBJECTS);
    }
    int32_t code = TS_ERR_NONE;
    TSLocale** const current = vlx::threadLocale(); // whatever the options are
    if (options & NLS1_THREAD) {
        // Deliberate: the option itself is refused here, so that ids set no thread's locale;
        // NLS1_SetLocaleFromNative does that.
        TSLocale* const locale = NLS1_GetLocale(ids, codePage, options, &code);
        if (locale && current) {
            if (*current)
                TSReleaseLocale(*current);
            *current = locale;
        } else if (locale) {
            TSReleaseLocale(locale);
        }
    }
    if ((options & NLS1_PROCESS) || !(options & NLS1_THREAD)) {
        LocaleName name(tsTrace);
        name.append(ids, codePage, code);
        if (code == TS_ERR_NONE)
            code = TSSetLocale(name.text(), options & (TS_LOCALE_USER | TS_LOCALE_FALLBACK));
    }
    TS_RETURN(code);
}
