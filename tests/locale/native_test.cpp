// The bridge to the host's locale ids: the table of names, and the name of the user's locale.
#include <cstring>
#include <set>

#include "locale/locale_fixture.hpp"
#include "locale/native_rows.hpp"

namespace vlx::test {

namespace {

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

INSTANTIATE_TEST_SUITE_P(All, NativeRowTest, ::testing::ValuesIn(kNativeRows), rowName);

TEST(NativeTest, EveryOtherIdOfSixteenBitsIsUnknown)
{
    std::set<std::uint32_t> listed;
    for (const NativeRow& row : kNativeRows)
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
    for (const NativeRow& row : kNativeRows)
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
