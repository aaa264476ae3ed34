// The search for a catalog's file: templates of the caller, those of the environment, the name.
#include "catalog/catalog.hpp"
#include "catalog/catpath.hpp"
#include "frame/scratch.hpp"
#include "host/host.hpp"

namespace vlx {

namespace {

constexpr char kPathVariable[] = "TS_NLSPATH";

// The value of the variable, cut to its room.
class SearchVariable {
  public:
    // False without the memory that a long value needs.
    bool read()
    {
        const std::int32_t length = host::environment(kPathVariable, value_, sizeof value_);
        if (length < static_cast<std::int32_t>(sizeof value_)) {
            if (length < 0)
                value_[0] = 0;
            return true;
        }
        const auto needed = static_cast<std::uint32_t>(length);
        const Scratch whole(needed);
        if (!whole)
            return false;
        auto* const bytes = whole.as<char>();
        const std::int32_t got = host::environment(kPathVariable, bytes, needed);
        const bool good = got >= 0 && static_cast<std::uint32_t>(got) < needed;
        std::strncpy(value_, good ? bytes : "", sizeof value_ - 1);
        value_[sizeof value_ - 1] = 0;
        return true;
    }

    const char* value() const { return value_; }

  private:
    char value_[512];
};

// One pass over the templates, with the codes of one locale.
class SearchPass {
  public:
    SearchPass(TSLocale* locale, const char* name) : locale_(locale), name_(name), path_(locale) {}

    // Tries the paths of one element; true ends the search, with a file or without memory.
    bool tryElement(const char* element)
    {
        TemplateText text = textOf(element);
        for (TSChar32 value; (value = text.value()) != 0;) {
            text.next();
            if (value == ';') {
                if (tryPath())
                    return true;
            } else if (value != '%' || !expand(text)) {
                path_.put(value);
            }
        }
        return tryPath(); // an element ends its last path
    }

    TSFile* file() const { return file_; }
    std::int32_t code() const { return code_; }

  private:
    static constexpr std::int32_t kCodeSize = 32;

    TemplateText textOf(const char* text) const { return {locale_, text, std::strlen(text)}; }

    // Writes what the character behind a % stands for; false if the % stands for itself.
    bool expand(TemplateText& text)
    {
        switch (text.value()) {
        case '%':
            path_.put('%');
            break;
        case 'N':
            path_.put(textOf(name_));
            break;
        case 'l':
            putCode(TS_LI_LANGUAGE_CODE);
            break;
        case 'L':
            putCode(TS_LI_LANGUAGE_CODE);
            path_.put('_');
            putCode(TS_LI_TERRITORY_CODE);
            break;
        case 't':
            putCode(TS_LI_TERRITORY_CODE);
            break;
        default:
            return false;
        }
        text.next();
        return true;
    }

    void putCode(std::int32_t item)
    {
        char code[kCodeSize] = "";
        TSGetLocaleTextInfoEx(locale_, item, code, 0, kCodeSize, 0);
        path_.put(textOf(code));
    }

    bool tryPath()
    {
        const char* const path = path_.finish();
        if (!path)
            return false;
        file_ = TSOpenFile(0, path, TS_FILE_READ, 0, &code_);
        return file_ || code_ == TS_ERR_MEMORY;
    }

    TSLocale* locale_;
    const char* name_;
    CatalogPath path_;
    TSFile* file_ = nullptr;
    std::int32_t code_ = TS_ERR_NONE;
};

} // namespace

TSFile* findCatalog(TSLocale* locale, const char* templates, const char* name, bool searchOnce,
                    std::int32_t& code)
{
    SearchVariable variable;
    code = TS_ERR_MEMORY;
    if (!variable.read())
        return nullptr;
    const char* const elements[] = {templates ? templates : "", variable.value(), name};
    for (int pass = 0; pass < 2 && locale; ++pass) {
        SearchPass search(locale, name);
        for (const char* const element : elements)
            if (search.tryElement(element)) {
                code = search.code();
                return search.file();
            }
        // Deliberate: the locale of the second pass is never released, whatever becomes of it.
        locale = searchOnce || pass > 0 ? nullptr : TSGetLocale("", TS_LOCALE_FALLBACK, nullptr);
    }
    code = TS_ERR_NO_CATALOG;
    return nullptr;
}

} // namespace vlx
