// Lookups in the object table by name and by id, and the built-in table.
#include <cstring>

#include "frame/store.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

class Lookup : public StoreTest {
  protected:
    Lookup()
    {
        putDirectory();
        start();
    }

    TSObject* byName(std::uint16_t type, const char* name, std::int32_t length,
                     std::int32_t noLoad = 1)
    {
        code_ = 4711;
        return TSGetObjFromName(&manager(), type, name, length, noLoad, &code_);
    }
    TSObject* byName(std::uint16_t type, const char* name)
    {
        return byName(type, name, static_cast<std::int32_t>(std::strlen(name)));
    }
    TSObject* byId(std::uint16_t type, std::uint16_t id, std::int32_t noLoad = 1)
    {
        code_ = 4711;
        return TSGetObjFromID(&manager(), type, id, noLoad, &code_);
    }

    // Starts anew on a table of the test's own.
    static void restartOn(const std::vector<Listing>& listings)
    {
        stopAll();
        putFile("control.nls", controlFile(listings));
        ASSERT_EQ(start(), TS_ERR_NONE);
    }

    std::int32_t code_ = 0;
};

TEST_F(Lookup, EveryListedObjectIsFoundByNameInAnyCaseAndById)
{
    for (const Listing& listing : goodListings()) {
        std::string upper = listing.name;
        std::string lower = listing.name;
        for (char& letter : upper)
            letter = static_cast<char>(std::toupper(letter));
        for (char& letter : lower)
            letter = static_cast<char>(std::tolower(letter));
        for (const std::string& name : {listing.name, upper, lower}) {
            const TSObject* const object = byName(listing.type, name.c_str());
            ASSERT_NE(object, nullptr) << name;
            EXPECT_EQ(code_, TS_ERR_NONE);
            EXPECT_EQ(object->id, listing.id);
            EXPECT_EQ(object->type, listing.type);
            EXPECT_EQ(object, byId(listing.type, listing.id));
            EXPECT_EQ(code_, TS_ERR_NONE);
        }
    }
}

TEST_F(Lookup, AnObjectIsNotFoundUnderAnotherType)
{
    EXPECT_EQ(byName(TS_OBJ_TERRITORY, "Northern"), nullptr);
    EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
    EXPECT_EQ(byName(TS_OBJ_SORT, "Double"), nullptr);
    EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
    EXPECT_EQ(byId(TS_OBJ_TERRITORY, kDouble), nullptr);
    EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
}

TEST_F(Lookup, AnUnlistedNameIs37)
{
    for (const char* name : {"", "Norther", "Northerner", "German"}) {
        EXPECT_EQ(byName(TS_OBJ_LANGUAGE, name), nullptr) << name;
        EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
    }
}

TEST_F(Lookup, ALengthThatCountsTheTerminatorMatchesToo)
{
    EXPECT_NE(byName(TS_OBJ_LANGUAGE, "Northern", 8), nullptr);
    EXPECT_NE(byName(TS_OBJ_LANGUAGE, "Northern", 9), nullptr);
    EXPECT_EQ(byName(TS_OBJ_LANGUAGE, "Northern", 10), nullptr);
    EXPECT_EQ(byName(TS_OBJ_LANGUAGE, "Northern", 7), nullptr);
}

TEST_F(Lookup, TheNameNeedNotBeTerminated)
{
    EXPECT_NE(byName(TS_OBJ_LANGUAGE, "Northern_Northland", 8), nullptr);
    // The ninth byte counts as the terminator, and is none.
    EXPECT_EQ(byName(TS_OBJ_LANGUAGE, "Northern_Northland", 9), nullptr);
}

TEST_F(Lookup, ANegativeLengthIsAnEmptyName)
{
    EXPECT_EQ(byName(TS_OBJ_LANGUAGE, "Northern", -1), nullptr);
    EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
}

TEST_F(Lookup, CaseIsThatOfAsciiLettersAlone)
{
    restartOn({{TS_OBJ_LANGUAGE, 1, "\xC4[abc]"}});
    EXPECT_NE(byName(TS_OBJ_LANGUAGE, "\xC4[ABC]"), nullptr);
    EXPECT_EQ(byName(TS_OBJ_LANGUAGE, "\xE4[abc]"), nullptr);
    EXPECT_EQ(byName(TS_OBJ_LANGUAGE, "\xC4{abc}"), nullptr);
}

TEST_F(Lookup, TheFirstOfEqualNamesWins)
{
    restartOn({{TS_OBJ_LANGUAGE, 1, "Same"}, {TS_OBJ_LANGUAGE, 2, "SAME"}});
    EXPECT_EQ(byName(TS_OBJ_LANGUAGE, "same")->id, 1);
}

TEST_F(Lookup, TheBinarySortIsNullWithCode0InAnyCase)
{
    for (const char* name : {"binary", "BINARY", "Binary"}) {
        EXPECT_EQ(byName(TS_OBJ_SORT, name, 6), nullptr);
        EXPECT_EQ(code_, TS_ERR_NONE);
        EXPECT_EQ(byName(TS_OBJ_SORT, name, 7), nullptr);
        EXPECT_EQ(code_, TS_ERR_NONE);
    }
}

TEST_F(Lookup, ALongerNameThatBeginsWithBinaryIsAName)
{
    restartOn({{TS_OBJ_SORT, 3, "Binary2"}, {TS_OBJ_SORT, 4, "Binar"}});
    EXPECT_NE(byName(TS_OBJ_SORT, "BINARY2"), nullptr);
    EXPECT_NE(byName(TS_OBJ_SORT, "BINAR"), nullptr);
    EXPECT_EQ(byName(TS_OBJ_SORT, "BINARY22"), nullptr);
    EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
    EXPECT_EQ(byName(TS_OBJ_SORT, "BINARY_", 7), nullptr);
    EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
}

TEST_F(Lookup, BinaryIsASortOnly)
{
    for (std::uint16_t type = TS_OBJ_LANGUAGE; type <= TS_OBJ_CODEPAGE; ++type) {
        EXPECT_EQ(byName(type, "BINARY"), nullptr);
        EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
    }
}

TEST_F(Lookup, SortId0IsNullWithCode0ForEveryManager)
{
    EXPECT_EQ(byId(TS_OBJ_SORT, 0), nullptr);
    EXPECT_EQ(code_, TS_ERR_NONE);
    for (const std::uint32_t options : {0u, TS_STRICT_OBJECTS}) {
        stopAll();
        start("/nowhere", options);
        EXPECT_EQ(byId(TS_OBJ_SORT, 0), nullptr);
        EXPECT_EQ(code_, TS_ERR_NONE);
        EXPECT_EQ(byName(TS_OBJ_SORT, "binary"), nullptr);
        EXPECT_EQ(code_, TS_ERR_NONE);
    }
}

TEST_F(Lookup, ATypeAbove3FindsNothing)
{
    for (const std::uint16_t type : std::initializer_list<std::uint16_t>{4, 5, 255, 65535}) {
        EXPECT_EQ(byName(type, "English"), nullptr);
        EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
        EXPECT_EQ(byId(type, 1), nullptr);
        EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
    }
}

TEST_F(Lookup, NoLoad1GivesTheObjectWithoutDataAndAnyOtherValueLoadsIt)
{
    EXPECT_EQ(byId(TS_OBJ_LANGUAGE, kNorthern, 1)->sections[0], nullptr);
    EXPECT_NE(byId(TS_OBJ_LANGUAGE, kNorthern, 0)->sections[0], nullptr);
    EXPECT_EQ(byName(TS_OBJ_TERRITORY, "Northland", 9, 1)->sections[0], nullptr);
    EXPECT_NE(byName(TS_OBJ_TERRITORY, "Northland", 9, 2)->sections[0], nullptr);
    EXPECT_EQ(byId(TS_OBJ_CODEPAGE, kDouble, 1)->sections[0], nullptr);
    EXPECT_NE(byId(TS_OBJ_CODEPAGE, kDouble, -1)->sections[0], nullptr);
}

TEST_F(Lookup, EveryIdOfALongRangeIsFoundByHalving)
{
    std::vector<Listing> listings = {{TS_OBJ_LANGUAGE, 5, "L"}};
    for (std::uint16_t id = 10; id < 200; id = static_cast<std::uint16_t>(id + 3))
        listings.push_back({TS_OBJ_TERRITORY, id, "T"});
    listings.push_back({TS_OBJ_CODEPAGE, 5, "C"});
    restartOn(listings);
    for (std::uint16_t id = 0; id < 210; ++id) {
        const TSObject* const object = byId(TS_OBJ_TERRITORY, id);
        const bool there = id >= 10 && id < 200 && (id - 10) % 3 == 0;
        ASSERT_EQ(object != nullptr, there) << id;
        EXPECT_EQ(code_, there ? TS_ERR_NONE : TS_ERR_NOT_FOUND);
        if (object) {
            EXPECT_EQ(object->id, id);
        }
    }
}

TEST_F(Lookup, OfTwoEqualIdsTheHalvingFindsOneAndTheWalkByNameTheFirst)
{
    restartOn(
        {{TS_OBJ_LANGUAGE, 4, "One"}, {TS_OBJ_LANGUAGE, 4, "One"}, {TS_OBJ_LANGUAGE, 6, "X"}});
    EXPECT_EQ(byName(TS_OBJ_LANGUAGE, "One"), &manager().objects[0]);
    EXPECT_EQ(byId(TS_OBJ_LANGUAGE, 4)->id, 4);
}

TEST_F(Lookup, AnEmptyRangeAnswersTheEntryBeforeItIfItsIdMatches)
{
    restartOn({{TS_OBJ_LANGUAGE, 3, "L"}, {TS_OBJ_CODEPAGE, 8, "C"}});
    const TSObject* const object = byId(TS_OBJ_TERRITORY, 3);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->type, TS_OBJ_LANGUAGE);
    EXPECT_EQ(byId(TS_OBJ_TERRITORY, 8), nullptr);
    EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
    EXPECT_EQ(byId(TS_OBJ_SORT, 8)->type, TS_OBJ_CODEPAGE);
}

TEST_F(Lookup, AnEmptyFirstRangeLooksAtTheFirstEntry)
{
    restartOn({{TS_OBJ_SORT, 3, "S"}});
    EXPECT_EQ(byId(TS_OBJ_LANGUAGE, 3)->type, TS_OBJ_SORT);
    EXPECT_EQ(byId(TS_OBJ_LANGUAGE, 4), nullptr);
}

TEST_F(Lookup, ALocaleRefusesAnObjectOfAnotherTypeThatAnEmptyRangeAnswers)
{
    LanguageContent language = LanguageContent::sample();
    language.territory = 3; // the language itself
    language.codePage = 4;  // the territory
    putFile(objectFileName(TS_OBJ_LANGUAGE, 3), language.file());
    putFile(objectFileName(TS_OBJ_TERRITORY, 4), TerritoryContent::sample().file());

    restartOn({{TS_OBJ_LANGUAGE, 3, "L"}});
    EXPECT_EQ(TSGetLocale("L", 0, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_TERRITORY);

    restartOn({{TS_OBJ_LANGUAGE, 3, "L"}, {TS_OBJ_TERRITORY, 4, "T"}});
    EXPECT_EQ(TSGetLocale("L_T", 0, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_CODEPAGE);
}

// A table that is out of order puts objects into the ranges of other types. Whoever asks for a type
// by name must not get one of another: its sections would be read as what they are not.
TEST_F(Lookup, AnObjectInTheRangeOfAnotherTypeIsNotFoundUnderThatType)
{
    restartOn({{TS_OBJ_TERRITORY, 4, "T"},
               {TS_OBJ_LANGUAGE, 3, "L"},
               {TS_OBJ_CODEPAGE, 5, "C"},
               {TS_OBJ_LANGUAGE, 6, "M"},
               {TS_OBJ_SORT, 7, "S"},
               {TS_OBJ_TERRITORY, 8, "U"}});
    for (const Listing& listing :
         {Listing{TS_OBJ_LANGUAGE, 3, "L"}, Listing{TS_OBJ_LANGUAGE, 6, "M"},
          Listing{TS_OBJ_TERRITORY, 8, "U"}})
        for (std::uint16_t type = 0; type < 4; ++type) {
            const TSObject* const object = byName(type, listing.name.c_str());
            if (object) {
                EXPECT_EQ(object->type, type) << listing.name;
            }
        }
}

TEST_F(Lookup, AWideNameCountsByItsLowBytes)
{
    const TSChar32 name[] = {0x4E,    0x16F,      0x272,   0xABCD74, 0xFFFFFF48,
                             0x10065, 0x80000072, 0x1006E, 0x100};
    code_ = 4711;
    const TSObject* const object =
        TSGetObjFromNameW(&manager(), TS_OBJ_LANGUAGE, name, 8, 1, &code_);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->id, kNorthern);
    EXPECT_EQ(code_, TS_ERR_NONE);
    EXPECT_EQ(TSGetObjFromNameW(&manager(), TS_OBJ_LANGUAGE, name, 9, 1, &code_), object);
}

TEST_F(Lookup, AWideNameTakesNoMemoryWithIt)
{
    const TSChar32 name[] = {'n', 'o', 'n', 'e'};
    const int blocks = Allocator::liveBlocks();
    EXPECT_EQ(TSGetObjFromNameW(&manager(), TS_OBJ_LANGUAGE, name, 4, 1, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
    EXPECT_EQ(Allocator::liveBlocks(), blocks);
}

TEST_F(Lookup, AWideNameWithoutMemoryIs20)
{
    const TSChar32 name[] = {'P', 'l', 'a', 'i', 'n'};
    Allocator::failAllocation(Slot::kAllocate, 1);
    EXPECT_EQ(TSGetObjFromNameW(&manager(), TS_OBJ_SORT, name, 5, 1, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_MEMORY);
}

TEST_F(Lookup, AWideBinarySortIsNullWithCode0)
{
    const TSChar32 name[] = {'b', 'I', 'n', 'A', 'r', 'Y', 0};
    for (const std::int32_t length : {6, 7}) {
        code_ = 4711;
        EXPECT_EQ(TSGetObjFromNameW(&manager(), TS_OBJ_SORT, name, length, 0, &code_), nullptr);
        EXPECT_EQ(code_, TS_ERR_NONE);
    }
}

class BuiltinTable : public Lookup {
  protected:
    BuiltinTable()
    {
        stopAll();
        EXPECT_EQ(start("/nowhere"), TS_ERR_NO_CONTROL_FILE);
    }
};

TEST_F(BuiltinTable, HasThreeObjectsOfId1WithStaticData)
{
    const char* const names[] = {"English", "UnitedStates", "US-ASCII"};
    ASSERT_EQ(manager().objectCount, 3);
    for (int i = 0; i < 3; ++i) {
        const TSObject& object = manager().objects[i];
        EXPECT_EQ(object.id, 1);
        EXPECT_EQ(object.type, i);
        EXPECT_EQ(object.flags, TS_OBJ_BUILTIN);
        EXPECT_STREQ(object.name, names[i]);
        EXPECT_EQ(object.file, nullptr);
        EXPECT_NE(object.sections[0], nullptr);
        EXPECT_EQ(object.sections[1], nullptr);
        EXPECT_EQ(object.sections[2], i == 2 ? object.sections[0] : nullptr);
        EXPECT_EQ(object.sections[3], nullptr);
    }
}

TEST_F(BuiltinTable, HasItsIndicesIsStrictAndHasNoDirectoryAndNoAliases)
{
    const TSObjManager& table = manager();
    EXPECT_EQ(table.firstLanguage, 0);
    EXPECT_EQ(table.firstTerritory, 1);
    EXPECT_EQ(table.firstCodePage, 2);
    EXPECT_EQ(table.firstSort, 3);
    EXPECT_EQ(table.objectCount, 3);
    EXPECT_TRUE(table.strict);
    EXPECT_STREQ(table.directory, "");
    EXPECT_EQ(table.aliases, nullptr);
}

TEST_F(BuiltinTable, FindsEnglishInAnyCaseAndGermanIs37)
{
    EXPECT_EQ(byName(TS_OBJ_LANGUAGE, "ENGLISH", 7, 0), &manager().objects[0]);
    EXPECT_EQ(code_, TS_ERR_NONE);
    EXPECT_EQ(byName(TS_OBJ_LANGUAGE, "German", 6, 0), nullptr);
    EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
}

TEST_F(BuiltinTable, AnswersSortId1WithTheCodePage)
{
    EXPECT_EQ(byId(TS_OBJ_SORT, 1, 0), &manager().objects[2]);
    EXPECT_EQ(code_, TS_ERR_NONE);
    EXPECT_EQ(byId(TS_OBJ_SORT, 2, 0), nullptr);
    EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
}

TEST_F(BuiltinTable, HasNoSortByName)
{
    EXPECT_EQ(byName(TS_OBJ_SORT, "Plain", 5, 0), nullptr);
    EXPECT_EQ(code_, TS_ERR_NOT_FOUND);
}

TEST_F(BuiltinTable, InstallsDataOnEveryTypeButASort)
{
    for (std::uint8_t type = TS_OBJ_LANGUAGE; type <= TS_OBJ_CODEPAGE; ++type) {
        TSObject object{};
        object.type = type;
        EXPECT_EQ(TSInstallBuiltin(&manager(), &object), 0);
        EXPECT_EQ(object.flags, TS_OBJ_BUILTIN);
        EXPECT_EQ(object.sections[0], manager().objects[type].sections[0]);
    }
    TSObject sort{};
    sort.type = TS_OBJ_SORT;
    EXPECT_EQ(TSInstallBuiltin(&manager(), &sort), 1);
    EXPECT_EQ(sort.flags, 0);
    EXPECT_EQ(sort.sections[0], nullptr);
}

TEST_F(BuiltinTable, WithoutMemoryForItTheStartGives11)
{
    stopAll();
    Allocator::failAllocation(Slot::kAllocateObject, 3); // the area, the manager, the table
    EXPECT_EQ(start("/nowhere"), TS_ERR_NO_OBJECTS);
    EXPECT_EQ(tsGlobals->objectManager, nullptr);
    EXPECT_EQ(Allocator::liveBlocks(), 1); // the area
}

} // namespace
} // namespace vlx::test
