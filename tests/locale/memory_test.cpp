// Locales without memory: every allocation and every free fails once.
#include <gmock/gmock.h>

#include "locale/locale_fixture.hpp"

namespace vlx::test {

namespace {

constexpr int kTextBlocks = 2 * kLocaleTexts;
constexpr int kLocaleBlocks = 1 + kTextBlocks;

class MemoryTest : public WorldTest, public ::testing::WithParamInterface<NameForm> {
  protected:
    MemoryTest() { loadAll(); }

    // Fails allocation after allocation until the call succeeds and gives the number of failures.
    // Each one is told as 20 and leaves no block.
    int failuresOf(const std::string& name, std::uint32_t options = 0)
    {
        const int blocks = Allocator::liveBlocks();
        for (std::uint32_t n = 1;; ++n) {
            std::int32_t code = kUntouched;
            Allocator::failAllocation(n);
            const Handle locale = getLocale(GetParam(), name, options, &code);
            const bool failed = !Allocator::failurePending();
            Allocator::failAllocation(0);
            EXPECT_EQ(code, failed ? TS_ERR_MEMORY : TS_ERR_NONE) << n;
            EXPECT_EQ(locale == nullptr, failed) << n;
            if (!failed)
                return static_cast<int>(n) - 1;
            EXPECT_EQ(Allocator::liveBlocks(), blocks) << n;
        }
    }

    int perPart() const { return GetParam() == NameForm::kPacked ? 1 : 0; }
};

INSTANTIATE_TEST_SUITE_P(Forms, MemoryTest, ::testing::ValuesIn(kNameForms), formName);

TEST_P(MemoryTest, EmptyNameTakesTheRecordAndItsTexts)
{
    EXPECT_EQ(failuresOf(""), kLocaleBlocks);
}

TEST_P(MemoryTest, EachPartOfAPackedNameTakesABlockMore)
{
    EXPECT_EQ(failuresOf("German"), kLocaleBlocks + perPart());
    EXPECT_EQ(failuresOf("German_Homeland.Latin@Dictionary"), kLocaleBlocks + 4 * perPart());
    EXPECT_EQ(failuresOf("German_Homeland.Shift@BINARY"), kLocaleBlocks + 4 * perPart());
}

TEST_P(MemoryTest, FallbackDoesNotHideIt)
{
    EXPECT_EQ(failuresOf("Klingon_Nowhere.None@None", TS_LOCALE_FALLBACK),
              kLocaleBlocks + 4 * perPart());
}

TEST_P(MemoryTest, LongUnicodeNameTakesABlockForItself)
{
    const int own = GetParam() == NameForm::kUnicode ? 1 : perPart();
    EXPECT_EQ(failuresOf(std::string(132, 'x'), TS_LOCALE_FALLBACK), kLocaleBlocks + own);
    EXPECT_EQ(failuresOf(std::string(131, 'x'), TS_LOCALE_FALLBACK), kLocaleBlocks + perPart());
}

TEST_P(MemoryTest, LongVariableFailsQuietly)
{
    MemoryHost::setEnvironment("TS_LANG", "German_" + std::string(200, 'x'));
    Allocator::failAllocation(2); // behind the record: the block of the variable
    const Handle locale = getLocale(GetParam(), "", TS_LOCALE_USER, &code_);
    ASSERT_NE(locale, nullptr);
    EXPECT_STREQ(locale->language->name, "English");
}

TEST_P(MemoryTest, OtherPairOfSlotsIsNotAsked)
{
    const std::uint32_t calls =
        Allocator::calls(Slot::kAllocateObject) + Allocator::calls(Slot::kFreeObject);
    getLocale(GetParam(), "German", 0, &code_);
    EXPECT_EQ(Allocator::calls(Slot::kAllocateObject) + Allocator::calls(Slot::kFreeObject), calls);
}

class ColdMemoryTest : public LocaleTest, public ::testing::WithParamInterface<NameForm> {
  protected:
    // Starts anew and makes a locale while allocation `n` of all behind the start fails; false if
    // it was not reached. Nothing may be left after the stop.
    bool failAt(std::uint32_t n, std::uint32_t startOptions)
    {
        EXPECT_EQ(start(worldDirectory(), startOptions), TS_ERR_NONE);
        Allocator::failAllocation(n);
        locale_ = getLocale(GetParam(), "German", 0, &code_);
        const bool failed = !Allocator::failurePending();
        Allocator::failAllocation(0);
        made_ = locale_ != nullptr;
        if (made_)
            withOwnData_ =
                locale_->language->file && locale_->territory->file && locale_->codePage->file;
        locale_.reset();
        EXPECT_EQ(stop(), TS_ERR_NONE);
        EXPECT_EQ(Allocator::liveBlocks(), 0) << n;
        return failed;
    }

    Handle locale_;
    bool made_ = false;
    bool withOwnData_ = false;
};

INSTANTIATE_TEST_SUITE_P(Forms, ColdMemoryTest, ::testing::ValuesIn(kNameForms), formName);

TEST_P(ColdMemoryTest, StrictStoreTellsEveryFailureOfALoad)
{
    int failures = 0;
    for (std::uint32_t n = 1; failAt(n, TS_STRICT_OBJECTS); ++n) {
        EXPECT_FALSE(made_) << n;
        EXPECT_EQ(code_, TS_ERR_MEMORY) << n;
        ++failures;
    }
    EXPECT_TRUE(made_);
    EXPECT_EQ(code_, TS_ERR_NONE);
    EXPECT_GE(failures, kLocaleBlocks + 4); // one for each of the four files
}

TEST_P(ColdMemoryTest, OtherStoreGivesBuiltInDataForAFailedLoad)
{
    int builtIn = 0;
    for (std::uint32_t n = 1; failAt(n, 0); ++n) {
        if (made_) {
            EXPECT_EQ(code_, TS_ERR_NONE) << n;
            builtIn += !withOwnData_;
        } else {
            // The built-in language asks for territory 1, and built-in names are no names.
            EXPECT_THAT(code_, ::testing::AnyOf(TS_ERR_MEMORY, TS_ERR_TERRITORY, TS_ERR_LANGUAGE))
                << n;
        }
    }
    EXPECT_TRUE(made_);
    EXPECT_TRUE(withOwnData_);
    EXPECT_EQ(builtIn, 2); // the territory's and the code page's
}

class ChangeMemoryTest : public WorldTest {
  protected:
    ChangeMemoryTest() { loadAll(); }

    // Fails call after call of a slot until none is reached. The record has to stay as it was.
    template <class Change>
    int failuresOf(const Handle& locale, Slot slot, Change change)
    {
        const std::string image = imageOf(*locale);
        const oracle::Values values = valuesOf(*locale);
        const int blocks = Allocator::liveBlocks();
        for (std::uint32_t n = 1;; ++n) {
            Allocator::failAllocation(slot, n);
            const std::int32_t code = change();
            const bool failed = !Allocator::failurePending();
            Allocator::failAllocation(slot, 0);
            EXPECT_EQ(code, failed ? TS_ERR_MEMORY : TS_ERR_NONE) << n;
            EXPECT_EQ(Allocator::liveBlocks(), blocks) << n;
            if (!failed)
                return static_cast<int>(n) - 1;
            EXPECT_EQ(imageOf(*locale), image) << n;
            EXPECT_EQ(valuesOf(*locale), values) << n;
        }
    }
};

TEST_F(ChangeMemoryTest, TerritoryStaysWithoutMemory)
{
    const Handle locale = make("_Homeland.Shift");
    TSObject* const germany = object(TS_OBJ_TERRITORY, "Germany");
    EXPECT_EQ(failuresOf(locale, Slot::kAllocate,
                         [&] { return TSChangeTerritory(locale.get(), germany); }),
              kTextBlocks);
    EXPECT_EQ(valuesOf(*locale), valuesOf(*make("_Germany.Shift")));
}

TEST_F(ChangeMemoryTest, TerritoryTakesNoMemoryForWhatTheCallerSet)
{
    TSObject* const germany = object(TS_OBJ_TERRITORY, "Germany");
    for (unsigned kept = 0; kept <= 8; ++kept) {
        const Handle locale = make("_Homeland");
        locale->modifiedMask = ((1U << kept) - 1) << 16;
        EXPECT_EQ(failuresOf(locale, Slot::kAllocate,
                             [&] { return TSChangeTerritory(locale.get(), germany); }),
                  static_cast<int>(2 * (8 - kept)));
    }
}

TEST_F(ChangeMemoryTest, CodePageStaysWithoutMemory)
{
    const Handle locale = make("_Homeland.Latin");
    TSObject* const shift = object(TS_OBJ_CODEPAGE, "Shift");
    EXPECT_EQ(
        failuresOf(locale, Slot::kAllocate, [&] { return TSChangeCodePage(locale.get(), shift); }),
        kLocaleTexts);
    EXPECT_EQ(valuesOf(*locale), valuesOf(*make("_Homeland.Shift")));
}

TEST_F(ChangeMemoryTest, CodePageKeepsTheLargeBlockIfTheExactOneCannotBeHad)
{
    TSObject* const utf8 = object(TS_OBJ_CODEPAGE, "UTF8");
    const oracle::Values wanted = valuesOf(*make("_Homeland.UTF8"));
    for (std::uint32_t n = 1; n <= kLocaleTexts; ++n) {
        const Handle locale = make("_Homeland.Latin");
        const int blocks = Allocator::liveBlocks();
        const std::size_t bytes = Allocator::liveBytes();
        const std::size_t length = valuesOf(*locale).texts[n - 1].size();
        Allocator::failAllocation(Slot::kAllocateObject, n);
        EXPECT_EQ(TSChangeCodePage(locale.get(), utf8), TS_ERR_NONE);
        EXPECT_FALSE(Allocator::failurePending());
        EXPECT_EQ(valuesOf(*locale), wanted) << n;
        EXPECT_EQ(Allocator::liveBlocks(), blocks);
        EXPECT_EQ(Allocator::liveBytes(), bytes + 2 * length) << n; // three bytes for each one
    }
}

TEST_F(ChangeMemoryTest, SetModifiableLeavesWhatItDidForTheCallerToRelease)
{
    for (std::uint32_t n = 1; n <= kTextBlocks; ++n) {
        const Handle locale = make("_Homeland");
        for (const LocaleText& text : kLocaleText) {
            release((*locale).*text.bytes);
            release((*locale).*text.unicode);
            (*locale).*text.bytes = nullptr;
            (*locale).*text.unicode = nullptr;
        }
        locale->fractionDigits = 99;
        Allocator::failAllocation(n);
        EXPECT_EQ(TSLocaleSetModifiable(locale.get()), TS_ERR_MEMORY);
        EXPECT_EQ(locale->fractionDigits, 2);
        for (std::uint32_t i = 0; i < kLocaleTexts; ++i) {
            const bool done = i < (n - 1) / 2;
            EXPECT_EQ((*locale).*kLocaleText[i].bytes != nullptr, done) << n << ", text " << i;
            EXPECT_EQ((*locale).*kLocaleText[i].unicode != nullptr, done) << n << ", text " << i;
        }
    }
}

class ReleaseTest : public WorldTest {};

TEST_F(ReleaseTest, TriesEveryFreeAndTellsAFailureOfAny)
{
    make("German");
    for (std::uint32_t n = 1; n <= kLocaleBlocks; ++n) {
        Handle locale = make("German");
        const int blocks = Allocator::liveBlocks();
        const std::uint32_t calls = Allocator::calls(Slot::kFree);
        Allocator::failFree(Slot::kFree, n);
        EXPECT_EQ(TSReleaseLocale(locale.release()), TS_ERR_FAILED) << n;
        EXPECT_FALSE(Allocator::failurePending());
        EXPECT_EQ(Allocator::calls(Slot::kFree), calls + kLocaleBlocks);
        EXPECT_EQ(Allocator::liveBlocks(), blocks - kLocaleBlocks + 1);
    }
    EXPECT_EQ(Allocator::calls(Slot::kFreeObject), 1U); // of the control data
    EXPECT_EQ(stop(), TS_ERR_NONE);
    EXPECT_EQ(Allocator::liveBlocks(), kLocaleBlocks); // the ones whose free failed
    Allocator::reset();
}

TEST_F(ReleaseTest, ReleasesTheTextsBeforeTheRecord)
{
    Handle locale = make("German");
    TSLocale* const record = locale.release();
    Allocator::failFree(Slot::kFree, kLocaleBlocks); // the last one, so the record is still there
    EXPECT_EQ(TSReleaseLocale(record), TS_ERR_FAILED);
    EXPECT_STREQ(record->language->name, "German");
    release(record);
}

TEST_F(ReleaseTest, PassesOverTextsThatAreNotThere)
{
    Handle locale = make("German");
    for (const LocaleText& text : kLocaleText) {
        release((*locale).*text.bytes);
        (*locale).*text.bytes = nullptr;
    }
    const std::uint32_t calls = Allocator::calls(Slot::kFree);
    EXPECT_EQ(TSReleaseLocale(locale.release()), TS_ERR_NONE);
    EXPECT_EQ(Allocator::calls(Slot::kFree), calls + 1 + kLocaleTexts);
}

TEST_F(ReleaseTest, AllCallsHaveTheContextOfTheStart)
{
    const Handle locale = make("German");
    TSChangeCodePage(locale.get(), object(TS_OBJ_CODEPAGE, "Shift"));
    EXPECT_TRUE(Allocator::sameContext());
    EXPECT_EQ(Allocator::lastContext(), kContext);
}

} // namespace

} // namespace vlx::test
