// Queries of object names, of texts in place, and of the built-in objects.
#include <set>

#include "locale/content.hpp"
#include "locale/item_world.hpp"

namespace vlx::test {

namespace {

using namespace std::string_literals;

const std::set<std::int32_t> kNumbers = {1,  5,  9,  11, 58, 63, 69, 70, 73, 74,
                                         75, 76, 77, 78, 82, 83, 84, 85, 86, 87};

TEST_F(ItemTest, ObjectNamesOfAnEbcdicLocaleAreInItsCodePage)
{
    for (const char* const page : {"Ebcdic", "EbcdicShift"}) {
        const Handle locale = on(page);
        EXPECT_EQ(text(locale.get(), TS_LI_LANGUAGE_OBJECT), ebcdic("English") + '\0');
        EXPECT_EQ(textEx(locale.get(), TS_LI_LOCALE_NAME, 0),
                  ebcdic("English_Homeland."s + page + "@Dictionary") + '\0');
        EXPECT_EQ(textU(locale.get(), TS_LI_TERRITORY_OBJECT), u"Homeland\0"s);
        const std::string bytes = ebcdic("Homeland");
        std::vector<TSChar32> packed;
        for (const char byte : bytes)
            packed.push_back(static_cast<std::uint8_t>(byte));
        packed.push_back(0);
        EXPECT_EQ(textW(locale.get(), TS_LI_TERRITORY_OBJECT), packed);
    }
}

TEST_F(LocaleTest, ObjectNamesOfAnEbcdicLocaleNeedTheCodePageOfNames)
{
    ASSERT_EQ(start(itemDirectory(Names::kMissing)), TS_ERR_NONE);
    const Handle locale = make("English.EbcdicShift");
    ASSERT_NE(locale, nullptr);
    char bytes[40];
    TSChar16 units[40];
    TSChar32 packed[40];
    for (const std::int32_t item : {TS_LI_LANGUAGE_OBJECT, TS_LI_LOCALE_NAME}) {
        EXPECT_EQ(TSGetLocaleTextInfo(locale.get(), item, bytes, 40, 0), -1);
        EXPECT_EQ(TSGetError(locale.get()), TS_ERR_CODEPAGE);
        EXPECT_EQ(TSGetLocaleTextInfoEx(locale.get(), item, bytes, 0, 40, 0), -1);
        EXPECT_EQ(TSGetError(locale.get()), TS_ERR_CODEPAGE);
        EXPECT_EQ(TSGetLocaleTextInfoU(locale.get(), item, units, 40, 0), -1);
        EXPECT_EQ(TSGetError(locale.get()), TS_ERR_CODEPAGE);
        EXPECT_EQ(TSGetLocaleTextInfoW(locale.get(), item, packed, 40, 0), -1);
        EXPECT_EQ(TSGetError(locale.get()), TS_ERR_CODEPAGE);
        std::uint32_t kind = 0;
        EXPECT_NE(TSLocaleGetTextItem(locale.get(), item, 1, &kind), nullptr);
        EXPECT_EQ(kind, static_cast<std::uint32_t>(TS_TEXT_ASCII));
    }
    EXPECT_GT(TSGetLocaleTextInfo(locale.get(), TS_LI_DATE_FORMAT, bytes, 40, 0), 0);
}

TEST_F(ItemTest, FullNameFollowsTheObjects)
{
    const Handle locale = on("Latin");
    ASSERT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_LANGUAGE_ID, 2), 1);
    ASSERT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_TERRITORY_ID, 11), 1);
    ASSERT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_CODEPAGE_ID, 21), 1);
    ASSERT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_SORT_ID, 2), 1);
    EXPECT_EQ(text(locale.get(), TS_LI_LOCALE_NAME), "German_Germany.Double@Phonebook\0"s);
    ASSERT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_SORT_OBJECT, "binary", -1, 0), 1);
    EXPECT_EQ(text(locale.get(), TS_LI_LOCALE_NAME), "German_Germany.Double@Binary\0"s);
}

TEST_F(ItemTest, KindsAreToldWithTheTexts)
{
    const Handle locale = on("Latin");
    const auto kindOf = [&](std::int32_t item, bool useRecord, bool unicode) {
        std::uint32_t kind = 0;
        if (unicode)
            TSLocaleGetTextItemU(locale.get(), item, useRecord, &kind);
        else
            TSLocaleGetTextItem(locale.get(), item, useRecord, &kind);
        return kind;
    };
    const std::set<std::int32_t> names = {2, 6, 10, 12, 13, 14, 15, 88};
    const std::set<std::int32_t> own = {59, 60, 61, 62, 64, 66, 67, 68, 71, 72, 79, 80, 81};
    for (std::int32_t item = 1; item <= 88; ++item) {
        if (kNumbers.contains(item))
            continue;
        const std::uint32_t fixed = names.contains(item) ? TS_TEXT_ASCII : TS_TEXT_UNICODE;
        EXPECT_EQ(kindOf(item, false, false), fixed) << item;
        EXPECT_EQ(kindOf(item, false, true), fixed) << item;
        EXPECT_EQ(kindOf(item, true, true), fixed) << item;
        EXPECT_EQ(kindOf(item, true, false), own.contains(item) ? TS_TEXT_CODEPAGE : fixed) << item;
    }
}

TEST_F(ItemTest, TextInPlaceIsTheRecordsOwnAndLeavesTheErrorAlone)
{
    const Handle locale = on("Latin");
    locale->lastError = kUntouched;
    std::uint32_t kind = 0;
    EXPECT_EQ(TSLocaleGetTextItem(locale.get(), TS_LI_GROUPING, 1, &kind), locale->grouping);
    EXPECT_EQ(TSLocaleGetTextItemU(locale.get(), TS_LI_GROUPING, 1, &kind), locale->groupingU);
    EXPECT_EQ(TSLocaleGetTextItem(locale.get(), TS_LI_DECIMAL_POINT, 1, &kind),
              &locale->decimalPoint);
    EXPECT_EQ(TSLocaleGetTextItemU(locale.get(), TS_LI_DECIMAL_POINT, 1, &kind),
              &locale->decimalPointU);
    EXPECT_EQ(TSLocaleGetTextItem(locale.get(), TS_LI_DECIMAL_POINT, 0, &kind),
              locale->territory->sections[0]);
    EXPECT_EQ(TSLocaleGetTextItem(locale.get(), 89, 1, &kind), nullptr);
    EXPECT_EQ(TSGetError(locale.get()), kUntouched);
}

TEST_F(ItemTest, QueriesTakeNoMemory)
{
    const Handle locale = on("EbcdicShift");
    loadAll();
    const std::uint32_t calls = Allocator::calls(Slot::kAllocate);
    for (std::int32_t item = 0; item < 90; ++item) {
        text(locale.get(), item);
        textEx(locale.get(), item, 1);
        textU(locale.get(), item);
        textW(locale.get(), item);
        TSGetLocaleNumInfo(locale.get(), item, 0);
    }
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), calls);
}

class BuiltInItemTest : public LocaleTest {
  protected:
    BuiltInItemTest() { EXPECT_EQ(start(), TS_ERR_NO_CONTROL_FILE); }

    std::u16string text(TSLocale* locale, std::int32_t item)
    {
        char16_t buffer[60];
        const std::int32_t size =
            TSGetLocaleTextInfoU(locale, item, reinterpret_cast<TSChar16*>(buffer), 60, 0);
        return size > 0 ? std::u16string(buffer, static_cast<std::size_t>(size) - 1) : u"failed";
    }
};

TEST_F(BuiltInItemTest, NameEndsInBinary)
{
    const Handle locale = make("");
    EXPECT_EQ(text(locale.get(), TS_LI_LOCALE_NAME), u"English_UnitedStates.US-ASCII@Binary");
    char bytes[60];
    EXPECT_EQ(TSGetLocaleTextInfo(locale.get(), TS_LI_LOCALE_NAME, bytes, 60, 0), 37);
    EXPECT_STREQ(bytes, "English_UnitedStates.US-ASCII@Binary");
}

TEST_F(BuiltInItemTest, DefaultsAndTextsAreThoseOfTheBuiltInObjects)
{
    const Handle locale = make("");
    EXPECT_EQ(text(locale.get(), TS_LI_DEFAULT_TERRITORY_OBJECT), u"UnitedStates");
    EXPECT_EQ(text(locale.get(), TS_LI_DEFAULT_CODEPAGE_OBJECT), u"US-ASCII");
    EXPECT_EQ(text(locale.get(), TS_LI_DEFAULT_SORT_OBJECT), u"Binary");
    EXPECT_EQ(text(locale.get(), TS_LI_DAY_7), u"Saturday");
    EXPECT_EQ(text(locale.get(), TS_LI_ABMONTH_12), u"Dec");
    EXPECT_EQ(text(locale.get(), TS_LI_MONTH_13), u"");
    EXPECT_EQ(text(locale.get(), TS_LI_TIME_FORMAT), u"%#I:%M:%S %p");
    EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), TS_LI_P_SIGN_POSN, 0), 3);
}

} // namespace

} // namespace vlx::test
