// The control file: its header, its table and the ranges of the types.
#include <algorithm>
#include <random>

#include "frame/store.hpp"

namespace vlx::test {
namespace {

class Control : public StoreTest {
  protected:
    // Starts on a control file alone.
    static std::int32_t startOn(const Bytes& control)
    {
        putFile("control.nls", control);
        return start();
    }
    static std::int32_t startOn(const std::vector<Listing>& listings)
    {
        return startOn(controlFile(listings));
    }
    // The code that the object manager reports for a control file.
    static std::int32_t codeOf(const Bytes& control)
    {
        start("/nowhere");
        putFile("control.nls", control);
        std::int32_t code = 4711;
        TSObjManager* const found = TSInitObjManager(kDirectory, TS_STRICT_OBJECTS, &code);
        TSDestroyObjManager(found);
        return code;
    }
    static std::array<int, 5> boundaries()
    {
        const TSObjManager& table = manager();
        return {table.firstLanguage, table.firstTerritory, table.firstCodePage, table.firstSort,
                table.objectCount};
    }
};

using Boundaries = std::array<int, 5>;

TEST_F(Control, TheMagicIsTested)
{
    for (const std::size_t at : {0u, 1u, 2u, 3u}) {
        Bytes control = controlFile(goodListings());
        control[at] ^= 0x01;
        EXPECT_EQ(codeOf(control), TS_ERR_HEADER) << at;
        EXPECT_EQ(startOn(control), TS_ERR_NONE); // one more start
        stopAll();
        EXPECT_EQ(startOn(control), TS_ERR_NO_CONTROL_FILE);
        EXPECT_TRUE(hasBuiltinTable());
        stopAll();
    }
}

TEST_F(Control, OnlyMagicSizeAndOffsetOfSection1AreRead)
{
    Bytes control = controlFile(goodListings());
    std::fill(control.begin() + 4, control.begin() + 10, std::uint8_t{0xFF});
    std::fill(control.begin() + 16, control.begin() + 76, std::uint8_t{0xFF});
    EXPECT_EQ(startOn(control), TS_ERR_NONE);
    EXPECT_EQ(manager().objectCount, goodListings().size());
}

TEST_F(Control, AnEmptyControlFileIsCode1)
{
    EXPECT_EQ(codeOf({}), TS_ERR_FAILED);
    stopAll();
    EXPECT_EQ(startOn(Bytes()), TS_ERR_NO_CONTROL_FILE);
}

TEST_F(Control, AControlFileShorterThanItsHeaderIsAFailedMap)
{
    for (const std::size_t size : {1u, 40u, 75u}) {
        Bytes control = controlFile(goodListings());
        control.resize(size);
        EXPECT_EQ(codeOf(control), TS_ERR_FILE_READ);
        stopAll();
        EXPECT_EQ(startOn(control), TS_ERR_NO_CONTROL_FILE);
        EXPECT_TRUE(hasBuiltinTable());
        stopAll();
    }
}

TEST_F(Control, AShortReadOfTheTableIs1003)
{
    Bytes control = controlFile(goodListings());
    control.pop_back();
    EXPECT_EQ(codeOf(control), TS_ERR_FILE_READ);
    stopAll();
    EXPECT_EQ(startOn(control), TS_ERR_NO_CONTROL_FILE);
    EXPECT_TRUE(hasBuiltinTable());
}

TEST_F(Control, ATableOffsetBehindTheFileIsAReadFailure)
{
    for (const std::uint32_t offset : {100000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        Bytes control = controlFile(goodListings());
        put32(control, 12, offset);
        EXPECT_EQ(codeOf(control), TS_ERR_FILE_READ) << offset;
        stopAll();
    }
}

TEST_F(Control, TheTableMayStandAnywhere)
{
    ObjectFile file;
    file.gap = 70001;
    Bytes table;
    for (const Listing& listing : goodListings())
        append(table, listing.bytes());
    file.sections = {table};
    EXPECT_EQ(startOn(file.bytes()), TS_ERR_NONE);
    EXPECT_EQ(manager().objectCount, goodListings().size());
}

TEST_F(Control, ATableOf39BytesHoldsOneEntryAndTheRemainderIsIgnored)
{
    for (const std::size_t extra : {1u, 37u}) {
        ObjectFile file;
        file.sections = {Listing{TS_OBJ_LANGUAGE, 9, "Lonely"}.bytes()};
        file.sections[0].resize(kListingSize + extra, 0x77);
        EXPECT_EQ(startOn(file.bytes()), TS_ERR_NONE);
        EXPECT_EQ(manager().objectCount, 1);
        EXPECT_STREQ(manager().objects[0].name, "Lonely");
        stopAll();
    }
}

TEST_F(Control, ATableOfNoEntriesFindsNothing)
{
    for (const std::size_t size : {0u, 37u}) {
        ObjectFile file;
        file.sections = {Bytes(size, 0)};
        EXPECT_EQ(startOn(file.bytes()), TS_ERR_NONE);
        EXPECT_EQ(boundaries(), (Boundaries{0, 0, 0, 0, 0}));
        std::int32_t code = 0;
        for (std::uint16_t type = 0; type < 4; ++type) {
            EXPECT_EQ(TSGetObjFromID(&manager(), type, 1, 0, &code), nullptr);
            EXPECT_EQ(code, TS_ERR_NOT_FOUND);
            EXPECT_EQ(TSGetObjFromName(&manager(), type, "", 0, 0, &code), nullptr);
            EXPECT_EQ(code, TS_ERR_NOT_FOUND);
        }
        EXPECT_EQ(TSGetLocale("", 0, &code), nullptr);
        EXPECT_EQ(code, TS_ERR_LANGUAGE);
        stopAll();
    }
}

TEST_F(Control, TheFirstFourFieldsOfAnEntryAreCopiedAndItsFlagsAreNot)
{
    EXPECT_EQ(startOn({{TS_OBJ_LANGUAGE, 0x1234, "First", 0xFF}, {TS_OBJ_SORT, 0xFFFF, "S", 1}}),
              TS_ERR_NONE);
    const TSObject& first = manager().objects[0];
    EXPECT_EQ(first.id, 0x1234);
    EXPECT_EQ(first.type, TS_OBJ_LANGUAGE);
    EXPECT_EQ(first.flags, 0);
    EXPECT_STREQ(first.name, "First");
    EXPECT_EQ(first.file, nullptr);
    for (const std::uint8_t* section : first.sections)
        EXPECT_EQ(section, nullptr);
    EXPECT_EQ(manager().objects[1].id, 0xFFFF);
    EXPECT_EQ(manager().objects[1].flags, 0);
}

TEST_F(Control, ANameWithoutATerminatorIsCutAt33)
{
    EXPECT_EQ(startOn({{TS_OBJ_LANGUAGE, 1, std::string(34, 'n')}}), TS_ERR_NONE);
    EXPECT_EQ(std::string(manager().objects[0].name), std::string(33, 'n'));
    std::int32_t code = 0;
    const std::string name(40, 'n');
    EXPECT_NE(TSGetObjFromName(&manager(), TS_OBJ_LANGUAGE, name.c_str(), 33, 1, &code), nullptr);
    EXPECT_EQ(TSGetObjFromName(&manager(), TS_OBJ_LANGUAGE, name.c_str(), 34, 1, &code), nullptr);
}

// One row for each way in which a type begins behind another, and the tables' ends.
struct BoundaryCase {
    const char* name;
    std::vector<int> types;
    Boundaries expected;
};

class ControlBoundaries : public Control, public testing::WithParamInterface<BoundaryCase> {};

TEST_P(ControlBoundaries, FollowTheOrderOfTypes)
{
    std::vector<Listing> listings;
    for (const int type : GetParam().types)
        listings.push_back({static_cast<std::uint8_t>(type),
                            static_cast<std::uint16_t>(listings.size() + 1), "Name"});
    EXPECT_EQ(startOn(listings), TS_ERR_NONE);
    EXPECT_EQ(boundaries(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Tables, ControlBoundaries,
    testing::Values(BoundaryCase{"AllTypes", {0, 0, 1, 1, 1, 2, 3, 3}, {0, 2, 5, 6, 8}},
                    BoundaryCase{"TerritoryBehindLanguage", {0, 1}, {0, 1, 2, 2, 2}},
                    BoundaryCase{"TerritoryFirst", {1, 1}, {0, 0, 2, 2, 2}},
                    BoundaryCase{"CodePageBehindLanguage", {0, 2}, {0, 1, 1, 2, 2}},
                    BoundaryCase{"CodePageBehindTerritory", {0, 1, 2}, {0, 1, 2, 3, 3}},
                    BoundaryCase{"CodePageFirst", {2, 2}, {0, 0, 0, 2, 2}},
                    BoundaryCase{"SortBehindLanguage", {0, 3}, {0, 1, 1, 1, 2}},
                    BoundaryCase{"SortBehindTerritory", {0, 1, 3}, {0, 1, 2, 2, 3}},
                    BoundaryCase{"SortBehindCodePage", {0, 1, 2, 3}, {0, 1, 2, 3, 4}},
                    BoundaryCase{"SortFirst", {3, 3}, {0, 0, 0, 0, 2}},
                    BoundaryCase{"LanguagesAlone", {0, 0, 0}, {0, 3, 3, 3, 3}},
                    BoundaryCase{"NoEntry", {}, {0, 0, 0, 0, 0}}),
    [](const testing::TestParamInfo<BoundaryCase>& row) { return row.param.name; });

TEST_F(Control, ATypeAbove3IsListedAndFindsNothing)
{
    EXPECT_EQ(startOn({{TS_OBJ_LANGUAGE, 1, "English"}, {4, 2, "Four"}, {255, 3, "Last"}}),
              TS_ERR_NONE);
    EXPECT_EQ(manager().objectCount, 3);
    std::int32_t code = 0;
    for (std::uint16_t type = 0; type < 6; ++type) {
        for (const char* name : {"Four", "Last"}) {
            EXPECT_EQ(TSGetObjFromName(&manager(), type, name, 4, 0, &code), nullptr);
            EXPECT_EQ(code, TS_ERR_NOT_FOUND);
        }
        for (std::uint16_t id = 2; id <= 3; ++id) {
            EXPECT_EQ(TSGetObjFromID(&manager(), type, id, 0, &code), nullptr);
            EXPECT_EQ(code, TS_ERR_NOT_FOUND);
        }
    }
}

TEST_F(Control, AnUnsortedTableStaysInsideItself)
{
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        std::vector<Listing> listings;
        for (int i = 0; i < 12; ++i)
            listings.push_back({static_cast<std::uint8_t>(random() % 6),
                                static_cast<std::uint16_t>(random() % 8), "Name"});
        ASSERT_EQ(startOn(listings), TS_ERR_NONE);
        const Boundaries found = boundaries();
        EXPECT_TRUE(std::is_sorted(found.begin(), found.end())) << seed;
        EXPECT_EQ(found[4], 12);
        std::int32_t code = 0;
        for (std::uint16_t type = 0; type < 7; ++type)
            for (std::uint16_t id = 0; id < 9; ++id)
                TSGetObjFromID(&manager(), type, id, 0, &code);
        stopAll();
    }
}

// The table's first 1,092 entries; a larger table leaves the rest out.
TEST_F(Control, ATableOf1092EntriesIsWholeAndOneOf1093IsNotOverrun)
{
    for (const int count : {1092, 1093, 1724}) {
        std::vector<Listing> listings;
        for (int i = 1; i <= count; ++i)
            listings.push_back(
                {TS_OBJ_LANGUAGE, static_cast<std::uint16_t>(i), "L" + std::to_string(i)});
        EXPECT_EQ(startOn(listings), TS_ERR_NONE);
        EXPECT_EQ(manager().objectCount, 1092);
        EXPECT_STREQ(listed(TS_OBJ_LANGUAGE, 1092)->name, "L1092");
        std::int32_t code = 0;
        EXPECT_EQ(TSGetObjFromID(&manager(), TS_OBJ_LANGUAGE, 1093, 1, &code), nullptr);
        EXPECT_EQ(code, TS_ERR_NOT_FOUND);
        EXPECT_TRUE(Allocator::sound());
        stopAll();
    }
}

TEST_F(Control, AControlFileCutAtEveryLengthNeverStartsFromIt)
{
    const Bytes whole = controlFile(goodListings());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(startOn(Bytes(whole.begin(), whole.begin() + static_cast<long>(size))),
                  TS_ERR_NO_CONTROL_FILE);
        EXPECT_TRUE(hasBuiltinTable());
        TSTerm();
        expectNothingLeft();
    }
}

TEST_F(Control, TheControlFileIsClosedAndUnmappedAfterTheStart)
{
    EXPECT_EQ(startOn(goodListings()), TS_ERR_NONE);
    EXPECT_EQ(MemoryHost::openFiles(), 0);
    EXPECT_EQ(MemoryHost::openMappings(), 0);
    EXPECT_EQ(MemoryHost::openViews(), 0);
}

} // namespace
} // namespace vlx::test
