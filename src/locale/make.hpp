// Making a locale record from a name: one algorithm for names of bytes and of 32-bit values.
#pragma once

#include <cstring>

#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/content.hpp"
#include "locale/locale.hpp"
#include "locale/name.hpp"

namespace vlx {

// The steps that find the four objects of a record, in the order of the name. Each gives false
// after a failure, with the code of its own for an object that is not listed.
template <class Name>
class LocaleMaker {
    using Unit = typename Name::Unit;

  public:
    // `trace` is null where the name's form has no trace.
    LocaleMaker(TSLocale& locale, const Unit* name, std::uint32_t options, std::int32_t& code,
                TraceGuard* trace)
        : locale_(locale), parts_(name), fallback_((options & TS_LOCALE_FALLBACK) != 0),
          code_(code), trace_(trace)
    {
    }

    bool make()
    {
        if (!findLanguage() || !findTerritory() || !findCodePage() || !findSort())
            return false;
        setFullName(locale_);
        return setValues();
    }

  private:
    using Part = typename NameParts<Unit>::Part;

    static TSObjManager* manager() { return tsGlobals->objectManager; }

    // Finds a part by name. True leaves `object` as the answer, null being the binary sort; false
    // asks for the default: the part is empty, or not listed and a fallback is wanted.
    bool byName(std::uint16_t type, Part part, TSObject*& object)
    {
        object = nullptr;
        if (part.length == 0)
            return false;
        object = Name::find(manager(), type, part.text, part.length, &code_);
        return object || code_ != TS_ERR_NOT_FOUND || !fallback_;
    }

    // A default of the language. An object of another type, which an empty range of the table
    // answers, is none that could be read as this one.
    TSObject* byId(std::uint16_t type, std::uint16_t id)
    {
        TSObject* const object = TSGetObjFromID(manager(), type, id, 0, &code_);
        if (object && object->type != type) {
            code_ = TS_ERR_NOT_FOUND;
            return nullptr;
        }
        return object;
    }

    // Ends a step without its object.
    bool fail(std::int32_t codeIfNotListed)
    {
        if (code_ != TS_ERR_MEMORY)
            code_ = code_ == TS_ERR_NOT_FOUND ? codeIfNotListed : TS_ERR_NO_OBJECTS;
        return false;
    }

    bool findLanguage()
    {
        constexpr char kDefault[] = TS_DEFAULT_LANGUAGE;
        if (!byName(TS_OBJ_LANGUAGE, parts_.upTo("_.@"), locale_.language))
            locale_.language = TSGetObjFromName(manager(), TS_OBJ_LANGUAGE, kDefault,
                                                sizeof kDefault - 1, 0, &code_);
        if (!locale_.language) {
            if (tracesErrors())
                TRC1_Printf(trace_->record(), __LINE__, "Unable to locate language, rc = %d",
                            code_);
            return fail(TS_ERR_LANGUAGE);
        }
        dumpLanguage();
        return true;
    }

    bool findTerritory()
    {
        if (!byName(TS_OBJ_TERRITORY, part('_', ".@"), locale_.territory))
            locale_.territory = byId(TS_OBJ_TERRITORY, language().defaultTerritory);
        if (locale_.territory)
            return true;
        if (tracesErrors())
            TRC1_Printf(trace_->record(), __LINE__, "Unable to locate territory, rc = %d", code_);
        return fail(TS_ERR_TERRITORY);
    }

    bool findCodePage()
    {
        if (!byName(TS_OBJ_CODEPAGE, part('.', "@"), locale_.codePage))
            locale_.codePage = byId(TS_OBJ_CODEPAGE, language().defaultCodePage);
        if (!locale_.codePage) {
            if (tracesErrors())
                TRC1_Printf(trace_->record(), __LINE__, "Unable to locate code page, rc = %d",
                            code_);
            return fail(TS_ERR_CODEPAGE);
        }
        setCodePageFlags(locale_);
        return true;
    }

    // Only here a null without a code is fine: it is the binary sort.
    bool findSort()
    {
        if (!byName(TS_OBJ_SORT, part('@', ""), locale_.sort))
            locale_.sort =
                TSGetObjFromID(manager(), TS_OBJ_SORT, language().defaultSort, 0, &code_);
        if (!locale_.sort && code_ != TS_ERR_NONE) {
            if (tracesErrors())
                TRC1_Printf(trace_->record(), __LINE__, "Unable to locate sort, rc = %d", code_);
            return fail(TS_ERR_SORT);
        }
        if (!locale_.sort)
            locale_.flags |= kLocaleBinarySort;
        return true;
    }

    bool setValues()
    {
        code_ = TSLocaleSetModifiable(&locale_);
        if (code_ == TS_ERR_NONE)
            return true;
        if (tracesErrors())
            TRC1_Printf(trace_->record(), __LINE__, "Unable to set modifiable values, err = %d",
                        code_);
        return false;
    }

    Part part(char delimiter, const char* upTo)
    {
        return parts_.begins(delimiter) ? parts_.upTo(upTo) : Part{nullptr, 0};
    }

    const TSLanguageContent& language() const
    {
        return *reinterpret_cast<const TSLanguageContent*>(locale_.language->sections[0]);
    }

    bool tracesErrors() const { return trace_ && trace_->on(TRC1_ERRORS); }

    void dumpLanguage()
    {
        if (!trace_ || !trace_->on(TRC1_DETAIL))
            return;
        TRC1_Dump(trace_->record(), __LINE__, locale_.language, sizeof(TSObject), "Object:");
        TRC1_Dump(trace_->record(), __LINE__, locale_.language->sections[0],
                  sizeof(TSLanguageContent), "Language:");
    }

    TSLocale& locale_;
    NameParts<Unit> parts_;
    const bool fallback_;
    std::int32_t& code_;
    TraceGuard* const trace_;
};

inline constexpr std::uint32_t kLocaleOptions = TS_LOCALE_USER | TS_LOCALE_FALLBACK;

// A zeroed record, or null.
inline TSLocale* newLocale()
{
    void* const record = allocate(sizeof(TSLocale));
    if (record)
        std::memset(record, 0, sizeof(TSLocale));
    return static_cast<TSLocale*>(record);
}

// Makes the new locale the default one, after the previous default is released. A null is a failure
// that leaves the default as it was.
inline std::int32_t setDefaultLocale(TSLocale* locale, std::int32_t code)
{
    if (!locale)
        return code;
    if (tsDefaultLocale)
        TSReleaseLocale(tsDefaultLocale);
    tsDefaultLocale = locale;
    return TS_ERR_NONE;
}

} // namespace vlx
