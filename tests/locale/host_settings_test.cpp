// The settings of the platform's own host in a record: the same values on every host.
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "locale/locale.hpp"
#include "support/page_builder.hpp"
#include "support/process.hpp"
#include "tessera.h"

namespace vlx::test {

namespace {

constexpr std::uint32_t kGerman = 0x0407;

class HostSettingsTest : public testing::Test {
  protected:
    HostSettingsTest()
    {
        page_.asciiHalf().map(0x80, 0x20AC).map(0xA0, 0x00A0).build();
        const std::int32_t code = TSInit("nowhere", nullptr, nullptr, nullptr, nullptr, 0, 0);
        EXPECT_TRUE(code == TS_ERR_NO_CONTROL_FILE || code == TS_ERR_NONE);
        locale_ = TSGetLocale("English.US-ASCII", 0, nullptr);
        // The built-in page has no Unicode values that could be written.
        EXPECT_EQ(TSChangeCodePage(locale_, &page_.object()), TS_ERR_NONE);
    }
    ~HostSettingsTest() override
    {
        TSReleaseLocale(locale_);
        EXPECT_EQ(TSTerm(), TS_ERR_NONE);
    }

    void SetUp() override
    {
#ifdef VLX_TEST_LOCALES
        if (!std::filesystem::exists(VLX_TEST_LOCALES "/sr_RS.UTF-8/LC_TIME"))
            GTEST_SKIP() << "localedef or its sources are not installed";
        setProcessVariable("LOCPATH", VLX_TEST_LOCALES);
#endif
    }

    PageBuilder page_{PageShape::kSingleByte};
    TSLocale* locale_ = nullptr;
};

TEST_F(HostSettingsTest, AreThoseOfTheNativeId)
{
    TSApplyNativeValues(&kGerman, locale_, 1);
    EXPECT_EQ(locale_->decimalPoint, ',');
    EXPECT_EQ(locale_->decimalPointU, ',');
    EXPECT_EQ(locale_->thousandsSeparator, '.');
    EXPECT_EQ(locale_->monetaryDecimalPoint, ',');
    EXPECT_EQ(locale_->monetaryThousandsSeparator, '.');
    EXPECT_STREQ(locale_->grouping, "3;0");
    EXPECT_STREQ(locale_->monetaryGrouping, "3;0");
    EXPECT_STREQ(locale_->currencySymbol, "\x80");
    EXPECT_EQ(locale_->currencySymbolU[0], 0x20AC);
    EXPECT_EQ(locale_->currencySymbolU[1], 0);
    EXPECT_STREQ(locale_->negativeSign, "-");
    EXPECT_STREQ(locale_->timeFormat, "%H:%M:%S");
    // Hosts have different opinions on leading zeros.
    EXPECT_THAT(locale_->dateFormat,
                testing::AnyOf(testing::StrEq("%d.%m.%Y"), testing::StrEq("%#d.%#m.%Y")));
    EXPECT_EQ(locale_->currencyDigits, 2);
    EXPECT_EQ(locale_->intlCurrencyDigits, 2);
    EXPECT_EQ(locale_->flags & kLocalePositiveSymbolPrecedes, 0);
    EXPECT_NE(locale_->flags & kLocalePositiveSymbolSpaced, 0);
}

TEST_F(HostSettingsTest, OfAnUnknownIdAreNone)
{
    constexpr std::uint32_t kUnknown = 0x7FFE;
    const TSLocale before = *locale_;
    TSApplyNativeValues(&kUnknown, locale_, 1);
    EXPECT_EQ(locale_->decimalPoint, before.decimalPoint);
    EXPECT_EQ(locale_->currencyDigits, before.currencyDigits);
    EXPECT_EQ(locale_->dateFormat, before.dateFormat);
    EXPECT_EQ(locale_->modifiedMask, 0u);
}

} // namespace

} // namespace vlx::test
