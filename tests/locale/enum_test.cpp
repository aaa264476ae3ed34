// TSEnumLocales and its forms.
#include <vector>

#include "locale/locale_fixture.hpp"

namespace vlx::test {

namespace {

// What the callbacks of one enumeration saw.
struct Seen {
    std::vector<std::pair<std::int32_t, std::u32string>> objects;
    std::size_t stopAfter = SIZE_MAX;
};

template <class Unit>
std::int32_t look(TSContext user, std::int32_t type, const Unit* name)
{
    Seen& seen = *reinterpret_cast<Seen*>(user);
    std::u32string text;
    for (; *name != 0; ++name)
        text.push_back(static_cast<std::make_unsigned_t<Unit>>(*name));
    seen.objects.emplace_back(type, text);
    return seen.objects.size() < seen.stopAfter ? -1 : 0;
}

std::int32_t enumerate(NameForm form, Seen& seen)
{
    const auto user = reinterpret_cast<TSContext>(&seen);
    switch (form) {
    case NameForm::kBytes:
        return TSEnumLocales(look<char>, user);
    case NameForm::kUnicode:
        return TSEnumLocalesU(look<TSChar16>, user);
    case NameForm::kPacked:
        break;
    }
    return TSEnumLocalesW(look<TSChar32>, user);
}

class EnumTest : public LocaleTest, public ::testing::WithParamInterface<NameForm> {
  protected:
    Seen seen_;
};

INSTANTIATE_TEST_SUITE_P(Forms, EnumTest, ::testing::ValuesIn(kNameForms), formName);

TEST_P(EnumTest, VisitsAllObjectsInTableOrder)
{
    ASSERT_EQ(start(worldDirectory()), TS_ERR_NONE);
    EXPECT_EQ(enumerate(GetParam(), seen_), 0);
    const LocaleDirectory directory = worldDirectory();
    ASSERT_EQ(seen_.objects.size(), directory.objects().size());
    for (std::size_t i = 0; i < seen_.objects.size(); ++i) {
        EXPECT_EQ(seen_.objects[i].first, directory.objects()[i].type);
        EXPECT_EQ(seen_.objects[i].second, packedName(directory.objects()[i].name));
    }
}

TEST_P(EnumTest, StopsAtTheFirstZeroAndStillReturnsZero)
{
    ASSERT_EQ(start(worldDirectory()), TS_ERR_NONE);
    for (std::size_t count = 1; count < 5; ++count) {
        seen_ = {};
        seen_.stopAfter = count;
        EXPECT_EQ(enumerate(GetParam(), seen_), 0);
        EXPECT_EQ(seen_.objects.size(), count);
    }
}

TEST_P(EnumTest, NamesOfThirtyThreeCharactersAreWhole)
{
    const WorldPages pages;
    const std::string name(33, 'N');
    LocaleDirectory directory;
    directory.add(LanguageSpec{.name = name}).add("Ascii7", pages.ascii);
    ASSERT_EQ(start(directory), TS_ERR_NONE);
    EXPECT_EQ(enumerate(GetParam(), seen_), 0);
    EXPECT_EQ(seen_.objects.at(0).second, packedName(name));
}

TEST_P(EnumTest, BuiltInTableHasThreeObjectsAndNoUnicodeNames)
{
    ASSERT_EQ(start(), TS_ERR_NO_CONTROL_FILE);
    EXPECT_EQ(enumerate(GetParam(), seen_), 0);
    ASSERT_EQ(seen_.objects.size(), 3U);
    const std::u32string names[] = {U"English", U"UnitedStates", U"US-ASCII"};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(seen_.objects[i].first, static_cast<int>(i));
        EXPECT_EQ(seen_.objects[i].second, GetParam() == NameForm::kUnicode ? U"" : names[i]);
    }
}

TEST_P(EnumTest, EmptyTableHasNothing)
{
    ASSERT_EQ(start(LocaleDirectory()), TS_ERR_NONE);
    EXPECT_EQ(enumerate(GetParam(), seen_), 0);
    EXPECT_TRUE(seen_.objects.empty());
}

// A byte above 127 is widened by zero, or goes through the code page of names.
TEST_P(EnumTest, ByteAboveAsciiIsWidenedByTheRuleOfItsForm)
{
    PageBuilder names(PageShape::kSingleByte);
    names.id(367).asciiHalf().map(0xE4, 0x0161).build();
    LocaleDirectory directory;
    directory.add(LanguageSpec{.name = "\xE4"}).add("Names", names);
    ASSERT_EQ(start(directory), TS_ERR_NONE);
    EXPECT_EQ(enumerate(GetParam(), seen_), 0);
    EXPECT_EQ(seen_.objects.at(0).second, GetParam() == NameForm::kUnicode ? U"\x0161" : U"\x00E4");
}

TEST_P(EnumTest, TerritoryInThePlaceOfTheCodePageOfNamesGivesNoUnicodeNames)
{
    LocaleDirectory directory;
    directory.add(TerritorySpec{.id = 367, .name = "Land"});
    ASSERT_EQ(start(directory), TS_ERR_NONE);
    EXPECT_EQ(enumerate(GetParam(), seen_), 0);
    EXPECT_EQ(seen_.objects.at(0).second, GetParam() == NameForm::kUnicode ? U"" : U"Land");
}

TEST_P(EnumTest, LoadsNoObjectButTheCodePageOfNames)
{
    ASSERT_EQ(start(worldDirectory()), TS_ERR_NONE);
    enumerate(GetParam(), seen_);
    for (int i = 0; i < manager().objectCount; ++i) {
        const TSObject& each = manager().objects[i];
        const bool isNames = each.type == TS_OBJ_CODEPAGE && each.id == 367;
        EXPECT_EQ(each.sections[0] != nullptr, isNames && GetParam() == NameForm::kUnicode)
            << each.name;
    }
}

} // namespace

} // namespace vlx::test
