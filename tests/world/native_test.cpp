// Every name and every row of the native locales makes its locale from the directory that ships,
// and each goes back to its native id.
#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>

#include "locale/native_rows.hpp"
#include "world/facts.hpp"
#include "world/world.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kWithoutUserChanges = 1;
constexpr std::uint32_t kNoId = 0xFFFFFFFF;

class NativeWorld : public WorldTest {
  protected:
    Locale fromNative(std::uint32_t id)
    {
        Locale locale(TSConvertNativeLocale(&id, kWithoutUserChanges, &code_));
        EXPECT_NE(locale, nullptr) << "code " << code_;
        return locale;
    }
    // The native id of a locale, or none.
    static std::uint32_t toNative(const Locale& locale, std::uint32_t options)
    {
        std::uint32_t id = kNoId;
        const std::int32_t found = TSConvertLocale(locale.get(), &id, options);
        EXPECT_EQ(TSGetError(locale.get()), found ? TS_ERR_NONE : TS_ERR_NO_NATIVE);
        EXPECT_EQ(found != 0, id != kNoId);
        return id;
    }

    std::int32_t code_ = -1;
};

const NativeRow* nameOfNative(std::uint32_t id)
{
    for (const NativeRow& row : kNativeRows)
        if (row.id == id)
            return &row;
    return nullptr;
}

TEST_F(NativeWorld, EveryNameMakesItsLocale)
{
    for (const NativeRow& row : kNativeRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(fullName(open(row.name)), completed(row.name));
        EXPECT_EQ(fullName(fromNative(row.id)), completed(row.name));
    }
}

TEST_F(NativeWorld, EveryRowMakesItsLocaleAndGoesBack)
{
    for (const MapRow& row : kMapRows) {
        SCOPED_TRACE(nameOfRow(row));
        const Locale locale = open(nameOfRow(row));
        ASSERT_NE(locale, nullptr);
        EXPECT_EQ(fullName(locale), nameOfRow(row));
        EXPECT_EQ(numberOf(locale, TS_LI_LANGUAGE_ID), row.language);
        EXPECT_EQ(numberOf(locale, TS_LI_TERRITORY_ID), row.territory);
        EXPECT_EQ(numberOf(locale, TS_LI_CODEPAGE_ID), row.codePage);
        EXPECT_EQ(numberOf(locale, TS_LI_SORT_ID), row.sort);
        EXPECT_EQ(toNative(locale, 0), row.nativeId);
        EXPECT_EQ(toNative(locale, TS_LOCALE_FALLBACK), row.nativeId);
        const NativeRow* const name = nameOfNative(row.nativeId);
        if (name) {
            EXPECT_EQ(completed(name->name), nameOfRow(row));
        }
        // Two rows have ids that are no names.
        EXPECT_EQ(name == nullptr, row.nativeId == 0x0C07 || row.nativeId == 0x0C1A);
    }
}

// A name whose objects have a row goes back exactly; of the others the part that matches counts.
TEST_F(NativeWorld, EveryNameGoesBackAsFarAsThereAreIds)
{
    std::map<std::string, std::uint32_t> rows;
    for (const MapRow& row : kMapRows)
        rows[nameOfRow(row)] = row.nativeId;
    int exact = 0;
    for (const NativeRow& row : kNativeRows) {
        SCOPED_TRACE(row.name);
        const Locale locale = fromNative(row.id);
        ASSERT_NE(locale, nullptr);
        const auto found = rows.find(completed(row.name));
        EXPECT_EQ(toNative(locale, 0), found == rows.end() ? kNoId : row.id);
        if (found != rows.end()) {
            EXPECT_EQ(found->second, row.id);
            ++exact;
        }
    }
    EXPECT_EQ(exact, 55);
}

// The last row that agrees from the left in one part more than the row before it; the literal
// reading of the narrowing, part by part.
std::optional<std::uint32_t> nearest(const std::array<int, 4>& ids)
{
    std::optional<std::uint32_t> native;
    for (std::size_t parts = 1; parts <= ids.size(); ++parts)
        for (const MapRow& row : kMapRows) {
            const std::array<int, 4> of = {row.language, row.territory, row.codePage, row.sort};
            if (std::equal(ids.begin(), ids.begin() + static_cast<std::ptrdiff_t>(parts),
                           of.begin())) {
                native = row.nativeId;
                break;
            }
        }
    return native;
}

TEST_F(NativeWorld, EveryNameHasANearestIdWithTheFallback)
{
    std::set<std::string> without;
    for (const NativeRow& row : kNativeRows) {
        SCOPED_TRACE(row.name);
        const Locale locale = open(row.name);
        ASSERT_NE(locale, nullptr);
        const std::optional<std::uint32_t> native =
            nearest({numberOf(locale, TS_LI_LANGUAGE_ID), numberOf(locale, TS_LI_TERRITORY_ID),
                     numberOf(locale, TS_LI_CODEPAGE_ID), numberOf(locale, TS_LI_SORT_ID)});
        if (native) {
            EXPECT_EQ(toNative(locale, TS_LOCALE_FALLBACK), *native);
        } else {
            without.insert(row.name);
        }
    }
    EXPECT_EQ(without.size(), 23U); // their languages have no row
    EXPECT_TRUE(without.contains("Icelandic_Iceland.MS1252"));
}

struct Listed {
    std::set<std::string> names[4];
};

std::int32_t list(TSContext user, std::int32_t type, const char* name)
{
    reinterpret_cast<Listed*>(user)->names[type].insert(name);
    return 1;
}

TEST_F(NativeWorld, EveryLanguageAndTerritoryIsListedUnderItsId)
{
    Listed listed;
    TSEnumLocales(list, reinterpret_cast<TSContext>(&listed));
    EXPECT_EQ(listed.names[TS_OBJ_LANGUAGE].size(), std::size(kLanguageFacts));
    EXPECT_EQ(listed.names[TS_OBJ_TERRITORY].size(), std::size(kTerritoryFacts));
    for (const LanguageFacts& facts : kLanguageFacts) {
        SCOPED_TRACE(facts.name);
        const Locale locale = open(facts.name);
        ASSERT_NE(locale, nullptr);
        EXPECT_EQ(fullName(locale), completed(facts.name));
        EXPECT_EQ(numberOf(locale, TS_LI_LANGUAGE_ID), facts.id);
        EXPECT_EQ(bytesOf(locale, TS_LI_DEFAULT_TERRITORY_OBJECT), facts.territory);
        EXPECT_EQ(bytesOf(locale, TS_LI_DEFAULT_CODEPAGE_OBJECT), facts.codePage);
        EXPECT_EQ(bytesOf(locale, TS_LI_DEFAULT_SORT_OBJECT), facts.sort);
    }
    for (const TerritoryFacts& facts : kTerritoryFacts) {
        SCOPED_TRACE(facts.name);
        const Locale locale = open(std::string("English_") + facts.name);
        ASSERT_NE(locale, nullptr);
        EXPECT_EQ(numberOf(locale, TS_LI_TERRITORY_ID), facts.id);
    }
}

} // namespace
} // namespace vlx::test
