// The bridge to the host's locale ids: the table of names, and the name of the user's locale.
#include <cstring>
#include <set>

#include "locale/locale_fixture.hpp"

namespace vlx::test {

namespace {

struct NativeRow {
    std::uint32_t id;
    const char* name;
};

void PrintTo(const NativeRow& row, std::ostream* out)
{
    *out << std::hex << row.id << std::dec;
}

constexpr NativeRow kRows[] = {
    {0x0401, "Arabic_SaudiArabia.MS1256"},
    {0x0402, "Bulgarian_Bulgaria.MS1251"},
    {0x0403, "Catalan_Catalonia.MS1252"},
    {0x0404, "TraditionalChinese_Taiwan.MS950"},
    {0x0405, "Czech_CzechRepublic.MS1250"},
    {0x0406, "Danish_Denmark.MS1252"},
    {0x0407, "German_Germany.MS1252"},
    {0x0408, "Greek_Greece.MS1253"},
    {0x0409, "English_UnitedStates.MS1252"},
    {0x040A, "Spanish_Spain.MS1252@TraditionalSpanish"},
    {0x040B, "Finnish_Finland.MS1252"},
    {0x040C, "French_France.MS1252"},
    {0x040D, "Hebrew_Israel.MS1255"},
    {0x040E, "Hungarian_Hungary.MS1250"},
    {0x040F, "Icelandic_Iceland.MS1252"},
    {0x0410, "Italian_Italy.MS1252"},
    {0x0411, "Japanese_Japan.MS932"},
    {0x0412, "Korean_Korea.MS949"},
    {0x0413, "Dutch_Netherlands.MS1252"},
    {0x0414, "Norwegian_Norway.MS1252"},
    {0x0415, "Polish_Poland.MS1250"},
    {0x0416, "Portuguese_Brazil.MS1252"},
    {0x0417, "Rhaeto-Romanic"},
    {0x0418, "Romanian_Romania.MS1250"},
    {0x0419, "Russian_Russia.MS1251"},
    {0x041A, "Croatian_Croatia.MS1250"},
    {0x041B, "Slovak_Slovakia.MS1250"},
    {0x041C, "Albanian_Albania.MS1250"},
    {0x041D, "Swedish_Sweden.MS1252"},
    {0x041E, "Thai_Thailand.MS874"},
    {0x041F, "Turkish_Turkey.MS1254"},
    {0x0420, "Urdu_Pakistan.MS1256"},
    {0x0421, "Indonesian_Indonesia.MS1252"},
    {0x0422, "Ukrainian_Ukraine.MS1251"},
    {0x0423, "Byelorussian_Belarus.MS1251"},
    {0x0424, "Slovenian_Slovenia.MS1250"},
    {0x0425, "Estonian_Estonia.MS1257"},
    {0x0426, "Latvian_Latvia.MS1257"},
    {0x0427, "Lithuanian_Lithuania.MS1257"},
    {0x0428, "Maori"},
    {0x0429, "Farsi_Iran.MS1256"},
    {0x042A, "Vietnamese_VietNam.MS1258"},
    {0x042B, "Laotian"},
    {0x042C, "Kampuchean"},
    {0x042D, "Basque.MS1252"},
    {0x042E, "Sorbian_Germany"},
    {0x042F, "Macedonian_Macedonia.MS1251"},
    {0x0430, "Sutu"},
    {0x0431, "Tsonga"},
    {0x0432, "Tswana"},
    {0x0433, "Venda"},
    {0x0434, "Xhosa"},
    {0x0435, "Zulu"},
    {0x0436, "Afrikaans_SouthAfrica.MS1252"},
    {0x0438, "Faeroese.MS1250"},
    {0x0439, "Hindi_India"},
    {0x043A, "Maltese"},
    {0x043B, "Sami"},
    {0x043C, "ScotsGaelic"},
    {0x0801, "Arabic_Iraq.MS1256"},
    {0x0804, "SimplifiedChinese_China.MS936"},
    {0x0807, "German_German-Switzerland.MS1252"},
    {0x0809, "English_UnitedKingdom.MS1252"},
    {0x080A, "Spanish_Mexico.MS1252"},
    {0x080C, "French_French-Belgium.MS1252"},
    {0x0810, "Italian_Italian-Switzerland.MS1252"},
    {0x0812, "Korean_Korea.MS1361"},
    {0x0813, "Dutch_Dutch-Belgium.MS1252"},
    {0x0814, "Norwegian(Nynorsk)_Norway.MS1252"},
    {0x0816, "Portuguese_Portugal.MS1252"},
    {0x0818, "Romanian_Moldavia"},
    {0x0819, "Russian_Moldavia"},
    {0x081A, "Serbian_Yugoslavia.MS1250"},
    {0x0C01, "Arabic_Egypt.MS1256"},
    {0x0C04, "TraditionalChinese_HongKong.MS950"},
    {0x0C09, "English_Australia.MS1252"},
    {0x0C0A, "Spanish_Spain.MS1252@Spanish"},
    {0x0C0C, "CanadianFrench_French-Canada.MS1252"},
    {0x1001, "Arabic_Libya.MS1256"},
    {0x1004, "SimplifiedChinese_Singapore.MS936"},
    {0x1007, "German_Luxembourg.MS1252"},
    {0x1009, "English_Canada.MS1252"},
    {0x100A, "Spanish_Guatemala.MS1252"},
    {0x100C, "French_French-Switzerland.MS1252"},
    {0x1401, "Arabic_Algeria.MS1256"},
    {0x1409, "English_NewZealand.MS1252"},
    {0x140A, "Spanish_CostaRica.MS1252"},
    {0x140C, "French_Luxembourg.MS1252"},
    {0x1801, "Arabic_Morocco.MS1256"},
    {0x1809, "English_Ireland.MS1252"},
    {0x180A, "Spanish_Panama.MS1252"},
    {0x1C01, "Arabic_Tunisia.MS1256"},
    {0x1C09, "English_SouthAfrica.MS1252"},
    {0x1C0A, "Spanish_DominicanRepublic.MS1252"},
    {0x2001, "Arabic_Oman.MS1256"},
    {0x2009, "English_Jamaica.MS1252"},
    {0x200A, "Spanish_Venezuela.MS1252"},
    {0x2401, "Arabic_Yemen.MS1256"},
    {0x2409, "English_TheCarribean.MS1252"},
    {0x240A, "Spanish_Columbia.MS1252"},
    {0x2801, "Arabic_Syria.MS1256"},
    {0x280A, "Spanish_Peru.MS1252"},
    {0x2C01, "Arabic_Jordan.MS1256"},
    {0x2C0A, "Spanish_Argentina.MS1252"},
    {0x3001, "Arabic_Lebanon.MS1256"},
    {0x300A, "Spanish_Ecuador.MS1252"},
    {0x3401, "Arabic_Kuwait.MS1256"},
    {0x340A, "Spanish_Chile.MS1252"},
    {0x3801, "Arabic_UnitedArabEmirates.MS1256"},
    {0x380A, "Spanish_Uruguay.MS1252"},
    {0x3C01, "Arabic_Bahrain.MS1256"},
    {0x3C0A, "Spanish_Paraguay.MS1252"},
    {0x4001, "Arabic_Qatar.MS1256"},
    {0x400A, "Spanish_Boliva.MS1252"},
};
static_assert(std::size(kRows) == 114);

std::string mapped(std::uint32_t id, std::uint32_t size = kLocaleNameSize)
{
    char buffer[256];
    std::memset(buffer, 0x55, sizeof buffer);
    EXPECT_EQ(TSMapNativeLocale(&id, buffer, size), buffer);
    const std::size_t used = std::max<std::size_t>(size, sizeof "Unknown");
    for (std::size_t i = used; i < sizeof buffer; ++i)
        EXPECT_EQ(buffer[i], 0x55) << "behind the buffer, at " << i;
    return buffer;
}

class NativeRowTest : public ::testing::TestWithParam<NativeRow> {};

TEST_P(NativeRowTest, GivesItsName)
{
    EXPECT_EQ(mapped(GetParam().id), GetParam().name);
}

std::string rowName(const ::testing::TestParamInfo<NativeRow>& info)
{
    std::string name;
    for (const char* at = info.param.name; *at != 0; ++at)
        if (std::isalnum(static_cast<unsigned char>(*at)) != 0)
            name += *at;
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, NativeRowTest, ::testing::ValuesIn(kRows), rowName);

TEST(NativeTest, EveryOtherIdOfSixteenBitsIsUnknown)
{
    std::set<std::uint32_t> listed;
    for (const NativeRow& row : kRows)
        listed.insert(row.id);
    EXPECT_EQ(listed.size(), 114U);
    for (std::uint32_t id = 0; id < 0x10000; ++id) {
        char name[kLocaleNameSize];
        TSMapNativeLocale(&id, name, sizeof name);
        ASSERT_EQ(std::strcmp(name, "Unknown") == 0, !listed.contains(id)) << id;
    }
}

TEST(NativeTest, GapInTheTableIsUnknown)
{
    EXPECT_EQ(mapped(0x0437), "Unknown");
}

TEST(NativeTest, IdsBeforeTheFirstAndBehindTheLastAreUnknown)
{
    EXPECT_EQ(mapped(0), "Unknown");
    EXPECT_EQ(mapped(0x0400), "Unknown");
    EXPECT_EQ(mapped(0x400B), "Unknown");
    EXPECT_EQ(mapped(0xFFFF), "Unknown");
    EXPECT_EQ(mapped(0xFFFFFFFF), "Unknown");
}

TEST(NativeTest, IdWithSortBitsIsUnknown)
{
    for (const NativeRow& row : kRows)
        for (const std::uint32_t sort : {0x00010000U, 0x00020000U, 0x000F0000U, 0x80000000U})
            EXPECT_EQ(mapped(row.id | sort), "Unknown") << row.id;
}

TEST(NativeTest, NameIsCutToTheSize)
{
    const std::string whole = "Spanish_Spain.MS1252@TraditionalSpanish";
    for (std::uint32_t size = 1; size <= whole.size() + 2; ++size)
        EXPECT_EQ(mapped(0x040A, size), whole.substr(0, size - 1)) << size;
}

TEST(NativeTest, UnknownIsCopiedWhateverTheSize)
{
    for (std::uint32_t size = 1; size <= 10; ++size)
        EXPECT_EQ(mapped(1, size), "Unknown") << size;
}

class UserLocaleTest : public WorldTest {
  protected:
    // The name, with the result of the call in `result_`.
    std::string userLocale(std::uint32_t size = kLocaleNameSize)
    {
        char buffer[256];
        std::memset(buffer, 0x55, sizeof buffer);
        result_ = TSGetUserLocale(buffer, size);
        for (std::size_t i = size; i < sizeof buffer; ++i)
            EXPECT_EQ(buffer[i], 0x55) << "behind the buffer, at " << i;
        return buffer;
    }

    std::int32_t result_ = 0;
};

TEST_F(UserLocaleTest, IsTheVariable)
{
    MemoryHost::setEnvironment("TS_LANG", "German_Homeland");
    EXPECT_EQ(userLocale(), "German_Homeland");
    EXPECT_EQ(result_, 1);
}

TEST_F(UserLocaleTest, IsTheHostsIfTheVariableIsUnset)
{
    MemoryHost::setUserLocaleId(0x0407);
    EXPECT_EQ(userLocale(), "German_Germany.MS1252");
    EXPECT_EQ(result_, 2);
}

TEST_F(UserLocaleTest, IsUnknownForAnIdThatIsNotListed)
{
    EXPECT_EQ(userLocale(), "Unknown");
    EXPECT_EQ(result_, 2);
}

TEST_F(UserLocaleTest, LongVariableIsCutToTheSize)
{
    for (std::size_t length = 128; length < 140; ++length) {
        const std::string value(length, 'v');
        MemoryHost::setEnvironment("TS_LANG", value);
        EXPECT_EQ(userLocale(), value.substr(0, 131)) << length;
        EXPECT_EQ(result_, 1);
    }
    MemoryHost::setEnvironment("TS_LANG", std::string(10000, 'v'));
    EXPECT_EQ(userLocale(), std::string(131, 'v'));
    EXPECT_EQ(result_, 1);
}

TEST_F(UserLocaleTest, LongVariableTakesABlockAndGivesItBack)
{
    const int blocks = Allocator::liveBlocks();
    const std::uint32_t calls = Allocator::calls(Slot::kAllocate);
    MemoryHost::setEnvironment("TS_LANG", std::string(131, 'v'));
    userLocale();
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), calls);
    MemoryHost::setEnvironment("TS_LANG", std::string(132, 'v'));
    userLocale();
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), calls + 1);
    EXPECT_EQ(Allocator::liveBlocks(), blocks);
}

TEST_F(UserLocaleTest, LongVariableWithoutMemoryIsEmpty)
{
    MemoryHost::setEnvironment("TS_LANG", std::string(200, 'v'));
    Allocator::failAllocation(1);
    EXPECT_EQ(userLocale(), "");
    EXPECT_EQ(result_, 1);
    EXPECT_FALSE(Allocator::failurePending());
}

class UserOptionTest : public WorldTest, public ::testing::WithParamInterface<NameForm> {
  protected:
    Handle make(const std::string& name, std::uint32_t options)
    {
        return getLocale(GetParam(), name, options, &code_);
    }
};

INSTANTIATE_TEST_SUITE_P(Forms, UserOptionTest, ::testing::ValuesIn(kNameForms), formName);

TEST_P(UserOptionTest, TakesTheVariableAndNotTheName)
{
    MemoryHost::setEnvironment("TS_LANG", "German_Homeland.Latin@BINARY");
    for (const char* const name : {"", "Klingon", "English"}) {
        const Handle locale = make(name, TS_LOCALE_USER);
        ASSERT_NE(locale, nullptr);
        EXPECT_EQ(code_, TS_ERR_NONE);
        EXPECT_STREQ(locale->language->name, "German");
        EXPECT_STREQ(locale->codePage->name, "Latin");
    }
}

TEST_P(UserOptionTest, UnlistedVariableFailsOrFallsBack)
{
    MemoryHost::setEnvironment("TS_LANG", "Klingon_Germany");
    EXPECT_EQ(make("", TS_LOCALE_USER), nullptr);
    EXPECT_EQ(code_, TS_ERR_LANGUAGE);
    const Handle locale = make("", TS_LOCALE_USER | TS_LOCALE_FALLBACK);
    ASSERT_NE(locale, nullptr);
    EXPECT_STREQ(locale->language->name, "English");
    EXPECT_STREQ(locale->territory->name, "Germany");
}

TEST_P(UserOptionTest, TakesTheHostsIdThroughTheTable)
{
    MemoryHost::setUserLocaleId(0x0407); // its code page is not in this directory
    EXPECT_EQ(make("", TS_LOCALE_USER), nullptr);
    EXPECT_EQ(code_, TS_ERR_CODEPAGE);
    const Handle locale = make("", TS_LOCALE_USER | TS_LOCALE_FALLBACK);
    ASSERT_NE(locale, nullptr);
    EXPECT_STREQ(locale->language->name, "German");
    EXPECT_STREQ(locale->territory->name, "Germany");
    EXPECT_STREQ(locale->codePage->name, "Double");
}

TEST_P(UserOptionTest, UnknownHostIdIsAcceptedOnlyWithFallback)
{
    EXPECT_EQ(make("", TS_LOCALE_USER), nullptr);
    EXPECT_EQ(code_, TS_ERR_LANGUAGE);
    EXPECT_NE(make("", TS_LOCALE_USER | TS_LOCALE_FALLBACK), nullptr);
}

TEST_P(UserOptionTest, NullNameIsAllowed)
{
    MemoryHost::setEnvironment("TS_LANG", "German");
    const Handle bytes(TSGetLocale(nullptr, TS_LOCALE_USER, &code_));
    const Handle unicode(TSGetLocaleU(nullptr, TS_LOCALE_USER, &code_));
    const Handle packed(TSGetLocaleW(nullptr, TS_LOCALE_USER, &code_));
    for (const Handle* const locale : {&bytes, &unicode, &packed}) {
        ASSERT_NE(*locale, nullptr);
        EXPECT_STREQ((*locale)->language->name, "German");
    }
}

TEST_P(UserOptionTest, MakesTheDefaultLocaleToo)
{
    MemoryHost::setEnvironment("TS_LANG", "German");
    ASSERT_EQ(setLocale(GetParam(), "", TS_LOCALE_USER | TS_LOCALE_FALLBACK), TS_ERR_NONE);
    EXPECT_STREQ(tsDefaultLocale->language->name, "German");
}

} // namespace

} // namespace vlx::test
