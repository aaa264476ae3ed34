#include "world/world.hpp"

#include <algorithm>
#include <cstring>
#include <set>

#include "locale/native_rows.hpp"
#include "world/facts.hpp"

namespace vlx::test {

namespace {

constexpr std::int32_t kRoom = 256;

const LanguageFacts* languageFacts(const std::string& name)
{
    const auto* const found =
        std::find_if(std::begin(kLanguageFacts), std::end(kLanguageFacts),
                     [&](const LanguageFacts& facts) { return name == facts.name; });
    EXPECT_NE(found, std::end(kLanguageFacts)) << name;
    return found;
}

template <class Facts, std::size_t kSize>
std::string nameOfId(const Facts (&facts)[kSize], std::uint16_t id)
{
    const auto* const found =
        std::find_if(facts, facts + kSize, [&](const Facts& one) { return one.id == id; });
    return found == facts + kSize ? "(none)" : found->name;
}

// The part behind a mark, up to the next one of `ends`; empty if the mark is not there.
std::string partBehind(const std::string& name, char mark, const char* ends)
{
    const std::size_t start = name.find(mark);
    if (start == std::string::npos)
        return {};
    return name.substr(start + 1, name.find_first_of(ends, start + 1) - start - 1);
}

} // namespace

Locale WorldTest::open(const std::string& name)
{
    std::int32_t code = -1;
    Locale locale(TSGetLocale(name.c_str(), 0, &code));
    EXPECT_NE(locale, nullptr) << name << ", code " << code;
    return locale;
}

std::u16string unitsOf(const Locale& locale, int item)
{
    TSChar16 units[kRoom];
    const std::int32_t count = TSGetLocaleTextInfoU(locale.get(), item, units, kRoom, 0);
    EXPECT_GT(count, 0) << "item " << item;
    return {units, units + std::max(count - 1, 0)};
}

std::string bytesOf(const Locale& locale, int item)
{
    char bytes[kRoom];
    const std::int32_t count = TSGetLocaleTextInfo(locale.get(), item, bytes, kRoom, 0);
    EXPECT_GT(count, 0) << "item " << item;
    return {bytes, bytes + std::max(count - 1, 0)};
}

int numberOf(const Locale& locale, int item)
{
    return TSGetLocaleNumInfo(locale.get(), item, 0);
}

std::string fullName(const Locale& locale)
{
    return locale ? bytesOf(locale, TS_LI_LOCALE_NAME) : "(none)";
}

std::string completed(const std::string& name)
{
    const LanguageFacts& language = *languageFacts(name.substr(0, name.find_first_of("_.@")));
    const std::string territory = partBehind(name, '_', ".@");
    const std::string codePage = partBehind(name, '.', "@");
    const std::string sort = partBehind(name, '@', "");
    return std::string(language.name) + "_" + (territory.empty() ? language.territory : territory) +
           "." + (codePage.empty() ? language.codePage : codePage) + "@" +
           (sort.empty() ? language.sort : sort);
}

std::string nameOfRow(const MapRow& row)
{
    return nameOfId(kLanguageFacts, row.language) + "_" + nameOfId(kTerritoryFacts, row.territory) +
           "." + nameOfId(kCodePageFacts, row.codePage) + "@" + nameOfId(kSortFacts, row.sort);
}

std::vector<std::string> everyLocale()
{
    std::vector<std::string> names;
    std::set<std::string> known;
    const auto add = [&](const std::string& name) {
        if (known.insert(name).second)
            names.push_back(name);
    };
    for (const NativeRow& row : kNativeRows)
        add(completed(row.name));
    for (const MapRow& row : kMapRows)
        add(nameOfRow(row));
    for (const LanguageFacts& language : kLanguageFacts)
        add(completed(language.name));
    return names;
}

} // namespace vlx::test
