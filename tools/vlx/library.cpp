#include "library.hpp"

#include <cstdio>

#include <fmt/format.h>

#include "environment.hpp"
#include "failure.hpp"

namespace vlx::cli {

namespace {

std::string startFailure(std::int32_t code)
{
    switch (code) {
    case TS_ERR_NO_OBJECTS:
        return "the object store is not available; see that the locale directory and its control "
               "file can be read";
    case TS_ERR_MEMORY:
        return "out of memory; close other programs and try again";
    default:
        return "of an unexpected cause; see that libvlx and this program are of one version";
    }
}

// What is wrong with a locale name, and what helps.
std::string nameFailure(std::int32_t code)
{
    const auto unlisted = [](const char* part, const char* type) {
        return fmt::format("its {} is not listed; `vlx locales --type {}` shows those that are",
                           part, type);
    };
    switch (code) {
    case TS_ERR_LANGUAGE:
        return unlisted("language", "language");
    case TS_ERR_TERRITORY:
        return unlisted("territory", "territory");
    case TS_ERR_CODEPAGE:
        return unlisted("code page", "codepage");
    case TS_ERR_SORT:
        return unlisted("sort", "sort") + ", and BINARY is always there";
    case TS_ERR_MEMORY:
        return "out of memory; close other programs and try again";
    default:
        return "an object of it could not be loaded; check the locale directory";
    }
}

// Where the library looked, for a user whose locale directory was not found.
std::string placesOf(const std::string& given)
{
    std::string places = VLX_LOCALE_DIRECTORY;
    if (const auto variable = environment("TS_LOCALEDIR"))
        places = fmt::format("{} (TS_LOCALEDIR), {}", *variable, places);
    if (!given.empty())
        places = fmt::format("{}, {}", given, places);
    return places;
}

void tellBuiltIn(const std::string& given)
{
    fmt::print(stderr,
               "vlx: no good control.nls in {}.\n"
               "vlx: running on the built-in objects alone (English, UnitedStates, US-ASCII); give "
               "--locale-dir DIR or set TS_LOCALEDIR to have more.\n",
               placesOf(given));
}

} // namespace

Library::Library(const std::string& directory, BuiltIn builtIn)
{
    const std::int32_t code =
        TSInit(directory.empty() ? nullptr : directory.c_str(), nullptr, nullptr, nullptr, nullptr,
               0, builtIn == BuiltIn::kGood ? 0 : TS_STRICT_OBJECTS);
    if (code == TS_ERR_NO_CONTROL_FILE && builtIn == BuiltIn::kRefused)
        throw Failure(fmt::format("no good control.nls in {}; give --locale-dir DIR or set "
                                  "TS_LOCALEDIR",
                                  placesOf(directory)));
    if (code == TS_ERR_NO_CONTROL_FILE) {
        tellBuiltIn(directory);
        return;
    }
    if (code != TS_ERR_NONE)
        throw Failure(
            fmt::format("the library did not start (error {}): {}", code, startFailure(code)));
    directory_ = LocaleDirectory::find(directory);
    if (!directory.empty() && directory_ && directory_->path() != directory)
        fmt::print(stderr, "vlx: {} holds no control.nls; using {} instead.\n", directory,
                   directory_->path().string());
}

Library::~Library()
{
    TSTerm();
}

LocaleHandle openLocale(const std::string& name)
{
    std::int32_t code = TS_ERR_NONE;
    LocaleHandle locale(TSGetLocale(name.c_str(), 0, &code));
    if (!locale)
        throw Failure(fmt::format("no locale \"{}\" (error {}): {}.\nA locale name is "
                                  "Language[_Territory][.Codepage][@Sort].",
                                  name, code, nameFailure(code)));
    return locale;
}

LocaleHandle openUserLocale()
{
    std::int32_t code = TS_ERR_NONE;
    LocaleHandle locale(TSGetLocale(nullptr, TS_LOCALE_USER | TS_LOCALE_FALLBACK, &code));
    if (!locale)
        throw Failure(fmt::format("the user's locale could not be made (error {}): {}.", code,
                                  nameFailure(code)));
    return locale;
}

} // namespace vlx::cli
