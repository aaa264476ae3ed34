// Random templates, compared with the search written out step by step: one list with all elements,
// walked character by character.
#include <random>

#include "catalog/catalog_fixture.hpp"

namespace vlx::test {
namespace {

using Random = std::mt19937_64;
using Characters = std::vector<TSChar32>;
using Paths = std::vector<std::string>;

constexpr int kSearches = 100000;

struct Codes {
    Characters language;
    Characters territory;
};

Characters charactersOf(const char* text)
{
    return {text, text + std::strlen(text)};
}

void append(Characters& to, const Characters& more)
{
    to.insert(to.end(), more.begin(), more.end());
}

// The bytes of characters, shifted where the page is stateful, and closed.
std::string encode(const Characters& characters, bool stateful)
{
    std::string bytes;
    bool multi = false;
    for (const TSChar32 character : characters) {
        if (stateful && multi != (character > 0xFF)) {
            multi = character > 0xFF;
            bytes += multi ? '\x0E' : '\x0F';
        }
        if (character > 0xFF)
            bytes += static_cast<char>(character >> 8);
        bytes += static_cast<char>(character);
    }
    if (multi)
        bytes += '\x0F';
    return bytes;
}

void finishPath(Characters& path, bool stateful, Paths& paths)
{
    const std::string bytes = encode(path, stateful);
    if (!path.empty() && bytes.size() + 1 <= 256)
        paths.push_back(bytes);
    path.clear();
}

Paths searchPaths(const std::vector<Characters>& elements, const Characters& name,
                  const Codes& codes, bool stateful)
{
    Characters list;
    for (const Characters& element : elements) {
        if (element.empty())
            continue;
        append(list, element);
        list.push_back(';');
    }
    Paths paths;
    Characters path;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i] == ';') {
            finishPath(path, stateful, paths);
            continue;
        }
        const TSChar32 next = list[i] == '%' && i + 1 < list.size() ? list[i + 1] : 0;
        ++i;
        if (next == '%') {
            path.push_back('%');
        } else if (next == 'N') {
            append(path, name);
        } else if (next == 'l') {
            append(path, codes.language);
        } else if (next == 't') {
            append(path, codes.territory);
        } else if (next == 'L') {
            append(path, codes.language);
            path.push_back('_');
            append(path, codes.territory);
        } else {
            --i;
            path.push_back(list[i]);
        }
    }
    return paths;
}

struct Case {
    const char* locale;
    TSChar32 yen; // 0: the page has none
    bool stateful;
    Codes codes;
};

class RandomSearch : public CatalogTest {
  protected:
    Characters randomTemplate(TSChar32 yen)
    {
        static constexpr std::string_view kPool = "%%%%;;NNlLtabx_/";
        Characters characters;
        const std::size_t length = random_() % 40 == 0 ? 300 : random_() % 14;
        for (std::size_t i = 0; i < length; ++i)
            characters.push_back(yen != 0 && random_() % 4 == 0
                                     ? yen
                                     : static_cast<TSChar32>(kPool[random_() % kPool.size()]));
        return characters;
    }

    Random random_{4401};
};

TEST_F(RandomSearch, TriesThePathsOfTheListInTheirOrder)
{
    const Characters yen{0x8A42};
    const Case cases[] = {
        {"Codes_Codes", 0, false, {charactersOf("EN"), charactersOf("USA")}},
        {"Bare_Bare", 0, false, {}},
        {"Wide_Wide", 0x8A42, false, {yen, charactersOf("W")}},
        {"Codes_Codes.Shift", 0x4243, true, {charactersOf("EN"), charactersOf("USA")}},
        {"Wide_Codes.Shift", 0x4243, true, {{0x4243}, charactersOf("USA")}},
    };
    Trace::setMask(TRC1_INPUTS);
    int searches = 0;
    for (int round = 0; searches < kSearches && !HasFailure(); ++round) {
        const Case& each = cases[static_cast<std::size_t>(round) % std::size(cases)];
        locale_ = make(each.locale);
        ASSERT_TRUE(locale_);
        for (int i = 0; i < 500 && !HasFailure(); ++i, ++searches) {
            const Characters templates = randomTemplate(each.yen);
            Characters variable = randomTemplate(each.yen);
            variable.resize(std::min<std::size_t>(variable.size(), 100)); // below 512 bytes
            Characters name = randomTemplate(each.yen);
            name.push_back('n');
            const std::string value = encode(variable, each.stateful);
            MemoryHost::setEnvironment("TS_NLSPATH", value);
            const std::string templateBytes = encode(templates, each.stateful);
            triedPaths();
            EXPECT_EQ(TSOpenCatalog(locale_.get(), templateBytes.c_str(),
                                    encode(name, each.stateful).c_str(), TS_CATALOG_SEARCH_ONCE),
                      nullptr);
            const Paths wanted =
                searchPaths({templates, variable, name}, name, each.codes, each.stateful);
            EXPECT_EQ(triedPaths(), wanted) << templateBytes << " | " << value;
        }
    }
}

} // namespace
} // namespace vlx::test
