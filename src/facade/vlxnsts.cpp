// Items of a locale, handed on to the library.
#include <cstring>

#include "facade/facade.hpp"
#include "locale/content.hpp"
#include "locale/locale.hpp"

TS_TRACE_UNIT_OF("*", "vlxnls1");

int32_t NLS1_GetLocaleNumInfo(TSLocale* locale, int32_t item, uint32_t option)
{
    TS_TRACE(NLS1_GetLocaleNumInfo);
    // Deliberate: this number is a name to the library, and no number of it.
    if (item == TS_LI_DEFAULT_CODEPAGE_OBJECT) {
        const auto& language =
            *reinterpret_cast<const TSLanguageContent*>(tsLocale(locale)->language->sections[0]);
        TS_RETURN(static_cast<int32_t>(language.defaultCodePage));
    }
    TS_RETURN(TSGetLocaleNumInfo(locale, item, option));
}

int32_t NLS1_SetLocaleNumInfo(TSLocale* locale, int32_t item, int32_t value, uint32_t options)
{
    TS_TRACE(NLS1_SetLocaleNumInfo);
    if (item != TS_LI_DEFAULT_CODEPAGE_OBJECT)
        TS_RETURN(TSSetLocaleNumInfo(locale, item, value));
    if (value <= 0)
        TS_RETURN(0);
    int32_t code = TS_ERR_NO_OBJECTS;
    const TSObject* object = nullptr;
    if (TSObjManager* const manager = vlx::objectManager())
        object =
            TSGetObjFromID(manager, TS_OBJ_CODEPAGE, static_cast<std::uint16_t>(value), 0, &code);
    if (!object) {
        TS_PRINT(TRC1_DETAIL, "Invalid Codepage %d", value);
        TS_RETURN(code);
    }
    TS_RETURN(TSSetLocaleTextInfo(locale, item, object->name,
                                  static_cast<int32_t>(std::strlen(object->name)), options));
}

int32_t NLS1_GetLocaleTextInfo(TSLocale* locale, int32_t item, char* buffer, int32_t size,
                               uint32_t options)
{
    TS_TRACE(NLS1_GetLocaleTextInfo);
    TS_RETURN(TSGetLocaleTextInfo(locale, item, buffer, size, options));
}

int32_t NLS1_GetLocaleTextInfoEx(TSLocale* locale, int32_t item, char* buffer, int32_t state,
                                 int32_t size, uint32_t options)
{
    TS_TRACE(NLS1_GetLocaleTextInfoEx);
    TS_RETURN(TSGetLocaleTextInfoEx(locale, item, buffer, state, size, options));
}

int32_t NLS1_GetLocaleTextInfoU(TSLocale* locale, int32_t item, TSChar16* buffer, int32_t size,
                                uint32_t options)
{
    TS_TRACE(NLS1_GetLocaleTextInfoU);
    TS_RETURN(TSGetLocaleTextInfoU(locale, item, buffer, size, options));
}

int32_t NLS1_GetLocaleTextInfoW(TSLocale* locale, int32_t item, TSChar32* buffer, int32_t size,
                                uint32_t options)
{
    TS_TRACE(NLS1_GetLocaleTextInfoW);
    TS_RETURN(TSGetLocaleTextInfoW(locale, item, buffer, size, options));
}

int32_t NLS1_SetLocaleTextInfo(TSLocale* locale, int32_t item, const char* text, int32_t length,
                               uint32_t options)
{
    TS_TRACE(NLS1_SetLocaleTextInfo);
    TS_RETURN(TSSetLocaleTextInfo(locale, item, text, length, options));
}

int32_t NLS1_SetLocaleTextInfoEx(TSLocale* locale, int32_t item, const char* text, int32_t state,
                                 int32_t length, uint32_t options)
{
    TS_TRACE(NLS1_SetLocaleTextInfoEx);
    TS_RETURN(TSSetLocaleTextInfoEx(locale, item, text, state, length, options));
}

int32_t NLS1_SetLocaleTextInfoU(TSLocale* locale, int32_t item, const TSChar16* text,
                                int32_t length, uint32_t options)
{
    TS_TRACE(NLS1_SetLocaleTextInfoU);
    TS_RETURN(TSSetLocaleTextInfoU(locale, item, text, length, options));
}

int32_t NLS1_SetLocaleTextInfoW(TSLocale* locale, int32_t item, const TSChar32* text,
                                int32_t length, uint32_t options)
{
    TS_TRACE(NLS1_SetLocaleTextInfoW);
    TS_RETURN(TSSetLocaleTextInfoW(locale, item, text, length, options));
}
