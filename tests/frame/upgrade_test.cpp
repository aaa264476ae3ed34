// Code page files of the older form, version 1, which are rebuilt at their load.
#include <algorithm>
#include <cstring>

#include "chars/codepage.hpp"
#include "frame/store.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kHeaderSize = 4376; // of the current form
constexpr std::uint32_t kExtension = 8752;  // where a rebuilt extension area begins

// Offsets of the fields of the older form, their sizes, and their offsets in the current one.
struct Field {
    std::size_t before;
    std::size_t size;
    std::size_t now;
};
constexpr Field kFields[] = {
    {0x000, 6, 0x0000},    {0x006, 2, 0x0006},    {0x008, 256, 0x000A},
    {0x108, 256, 0x010A},  {0x208, 256, 0x020A},  {0x308, 512, 0x030A},
    {0x508, 1024, 0x050C}, {0x908, 2048, 0x090C}, {0x1108, 2, 0x110C},
};

class Upgrade : public StoreTest {
  protected:
    Upgrade()
    {
        putDirectory();
        start();
    }

    // Loads the page in the place of the listed one and gives the code.
    std::int32_t loadFrom(const Bytes& file)
    {
        stopAll();
        putFile(objectFileName(TS_OBJ_CODEPAGE, kDouble), file);
        start();
        std::int32_t code = 0;
        page_ = load(TS_OBJ_CODEPAGE, kDouble, code);
        return code;
    }
    void expectGood(const OldCodePage& old)
    {
        ASSERT_EQ(loadFrom(old.file()), TS_ERR_NONE);
        ASSERT_NE(page_, nullptr);
        for (const Field& field : kFields)
            EXPECT_TRUE(
                std::equal(old.header.begin() + static_cast<long>(field.before),
                           old.header.begin() + static_cast<long>(field.before + field.size),
                           section(0) + field.now))
                << std::hex << field.now;
        EXPECT_EQ(get16(section(0), 8), 0);
        EXPECT_EQ(get16(section(0), 0x050A), 0);
    }
    void expectRefused(const Bytes& file)
    {
        EXPECT_EQ(loadFrom(file), TS_ERR_MEMORY);
        ASSERT_NE(page_, nullptr);
        EXPECT_EQ(page_->flags, TS_OBJ_BUILTIN);
        EXPECT_EQ(MemoryHost::openViews(), 0);
        EXPECT_EQ(MemoryHost::openFiles(), 0);
    }

    const std::uint8_t* section(int index) const { return page_->sections[index]; }
    std::uint16_t word(std::size_t offset) const { return get16(section(0), offset); }

    TSObject* page_ = nullptr;
};

TEST_F(Upgrade, ASingleBytePageIsAHeaderOf4376BytesWithItsFieldsMovedAndItsOffsets0)
{
    OldCodePage old = OldCodePage::singleByte();
    for (int i = 0; i < 5; ++i)
        old.setOffset(i, 0x1111);
    expectGood(old);
    for (std::size_t offset = 0x110E; offset < kHeaderSize; offset += 2)
        EXPECT_EQ(word(offset), 0);
    EXPECT_EQ(page_->flags, TS_OBJ_SECTION1_HEAP);
    EXPECT_EQ(section(1), nullptr);
    EXPECT_EQ(MemoryHost::openViews(), 0);
}

TEST_F(Upgrade, ASingleBytePageKeepsTheMappedSection2ThatItHas)
{
    OldCodePage old = OldCodePage::singleByte();
    old.section2 = Bytes(6, 0);
    old.section2[0] = 1; // a leaf of the current form: an empty run
    old.section2[2] = 1;
    expectGood(old);
    EXPECT_EQ(page_->flags, TS_OBJ_SECTION1_HEAP);
    ASSERT_NE(section(1), nullptr);
    EXPECT_EQ(std::memcmp(section(1), old.section2.data(), 6), 0);
    EXPECT_EQ(MemoryHost::openViews(), 1);
}

TEST_F(Upgrade, AMultiBytePageHasItsExtensionBehindAGapOfAHeader)
{
    const OldCodePage old = OldCodePage::doubleByte();
    expectGood(old);
    EXPECT_EQ(page_->flags, TS_OBJ_SECTION1_HEAP | TS_OBJ_SECTION2_HEAP);
    EXPECT_EQ(word(0x110E), kExtension);
    EXPECT_EQ(word(0x1110), kExtension + 1024);
    EXPECT_EQ(word(0x1112), kExtension + 1032);
    EXPECT_EQ(word(0x1114), kExtension + 1036);
    EXPECT_TRUE(std::all_of(section(0) + kHeaderSize, section(0) + kExtension,
                            [](std::uint8_t byte) { return byte == 0; }));
    EXPECT_EQ(std::memcmp(section(0) + kExtension, old.extension.data(), old.extension.size()), 0);
    EXPECT_EQ(MemoryHost::openViews(), 0);
}

TEST_F(Upgrade, Section2HasNodesOfSixBytesAndItsValuesBehindTwiceTheirSize)
{
    const OldCodePage old = OldCodePage::doubleByte();
    expectGood(old);
    const Bytes nodes = {0, 0x00, 0, 255, 1, 0, 1, 0x03, 0, 255, 0, 0};
    EXPECT_EQ(Bytes(section(1), section(1) + 12), nodes);
    EXPECT_EQ(word(0x1116), 24);
    EXPECT_EQ(std::memcmp(section(1) + 24, old.section2.data() + 8, 8), 0);
}

TEST_F(Upgrade, AnOddNumberOfNodesIsRoundedUpInTheSecondTermAlone)
{
    OldCodePage old = OldCodePage::doubleByte();
    old.section2.insert(old.section2.begin() + 8, {1, 0, 0, 0});
    old.setOffset(4, 12);
    expectGood(old);
    EXPECT_EQ(word(0x1116), 18 + 20);
    EXPECT_EQ(std::memcmp(section(1) + 38, old.section2.data() + 12, 8), 0);
}

TEST_F(Upgrade, ARebuiltPageConvertsAndClassifies)
{
    expectGood(OldCodePage::doubleByte());
    for (TSChar32 trail = 0; trail < 4; ++trail) {
        const char bytes[] = {'\x81', static_cast<char>(0x40 + trail)};
        EXPECT_EQ(TSCpMbToUnicode(page_, bytes), 0x3000 + trail);
        EXPECT_EQ(TSCpWideToUnicode(page_, 0x8140 + trail), 0x3000 + trail);
        EXPECT_EQ(TSCpCharTypeRecord(page_, bytes)->type, 0x00080801u);
        EXPECT_EQ(TSCpCharTypeRecord(page_, bytes)->delta, 0x100u);
    }
}

TEST_F(Upgrade, AMultiBytePageWithoutSection2HasLeafTable0AndNoSection2)
{
    OldCodePage old = OldCodePage::doubleByte();
    old.section2.clear();
    expectGood(old);
    EXPECT_EQ(word(0x1116), 0);
    EXPECT_EQ(section(1), nullptr);
    EXPECT_EQ(page_->flags, TS_OBJ_SECTION1_HEAP);
}

TEST_F(Upgrade, Section3StaysMapped)
{
    OldCodePage old = OldCodePage::doubleByte();
    old.section3 = {'?', 'x'};
    expectGood(old);
    ASSERT_NE(section(2), nullptr);
    EXPECT_EQ(section(2)[1], 'x');
    EXPECT_EQ(MemoryHost::openViews(), 1);
}

TEST_F(Upgrade, OffsetsOfTheOlderFormMoveModulo16Bits)
{
    OldCodePage old = OldCodePage::doubleByte();
    old.setOffset(1, 0xFFFF);
    ASSERT_EQ(loadFrom(old.file()), TS_ERR_NONE);
    EXPECT_EQ(word(0x1110), (0xFFFF + kExtension - 4372) & 0xFFFF);
}

TEST_F(Upgrade, UnloadFreesTheRebuiltSectionsAndAFailureIs21)
{
    expectGood(OldCodePage::doubleByte());
    Allocator::failFree(Slot::kFreeObject, 1);
    EXPECT_EQ(TSUnloadObject(&manager(), page_), TS_ERR_FREE);
    left_.blocks = 1;
}

TEST_F(Upgrade, ASection1ShorterThanTheOlderHeaderIsRefused)
{
    for (const std::size_t size : {1u, 6u, 4371u}) {
        ObjectFile file;
        file.version = 0x10000000;
        file.sections = {OldCodePage::singleByte().section1()};
        file.sections[0].resize(size);
        expectRefused(file.bytes());
    }
}

TEST_F(Upgrade, AnEmptySection1IsRefused)
{
    ObjectFile file;
    file.version = 0x10000000;
    file.sections = {Bytes(), Bytes(8, 0)};
    expectRefused(file.bytes());
}

TEST_F(Upgrade, AnExtensionThatBeginsOutsideTheSectionIsRefused)
{
    OldCodePage old = OldCodePage::doubleByte();
    for (const std::uint32_t offset : {0u, 1u, 4371u, 4372u + 1045u, 0xFFFFu}) {
        old.setOffset(0, offset);
        expectRefused(old.file());
    }
}

TEST_F(Upgrade, AnEmptyExtensionAtTheEndOfTheSectionIsTaken)
{
    OldCodePage old = OldCodePage::doubleByte();
    old.setOffset(0, 4372 + 1044);
    EXPECT_EQ(loadFrom(old.file()), TS_ERR_NONE);
}

TEST_F(Upgrade, ASection1ThatOutgrows16BitsIsRefused)
{
    OldCodePage old = OldCodePage::doubleByte();
    const std::size_t largest = 65535 - kExtension;
    old.extension.resize(largest);
    EXPECT_EQ(loadFrom(old.file()), TS_ERR_NONE);
    old.extension.resize(largest + 1);
    expectRefused(old.file());
}

TEST_F(Upgrade, ALeafTableBehindSection2IsRefused)
{
    OldCodePage old = OldCodePage::doubleByte();
    for (const std::uint32_t offset : {17u, 1000u, 0xFFFFu}) {
        old.setOffset(4, offset);
        expectRefused(old.file());
    }
}

TEST_F(Upgrade, ASection2ThatOutgrows16BitsIsRefused)
{
    OldCodePage old = OldCodePage::doubleByte();
    old.section2.resize(24000, 0);
    old.setOffset(4, 24000); // 6,000 nodes of 12 bytes
    expectRefused(old.file());
    old.section2.resize(20000, 0);
    old.setOffset(4, 20000);
    EXPECT_EQ(loadFrom(old.file()), TS_ERR_NONE);
}

TEST_F(Upgrade, ATypeTrieThatLeadsOutsideStaysInsideMemory)
{
    OldCodePage old = OldCodePage::doubleByte();
    for (const std::uint32_t offset : {0u, 0x1000u, 0x8000u, 0xFFFFu}) {
        old.setOffset(2, offset);
        EXPECT_EQ(loadFrom(old.file()), TS_ERR_NONE);
        EXPECT_NE(TSCpCharTypeRecord(page_, "\x81\x40"), nullptr);
    }
}

TEST_F(Upgrade, WithoutMemoryItIs20InEachBlock)
{
    const Bytes file = OldCodePage::doubleByte().file();
    stopAll();
    putFile(objectFileName(TS_OBJ_CODEPAGE, kDouble), file);
    for (std::uint32_t n = 1; n <= 3; ++n) { // the file's record, section 1, section 2
        start();
        Allocator::failAllocation(Slot::kAllocate, n);
        std::int32_t code = 0;
        page_ = load(TS_OBJ_CODEPAGE, kDouble, code);
        EXPECT_FALSE(Allocator::failurePending());
        EXPECT_EQ(code, TS_ERR_MEMORY);
        EXPECT_EQ(page_->flags, TS_OBJ_BUILTIN);
        EXPECT_EQ(TSTerm(), 0);
        expectNothingLeft();
    }
}

TEST_F(Upgrade, AFileCutAtEveryLengthNeverLoads)
{
    const Bytes whole = OldCodePage::doubleByte().file();
    for (std::size_t size = 0; size < whole.size(); size += size < 80 ? 1 : 61)
        EXPECT_NE(loadFrom(Bytes(whole.begin(), whole.begin() + static_cast<long>(size))),
                  TS_ERR_NONE);
}

} // namespace
} // namespace vlx::test
