#include "locale/random_world.hpp"

#include <cctype>

namespace vlx::test {

namespace {

constexpr std::uint32_t kIds = 9; // ids of all types but a few are 1 to 8
constexpr std::uint16_t kAsciiId = 367;
constexpr std::uint16_t kUtf8Id = 57352;

// Some pages of each shape, made once.
std::vector<PageBuilder>& pages(std::mt19937_64& random)
{
    static std::vector<PageBuilder> all = [&random] {
        std::vector<PageBuilder> made;
        for (const PageShape shape : kPageShapes)
            for (int i = 0; i < 4; ++i)
                made.push_back(randomPage(random, shape));
        return made;
    }();
    return all;
}

} // namespace

RandomWorld::RandomWorld(std::mt19937_64& random, bool everything) : random_(random)
{
    addPages(everything);
    addTerritories(everything);
    addLanguages(everything);
    addSorts();
}

// Few letters, so that names meet, also in another case.
std::string RandomWorld::freshName()
{
    std::string name;
    if (once(40))
        return std::string(33, 'a');
    for (std::uint32_t length = 1 + below(3); length > 0; --length)
        name += "abAB_."[below(once(8) ? 6 : 4)];
    return name;
}

void RandomWorld::addLanguages(bool everything)
{
    const auto id = [this] { return static_cast<std::uint16_t>(below(kIds)); };
    for (std::uint16_t own = 1; own < kIds; ++own)
        if (everything || !once(3))
            directory_.add(LanguageSpec{own, freshName(), id(), id(), id()});
    if (everything || !once(4))
        directory_.add(LanguageSpec{kIds, "English", id(), id(), id()});
}

// Characters of the pages and any others.
std::u16string RandomWorld::text(const std::vector<TSChar16>& characters)
{
    std::u16string text;
    for (std::uint32_t length = below(12); length > 0; --length) {
        const auto any = static_cast<char16_t>(1 + below(0xFFFF));
        text.push_back(once(4) || characters.empty()
                           ? any
                           : characters[below(static_cast<std::uint32_t>(characters.size()))]);
    }
    return text;
}

void RandomWorld::addTerritories(bool everything)
{
    std::vector<TSChar16> characters;
    for (const PageBuilder& page : pages(random_))
        for (const auto& [unicode, character] : page.encoded())
            if (unicode != 0)
                characters.push_back(unicode);
    const auto word = [this] { return static_cast<std::uint16_t>(random_()); };
    const bool any = everything || !once(8);
    for (std::uint16_t own = 1; any && own < kIds; ++own) {
        if (!everything && once(3))
            continue;
        TerritorySpec territory{.id = own, .name = freshName(), .word9 = word(), .flags = word()};
        territory.digits = {word(), word(), word()};
        territory.positiveSignPosition = static_cast<std::uint8_t>(word());
        territory.negativeSignPosition = static_cast<std::uint8_t>(word());
        for (TSChar16& separator : territory.separators)
            separator = once(2) ? static_cast<TSChar16>(0x20 + below(0x60))
                                : characters[below(static_cast<std::uint32_t>(characters.size()))];
        for (std::u16string& each : territory.texts)
            each = text(characters);
        directory_.add(territory);
    }
}

void RandomWorld::addPages(bool everything)
{
    auto& all = pages(random_);
    const bool any = everything || !once(8);
    bool hasUtf8 = false;
    for (std::uint16_t own = 1; any && own < kIds; ++own) {
        if (!everything && once(3))
            continue;
        PageBuilder& page = all[below(static_cast<std::uint32_t>(all.size()))];
        const bool isUtf8 = page.shape() == PageShape::kUtf8;
        if (isUtf8 && hasUtf8)
            continue;
        hasUtf8 = hasUtf8 || isUtf8;
        directory_.add(freshName(), page.id(isUtf8 ? kUtf8Id : own));
    }
    if (any && (everything || once(2))) {
        PageBuilder ascii(PageShape::kSingleByte);
        ascii.id(kAsciiId).asciiHalf().map(0xE4, 0x0161).build();
        directory_.add("Names", ascii);
    }
}

void RandomWorld::addSorts()
{
    const bool any = !once(4);
    for (std::uint16_t own = 1; any && own < kIds; ++own)
        if (!once(3))
            directory_.add(SortSpec{own, once(8) ? "binaryx" : freshName()});
}

std::string RandomWorld::part(int type)
{
    if (once(4))
        return once(2) ? "" : freshName();
    if (type == TS_OBJ_SORT && once(6))
        return "binARy";
    std::vector<std::string> listed;
    for (const ListedObject& object : directory_.objects())
        if (object.type == type)
            listed.push_back(object.name);
    if (listed.empty())
        return freshName();
    std::string name = listed[below(static_cast<std::uint32_t>(listed.size()))];
    for (char& letter : name)
        if (once(4))
            letter = static_cast<char>(once(2) ? std::toupper(letter) : std::tolower(letter));
    if (once(30))
        name += 'x';
    return name;
}

std::string RandomWorld::name()
{
    std::string name;
    constexpr char kDelimiters[] = {0, '_', '.', '@'};
    for (int type = 0; type < 4; ++type) {
        if (once(3))
            continue;
        if (type > 0)
            name += once(50) ? kDelimiters[1 + below(3)] : kDelimiters[type];
        name += part(type);
    }
    return name;
}

} // namespace vlx::test
