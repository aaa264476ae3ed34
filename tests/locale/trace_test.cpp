// What the locale functions trace: messages, dumps, entries and exits.
#include <algorithm>

#include "locale/locale_fixture.hpp"

namespace vlx::test {

namespace {

class TraceTest : public WorldTest {
  protected:
    // Runs a call with some flags on.
    template <class Call>
    void traced(std::uint32_t mask, Call call)
    {
        Trace::setMask(mask);
        Trace::clear();
        call();
        Trace::setMask(0);
    }

    static bool printed(const std::string& function, const std::string& text)
    {
        return std::ranges::any_of(Trace::records(), [&](const TraceRecord& record) {
            return record.kind == TraceKind::kPrint && record.function == function &&
                   record.text == text;
        });
    }
};

// Services may know a message by its format.
TEST_F(TraceTest, EachPartHasAMessageOfItsOwn)
{
    const std::pair<const char*, const char*> rows[] = {
        {"Klingon", "Unable to locate language, rc = %d"},
        {"German_Nowhere", "Unable to locate territory, rc = %d"},
        {"German.None", "Unable to locate code page, rc = %d"},
        {"German@None", "Unable to locate sort, rc = %d"}};
    for (const auto& [name, format] : rows) {
        traced(TRC1_ERRORS, [this, &name = name] { make(name); });
        ASSERT_EQ(Trace::records().size(), 1U) << name;
        EXPECT_EQ(Trace::records().front().format, format);
    }
}

TEST_F(TraceTest, LanguageThatCannotBeLocated)
{
    traced(TRC1_ERRORS, [&] { make("Klingon"); });
    EXPECT_TRUE(printed("TSGetLocale", "Unable to locate language, rc = 37"));
    EXPECT_EQ(Trace::records().size(), 1U);
}

TEST_F(TraceTest, TerritoryThatCannotBeLocated)
{
    traced(TRC1_ERRORS, [&] { make("German_Nowhere"); });
    EXPECT_TRUE(printed("TSGetLocale", "Unable to locate territory, rc = 37"));
}

TEST_F(TraceTest, CodePageThatCannotBeLocated)
{
    traced(TRC1_ERRORS, [&] { make("German.None"); });
    EXPECT_TRUE(printed("TSGetLocale", "Unable to locate code page, rc = 37"));
}

TEST_F(TraceTest, SortThatCannotBeLocated)
{
    traced(TRC1_ERRORS, [&] { make("German@None"); });
    EXPECT_TRUE(printed("TSGetLocale", "Unable to locate sort, rc = 37"));
}

TEST_F(TraceTest, SortWhoseFileIsMissingTellsTheFilesCode)
{
    MemoryHost::erase(LocaleDirectory::fileOf(kDirectory, TS_OBJ_SORT, 2));
    traced(TRC1_ERRORS, [&] { make("German"); });
    EXPECT_TRUE(printed("TSGetLocale", "Unable to locate sort, rc = 1000"));
}

TEST_F(TraceTest, ValuesThatCannotBeSet)
{
    make("German");
    traced(TRC1_ERRORS, [&] {
        Allocator::failAllocation(2); // behind the record: the grouping
        EXPECT_EQ(make("German"), nullptr);
    });
    EXPECT_EQ(code_, TS_ERR_MEMORY);
    EXPECT_TRUE(printed("TSGetLocale", "Unable to set modifiable values, err = 20"));
    EXPECT_TRUE(printed("TSLocaleSetModifiable", "Unable to allocate 8 bytes, (4 * 2)"));
}

TEST_F(TraceTest, OnlyTheFirstTextTellsOfItsMemory)
{
    make("German");
    for (std::uint32_t n = 4; n <= 17; ++n) {
        traced(TRC1_ERRORS, [&] {
            Allocator::failAllocation(n);
            EXPECT_EQ(make("German"), nullptr);
        });
        EXPECT_EQ(Trace::count("TSLocaleSetModifiable", TraceKind::kPrint), 0) << n;
        EXPECT_EQ(Trace::count("TSGetLocale", TraceKind::kPrint), 1) << n;
    }
}

TEST_F(TraceTest, NothingIsPrintedOfASuccess)
{
    traced(TRC1_ERRORS, [&] { make("German"); });
    EXPECT_TRUE(Trace::records().empty());
}

TEST_F(TraceTest, LanguageIsDumpedWithItsFirstSection)
{
    Handle locale;
    traced(TRC1_DETAIL, [&] { locale = make("German"); });
    std::vector<TraceRecord> dumps;
    for (const TraceRecord& record : Trace::records())
        if (record.kind == TraceKind::kDump && record.function == "TSGetLocale")
            dumps.push_back(record);
    ASSERT_EQ(dumps.size(), 2U);
    EXPECT_EQ(dumps[0].label, "Object:");
    EXPECT_EQ(dumps[1].label, "Language:");
    const auto* const object = reinterpret_cast<const std::uint8_t*>(locale->language);
    EXPECT_TRUE(std::equal(dumps[0].bytes.begin(), dumps[0].bytes.end(), object));
    EXPECT_GE(dumps[0].bytes.size(), sizeof(TSObjDisk));
    const Content content = languageContent({2, "German", 11, 21, 2});
    ASSERT_LE(dumps[1].bytes.size(), content.size());
    EXPECT_TRUE(std::equal(dumps[1].bytes.begin(), dumps[1].bytes.end(), content.begin()));
    EXPECT_GE(dumps[1].bytes.size(), 6U);
}

TEST_F(TraceTest, NothingIsDumpedOfALanguageThatIsNotThere)
{
    traced(TRC1_DETAIL, [&] { make("Klingon"); });
    EXPECT_EQ(Trace::count("TSGetLocale", TraceKind::kDump), 0);
}

TEST_F(TraceTest, CurrencyIsAStepOfTheDetail)
{
    Handle locale;
    traced(TRC1_DETAIL, [&] { locale = make("German"); });
    char wanted[128];
    std::snprintf(wanted, sizeof wanted, "Setting currency for locale %p to %p",
                  static_cast<void*>(locale.get()), static_cast<void*>(locale->currencySymbol));
    EXPECT_TRUE(printed("TSLocaleSetModifiable", wanted));
}

TEST_F(TraceTest, CurrencyThatTheCallerSetIsNoStep)
{
    const Handle locale = make("German");
    locale->modifiedMask = 0x020000;
    traced(TRC1_DETAIL,
           [&] { TSChangeTerritory(locale.get(), object(TS_OBJ_TERRITORY, "Homeland")); });
    EXPECT_FALSE(Trace::printed("Setting currency"));
}

TEST_F(TraceTest, PackedFormHasNone)
{
    traced(~0U, [&] {
        for (const char* const name : {"German", "Klingon", "German@None"})
            getLocale(NameForm::kPacked, name, 0, &code_);
        getLocale(NameForm::kPacked, "", 1, &code_);
        Allocator::failAllocation(1);
        getLocale(NameForm::kPacked, "German", 0, &code_);
    });
    const auto records = Trace::records();
    EXPECT_FALSE(records.empty()); // of the lookups below it
    for (const TraceRecord& record : records) {
        EXPECT_EQ(record.function.find("TSGetLocale"), std::string::npos) << record.function;
        EXPECT_EQ(record.text.find("Unable to locate"), std::string::npos) << record.text;
    }
}

TEST_F(TraceTest, EntryAndExitComeInPairsWithTheResult)
{
    Handle locale;
    traced(TRC1_FLOW, [&] { locale = make("German"); });
    const auto records = Trace::records();
    ASSERT_FALSE(records.empty());
    EXPECT_EQ(records.front().function, "TSGetLocale");
    EXPECT_EQ(records.front().source, "tsgetloc");
    EXPECT_EQ(records.front().component, "Tessera");
    EXPECT_EQ(records.front().kind, TraceKind::kEntry);
    EXPECT_EQ(records.back().function, "TSGetLocale");
    EXPECT_EQ(records.back().kind, TraceKind::kExitResult);
    EXPECT_EQ(records.back().result,
              static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(locale.get())));
    int depth = 0;
    for (const TraceRecord& record : records) {
        depth += record.kind == TraceKind::kEntry ? 1 : -1;
        EXPECT_GE(depth, 0);
    }
    EXPECT_EQ(depth, 0);
}

TEST_F(TraceTest, EveryFailureLeavesThroughAnExit)
{
    traced(TRC1_FLOW, [&] {
        for (const char* const name :
             {"Klingon", "German_Nowhere", "German.None", "German@None", "German"})
            make(name);
        make("", 1);
        Allocator::failAllocation(1);
        make("German");
    });
    EXPECT_EQ(Trace::count("TSGetLocale", TraceKind::kEntry), 7);
    EXPECT_EQ(Trace::count("TSGetLocale", TraceKind::kExitResult), 7);
}

TEST_F(TraceTest, ResultsAreTheSameWithAllOfIt)
{
    const oracle::Values silent = valuesOf(*make("German.Shift"));
    traced(~0U, [&] { EXPECT_EQ(valuesOf(*make("German.Shift")), silent); });
    traced(~0U, [&] { EXPECT_EQ(make("German" + std::string(10000, 'x')), nullptr); });
    EXPECT_EQ(code_, TS_ERR_LANGUAGE);
}

TEST_F(TraceTest, UnitsHaveTheirNames)
{
    traced(TRC1_FLOW, [&] {
        const Handle locale = getLocale(NameForm::kUnicode, "German", TS_LOCALE_USER, &code_);
        TSSetLocale("German", 0);
        TSChangeTerritory(tsDefaultLocale, object(TS_OBJ_TERRITORY, "Homeland"));
    });
    const std::pair<const char*, const char*> units[] = {
        {"TSGetLocaleU", "tsgetlou"},      {"TSGetUserLocale", "tssloc"},
        {"TSMapNativeLocale", "tssloc"},   {"TSSetLocale", "tssetloc"},
        {"TSChangeTerritory", "tslocmod"}, {"TSLocaleSetModifiable", "tslocmod"}};
    for (const auto& [function, source] : units) {
        const auto records = Trace::records();
        const auto found = std::ranges::find(records, function, &TraceRecord::function);
        ASSERT_NE(found, records.end()) << function;
        EXPECT_EQ(found->source, source);
    }
}

} // namespace

} // namespace vlx::test
