// What the classification functions promise, one by one. The words of Unicode values have a test of
// their own.
#include <gtest/gtest.h>

#include "frame/builtin.hpp"
#include "frame/globals.hpp"
#include "support/page_builder.hpp"
#include "support/test_locale.hpp"
#include "tessera.h"

namespace vlx::test {
namespace {

constexpr std::uint32_t kBadKinds[] = {0,          1,          5,          0x10,
                                       0x11,       0x12,       0x8000000F, 0x80000013,
                                       0x80000000, 0x00000012, 0xFFFFFFFF, 0x80000030};

// Words whose fields can be told apart.
constexpr std::uint32_t kByteWord = 0x12345678;
constexpr std::uint32_t kLongWord = 0xFEDCBA98;
constexpr std::uint32_t classOf(std::uint32_t word)
{
    return word & 0x3FF;
}

class SingleByteTypes : public testing::Test {
  protected:
    PageBuilder page_{PageShape::kSingleByte};
    TSLocale locale_ = localeOn(page_.type('A', kByteWord).type(0xE4, kLongWord).build());
};

// 0x81 leads a character of two bytes.
class DoubleByteTypes : public testing::Test {
  protected:
    PageBuilder page_{PageShape::kDoubleByte};
    TSLocale locale_ = localeOn(page_.map(0x8140, 0x3000)
                                    .type('A', kByteWord)
                                    .type(0x81, 0x3F)
                                    .type(0x8140, kLongWord)
                                    .build());
};

// Shift in is 0x0E, shift out 0x0F, and a character of the multi-byte state has two bytes.
class StatefulTypes : public testing::Test {
  protected:
    std::uint32_t classAt(const char* text, std::int32_t state)
    {
        return TSGetCharTypeEx(&locale_, text, state, TS_CT_CLASS);
    }

    PageBuilder page_{PageShape::kStateful2};
    TSLocale locale_ = localeOn(page_.map(0x4243, 0x3000)
                                    .type('B', kByteWord)
                                    .type(0x0E, 0x0E1)
                                    .type(0x0F, 0x0F1)
                                    .type(0x4243, kLongWord)
                                    .build());
};

TEST_F(SingleByteTypes, AreGivenOutByField)
{
    EXPECT_EQ(TSGetCharType(&locale_, "A", TS_CT_CLASS), 0x278u);
    EXPECT_EQ(TSGetCharType(&locale_, "A", TS_CT_DIRECTION), 0xD15u);
    EXPECT_EQ(TSGetCharType(&locale_, "A", TS_CT_FORM), 0x048u);
    EXPECT_EQ(TSGetCharType(&locale_, "\xE4", TS_CT_FORM), 0x3FBu);
    EXPECT_EQ(locale_.lastError, TS_ERR_NONE);
}

TEST_F(SingleByteTypes, AreReadByAllMembersAlike)
{
    EXPECT_EQ(TSGetCharTypeEx(&locale_, "\xE4", 0, TS_CT_CLASS), classOf(kLongWord));
    EXPECT_EQ(TSGetCharTypeEx(&locale_, "\xE4", 1, TS_CT_CLASS), classOf(kLongWord));
    EXPECT_EQ(TSGetCharTypeW(&locale_, 0xE4, TS_CT_CLASS), classOf(kLongWord));
}

TEST_F(SingleByteTypes, AValueAboveAByteIsNoCharacter)
{
    EXPECT_EQ(TSGetCharTypeW(&locale_, 0x141, TS_CT_CLASS), 0u);
}

// Deliberate: the answer to a bad kind is the class, and the error alone tells.
TEST_F(SingleByteTypes, ABadKindIsAnErrorAndGivesTheClass)
{
    for (const std::uint32_t kind : kBadKinds) {
        locale_.lastError = TS_ERR_NONE;
        EXPECT_EQ(TSGetCharType(&locale_, "A", kind), classOf(kByteWord)) << kind;
        EXPECT_EQ(locale_.lastError, TS_ERR_ARGUMENT) << kind;
        EXPECT_EQ(TSGetCharType(&locale_, "A", TS_CT_CLASS), classOf(kByteWord));
        EXPECT_EQ(locale_.lastError, TS_ERR_NONE) << "the next call clears it";
        EXPECT_EQ(TSGetCharTypeEx(&locale_, "A", 0, kind), classOf(kByteWord)) << kind;
        EXPECT_EQ(locale_.lastError, TS_ERR_ARGUMENT) << kind;
        locale_.lastError = TS_ERR_NONE;
        EXPECT_EQ(TSGetCharTypeW(&locale_, 'A', kind), classOf(kByteWord)) << kind;
        EXPECT_EQ(locale_.lastError, TS_ERR_ARGUMENT) << kind;
        locale_.lastError = TS_ERR_NONE;
        EXPECT_EQ(TSGetCharTypeU(&locale_, u'A', kind), 0x213u) << kind;
        EXPECT_EQ(locale_.lastError, TS_ERR_ARGUMENT) << kind;
    }
}

TEST_F(SingleByteTypes, ANullLocaleIsTheDefaultOne)
{
    TSLocale* const before = tsDefaultLocale;
    tsDefaultLocale = &locale_;
    EXPECT_EQ(TSGetCharType(nullptr, "A", TS_CT_CLASS), classOf(kByteWord));
    EXPECT_EQ(locale_.lastError, TS_ERR_NONE);
    EXPECT_EQ(TSGetCharTypeEx(nullptr, "A", 0, 5), classOf(kByteWord));
    EXPECT_EQ(locale_.lastError, TS_ERR_ARGUMENT);
    EXPECT_EQ(TSGetCharTypeW(nullptr, 'A', TS_CT_CLASS), classOf(kByteWord));
    EXPECT_EQ(locale_.lastError, TS_ERR_NONE);
    EXPECT_EQ(TSGetCharTypeU(nullptr, 0x4E00, 5), 0x001u);
    EXPECT_EQ(locale_.lastError, TS_ERR_ARGUMENT);
    tsDefaultLocale = before;
}

TEST(BuiltinTypes, ABadKindGivesTheClassOfTheByte)
{
    TSObject object{};
    object.id = 1;
    object.sections[0] = reinterpret_cast<const std::uint8_t*>(&kBuiltinCodePage);
    object.sections[2] = object.sections[0];
    TSLocale locale = localeOn(object);
    EXPECT_EQ(TSGetCharType(&locale, "A", 5), 0x213u);
    EXPECT_EQ(locale.lastError, TS_ERR_ARGUMENT);
    EXPECT_EQ(TSGetCharType(&locale, "\x80", TS_CT_DIRECTION), 0u) << "no word at all above 7F";
    // The page's words are data of their own: they call a tab half-width.
    EXPECT_EQ(TSGetCharType(&locale, "\t", TS_CT_FORM), 0x048u);
    EXPECT_EQ(TSGetCharTypeU(&locale, '\t', TS_CT_FORM), 0x008u);
}

TEST_F(DoubleByteTypes, ComeFromTheByteOrTheTrie)
{
    EXPECT_EQ(TSGetCharType(&locale_, "A", TS_CT_CLASS), classOf(kByteWord));
    EXPECT_EQ(TSGetCharType(&locale_, "\x81\x40", TS_CT_CLASS), classOf(kLongWord));
    EXPECT_EQ(TSGetCharType(&locale_, "\x81\x40", TS_CT_FORM), kLongWord >> 22);
    EXPECT_EQ(TSGetCharTypeW(&locale_, 0x8140, TS_CT_FORM), kLongWord >> 22);
}

TEST_F(DoubleByteTypes, AValueOfOneByteIsNotSoughtInTheTrie)
{
    EXPECT_EQ(TSGetCharTypeW(&locale_, 0x41, TS_CT_CLASS), classOf(kByteWord));
    EXPECT_EQ(TSGetCharTypeW(&locale_, 0x81, TS_CT_CLASS), 0x3Fu) << "a lead byte has a word, too";
}

TEST_F(DoubleByteTypes, TheFlagOfTheLocaleDecidesAndNotThePage)
{
    locale_.flags = kLocaleSingleByte;
    EXPECT_EQ(TSGetCharType(&locale_, "\x81\x40", TS_CT_CLASS), 0x3Fu);
    EXPECT_EQ(TSGetCharTypeEx(&locale_, "\x81\x40", 1, TS_CT_CLASS), 0x3Fu);
}

TEST_F(DoubleByteTypes, TheStateIsNotReadInTheExMember)
{
    EXPECT_EQ(TSGetCharTypeEx(&locale_, "A", 1, TS_CT_CLASS), classOf(kByteWord));
    EXPECT_EQ(TSGetCharTypeEx(&locale_, "\x81\x40", 0, TS_CT_CLASS), classOf(kLongWord));
}

TEST_F(StatefulTypes, FollowTheState)
{
    EXPECT_EQ(classAt("\x42\x43", 0), classOf(kByteWord));
    EXPECT_EQ(classAt("\x42\x43", 1), classOf(kLongWord));
}

TEST_F(StatefulTypes, OfACharacterBehindItsShiftByte)
{
    EXPECT_EQ(classAt("\x0E\x42\x43", 0), classOf(kLongWord));
    EXPECT_EQ(classAt("\x0E\x42\x43", 1), classOf(kLongWord));
    EXPECT_EQ(classAt("\x0F\x42\x43", 1), classOf(kByteWord));
    EXPECT_EQ(classAt("\x0F\x42\x43", 0), classOf(kByteWord));
}

TEST_F(StatefulTypes, OneShiftByteIsSteppedOverAndNoMore)
{
    EXPECT_EQ(classAt("\x0F\x0E\x42\x43", 0), 0x0E1u);
    EXPECT_EQ(classAt("\x0F\x0F", 1), 0x0F1u);
}

TEST_F(StatefulTypes, InThePlainMemberAShiftByteIsACharacter)
{
    EXPECT_EQ(TSGetCharType(&locale_, "\x0E\x42\x43", TS_CT_CLASS), 0x0E1u);
}

// Unlike those of the stepping functions, these shift bytes are compared as what they are.
TEST(HighShiftTypes, ShiftBytesOf80AndAboveAreMet)
{
    PageBuilder page(PageShape::kStatefulHigh);
    page.map(0x4243, 0x3000).type('B', kByteWord).type(0x4243, kLongWord).build();
    TSLocale locale = localeOn(page.object());
    const char in[] = {static_cast<char>(page.shiftIn()), 0x42, 0x43, 0};
    const char out[] = {static_cast<char>(page.shiftOut()), 0x42, 0x43, 0};
    EXPECT_EQ(TSGetCharTypeEx(&locale, in, 0, TS_CT_CLASS), classOf(kLongWord));
    EXPECT_EQ(TSGetCharTypeEx(&locale, out, 1, TS_CT_CLASS), classOf(kByteWord));
}

} // namespace
} // namespace vlx::test
