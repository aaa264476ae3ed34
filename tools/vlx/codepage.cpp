#include "codepage.hpp"

#include <optional>

#include <fmt/format.h>

#include "failure.hpp"

namespace vlx::cli {

CodePage openCodePage(const Library& library, const std::string& name)
{
    std::optional<ListedObject> page;
    if (library.directory())
        page = library.directory()->codePageNamed(name);
    if (!page)
        throw Failure(
            fmt::format("no code page \"{}\"; give a name that `vlx locales --type codepage` "
                        "shows, another name that alias.txt has for it, or its id",
                        name));
    // Language and territory are left to the library.
    std::int32_t code = TS_ERR_NONE;
    LocaleHandle locale(TSGetLocale(('.' + page->name + "@BINARY").c_str(), 0, &code));
    if (!locale || code != TS_ERR_NONE)
        throw Failure(fmt::format("the code page {} could not be loaded (error {}); check {}",
                                  page->name, code, library.directory()->path().string()));
    return {page->name, std::move(locale)};
}

} // namespace vlx::cli
