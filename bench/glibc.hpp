// Locales of the C library in code pages that few machines have installed: they are compiled with
// localedef into a directory of the run.
#pragma once

#include <string>

#include <locale.h>

namespace vlx::bench {

// The full name by which newlocale() opens the locale `source` in `charmap`, such as ja_JP and
// WINDOWS-31J; empty if it cannot be made here.
std::string glibcLocaleName(const std::string& source, const std::string& charmap);

// A locale of the C library that the calling thread uses for the time of one row.
class GlibcLocale {
  public:
    GlibcLocale(const std::string& source, const std::string& charmap);
    ~GlibcLocale();
    GlibcLocale(const GlibcLocale&) = delete;
    GlibcLocale& operator=(const GlibcLocale&) = delete;

    explicit operator bool() const { return locale_ != nullptr; }

  private:
    locale_t locale_ = nullptr;
    locale_t previous_ = nullptr;
};

} // namespace vlx::bench
