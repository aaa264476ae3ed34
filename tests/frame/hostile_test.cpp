// Bad files of every type: cut, changed byte by byte, and changed by chance. They may give garbage,
// but no stray read and always an end.
#include <algorithm>
#include <random>

#include "chars/codepage.hpp"
#include "frame/exercise.hpp"
#include "frame/store.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

constexpr int kCorruptions = 2000;
constexpr char kFullName[] = "Northern_Northland.Double@Plain";
constexpr std::uint16_t kUtf8 = 57352;

PageBuilder longPage()
{
    PageBuilder page(PageShape::kFourByte);
    page.id(500).asciiHalf();
    for (TSChar32 last = 0x40; last < 0x48; ++last) {
        page.map(0x81424300 + last, static_cast<TSChar16>(0x4E00 + last))
            .type(0x81424300 + last, 0x00080801);
        page.map(0x904200 + last, static_cast<TSChar16>(0x5000 + last));
    }
    return page;
}

PageBuilder utf8Page()
{
    PageBuilder page(PageShape::kUtf8);
    page.id(kUtf8).asciiHalf();
    return page;
}

// A file and the object that it is loaded as.
struct Target {
    std::uint8_t type;
    std::uint16_t id;
    Bytes file;

    std::string name() const { return objectFileName(type, id); }
};

Target pageTarget(PageBuilder page)
{
    page.build();
    return {TS_OBJ_CODEPAGE, page.object().id, codePageFile(page)};
}

// Changes one to eight bytes, half of them where structure stands.
Bytes corrupted(const Bytes& good, std::mt19937& random)
{
    Bytes file = good;
    const auto below = [&random](std::size_t bound) { return random() % bound; };
    for (std::size_t changes = 1 + below(8); changes > 0; --changes) {
        std::size_t at = below(file.size());
        if (below(2) == 0) {
            // The container's header, a content's header, the offsets behind a code page's header
            // and what follows it.
            constexpr std::size_t begins[] = {4, 76, 76 + 0x110C, 76 + 0x1118};
            constexpr std::size_t sizes[] = {36, 110, 12, 4000};
            const std::size_t region = below(4);
            at = std::min(begins[region] + below(sizes[region]), file.size() - 1);
        }
        constexpr std::uint8_t values[] = {0x00, 0x01, 0x02, 0x7F, 0x80, 0xFE, 0xFF};
        file[at] =
            below(3) == 0 ? values[below(std::size(values))] : static_cast<std::uint8_t>(random());
    }
    return file;
}

class Hostile : public StoreTest {
  protected:
    Hostile()
    {
        putDirectory();
        start();
    }

    // Loads a file as an object of its own, reads it and gives it back.
    bool survives(const Target& target, const Bytes& file, std::int32_t& code)
    {
        putFile(target.name(), file);
        TSObject object{};
        object.id = target.id;
        object.type = target.type;
        TSObject* const loaded = TSLoadObject(&manager(), &object, &code);
        bool well = loaded != nullptr || target.type == TS_OBJ_SORT;
        if (loaded && code == TS_ERR_NONE) {
            well = exercise(object, file);
            well = TSUnloadObject(&manager(), &object) == 0 && well;
        }
        return well && MemoryHost::openFiles() == 0 && MemoryHost::openViews() == 0;
    }
    static bool exercise(const TSObject& object, const Bytes& file)
    {
        switch (object.type) {
        case TS_OBJ_LANGUAGE:
            return exerciseLanguage(object.sections[0], contentSize(object, file));
        case TS_OBJ_TERRITORY:
            return exerciseTerritory(object.sections[0], contentSize(object, file));
        case TS_OBJ_CODEPAGE:
            return exercisePage(object);
        default:
            return true;
        }
    }

    void cutEverywhere(const Target& target)
    {
        std::int32_t code = 0;
        ASSERT_TRUE(survives(target, target.file, code));
        ASSERT_EQ(code, TS_ERR_NONE);
        for (std::size_t size = 0; size < target.file.size(); ++size) {
            const Bytes file(target.file.begin(), target.file.begin() + static_cast<long>(size));
            ASSERT_TRUE(survives(target, file, code)) << size;
            ASSERT_EQ(code, size == 0 ? TS_ERR_FAILED : TS_ERR_FILE_READ) << size;
        }
    }
    void changeEveryByte(const Target& target)
    {
        std::mt19937 random(4711);
        std::int32_t code = 0;
        for (std::size_t at = 0; at < target.file.size(); ++at)
            for (const unsigned value : {0x00u, 0xFFu, static_cast<unsigned>(random() & 0xFF)}) {
                Bytes file = target.file;
                file[at] = static_cast<std::uint8_t>(value);
                ASSERT_TRUE(survives(target, file, code)) << at << " is " << value;
            }
    }
    void changeByChance(const Target& target)
    {
        std::int32_t code = 0;
        for (std::uint32_t seed = 0; seed < kCorruptions; ++seed) {
            std::mt19937 random(seed);
            ASSERT_TRUE(survives(target, corrupted(target.file, random), code)) << seed;
        }
    }
    // The same through a locale, whose record is read too.
    void changeByChanceInALocale(const Target& target)
    {
        TSObject* const object = listed(target.type, target.id);
        int made = 0;
        for (std::uint32_t seed = 0; seed < kCorruptions; ++seed) {
            std::mt19937 random(seed + 10000);
            const Bytes file = corrupted(target.file, random);
            putFile(target.name(), file);
            std::int32_t code = 0;
            TSLocale* const locale = TSGetLocale(kFullName, 0, &code);
            ASSERT_EQ(locale != nullptr, code == TS_ERR_NONE) << seed;
            if (locale) {
                ++made;
                ASSERT_TRUE(isBuiltin(object) || exercise(*object, file)) << seed;
                readTexts(*locale);
                ASSERT_EQ(TSReleaseLocale(locale), 0);
            }
            relist(*object);
        }
        EXPECT_GT(made, kCorruptions / 10);
    }
    static void readTexts(const TSLocale& locale)
    {
        std::size_t sum = 0;
        for (const LocaleText& text : kLocaleText) {
            for (const char* at = locale.*text.bytes; *at; ++at)
                ++sum;
            for (const TSChar16* at = locale.*text.unicode; *at; ++at)
                ++sum;
        }
        EXPECT_LT(sum, std::size_t{16 * 65536});
    }
    // Takes an object back to the state before its load.
    static void relist(TSObject& object)
    {
        if (isBuiltin(&object)) {
            std::fill(std::begin(object.sections), std::end(object.sections), nullptr);
        } else if (object.sections[0] || object.file) {
            EXPECT_EQ(TSUnloadObject(&manager(), &object), 0);
        }
        object.flags = 0;
    }

    static Target language() { return stored(TS_OBJ_LANGUAGE, kNorthern); }
    static Target territory() { return stored(TS_OBJ_TERRITORY, kNorthland); }
    static Target sort() { return stored(TS_OBJ_SORT, kPlainSort); }
    static Target stored(std::uint8_t type, std::uint16_t id)
    {
        return {type, id, goodFiles().at(objectFileName(type, id))};
    }
    static Target olderPage()
    {
        return {TS_OBJ_CODEPAGE, kDouble, OldCodePage::doubleByte().file()};
    }
};

TEST_F(Hostile, ALanguageCutAtEveryLength)
{
    cutEverywhere(language());
}
TEST_F(Hostile, ALanguageWithEveryByteChanged)
{
    changeEveryByte(language());
}
TEST_F(Hostile, ALanguageChangedByChance)
{
    changeByChance(language());
}
TEST_F(Hostile, ALocaleOfALanguageChangedByChance)
{
    changeByChanceInALocale(language());
}

TEST_F(Hostile, ATerritoryCutAtEveryLength)
{
    cutEverywhere(territory());
}
TEST_F(Hostile, ATerritoryWithEveryByteChanged)
{
    changeEveryByte(territory());
}
TEST_F(Hostile, ATerritoryChangedByChance)
{
    changeByChance(territory());
}
TEST_F(Hostile, ALocaleOfATerritoryChangedByChance)
{
    changeByChanceInALocale(territory());
}

TEST_F(Hostile, ADoubleBytePageCutAtEveryLength)
{
    cutEverywhere(pageTarget(doublePage()));
}
TEST_F(Hostile, ADoubleBytePageWithEveryByteChanged)
{
    changeEveryByte(pageTarget(doublePage()));
}
TEST_F(Hostile, ADoubleBytePageChangedByChance)
{
    changeByChance(pageTarget(doublePage()));
}
TEST_F(Hostile, ALocaleOfADoubleBytePageChangedByChance)
{
    changeByChanceInALocale(pageTarget(doublePage()));
}

TEST_F(Hostile, AFourBytePageChangedByChance)
{
    changeByChance(pageTarget(longPage()));
}
TEST_F(Hostile, AStatefulPageChangedByChance)
{
    changeByChance(pageTarget(shiftedPage()));
}
TEST_F(Hostile, AUtf8PageChangedByChance)
{
    changeByChance(pageTarget(utf8Page()));
}
TEST_F(Hostile, AnOlderPageCutAtEveryLength)
{
    cutEverywhere(olderPage());
}
TEST_F(Hostile, AnOlderPageChangedByChance)
{
    changeByChance(olderPage());
}

TEST_F(Hostile, ASortCutAtEveryLength)
{
    cutEverywhere(sort());
}
TEST_F(Hostile, ASortChangedByChance)
{
    changeByChance(sort());
}

// Pages of chance whose characters are all of one length are good ones. Where lengths mix, a narrow
// mask of the type trie may lead a shorter character to the node of a longer one.
TEST_F(Hostile, GoodPagesAreUsedInPlace)
{
    std::mt19937_64 random(1);
    std::vector<Target> targets = {pageTarget(asciiPage()), pageTarget(doublePage()),
                                   pageTarget(longPage()), pageTarget(shiftedPage()),
                                   pageTarget(utf8Page())};
    for (const PageShape shape :
         {PageShape::kSingleByte, PageShape::kDoubleByte, PageShape::kStateful2,
          PageShape::kStateful3, PageShape::kStatefulHigh})
        for (int i = 0; i < 10; ++i)
            targets.push_back(pageTarget(randomPage(random, shape)));
    for (const Target& target : targets) {
        putFile(target.name(), target.file);
        TSObject object{};
        object.id = target.id;
        object.type = target.type;
        std::int32_t code = 0;
        ASSERT_NE(TSLoadObject(&manager(), &object, &code), nullptr);
        EXPECT_EQ(code, TS_ERR_NONE);
        EXPECT_EQ(object.flags, 0);
        EXPECT_EQ(TSUnloadObject(&manager(), &object), 0);
        EXPECT_TRUE(survives(target, target.file, code));
    }
}

// A stateful page whose table of lengths disagrees with the length of its shifted characters: plain
// functions step by the one, Ex functions by the other.
TEST_F(Hostile, PlainTextOfAStatefulPageIsNotReadBehindItsCharacters)
{
    PageBuilder page(PageShape::kStateful3);
    // With a trail of 0x42 and 0x41 behind it, the plain character of two bytes becomes one of
    // three.
    page.id(600).map(0x414241, 0x3000).map(0x414244, 0x3001).type(0x414241, 0x801);
    Target target = pageTarget(std::move(page));
    target.file[kFileHeaderSize + 0x0A + 0x41] = 2; // charLength
    std::int32_t code = 0;
    EXPECT_TRUE(survives(target, target.file, code));
    EXPECT_EQ(code, TS_ERR_NONE);
}

TEST_F(Hostile, AStatefulPageOfOneByteCharactersIsNotReadBehindThem)
{
    Target target = pageTarget(shiftedPage());
    target.file[kFileHeaderSize + 5] = 1; // maxCharBytes
    std::int32_t code = 0;
    EXPECT_TRUE(survives(target, target.file, code));
    EXPECT_EQ(code, TS_ERR_NONE);
}

// The rule of UTF-8 reads three bytes behind a lead of 0xE0 and above, two behind others.
TEST_F(Hostile, AUtf8PageWithOtherLengthsIsNotReadBehindItsCharacters)
{
    Target target = pageTarget(utf8Page());
    target.file[kFileHeaderSize + 0x0A + 0xE3] = 2; // charLength
    std::int32_t code = 0;
    EXPECT_TRUE(survives(target, target.file, code));
    EXPECT_EQ(code, TS_ERR_NONE);
}

TEST_F(Hostile, ACharacterOfNoOrTooManyBytesIsOneOfOneToFour)
{
    const std::pair<std::uint8_t, std::uint8_t> rows[] = {{0, 1}, {5, 4}, {255, 4}, {4, 4}};
    for (const auto& [told, read] : rows) {
        Target target = pageTarget(doublePage());
        target.file[kFileHeaderSize + 5] = told;
        target.file[kFileHeaderSize + 0x0A + 0x81] = told;
        putFile(target.name(), target.file);
        TSObject object{};
        object.id = target.id;
        object.type = target.type;
        std::int32_t code = 0;
        ASSERT_NE(TSLoadObject(&manager(), &object, &code), nullptr);
        EXPECT_EQ(tsCodePage(&object).maxCharBytes, read);
        EXPECT_EQ(tsCodePage(&object).charLength[0x81], read);
        EXPECT_EQ(TSUnloadObject(&manager(), &object), 0);
    }
}

// Control files: whatever a start gives, lookups and locales stay inside memory.
class HostileControl : public Hostile {
  protected:
    static void expectSurvives(const Bytes& control)
    {
        stopAll();
        putFile("control.nls", control);
        const std::int32_t result = start();
        ASSERT_TRUE(result == TS_ERR_NONE || result == TS_ERR_NO_CONTROL_FILE);
        bool typesAreRight = true;
        for (const char* name : {"", kFullName, "Northern_English", "English_Northland.Plain"}) {
            std::int32_t code = 0;
            TSLocale* const locale = TSGetLocale(name, TS_LOCALE_FALLBACK, &code);
            if (!locale)
                continue;
            typesAreRight = typesAreRight && locale->language->type == TS_OBJ_LANGUAGE &&
                            locale->territory->type == TS_OBJ_TERRITORY &&
                            locale->codePage->type == TS_OBJ_CODEPAGE;
            TSReleaseLocale(locale);
        }
        ASSERT_TRUE(typesAreRight);
        TSTerm();
    }
};

TEST_F(HostileControl, WithEveryByteChanged)
{
    const Bytes good = controlFile(goodListings());
    std::mt19937 random(4711);
    for (std::size_t at = 0; at < good.size(); ++at)
        for (const unsigned value : {0x00u, 0x01u, 0x02u, 0xFFu, static_cast<unsigned>(random())}) {
            Bytes control = good;
            control[at] = static_cast<std::uint8_t>(value);
            ASSERT_NO_FATAL_FAILURE(expectSurvives(control)) << at << ' ' << (value & 0xFF);
        }
}

TEST_F(HostileControl, ChangedByChance)
{
    const Bytes good = controlFile(goodListings());
    for (std::uint32_t seed = 0; seed < kCorruptions; ++seed) {
        std::mt19937 random(seed);
        ASSERT_NO_FATAL_FAILURE(expectSurvives(corrupted(good, random))) << seed;
    }
}

TEST_F(HostileControl, WithItsEntriesShuffled)
{
    std::vector<Listing> listings = goodListings();
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        std::shuffle(listings.begin(), listings.end(), random);
        ASSERT_NO_FATAL_FAILURE(expectSurvives(controlFile(listings))) << seed;
    }
}

} // namespace
} // namespace vlx::test
