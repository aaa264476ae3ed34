// Locale names, changes of live records and recoded texts by chance, against the oracle.
#include <cstring>

#include "locale/locale_fixture.hpp"
#include "locale/random_world.hpp"

namespace vlx::test {

namespace {

class RandomTest : public LocaleTest {
  protected:
    // A new directory, with the library running on it.
    RandomWorld& newWorld(bool everything)
    {
        if (tsGlobals) {
            EXPECT_EQ(stop(), TS_ERR_NONE);
        }
        MemoryHost::reset();
        world_ = std::make_unique<RandomWorld>(random_, everything);
        EXPECT_EQ(start(world_->directory()), TS_ERR_NONE);
        return *world_;
    }

    const ListedObject& listed(int index) const
    {
        return world_->directory().objects().at(static_cast<std::size_t>(index));
    }
    oracle::Span contentOf(int index) const
    {
        const Content& content = listed(index).sections[0];
        return oracle::Span(content.data(), content.size());
    }
    oracle::Page pageOf(int index) const { return oracle::pageOf(listed(index)); }

    // The first index of an object of a type, and one of them.
    int anyOf(int type)
    {
        const auto& objects = world_->directory().objects();
        std::vector<int> indices;
        for (std::size_t i = 0; i < objects.size(); ++i)
            if (objects[i].type == type)
                indices.push_back(static_cast<int>(i));
        return indices.at(world_->below(static_cast<std::uint32_t>(indices.size())));
    }

    static TSObject* loaded(int index)
    {
        const TSObject& entry = manager().objects[index];
        std::int32_t code = kUntouched;
        return TSGetObjFromID(tsGlobals->objectManager, entry.type, entry.id, 0, &code);
    }

    static oracle::Resolution resolutionOf(const Handle& locale, std::int32_t code)
    {
        if (!locale)
            return {code};
        const auto index = [](const TSObject* object) {
            return object ? static_cast<int>(object - manager().objects)
                          : oracle::Resolution::kNone;
        };
        return {code, index(locale->language), index(locale->territory), index(locale->codePage),
                index(locale->sort)};
    }

    std::mt19937_64 random_{20240607};
    std::unique_ptr<RandomWorld> world_;
};

oracle::Values32 valuesOfName(const std::string& name)
{
    oracle::Values32 values;
    for (const char byte : name)
        values.push_back(static_cast<std::uint8_t>(byte));
    return values;
}

TEST_F(RandomTest, NamesLeadToTheObjectsOfTheOracleInEveryForm)
{
    constexpr int kWorlds = 100;
    constexpr int kNames = 300;
    int made = 0;
    int codes[64] = {};
    for (int i = 0; i < kWorlds && !HasFailure(); ++i) {
        RandomWorld& world = newWorld(false);
        const oracle::Objects& objects = world.directory().objects();
        for (int j = 0; j < kNames && !HasFailure(); ++j) {
            const std::string name = world.name();
            const std::uint32_t options = world.once(3) ? TS_LOCALE_FALLBACK : 0;
            std::u16string unicode = unicodeName(name);
            std::u32string packed = packedName(name);
            if (world.once(10) && !name.empty()) {
                unicode[world.below(static_cast<std::uint32_t>(name.size()))] = 0x0161;
                packed[world.below(static_cast<std::uint32_t>(name.size()))] |= 0x100U
                                                                                << world.below(24);
            }
            SCOPED_TRACE(name + ", options " + std::to_string(options) + ", world " +
                         std::to_string(i));

            const Handle byBytes(TSGetLocale(name.c_str(), options, &code_));
            EXPECT_EQ(resolutionOf(byBytes, code_),
                      oracle::resolve(objects, valuesOfName(name), options));
            ++codes[code_];
            const Handle byUnicode(TSGetLocaleU(units(unicode), options, &code_));
            EXPECT_EQ(resolutionOf(byUnicode, code_),
                      oracle::resolveUnicode(objects, unicode, options));
            ++codes[code_];
            const Handle byPacked(TSGetLocaleW(units(packed), options, &code_));
            EXPECT_EQ(resolutionOf(byPacked, code_),
                      oracle::resolve(objects, {packed.begin(), packed.end()}, options));
            ++codes[code_];

            const Handle& any = byBytes ? byBytes : byPacked;
            if (!any)
                continue;
            const oracle::Resolution found = resolutionOf(any, 0);
            EXPECT_EQ(valuesOf(*any),
                      oracle::freshValues(pageOf(found.codePage), contentOf(found.territory),
                                          found.sort == oracle::Resolution::kNone));
            ++made;
        }
    }
    EXPECT_GT(made, 5000);
    for (const int code : {TS_ERR_NONE, TS_ERR_LANGUAGE, TS_ERR_TERRITORY, TS_ERR_CODEPAGE,
                           TS_ERR_SORT, TS_ERR_NO_OBJECTS})
        EXPECT_GT(codes[code], 1000) << "code " << code;
}

// A copy of a record's values has to stay that of the oracle over any number of changes.
TEST_F(RandomTest, ChangesKeepTheRecordThatTheOracleKeeps)
{
    constexpr int kWorlds = 50;
    constexpr int kRecords = 20;
    constexpr int kChanges = 25;
    int results[64] = {};
    for (int i = 0; i < kWorlds && !HasFailure(); ++i) {
        RandomWorld& world = newWorld(true);
        for (int j = 0; j < kRecords && !HasFailure(); ++j) {
            const int firstTerritory = anyOf(TS_OBJ_TERRITORY);
            int page = anyOf(TS_OBJ_CODEPAGE);
            Handle locale(static_cast<TSLocale*>(allocate(sizeof(TSLocale))));
            std::memset(locale.get(), 0, sizeof(TSLocale));
            locale->territory = loaded(firstTerritory);
            locale->codePage = loaded(page);
            setCodePageFlags(*locale);
            ASSERT_EQ(TSLocaleSetModifiable(locale.get()), TS_ERR_NONE);
            oracle::Values wanted =
                oracle::freshValues(pageOf(page), contentOf(firstTerritory), false);
            EXPECT_EQ(valuesOf(*locale), wanted);

            for (int k = 0; k < kChanges && !HasFailure(); ++k) {
                wanted.modifiedMask = static_cast<std::uint32_t>(random_() & random_() & 0xFFFFFF);
                locale->modifiedMask = wanted.modifiedMask;
                const std::string image = imageOf(*locale);
                std::int32_t code = TS_ERR_NONE;
                if (world.once(2)) {
                    const int territory = anyOf(TS_OBJ_TERRITORY);
                    oracle::setModifiable(wanted, pageOf(page), contentOf(territory));
                    EXPECT_EQ(TSChangeTerritory(locale.get(), loaded(territory)), TS_ERR_NONE);
                } else {
                    const int newPage = anyOf(TS_OBJ_CODEPAGE);
                    code = oracle::changeCodePage(wanted, pageOf(page), pageOf(newPage));
                    EXPECT_EQ(TSChangeCodePage(locale.get(), loaded(newPage)), code);
                    if (code == TS_ERR_NONE)
                        page = newPage;
                    else
                        EXPECT_EQ(imageOf(*locale), image);
                }
                EXPECT_EQ(valuesOf(*locale), wanted) << "world " << i << ", change " << k;
                ++results[code];
            }
        }
        EXPECT_TRUE(Allocator::sound());
    }
    EXPECT_GT(results[TS_ERR_NONE], 5000);
    EXPECT_GT(results[TS_ERR_SEPARATOR], 500);
}

// Texts of valid and broken characters, with stray shift bytes.
oracle::Bytes randomText(std::mt19937_64& random, const oracle::Page& page)
{
    oracle::Bytes text;
    for (std::uint64_t length = random() % 20; length > 0; --length) {
        const oracle::Bytes character =
            oracle::unicodeToMb(page, static_cast<std::uint16_t>(random() % 0x10000));
        switch (random() % 6) {
        case 0:
            text.push_back(static_cast<unsigned char>(random() % 256));
            break;
        case 1:
            text.push_back(static_cast<unsigned char>(random() % 2 == 0 ? oracle::shiftIn(page)
                                                                        : oracle::shiftOut(page)));
            break;
        default:
            text.insert(text.end(), character.begin(), character.end());
        }
    }
    std::erase(text, static_cast<unsigned char>(0));
    return text;
}

TEST_F(RandomTest, RecodedTextsAreThoseOfTheOracle)
{
    constexpr int kWorlds = 20;
    constexpr int kTexts = 2000;
    int defined = 0;
    for (int i = 0; i < kWorlds && !HasFailure(); ++i) {
        newWorld(true);
        for (int j = 0; j < kTexts && !HasFailure(); ++j) {
            const int from = anyOf(TS_OBJ_CODEPAGE);
            const int to = anyOf(TS_OBJ_CODEPAGE);
            const oracle::Bytes text = randomText(random_, pageOf(from));
            oracle::Bytes wanted;
            try {
                wanted = oracle::recodeString(pageOf(from), pageOf(to), text);
            } catch (const oracle::StrayRead&) {
                continue; // a walk that needs a byte behind the character
            }
            const std::string source(text.begin(), text.end());
            // Counted first, then written into just that much room.
            const std::int32_t size =
                TSRecodeString(loaded(from), loaded(to), source.c_str(), nullptr);
            auto* const area = static_cast<char*>(allocate(static_cast<std::uint32_t>(size)));
            EXPECT_EQ(TSRecodeString(loaded(from), loaded(to), source.c_str(), area), size);
            EXPECT_EQ(oracle::Bytes(area, area + std::strlen(area)), wanted);
            EXPECT_EQ(area[size - 1], 0);
            release(area);
            ++defined;
        }
        EXPECT_TRUE(Allocator::sound());
    }
    EXPECT_GT(defined, 30000);
}

} // namespace

} // namespace vlx::test
