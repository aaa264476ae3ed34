// Queries item by item.
#include <set>

#include "locale/content.hpp"
#include "locale/item_world.hpp"

namespace vlx::test {

namespace {

using namespace std::string_literals;

constexpr std::uint32_t kRefused[] = {2, 4, 8, 0x8000, 0x4002, 0x80000000, 0xFFFFFFFF};
constexpr const char* kPages[] = {"Latin", "Double", "Shift", "Ebcdic", "EbcdicShift", "UTF8"};

const std::set<std::int32_t> kNumbers = {1,  5,  9,  11, 58, 63, 69, 70, 73, 74,
                                         75, 76, 77, 78, 82, 83, 84, 85, 86, 87};

// The language's text of an item is named by its place: "text 0" is the code.
std::string languageText(std::int32_t item)
{
    const std::int32_t place = item == 3 ? 0 : item == 4 ? 1 : item - 14;
    switch (place) {
    case 0:
        return "EN";
    case 1:
        return "English";
    case 28:
    case 41:
        return "";
    default:
        return "text " + std::to_string(place);
    }
}

struct NumberCase {
    const char* name;
    std::int32_t item;
    std::int32_t value;
};
// Homeland has the flags 0x2B, which are flags 0, 1, 3 and 5.
constexpr NumberCase kNumberCases[] = {
    {"LanguageId", TS_LI_LANGUAGE_ID, 1},
    {"TerritoryId", TS_LI_TERRITORY_ID, 10},
    {"CodepageId", TS_LI_CODEPAGE_ID, 20},
    {"SortId", TS_LI_SORT_ID, 1},
    {"TerritoryFlag0", TS_LI_TERRITORY_FLAG0, 1},
    {"FractionDigits", TS_LI_FRAC_DIGITS, 2},
    {"CurrencyDigits", TS_LI_MON_FRAC_DIGITS, 3},
    {"IntlCurrencyDigits", TS_LI_INT_FRAC_DIGITS, 4},
    {"PositivePrecedes", TS_LI_P_CS_PRECEDES, 1},
    {"PositiveSpaced", TS_LI_P_SEP_BY_SPACE, 0},
    {"NegativePrecedes", TS_LI_N_CS_PRECEDES, 1},
    {"NegativeSpaced", TS_LI_N_SEP_BY_SPACE, 0},
    {"PositivePosition", TS_LI_P_SIGN_POSN, 1},
    {"NegativePosition", TS_LI_N_SIGN_POSN, 4},
    {"TerritoryFlag5", TS_LI_TERRITORY_FLAG5, 1},
    {"TerritoryFlag6", TS_LI_TERRITORY_FLAG6, 0},
    {"TerritoryWord9", TS_LI_TERRITORY_WORD9, 0x1234},
    {"MaxCharSize", TS_LI_MAX_CHAR_SIZE, 1},
    {"AsciiBased", TS_LI_ASCII_BASED, 1},
    {"ShiftSensitive", TS_LI_SHIFT_SENSITIVE, 0},
};

class NumberItemTest : public ItemTest, public testing::WithParamInterface<NumberCase> {};

TEST_P(NumberItemTest, HasItsValueFromTheRecordAndFromTheObject)
{
    const Handle locale = on("Latin");
    locale->lastError = kUntouched;
    EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), GetParam().item, 0), GetParam().value);
    EXPECT_EQ(TSGetError(locale.get()), TS_ERR_NONE);
    EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), GetParam().item, TS_OPT_OBJECT_VALUE),
              GetParam().value);
}

template <class Case>
std::string caseName(const testing::TestParamInfo<Case>& info)
{
    return info.param.name;
}
INSTANTIATE_TEST_SUITE_P(All, NumberItemTest, testing::ValuesIn(kNumberCases),
                         caseName<NumberCase>);

struct TextCase {
    const char* name;
    std::int32_t item;
    const char* value;
};
constexpr TextCase kTextCases[] = {
    {"LanguageObject", TS_LI_LANGUAGE_OBJECT, "English"},
    {"TerritoryObject", TS_LI_TERRITORY_OBJECT, "Homeland"},
    {"TerritoryCode", TS_LI_TERRITORY_CODE, "TST"},
    {"TerritoryName", TS_LI_TERRITORY_NAME, "Testland"},
    {"CodepageObject", TS_LI_CODEPAGE_OBJECT, "Latin"},
    {"SortObject", TS_LI_SORT_OBJECT, "Dictionary"},
    {"DefaultTerritory", TS_LI_DEFAULT_TERRITORY_OBJECT, "Homeland"},
    {"DefaultCodepage", TS_LI_DEFAULT_CODEPAGE_OBJECT, "Latin"},
    {"DefaultSort", TS_LI_DEFAULT_SORT_OBJECT, "Dictionary"},
    {"DecimalPoint", TS_LI_DECIMAL_POINT, "."},
    {"ThousandsSeparator", TS_LI_THOUSANDS_SEP, ","},
    {"ListSeparator", TS_LI_LIST_SEPARATOR, ";"},
    {"Grouping", TS_LI_GROUPING, "3;0"},
    {"CurrencySymbol", TS_LI_CURRENCY_SYMBOL, "?en"}, // Latin has no yen
    {"IntlCurrencySymbol", TS_LI_INT_CURRENCY_SYMBOL, "TSD"},
    {"MonetaryDecimalPoint", TS_LI_MON_DECIMAL_POINT, ":"},
    {"MonetaryThousandsSeparator", TS_LI_MON_THOUSANDS_SEP, "'"},
    {"MonetaryGrouping", TS_LI_MON_GROUPING, "2;3;0"},
    {"PositiveSign", TS_LI_POSITIVE_SIGN, "+"},
    {"NegativeSign", TS_LI_NEGATIVE_SIGN, "-"},
    {"TimeFormat", TS_LI_TIME_FORMAT, "%H"},
    {"DateFormat", TS_LI_DATE_FORMAT, "%d.%m.%y"},
    {"LongDateFormat", TS_LI_LONG_DATE_FORMAT, "%d. %B"},
    {"LocaleName", TS_LI_LOCALE_NAME, "English_Homeland.Latin@Dictionary"},
};

class TextItemTest : public ItemTest, public testing::WithParamInterface<TextCase> {};

TEST_P(TextItemTest, HasItsTextInEveryMember)
{
    const Handle locale = on("Latin");
    const std::string value = GetParam().value;
    const auto size = static_cast<std::int32_t>(value.size()) + 1;
    for (const std::uint32_t options : {0u, TS_OPT_OBJECT_VALUE, TS_OPT_CHAR_COUNT}) {
        locale->lastError = kUntouched;
        EXPECT_EQ(text(locale.get(), GetParam().item, 100, options), value + '\0');
        EXPECT_EQ(result_, size);
        EXPECT_EQ(error_, TS_ERR_NONE);
        EXPECT_EQ(textEx(locale.get(), GetParam().item, 0, 100, options), value + '\0');
        EXPECT_EQ(result_, size);
        EXPECT_EQ(textW(locale.get(), GetParam().item, 100, options).size(),
                  static_cast<std::size_t>(size));
        EXPECT_EQ(result_, size);
        std::string narrow;
        for (const char16_t unit : textU(locale.get(), GetParam().item, 100, options))
            narrow += unit == kYen ? '?' : static_cast<char>(unit);
        EXPECT_EQ(narrow, value + '\0');
        EXPECT_EQ(result_, size);
    }
}

INSTANTIATE_TEST_SUITE_P(All, TextItemTest, testing::ValuesIn(kTextCases), caseName<TextCase>);

TEST_F(ItemTest, LanguageTextsAreTheHeaderWordsNineBeforeTheirItems)
{
    const Handle locale = on("Latin");
    for (std::int32_t item = TS_LI_DAY_2; item <= TS_LI_PM; ++item)
        EXPECT_EQ(text(locale.get(), item), languageText(item) + '\0') << item;
    EXPECT_EQ(text(locale.get(), TS_LI_LANGUAGE_CODE), "EN\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_LANGUAGE_NAME), "English\0"s);
    EXPECT_EQ(textU(locale.get(), TS_LI_DAY_1), u"Sun\x5186\0"s);
}

TEST_F(ItemTest, EveryItemIsANumberOrATextAndNoneIsBoth)
{
    for (const char* const page : kPages) {
        const Handle locale = on(page);
        for (std::int32_t item = -1; item < 300; ++item) {
            const bool listed = item >= 1 && item <= 88;
            const bool number = kNumbers.contains(item);
            SCOPED_TRACE(testing::Message() << page << ' ' << item);
            EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), item, 0) != -1, number);
            EXPECT_EQ(TSGetError(locale.get()), number ? TS_ERR_NONE : TS_ERR_ITEM);
            const auto expectText = [&] {
                EXPECT_EQ(result_ > 0, listed && !number);
                EXPECT_EQ(error_, listed && !number ? TS_ERR_NONE : TS_ERR_ITEM);
            };
            text(locale.get(), item);
            expectText();
            textEx(locale.get(), item, 0);
            expectText();
            textU(locale.get(), item);
            expectText();
            textW(locale.get(), item);
            expectText();
            std::uint32_t kind = 0;
            EXPECT_EQ(TSLocaleGetTextItem(locale.get(), item, 1, &kind) != nullptr,
                      listed && !number);
            EXPECT_EQ(TSLocaleGetTextItemU(locale.get(), item, 0, &kind) != nullptr,
                      listed && !number);
        }
    }
}

TEST_F(ItemTest, ItemsOfTheCodePageFollowIt)
{
    const std::int32_t expected[][4] = {{20, 1, 1, 0}, {21, 2, 1, 0}, {22, 2, 1, 1},
                                        {25, 1, 0, 0}, {26, 2, 0, 1}, {57352, 3, 1, 0}};
    for (std::size_t i = 0; i < std::size(kPages); ++i) {
        const Handle locale = on(kPages[i]);
        EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), TS_LI_CODEPAGE_ID, 0), expected[i][0]);
        EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), TS_LI_MAX_CHAR_SIZE, 0), expected[i][1]);
        EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), TS_LI_ASCII_BASED, 0), expected[i][2]);
        EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), TS_LI_SHIFT_SENSITIVE, 0), expected[i][3]);
    }
}

TEST_F(ItemTest, ChangedDigitsAreTheRecordsAndTheObjectKeepsItsOwn)
{
    const Handle locale = on("Latin");
    ASSERT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_FRAC_DIGITS, 9), 1);
    EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), TS_LI_FRAC_DIGITS, 0), 9);
    EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), TS_LI_FRAC_DIGITS, TS_OPT_OBJECT_VALUE), 2);
}

TEST_F(ItemTest, ChangedTextsAreTheRecordsAndTheObjectKeepsItsOwn)
{
    const Handle locale = on("Latin");
    ASSERT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_NEGATIVE_SIGN, "minus", -1, 0), 1);
    ASSERT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_DECIMAL_POINT, "!", -1, 0), 1);
    EXPECT_EQ(text(locale.get(), TS_LI_NEGATIVE_SIGN), "minus\0"s);
    EXPECT_EQ(textU(locale.get(), TS_LI_NEGATIVE_SIGN), u"minus\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_NEGATIVE_SIGN, 9, TS_OPT_OBJECT_VALUE), "-\0"s);
    EXPECT_EQ(textU(locale.get(), TS_LI_NEGATIVE_SIGN, 9, TS_OPT_OBJECT_VALUE), u"-\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_DECIMAL_POINT), "!\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_DECIMAL_POINT, 9, TS_OPT_OBJECT_VALUE), ".\0"s);
}

TEST_F(ItemTest, OneCharacterItemGivesOneCharacterWhateverTheSize)
{
    const Handle locale = on("Latin");
    for (const std::int32_t item : {59, 60, 61, 66, 67}) {
        for (const std::uint32_t options : {0u, TS_OPT_OBJECT_VALUE, TS_OPT_CHAR_COUNT,
                                            TS_OPT_OBJECT_VALUE | TS_OPT_CHAR_COUNT}) {
            for (const std::int32_t size : {2, 3, 5, 100}) {
                EXPECT_EQ(text(locale.get(), item, size, options).size(), 2u) << item;
                EXPECT_EQ(result_, 2);
                EXPECT_EQ(textU(locale.get(), item, size, options).size(), 2u) << item;
                EXPECT_EQ(result_, 2);
                EXPECT_EQ(textW(locale.get(), item, size, options).size(), 2u) << item;
                EXPECT_EQ(result_, 2);
            }
        }
    }
    EXPECT_EQ(text(locale.get(), TS_LI_THOUSANDS_SEP, 5), ",\0"s);
}

TEST_F(ItemTest, OneCharacterItemOfStatefulTextLeavesTheStateAndGivesOneCharacter)
{
    const Handle locale = on("Shift");
    for (const std::uint32_t options : {0u, TS_OPT_CHAR_COUNT}) {
        EXPECT_EQ(textEx(locale.get(), TS_LI_THOUSANDS_SEP, 1, 100, options), "\x0F,\0"s);
        EXPECT_EQ(result_, options ? 2 : 3);
        EXPECT_EQ(textEx(locale.get(), TS_LI_THOUSANDS_SEP, 0, 100, options), ",\0"s);
        EXPECT_EQ(result_, 2);
    }
}

TEST_F(ItemTest, NoSortIsBinary)
{
    const Handle locale = make("English.Latin@BINARY");
    EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), TS_LI_SORT_ID, 0), 0);
    EXPECT_EQ(text(locale.get(), TS_LI_SORT_OBJECT), "Binary\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_LOCALE_NAME), "English_Homeland.Latin@Binary\0"s);
}

TEST_F(ItemTest, DefaultThatIsNotListedHasNoName)
{
    const Handle locale = make("German_Germany.Latin@Phonebook");
    ASSERT_NE(locale, nullptr);
    for (const std::int32_t item : {13, 14, 15}) {
        text(locale.get(), item);
        EXPECT_EQ(result_, -1);
        EXPECT_EQ(error_, TS_ERR_ITEM);
        textU(locale.get(), item);
        EXPECT_EQ(error_, TS_ERR_ITEM);
    }
}

TEST_F(ItemTest, NameOfADefaultDoesNotLoadIt)
{
    const Handle locale = make("English_Germany.Double@BINARY");
    std::int32_t code = 0;
    const TSObject* const object =
        TSGetObjFromID(tsGlobals->objectManager, TS_OBJ_CODEPAGE, 20, 1, &code);
    ASSERT_EQ(object->section1(), nullptr);
    EXPECT_EQ(text(locale.get(), TS_LI_DEFAULT_CODEPAGE_OBJECT), "Latin\0"s);
    EXPECT_EQ(object->section1(), nullptr);
}

TEST_F(ItemTest, ThirteenthMonthOfTwelveIsEmpty)
{
    const Handle locale = on("Latin");
    EXPECT_EQ(text(locale.get(), TS_LI_MONTH_13), "\0"s);
    EXPECT_EQ(result_, 1);
    EXPECT_EQ(textU(locale.get(), TS_LI_ABMONTH_13).size(), 1u);
    EXPECT_EQ(result_, 1);
}

TEST_F(ItemTest, OptionsThatAreNotAcceptedAreRefused)
{
    const Handle locale = on("Shift");
    for (const std::uint32_t options : kRefused) {
        EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), TS_LI_FRAC_DIGITS, options), -1);
        EXPECT_EQ(TSGetError(locale.get()), TS_ERR_ARGUMENT);
        const auto refused = [&] {
            EXPECT_EQ(result_, -1);
            EXPECT_EQ(error_, TS_ERR_ARGUMENT);
        };
        EXPECT_EQ(text(locale.get(), TS_LI_DATE_FORMAT, 9, options), "");
        refused();
        EXPECT_EQ(textEx(locale.get(), TS_LI_DATE_FORMAT, 0, 9, options), "");
        refused();
        EXPECT_EQ(textU(locale.get(), TS_LI_DATE_FORMAT, 9, options), u"");
        refused();
        EXPECT_TRUE(textW(locale.get(), TS_LI_DATE_FORMAT, 9, options).empty());
        refused();
    }
    EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), TS_LI_FRAC_DIGITS, TS_OPT_CHAR_COUNT), -1);
    EXPECT_EQ(TSGetError(locale.get()), TS_ERR_ARGUMENT);
}

TEST_F(ItemTest, NullHandleIsTheDefaultLocaleWithBadOptionsToo)
{
    ASSERT_EQ(TSSetLocale("English.Latin", 0), TS_ERR_NONE);
    EXPECT_EQ(text(nullptr, TS_LI_DATE_FORMAT), "%d.%m.%y\0"s);
    EXPECT_EQ(TSGetLocaleNumInfo(nullptr, TS_LI_FRAC_DIGITS, 0), 2);
    EXPECT_EQ(TSGetLocaleNumInfo(nullptr, TS_LI_FRAC_DIGITS, 2), -1);
    EXPECT_EQ(TSGetError(nullptr), TS_ERR_ARGUMENT);
    textEx(nullptr, TS_LI_DATE_FORMAT, 0, 9, 2);
    EXPECT_EQ(error_, TS_ERR_ARGUMENT);
}

TEST_F(ItemTest, SizeOfZeroOrLessWritesNothingAndIsNoError)
{
    const Handle locale = on("Shift");
    for (const std::int32_t size : {0, -1, -100}) {
        EXPECT_EQ(text(locale.get(), TS_LI_DATE_FORMAT, size), "");
        EXPECT_EQ(result_, 0);
        EXPECT_EQ(error_, TS_ERR_NONE);
        EXPECT_EQ(textEx(locale.get(), TS_LI_DATE_FORMAT, 1, size), "");
        EXPECT_EQ(result_, 0);
        EXPECT_EQ(textU(locale.get(), TS_LI_DATE_FORMAT, size), u"");
        EXPECT_EQ(result_, 0);
        EXPECT_TRUE(textW(locale.get(), TS_LI_DATE_FORMAT, size).empty());
        EXPECT_EQ(result_, 0);
    }
}

TEST_F(ItemTest, ShortBufferGetsWholeCharactersAndATerminator)
{
    const Handle locale = on("Double");
    const std::string whole = "\x8A\x42"
                              "en";
    const std::size_t lengths[] = {0, 0, 0, 2, 3, 4, 4};
    for (std::int32_t size = 1; size <= 6; ++size) {
        const std::size_t length = lengths[size];
        EXPECT_EQ(text(locale.get(), TS_LI_CURRENCY_SYMBOL, size), whole.substr(0, length) + '\0');
        EXPECT_EQ(result_, static_cast<std::int32_t>(length) + 1);
    }
}

TEST_F(ItemTest, SizeInCharactersCountsTheTerminatorAndNotTheBytes)
{
    const Handle locale = on("Double");
    EXPECT_EQ(text(locale.get(), TS_LI_CURRENCY_SYMBOL, 3, TS_OPT_CHAR_COUNT), "\x8A\x42"
                                                                               "e\0"s);
    EXPECT_EQ(result_, 3);
    const Handle shift = on("Shift");
    EXPECT_EQ(textEx(shift.get(), TS_LI_CURRENCY_SYMBOL, 0, 3, TS_OPT_CHAR_COUNT),
              "\x0E\x42\x43\x0F"
              "e\0"s);
    EXPECT_EQ(result_, 3);
}

TEST_F(ItemTest, DoubleByteTextFromTheMultiByteStateHasOnlyAClosingShift)
{
    const Handle locale = on("Shift");
    ASSERT_EQ(TSSetLocaleTextInfoEx(locale.get(), TS_LI_CURRENCY_SYMBOL, "\x42\x43", 1, 2, 0), 1);
    EXPECT_EQ(textEx(locale.get(), TS_LI_CURRENCY_SYMBOL, 1), "\x42\x43\x0F\0"s);
    EXPECT_EQ(result_, 4);
    EXPECT_EQ(textEx(locale.get(), TS_LI_CURRENCY_SYMBOL, 0), "\x0E\x42\x43\x0F\0"s);
    EXPECT_EQ(result_, 5);
}

TEST_F(ItemTest, TextFromTheMultiByteStateNeedsTwoBytesWhateverTheSize)
{
    const Handle locale = on("Shift");
    EXPECT_EQ(textEx(locale.get(), TS_LI_DATE_FORMAT, 1, 1), "\x0F\0"s);
    EXPECT_EQ(result_, 2);
    EXPECT_EQ(textEx(locale.get(), TS_LI_MONTH_13, 1, 100), "\x0F\0"s);
    EXPECT_EQ(result_, 2);
}

TEST_F(ItemTest, PlainMemberOfAStatefulLocaleWritesNoShifts)
{
    const Handle locale = on("Shift");
    EXPECT_EQ(text(locale.get(), TS_LI_DAY_1), "Sun\x42\x43\0"s);
}

TEST_F(ItemTest, ExOfAStatelessLocaleDisregardsTheState)
{
    const Handle locale = on("Double");
    EXPECT_EQ(textEx(locale.get(), TS_LI_DAY_1, 1), "Sun\x8A\x42\0"s);
}

} // namespace

} // namespace vlx::test
