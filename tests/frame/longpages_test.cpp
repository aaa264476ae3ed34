// Pages of characters of several lengths, whose tries are not used in place: the characters that
// have a way through them keep it.
#include <algorithm>
#include <random>

#include "chars/codepage.hpp"
#include "frame/exercise.hpp"
#include "frame/store.hpp"

namespace vlx::test {
namespace {

// Writes zeros over the nodes that no character reaches.
void clearUnusedNodes(Bytes& section, std::size_t begin, std::size_t end, const Bytes& unused)
{
    for (std::size_t at = begin; at + unused.size() <= end; at += unused.size())
        if (std::equal(unused.begin(), unused.end(), section.begin() + static_cast<long>(at)))
            std::fill_n(section.begin() + static_cast<long>(at), unused.size(), std::uint8_t{0});
}

class LongPages : public StoreTest {
  protected:
    LongPages()
    {
        putDirectory();
        start();
    }

    // Loads a page's file and compares what the characters of a length say with what the page says
    // that was built.
    static void expectSame(const PageBuilder& page, const Bytes& file, std::size_t least)
    {
        putFile(objectFileName(TS_OBJ_CODEPAGE, page.object().id), file);
        TSObject object{};
        object.id = page.object().id;
        object.type = TS_OBJ_CODEPAGE;
        std::int32_t code = 0;
        ASSERT_NE(TSLoadObject(&manager(), &object, &code), nullptr);
        ASSERT_EQ(code, TS_ERR_NONE);
        for (const auto& [bytes, unicode] : page.decoded()) {
            if (bytes.size() < least)
                continue;
            TSChar32 packed = 0;
            char text[4] = {};
            for (std::size_t i = 0; i < bytes.size(); ++i) {
                text[i] = static_cast<char>(bytes[i]);
                packed = packed << 8 | bytes[i];
            }
            EXPECT_EQ(TSCpMbToUnicode(&object, text), unicode) << std::hex << packed;
            EXPECT_EQ(TSCpWideToUnicode(&object, packed), unicode) << std::hex << packed;
            const TSTypeRecord* const told = TSCpCharTypeRecord(&page.object(), text);
            const TSTypeRecord* const found = TSCpCharTypeRecord(&object, text);
            EXPECT_EQ(found->type, told->type) << std::hex << packed;
            EXPECT_EQ(found->delta, told->delta) << std::hex << packed;
            EXPECT_EQ(TSCpCharTypeRecordW(&object, packed)->type, told->type) << std::hex << packed;
        }
        EXPECT_TRUE(exercisePage(object));
        EXPECT_EQ(TSUnloadObject(&manager(), &object), 0);
    }
};

// A node of zeros leads back to the root, whatever follows it.
TEST_F(LongPages, NodesOfZerosThatNoCharacterReachesCostNoCharacter)
{
    PageBuilder page(PageShape::kFourByte);
    page.id(500).asciiHalf().lead(0x83, 2).lead(0x84, 3).lead(0x85, 4);
    const auto add = [&page](TSChar32 character, TSChar16 unicode) {
        page.map(character, unicode).type(character, 0x00080000u + unicode, unicode);
    };
    for (TSChar32 last = 0x40; last < 0x48; ++last) {
        add(0x8200 + last, static_cast<TSChar16>(0x4E00 + last));
        add(0x9000 + last, static_cast<TSChar16>(0x5000 + last));
        add(0x864200 + last, static_cast<TSChar16>(0x5100 + last));
        add(0x864500 + last, static_cast<TSChar16>(0x5200 + last));
        add(0x87424300 + last, static_cast<TSChar16>(0x5300 + last));
        add(0x87424600 + last, static_cast<TSChar16>(0x5400 + last));
        add(0x87484300 + last, static_cast<TSChar16>(0x5500 + last));
    }
    page.build();
    const TSCodePageHeader header = tsCodePage(&page.object());
    ObjectFile file;
    file.sections.assign(page.sections().begin(), page.sections().end());
    clearUnusedNodes(file.sections[0], header.typeTrieOffset, header.typeRecordsOffset,
                     {1, 0, 0, 0});
    clearUnusedNodes(file.sections[1], 0, header.leafTableOffset, {1, 0, 1, 0, 0, 0});
    EXPECT_NE(file.sections[0], page.sections()[0]);
    EXPECT_NE(file.sections[1], page.sections()[1]);
    ASSERT_NO_FATAL_FAILURE(expectSame(page, file.bytes(), 2));
}

// A narrow mask may take a shorter character to the node of a longer one.
TEST_F(LongPages, OfChanceKeepTheirLongestCharacters)
{
    std::mt19937_64 random(2);
    for (const PageShape shape : {PageShape::kThreeByte, PageShape::kFourByte})
        for (int i = 0; i < 200; ++i) {
            PageBuilder page = randomPage(random, shape);
            page.id(500).build();
            ASSERT_NO_FATAL_FAILURE(expectSame(page, codePageFile(page), longestCharacter(shape)))
                << i;
        }
}

} // namespace
} // namespace vlx::test
