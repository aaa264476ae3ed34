// The library as the command line holds it: started once, stopped at the end.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "localedir.hpp"
#include "tessera.h"

namespace vlx::cli {

class Library {
  public:
    // Whether the data that are built in may stand for files that are missing or bad.
    enum class BuiltIn : std::uint8_t { kGood, kRefused };

    // Starts with a locale directory, or an empty name for the usual search. Whatever the user
    // should know about the directory goes to standard error.
    explicit Library(const std::string& directory, BuiltIn builtIn = BuiltIn::kGood);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    // Nothing if the library runs on its built-in objects.
    const std::optional<LocaleDirectory>& directory() const { return directory_; }

  private:
    std::optional<LocaleDirectory> directory_;
};

struct ReleaseLocale {
    void operator()(TSLocale* locale) const { TSReleaseLocale(locale); }
};
using LocaleHandle = std::unique_ptr<TSLocale, ReleaseLocale>;

// Makes a locale, or fails with the meaning of the library's code.
LocaleHandle openLocale(const std::string& name);

// Makes the user's locale; whatever of it is not listed becomes the default.
LocaleHandle openUserLocale();

} // namespace vlx::cli
