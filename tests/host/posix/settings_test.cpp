// The user's locale and the settings of locales, over the system's own locale data.
#include <clocale>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <thread>

#include "host/host.hpp"
#include "host/posix/hostname.hpp"
#include "host/posix/hostpict.hpp"
#include "host/workshop.hpp"

namespace vlx::test {
namespace {

using host::Setting;

constexpr std::uint32_t kSwissGerman = 0x0807;

struct Opened {
    Opened(std::uint32_t id, bool changedByUser) : settings(host::openSettings(id, changedByUser))
    {
    }
    ~Opened() { host::closeSettings(settings); }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    const host::Settings settings;
};

class SettingsTest : public testing::Test {
  protected:
    SettingsTest()
    {
        for (const char* const name : kVariables)
            Workshop::clearVariable(name);
    }
    ~SettingsTest() override
    {
        for (const char* const name : kVariables)
            Workshop::clearVariable(name);
        EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C") << "the process's locale has changed";
    }

    void SetUp() override
    {
        // The build makes this from the system's sources.
        if (!std::filesystem::exists(VLX_TEST_LOCALES "/sr_RS.UTF-8/LC_TIME"))
            GTEST_SKIP() << "localedef or its sources are not installed";
        Workshop::setVariable("LOCPATH", VLX_TEST_LOCALES);
    }

    static std::optional<std::u16string> wide(std::uint32_t id, Setting setting,
                                              bool changedByUser = false)
    {
        TSChar16 text[32];
        const Opened opened(id, changedByUser);
        if (!host::readSetting16(opened.settings, setting, text, 32))
            return std::nullopt;
        return std::u16string(reinterpret_cast<const char16_t*>(text));
    }
    static std::optional<std::string> narrow(std::uint32_t id, Setting setting,
                                             bool changedByUser = false)
    {
        char text[32];
        const Opened opened(id, changedByUser);
        if (!host::readSetting(opened.settings, setting, text, sizeof text))
            return std::nullopt;
        return text;
    }

    static constexpr const char* kVariables[] = {"LC_ALL",     "LC_MESSAGES", "LANG",   "LC_TIME",
                                                 "LC_NUMERIC", "LC_MONETARY", "LOCPATH"};
};

TEST_F(SettingsTest, UserLocaleIsTheFirstVariableThatIsSet)
{
    EXPECT_EQ(host::userLocaleId(), 0x0409u); // the C locale
    Workshop::setVariable("LANG", "fr_FR.UTF-8");
    EXPECT_EQ(host::userLocaleId(), 0x040Cu);
    Workshop::setVariable("LC_MESSAGES", "it_CH");
    EXPECT_EQ(host::userLocaleId(), 0x0810u);
    Workshop::setVariable("LC_ALL", "de_CH.UTF-8");
    EXPECT_EQ(host::userLocaleId(), kSwissGerman);
    Workshop::setVariable("LC_ALL", ""); // as good as unset
    EXPECT_EQ(host::userLocaleId(), 0x0810u);
    Workshop::setVariable("LC_NUMERIC", "ja_JP.UTF-8");
    EXPECT_EQ(host::userLocaleId(), 0x0810u);
}

TEST_F(SettingsTest, NumbersAreThoseOfTheLocaleData)
{
    EXPECT_EQ(narrow(kSwissGerman, Setting::kCurrencyDigits), "2");
    EXPECT_EQ(narrow(kSwissGerman, Setting::kIntlCurrencyDigits), "2");
    EXPECT_EQ(narrow(kSwissGerman, Setting::kPositiveSymbolPrecedes), "1");
    EXPECT_EQ(narrow(0x0407, Setting::kPositiveSymbolPrecedes), "0");
    EXPECT_EQ(narrow(0x0407, Setting::kNegativeSymbolSpaced), "1");
    EXPECT_EQ(narrow(0x0407, Setting::kNegativeSignPosition), "1");
    EXPECT_EQ(narrow(0x0411, Setting::kCurrencyDigits), "0");
}

TEST_F(SettingsTest, TextsAreThoseOfTheLocaleData)
{
    EXPECT_EQ(wide(0x0407, Setting::kDecimalPoint), u",");
    EXPECT_EQ(wide(0x0407, Setting::kThousandsSeparator), u".");
    EXPECT_EQ(wide(kSwissGerman, Setting::kThousandsSeparator), u"\x2019");
    EXPECT_EQ(wide(0x0407, Setting::kCurrencySymbol), u"\x20AC");
    EXPECT_EQ(wide(0x0407, Setting::kGrouping), u"3;0");
    EXPECT_EQ(wide(0x0407, Setting::kMonetaryGrouping), u"3;0");
    EXPECT_EQ(wide(0x0407, Setting::kMonetaryDecimalPoint), u",");
    EXPECT_EQ(wide(0x0407, Setting::kMonetaryThousandsSeparator), u".");
    EXPECT_EQ(wide(0x0407, Setting::kNegativeSign), u"-");
    EXPECT_EQ(wide(0x0407, Setting::kDate), u"dd.MM.yyyy");
    EXPECT_EQ(wide(0x0407, Setting::kTime), u"HH:mm:ss");
    EXPECT_EQ(wide(0x0409, Setting::kDate), u"MM/dd/yyyy");
    EXPECT_EQ(wide(0x0409, Setting::kTime), u"hh:mm:ss tt");
    EXPECT_EQ(wide(0x0411, Setting::kDate), u"yyyy\x5E74MM\x6708"
                                            u"dd\x65E5");
}

TEST_F(SettingsTest, NarrowNoBreakSpaceIsTheOrdinaryOne)
{
    EXPECT_EQ(wide(0x040C, Setting::kThousandsSeparator), u"\x00A0");
}

TEST_F(SettingsTest, WhatTheLocaleDoesNotTellIsNotRead)
{
    for (const Setting setting :
         {Setting::kFractionDigits, Setting::kListSeparator, Setting::kLongDate,
          Setting::kAnsiCodePage, Setting::kPositiveSign})
        EXPECT_EQ(wide(0x0407, setting), std::nullopt);
}

TEST_F(SettingsTest, OtherCategoriesOfTheUserAreHisOwn)
{
    Workshop::setVariable("LANG", "de_DE.UTF-8");
    Workshop::setVariable("LC_TIME", "en_US.UTF-8");
    Workshop::setVariable("LC_MONETARY", "de_CH.UTF-8");
    EXPECT_EQ(wide(0x0407, Setting::kDecimalPoint, true), u",");
    EXPECT_EQ(wide(0x0407, Setting::kDate, true), u"MM/dd/yyyy");
    EXPECT_EQ(wide(0x0407, Setting::kDate, false), u"dd.MM.yyyy");
    EXPECT_EQ(wide(0x0407, Setting::kCurrencySymbol, true), u"CHF");
    // Another locale than the user's has nothing of his.
    EXPECT_EQ(wide(0x040C, Setting::kDate, true), wide(0x040C, Setting::kDate, false));
}

TEST_F(SettingsTest, LocaleThatIsNotInstalledTellsNothing)
{
    EXPECT_EQ(wide(0x041E, Setting::kDecimalPoint), std::nullopt); // th_TH
    EXPECT_EQ(wide(0x1234, Setting::kDecimalPoint), std::nullopt);
    Workshop::setVariable("LC_ALL", "th_TH.UTF-8");
    EXPECT_EQ(host::userLocaleId(), 0x041Eu);
    EXPECT_EQ(wide(0x041E, Setting::kDecimalPoint, true), std::nullopt);
}

TEST_F(SettingsTest, TheCLocaleTellsWhatItHas)
{
    EXPECT_EQ(wide(0x0409, Setting::kDecimalPoint, true), u".");
    EXPECT_EQ(wide(0x0409, Setting::kThousandsSeparator, true), std::nullopt);
    EXPECT_EQ(wide(0x0409, Setting::kGrouping, true), std::nullopt);
    EXPECT_EQ(narrow(0x0409, Setting::kCurrencyDigits, true), std::nullopt);
    EXPECT_EQ(wide(0x0409, Setting::kDate, true), u"MM/dd/yy");
}

TEST_F(SettingsTest, SettingThatDoesNotFitIsNotRead)
{
    const Opened german(0x0407, false);
    TSChar16 text[16];
    EXPECT_FALSE(host::readSetting16(german.settings, Setting::kDate, text, 10));
    EXPECT_TRUE(host::readSetting16(german.settings, Setting::kDate, text, 11));
    char bytes[4];
    EXPECT_FALSE(host::readSetting(german.settings, Setting::kGrouping, bytes, 3));
    EXPECT_TRUE(host::readSetting(german.settings, Setting::kGrouping, bytes, 4));
}

TEST_F(SettingsTest, ThreadsReadSideBySideAndKeepTheirLocales)
{
    const auto read = [](std::uint32_t id, const char16_t* symbol) {
        for (int i = 0; i < 50; ++i)
            EXPECT_EQ(wide(id, Setting::kCurrencySymbol), symbol);
        EXPECT_STREQ(std::localeconv()->decimal_point, ".");
    };
    std::thread german(read, 0x0407, u"\x20AC");
    std::thread swiss(read, kSwissGerman, u"CHF");
    german.join();
    swiss.join();
}

TEST(LocaleNames, AreTheIdsOfTheirLanguageAndTerritory)
{
    const struct {
        const char* name;
        std::uint32_t id;
    } cases[] = {
        {"C", 0x0409},
        {"POSIX", 0x0409},
        {"C.UTF-8", 0x0409},
        {"c.utf8", 0x0409},
        {"en_US", 0x0409},
        {"en_US.UTF-8", 0x0409},
        {"de_CH.UTF-8", 0x0807},
        {"de_DE@euro", 0x0407},
        {"DE_de.ISO8859-15@euro", 0x0407},
        {"de_AT.UTF-8", 0x0407}, // no id of its own
        {"de", 0x0407},
        {"es_ES", 0x0C0A},
        {"es_MX.utf8", 0x080A},
        {"no_NO", 0x0414},
        {"nb_NO", 0x0414},
        {"nn_NO", 0x0814},
        {"iw_IL", 0x040D},
        {"in", 0x0421},
        {"zh_CN.GB18030", 0x0804},
        {"zh_TW", 0x0404},
        {"zh", 0x0804},
        {"sr_RS@latin", 0x081A},
        {"pt_PT", 0x0816},
        {"hsb_DE", 0x042E},
        {"", 0},
        {"_US", 0},
        {".UTF-8", 0},
        {"tlh_QO", 0},
        {"english", 0},
        {"/no/such/locale", 0},
    };
    for (const auto& each : cases)
        EXPECT_EQ(host::localeIdOf(each.name), each.id) << each.name;
}

TEST(LocaleNames, ComeBackFromTheirIds)
{
    int named = 0;
    for (std::uint32_t id = 0; id < 0x5000; ++id) {
        char name[16];
        host::localeNameOf(id, name, sizeof name);
        if (*name == 0)
            continue;
        ++named;
        // Traditional Spanish and the other Korean share their names with the usual ones.
        if (id != 0x040A && id != 0x0812) {
            EXPECT_EQ(host::localeIdOf(name), id) << name;
        }
    }
    EXPECT_EQ(named, 114);
}

std::optional<std::string> picture(const char* format, const char* twelveHours = "",
                                   std::uint32_t size = 64)
{
    std::string text(size, '\x55');
    if (!host::pictureOf(format, twelveHours, text.data(), size))
        return std::nullopt;
    return text.c_str();
}

TEST(Pictures, AreWhatTheFormatsMean)
{
    EXPECT_EQ(picture("%d.%m.%Y"), "dd.MM.yyyy");
    EXPECT_EQ(picture("%-d. %-m. %y"), "d. M. yy");
    EXPECT_EQ(picture("%e %b %h %B"), "d MMM MMM MMMM");
    EXPECT_EQ(picture("%a, %A"), "ddd, dddd");
    EXPECT_EQ(picture("%H:%M:%S"), "HH:mm:ss");
    EXPECT_EQ(picture("%T|%R|%D|%F"), "HH:mm:ss|HH:mm|MM/dd/yy|yyyy-MM-dd");
    EXPECT_EQ(picture("%r", "%I:%M:%S %p"), "hh:mm:ss tt");
    EXPECT_EQ(picture("%k %l %P"), "H h tt");
    EXPECT_EQ(picture("%Od %Ey"), "dd yy");
    EXPECT_EQ(picture("%d de %B"), "dd' de 'MMMM");
    EXPECT_EQ(picture("%d. %Bta %Y"), "dd. MMMM'ta 'yyyy");
}

TEST(Pictures, AreNotMadeOfWhatTheyHaveNoWordFor)
{
    EXPECT_EQ(picture(""), std::nullopt);
    EXPECT_EQ(picture("%H:%M %Z"), std::nullopt);
    EXPECT_EQ(picture("%d %%"), std::nullopt);
    EXPECT_EQ(picture("%d%"), std::nullopt);
    EXPECT_EQ(picture("%-"), std::nullopt);
    EXPECT_EQ(picture("%d ta' %B"), std::nullopt);
    EXPECT_EQ(picture("%r", ""), std::nullopt);
    EXPECT_EQ(picture("%r", "%r"), std::nullopt);
}

TEST(Pictures, AreCutNowhere)
{
    EXPECT_EQ(picture("%d.%m", "", 6), "dd.MM");
    for (std::uint32_t size = 1; size < 6; ++size)
        EXPECT_EQ(picture("%d.%m", "", size), std::nullopt);
}

} // namespace
} // namespace vlx::test
