// The names of days and months that came from the locale sources of glibc, against the same sources
// as glibc itself compiles and reads them.
#include <algorithm>
#include <filesystem>
#include <langinfo.h>
#include <locale.h>

#include "support/process.hpp"
#include "world/world.hpp"

namespace vlx::test {
namespace {

struct GlibcLanguage {
    const char* name;
    const char* locale;
};
constexpr GlibcLanguage kLanguages[] = {
    {"Sutu", "st_ZA"}, {"Tsonga", "ts_ZA"}, {"Tswana", "tn_ZA"}, {"Venda", "ve_ZA"}};

// As bytes of UTF-8, which glibc's are.
std::string utf8Of(TSLocale* utf8, const std::u16string& text)
{
    TSChar16 units[64];
    char bytes[256];
    std::copy(text.begin(), text.end(), units);
    const std::int32_t count = TSUnicodeToString(utf8, bytes, sizeof bytes, units,
                                                 static_cast<std::int32_t>(text.size()), 0);
    return {bytes, bytes + count};
}

class GlibcWorld : public WorldTest {};

TEST_F(GlibcWorld, NamesAreThoseOfTheCompiledSources)
{
    setProcessVariable("LOCPATH", VLX_GLIBC_LOCALES);
    const Locale utf8 = open("English.UTF-8");
    for (const auto& [name, source] : kLanguages) {
        SCOPED_TRACE(name);
        if (!std::filesystem::exists(std::string(VLX_GLIBC_LOCALES "/") + source +
                                     ".UTF-8/LC_TIME"))
            GTEST_SKIP() << "localedef or its sources, of the package locales, are not installed";
        const locale_t theirs =
            newlocale(LC_TIME_MASK, (std::string(source) + ".UTF-8").c_str(), nullptr);
        ASSERT_NE(theirs, nullptr);
        const Locale ours = open(name);
        const auto expectSame = [&](int item, nl_item first, int count) {
            for (int i = 0; i < count; ++i)
                EXPECT_EQ(utf8Of(utf8.get(), unitsOf(ours, item + i)),
                          nl_langinfo_l(first + i, theirs));
        };
        expectSame(TS_LI_DAY_1, DAY_1, 7);
        expectSame(TS_LI_ABDAY_1, ABDAY_1, 7);
        expectSame(TS_LI_MONTH_1, MON_1, 12);
        expectSame(TS_LI_ABMONTH_1, ABMON_1, 12);
        // They leave AM and PM to others.
        EXPECT_STREQ(nl_langinfo_l(AM_STR, theirs), "");
        EXPECT_EQ(bytesOf(ours, TS_LI_AM), "AM");
        EXPECT_EQ(bytesOf(ours, TS_LI_PM), "PM");
        freelocale(theirs);
    }
}

} // namespace
} // namespace vlx::test
