// Native ids and locales, both ways, over a directory that has all of them.
#include <map>
#include <random>

#include "locale/locale_fixture.hpp"
#include "locale/native_rows.hpp"

namespace vlx::test {

namespace {

// The four names of a locale name; the last three may be empty.
struct NameParts {
    explicit NameParts(const std::string& name)
    {
        std::string* part = &language;
        for (const char character : name) {
            if (character == '_')
                part = &territory;
            else if (character == '.')
                part = &codePage;
            else if (character == '@')
                part = &sort;
            else
                *part += character;
        }
    }

    std::string language;
    std::string territory;
    std::string codePage;
    std::string sort;
};

const MapRow* mapRowOf(std::uint32_t nativeId)
{
    for (const MapRow& row : kMapRows)
        if (row.nativeId == nativeId)
            return &row;
    return nullptr;
}

const MapRow& firstRowOf(std::uint16_t language)
{
    const MapRow* row = kMapRows;
    while (row->language != language)
        ++row;
    return *row;
}

// The ids of the two tables, joined by native id. What only a name has gets an id behind them.
class NativeWorld {
  public:
    NativeWorld()
    {
        for (const NativeRow& row : kNativeRows) { // those of the second table first
            const NameParts parts(row.name);
            if (const MapRow* const ids = mapRowOf(row.id)) {
                languages_.try_emplace(parts.language, ids->language);
                territories_.try_emplace(parts.territory, ids->territory);
                defaults_.try_emplace(parts.language, firstRowOf(ids->language));
            }
        }
        languages_.try_emplace("SerbianCyrillic", std::uint16_t{35});
        defaults_.try_emplace("SerbianCyrillic", MapRow{35, 891, 1251, 1, 0x0C1A});
        territories_.try_emplace("Austria", std::uint16_t{40});
        std::uint16_t next = 2000;
        for (const NativeRow& row : kNativeRows) {
            const NameParts parts(row.name);
            languages_.try_emplace(parts.language, ++next);
            if (!parts.territory.empty())
                territories_.try_emplace(parts.territory, ++next);
        }
    }

    LocaleDirectory directory() const
    {
        LocaleDirectory directory;
        for (const auto& [name, id] : languages_) {
            const auto found = defaults_.find(name);
            const MapRow row = found == defaults_.end() ? kMapRows[0] : found->second;
            directory.add(LanguageSpec{id, name, row.territory, row.codePage, row.sort});
        }
        for (const auto& [name, id] : territories_)
            directory.add(TerritorySpec{.id = id, .name = name});
        for (const std::uint16_t number :
             std::initializer_list<std::uint16_t>{874, 932, 936, 949, 950, 1250, 1251, 1252, 1253,
                                                  1254, 1255, 1256, 1257, 1258, 1361}) {
            PageBuilder page(number < 1000 && number != 874 ? PageShape::kDoubleByte
                                                            : PageShape::kSingleByte);
            page.asciiHalf().id(number).build();
            directory.add("MS" + std::to_string(number), page);
        }
        for (std::uint16_t id = 1; id <= 19; ++id)
            directory.add(SortSpec{id, id == 2   ? "Spanish"
                                       : id == 3 ? "TraditionalSpanish"
                                                 : "Sort" + std::to_string(id)});
        return directory;
    }

  private:
    std::map<std::string, std::uint16_t> languages_;
    std::map<std::string, std::uint16_t> territories_;
    std::map<std::string, MapRow> defaults_;
};

class BridgeTest : public LocaleTest {
  protected:
    BridgeTest() { EXPECT_EQ(start(NativeWorld().directory()), TS_ERR_NONE); }

    // A locale with the objects of four ids.
    Handle withIds(std::uint16_t language, std::uint16_t territory, std::uint16_t codePage,
                   std::uint16_t sort)
    {
        Handle locale = make("English");
        EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_LANGUAGE_ID, language), 1);
        EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_TERRITORY_ID, territory), 1);
        EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_CODEPAGE_ID, codePage), 1);
        EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_SORT_ID, sort), 1);
        return locale;
    }

    // The native id, with the result in `result_` and the error in `code_`.
    std::uint32_t convert(TSLocale* locale, std::uint32_t options = 0)
    {
        std::uint32_t native = kNoId;
        locale->lastError = kUntouched;
        result_ = TSConvertLocale(locale, &native, options);
        code_ = locale->lastError;
        return native;
    }

    static constexpr std::uint32_t kNoId = 0xDEADBEEF;
    std::int32_t result_ = 0;
};

TEST_F(BridgeTest, EachOfTheNamesMakesItsLocale)
{
    for (const NativeRow& row : kNativeRows) {
        SCOPED_TRACE(row.name);
        const NameParts parts(row.name);
        const Handle locale(TSConvertNativeLocale(&row.id, 0, &code_));
        ASSERT_NE(locale, nullptr);
        EXPECT_EQ(code_, TS_ERR_NONE);
        EXPECT_EQ(locale->language->name, parts.language);
        if (!parts.territory.empty()) {
            EXPECT_EQ(locale->territory->name, parts.territory);
        }
        if (!parts.codePage.empty()) {
            EXPECT_EQ(locale->codePage->name, parts.codePage);
        }
        if (!parts.sort.empty()) {
            EXPECT_EQ(locale->sort->name, parts.sort);
        }
    }
}

TEST_F(BridgeTest, EachRowOfIdsGivesItsNativeId)
{
    for (const MapRow& row : kMapRows) {
        const Handle locale = withIds(row.language, row.territory, row.codePage, row.sort);
        for (const std::uint32_t options : {0u, 1u, 4u, 5u}) {
            EXPECT_EQ(convert(locale.get(), options), row.nativeId);
            EXPECT_EQ(result_, 1);
            EXPECT_EQ(code_, TS_ERR_NONE);
        }
    }
}

TEST_F(BridgeTest, NamesOfBothTablesComeBack)
{
    for (const NativeRow& row : kNativeRows) {
        if (!mapRowOf(row.id))
            continue;
        const Handle locale(TSConvertNativeLocale(&row.id, 0, nullptr));
        ASSERT_NE(locale, nullptr) << row.name;
        EXPECT_EQ(convert(locale.get()), row.id) << row.name;
    }
}

TEST_F(BridgeTest, SortsPartTheTwoSpanishLocales)
{
    EXPECT_EQ(convert(withIds(4, 724, 1252, 3).get()), 0x040Au);
    EXPECT_EQ(convert(withIds(4, 724, 1252, 2).get()), 0x0C0Au);
}

TEST_F(BridgeTest, OtherSortIsOnlyAPartialMatch)
{
    const Handle locale = withIds(1, 840, 1252, 2);
    EXPECT_EQ(convert(locale.get()), kNoId);
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(code_, TS_ERR_NO_NATIVE);
    EXPECT_EQ(convert(locale.get(), 1), kNoId);
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(convert(locale.get(), 4), 0x0409u);
    EXPECT_EQ(result_, 1);
    EXPECT_EQ(code_, TS_ERR_NONE);
}

TEST_F(BridgeTest, PartialMatchIsTheFurthestFromTheLeft)
{
    EXPECT_EQ(convert(withIds(1, 276, 1252, 1).get(), 4), 0x0409u); // the language's first row
    EXPECT_EQ(convert(withIds(1, 826, 932, 1).get(), 4), 0x0809u);
    EXPECT_EQ(convert(withIds(28, 410, 932, 0).get(), 4), 0x0412u);
    EXPECT_EQ(convert(withIds(28, 410, 1361, 5).get(), 4), 0x0812u);
    // The code page of the next language does not count.
    EXPECT_EQ(convert(withIds(34, 891, 1251, 1).get(), 4), 0x081Au);
    EXPECT_EQ(convert(withIds(34, 891, 1251, 1).get()), kNoId);
}

TEST_F(BridgeTest, LanguageThatIsNotInTheTable)
{
    const Handle locale = make("Maori");
    EXPECT_EQ(convert(locale.get()), kNoId);
    EXPECT_EQ(code_, TS_ERR_NO_NATIVE);
    EXPECT_EQ(convert(locale.get(), 4), 0u);
    EXPECT_EQ(result_, 1);
}

// The four stages as they are told, row by row.
std::pair<bool, std::uint32_t> narrowed(const std::array<std::uint16_t, 4>& ids)
{
    const auto key = [](const MapRow& row, std::size_t stage) {
        const std::uint16_t keys[] = {row.language, row.territory, row.codePage, row.sort};
        return keys[stage];
    };
    std::uint32_t native = 0;
    std::size_t at = 0;
    for (std::size_t stage = 0; stage < 4; ++stage) {
        for (;; ++at) {
            if (at == std::size(kMapRows))
                return {false, native};
            for (std::size_t earlier = 0; earlier < stage; ++earlier)
                if (key(kMapRows[at], earlier) != ids[earlier])
                    return {false, native};
            if (key(kMapRows[at], stage) == ids[stage])
                break;
        }
        native = kMapRows[at].nativeId;
    }
    return {true, native};
}

TEST_F(BridgeTest, AnyFourIdsGiveWhatTheStagesTell)
{
    std::mt19937 random(5);
    const auto any = [&] { return kMapRows[random() % std::size(kMapRows)]; };
    for (int i = 0; i < 3000; ++i) {
        const MapRow row = any();
        const std::array<std::uint16_t, 4> ids = {
            row.language, random() % 4 != 0 ? row.territory : any().territory,
            random() % 4 != 0 ? row.codePage : any().codePage,
            random() % 4 != 0 ? row.sort : any().sort};
        const Handle locale = withIds(ids[0], ids[1], ids[2], ids[3]);
        const auto [exact, native] = narrowed(ids);
        EXPECT_EQ(convert(locale.get(), 4), native);
        EXPECT_EQ(convert(locale.get()), exact ? native : kNoId);
        EXPECT_EQ(result_, exact ? 1 : 0);
    }
}

TEST_F(BridgeTest, OtherOptionsAreRefused)
{
    const Handle locale = make("English");
    const std::uint32_t id = 0x0409;
    for (const std::uint32_t options : {2u, 8u, 6u, 0x4000u, 0x80000000u}) {
        EXPECT_EQ(convert(locale.get(), options), kNoId);
        EXPECT_EQ(result_, 0);
        EXPECT_EQ(code_, TS_ERR_ARGUMENT);
        EXPECT_EQ(TSConvertNativeLocale(&id, options, &code_), nullptr);
        EXPECT_EQ(code_, TS_ERR_ARGUMENT);
        EXPECT_EQ(TSConvertNativeLocale(&id, options, nullptr), nullptr);
    }
}

TEST_F(BridgeTest, NullHandleIsTheDefaultLocale)
{
    ASSERT_EQ(TSSetLocale("German", 0), TS_ERR_NONE);
    std::uint32_t native = 0;
    EXPECT_EQ(TSConvertLocale(nullptr, &native, 0), 1);
    EXPECT_EQ(native, 0x0407u);
}

TEST_F(BridgeTest, ChangedValuesDoNotEnter)
{
    const Handle locale = make("German");
    ASSERT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_FRAC_DIGITS, 9), 1);
    EXPECT_EQ(convert(locale.get()), 0x0407u);
}

TEST_F(BridgeTest, UnknownIdIsALocaleOnlyWithFallback)
{
    for (const std::uint32_t id : {0x0437u, 0x10407u, 0u}) {
        EXPECT_EQ(TSConvertNativeLocale(&id, 0, &code_), nullptr);
        EXPECT_EQ(code_, TS_ERR_LANGUAGE);
        const Handle locale(TSConvertNativeLocale(&id, TS_LOCALE_FALLBACK, &code_));
        ASSERT_NE(locale, nullptr);
        EXPECT_EQ(code_, TS_ERR_NONE);
        EXPECT_STREQ(locale->language->name, "English");
    }
}

TEST_F(BridgeTest, EachAllocationOfANativeLocaleMayFail)
{
    const std::uint32_t id = 0x0407;
    loadAll();
    for (const std::uint32_t setting : {0x10u, 0x14u, 0x18u, 0x50u, 0x51u})
        MemoryHost::setSetting(id, setting, u"a text that is longer", u"");
    for (std::uint32_t n = 1;; ++n) {
        Allocator::failAllocation(n);
        const Handle locale(TSConvertNativeLocale(&id, 0, &code_));
        if (Allocator::failurePending())
            break;
        ASSERT_LT(n, 100u);
        EXPECT_EQ(code_, locale ? TS_ERR_NONE : TS_ERR_MEMORY);
    }
    Allocator::failAllocation(0);
}

} // namespace

} // namespace vlx::test
