// The default locale: TSSetLocale and its forms, and the null handle.
#include "locale/locale_fixture.hpp"

namespace vlx::test {

namespace {

class DefaultTest : public WorldTest, public ::testing::WithParamInterface<NameForm> {
  protected:
    static std::int32_t set(const std::string& name, std::uint32_t options = 0)
    {
        return setLocale(GetParam(), name, options);
    }
};

INSTANTIATE_TEST_SUITE_P(Forms, DefaultTest, ::testing::ValuesIn(kNameForms), formName);

TEST_P(DefaultTest, NoneIsSetByTheStart)
{
    EXPECT_EQ(tsDefaultLocale, nullptr);
}

TEST_P(DefaultTest, IsTheLocaleOfTheName)
{
    ASSERT_EQ(set("German_Homeland.Latin@BINARY"), TS_ERR_NONE);
    ASSERT_NE(tsDefaultLocale, nullptr);
    EXPECT_STREQ(tsDefaultLocale->language->name, "German");
    EXPECT_STREQ(tsDefaultLocale->territory->name, "Homeland");
    EXPECT_STREQ(tsDefaultLocale->codePage->name, "Latin");
    EXPECT_EQ(tsDefaultLocale->sort, nullptr);
}

TEST_P(DefaultTest, NewOneReleasesThePrevious)
{
    ASSERT_EQ(set("German"), TS_ERR_NONE);
    ASSERT_EQ(set("English"), TS_ERR_NONE);
    const int blocks = Allocator::liveBlocks();
    for (int i = 0; i < 5; ++i)
        ASSERT_EQ(set(i % 2 == 0 ? "German" : "English"), TS_ERR_NONE);
    EXPECT_EQ(Allocator::liveBlocks(), blocks);
}

TEST_P(DefaultTest, PreviousIsReleasedOnlyAfterTheNewOneIsGood)
{
    ASSERT_EQ(set("German"), TS_ERR_NONE);
    TSLocale* const german = tsDefaultLocale;
    ASSERT_EQ(set("German"), TS_ERR_NONE);
    EXPECT_NE(tsDefaultLocale, german); // both were there at the same time
}

TEST_P(DefaultTest, FailureTellsTheCodeAndLeavesItAsItWas)
{
    ASSERT_EQ(set("German"), TS_ERR_NONE);
    TSLocale* const before = tsDefaultLocale;
    const std::string image = imageOf(*before);
    const std::pair<const char*, std::int32_t> failures[] = {{"Klingon", TS_ERR_LANGUAGE},
                                                             {"German_Nowhere", TS_ERR_TERRITORY},
                                                             {"German.None", TS_ERR_CODEPAGE},
                                                             {"German@None", TS_ERR_SORT}};
    for (const auto& [name, code] : failures) {
        EXPECT_EQ(set(name), code);
        EXPECT_EQ(tsDefaultLocale, before);
        EXPECT_EQ(imageOf(*before), image);
    }
    EXPECT_EQ(set("English", 1), TS_ERR_ARGUMENT);
    EXPECT_EQ(tsDefaultLocale, before);
}

TEST_P(DefaultTest, FailureOfTheFirstLeavesNone)
{
    EXPECT_EQ(set("Klingon"), TS_ERR_LANGUAGE);
    EXPECT_EQ(tsDefaultLocale, nullptr);
    EXPECT_EQ(set("Klingon", TS_LOCALE_FALLBACK), TS_ERR_NONE);
    EXPECT_NE(tsDefaultLocale, nullptr);
}

TEST_P(DefaultTest, FailingAllocationLeavesItAsItWas)
{
    ASSERT_EQ(set("German"), TS_ERR_NONE);
    TSLocale* const before = tsDefaultLocale;
    const std::string image = imageOf(*before);
    const int blocks = Allocator::liveBlocks();
    int failures = 0;
    for (std::uint32_t n = 1;; ++n) {
        Allocator::failAllocation(n);
        const std::int32_t code = set("German");
        if (Allocator::failurePending())
            break;
        ++failures;
        EXPECT_EQ(code, TS_ERR_MEMORY) << n;
        ASSERT_EQ(tsDefaultLocale, before);
        EXPECT_EQ(imageOf(*before), image);
        EXPECT_EQ(Allocator::liveBlocks(), blocks);
    }
    Allocator::failAllocation(0);
    EXPECT_GE(failures, 17);
    EXPECT_NE(tsDefaultLocale, before);
}

TEST_P(DefaultTest, NullHandleIsTheDefaultLocale)
{
    ASSERT_EQ(set("German"), TS_ERR_NONE);
    tsDefaultLocale->lastError = 55;
    EXPECT_EQ(TSGetError(nullptr), 55);
    EXPECT_EQ(TSGetError(nullptr), 55); // it does not clear the code
    EXPECT_EQ(TSNumChars(nullptr, "a\x8A\x42", -1, 0), 2);
    EXPECT_EQ(TSGetError(nullptr), 0);
    tsDefaultLocale->lastError = 55;
    std::int32_t state = 1;
    TSInitState(nullptr, &state);
    EXPECT_EQ(state, 0);
    EXPECT_EQ(tsDefaultLocale->lastError, 0);
    ASSERT_EQ(set("English"), TS_ERR_NONE);
    EXPECT_EQ(TSNumChars(nullptr, "a\x8A\x42", -1, 0), 3);
}

TEST_P(DefaultTest, HandleIsNotTheDefaultLocale)
{
    ASSERT_EQ(set("German"), TS_ERR_NONE);
    tsDefaultLocale->lastError = 55;
    const Handle latin = make(".Latin");
    latin->lastError = 66;
    EXPECT_EQ(TSGetError(latin.get()), 66);
    EXPECT_EQ(TSNumChars(latin.get(), "a\x8A\x42", -1, 0), 3);
    EXPECT_EQ(TSGetError(nullptr), 55);
    std::int32_t state = 1;
    latin->lastError = 66;
    TSInitState(latin.get(), &state);
    EXPECT_EQ(TSGetError(latin.get()), 0);
    EXPECT_EQ(TSGetError(nullptr), 55);
}

TEST_P(DefaultTest, LastStopReleasesIt)
{
    ASSERT_EQ(set("German"), TS_ERR_NONE);
    EXPECT_EQ(stop(), TS_ERR_NONE);
    EXPECT_EQ(tsDefaultLocale, nullptr);
    EXPECT_EQ(Allocator::liveBlocks(), 0);
}

TEST_P(DefaultTest, StopThatIsNotTheLastKeepsIt)
{
    ASSERT_EQ(start(), TS_ERR_NONE);
    ASSERT_EQ(set("German"), TS_ERR_NONE);
    TSLocale* const before = tsDefaultLocale;
    EXPECT_EQ(TSTerm(), TS_ERR_NONE);
    EXPECT_EQ(tsDefaultLocale, before);
}

TEST_P(DefaultTest, FreeThatFailsAtTheStopIsItsResult)
{
    ASSERT_EQ(set("German"), TS_ERR_NONE);
    Allocator::failFree(Slot::kFree, 1); // the grouping
    EXPECT_EQ(stop(), TS_ERR_FAILED);
    EXPECT_EQ(tsDefaultLocale, nullptr);
    EXPECT_EQ(Allocator::liveBlocks(), 1);
    Allocator::reset();
}

} // namespace

} // namespace vlx::test
