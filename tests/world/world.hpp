// The locale directory that ships, as a program sees it: through the public functions alone.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tessera.h"

namespace vlx::test {

struct ReleaseLocale {
    void operator()(TSLocale* locale) const { TSReleaseLocale(locale); }
};
using Locale = std::unique_ptr<TSLocale, ReleaseLocale>;

// The library, started on the directory that ships.
class WorldTest : public testing::Test {
  protected:
    WorldTest()
    {
        EXPECT_EQ(TSInit(VLX_LOCALE, nullptr, nullptr, nullptr, nullptr, 0, 0), TS_ERR_NONE)
            << VLX_LOCALE;
    }
    ~WorldTest() override { EXPECT_EQ(TSTerm(), TS_ERR_NONE); }

    // Null, with a failure of the test, if there is no such locale.
    static Locale open(const std::string& name);
};

// A value of an item as 16-bit text, as bytes in the code page, as a number.
std::u16string unitsOf(const Locale& locale, int item);
std::string bytesOf(const Locale& locale, int item);
int numberOf(const Locale& locale, int item);
// The name with all four parts.
std::string fullName(const Locale& locale);

// The name with all four parts of a name that may lack some: the defaults of the language.
std::string completed(const std::string& name);

// The name with all four parts of a row of native ids.
struct MapRow;
std::string nameOfRow(const MapRow& row);

// All names of the native locales, and those of the rows of native ids that have no name, each with
// all four parts; then every language by itself.
std::vector<std::string> everyLocale();

} // namespace vlx::test
