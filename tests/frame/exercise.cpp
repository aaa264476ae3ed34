#include "frame/exercise.hpp"

#include <array>
#include <cstring>
#include <memory>

#include <gtest/gtest.h>

#include "chars/codepage.hpp"

namespace vlx::test {

namespace {

constexpr int kLongest = 4;
constexpr std::uint32_t kContentBlock = 0xFFFF; // of a content that was copied

// What the primitives say about one character; the same for the same bytes, whatever stands behind
// them.
class Answers {
  public:
    void note(std::uint32_t answer) { answers_.at(count_++) = answer; }
    void note(const TSTypeRecord* record)
    {
        note(record->type);
        note(record->delta);
    }
    void note(const char* bytes, std::int32_t count)
    {
        for (std::int32_t i = 0; i < count; ++i)
            note(std::uint32_t{static_cast<std::uint8_t>(bytes[i])});
    }
    bool operator==(const Answers&) const = default;

  private:
    std::array<std::uint32_t, 16> answers_{};
    std::size_t count_ = 0;
};

// Blocks of exactly one to four bytes, so that the address sanitizer sees every byte behind them.
char* exactRoom(int size)
{
    static const auto rooms = [] {
        std::array<std::unique_ptr<char[]>, kLongest + 1> made;
        for (std::size_t i = 0; i < made.size(); ++i)
            made[i].reset(new char[i]());
        return made;
    }();
    return rooms[static_cast<std::size_t>(size)].get();
}

char* outputRoom()
{
    static const std::unique_ptr<char[]> room(new char[kLongest]());
    std::memset(room.get(), 0, kLongest);
    return room.get();
}

// A character of plain text, its length by its first byte.
Answers plainAnswers(const TSObject& page, const char* text, int length)
{
    Answers answers;
    answers.note(TSCpGetWide(&page, text));
    if (length < 2)
        return answers;
    answers.note(std::uint32_t{TSCpMbToUnicode(&page, text)});
    answers.note(TSCpCharTypeRecord(&page, text));
    for (const std::uint32_t mapping : {0u, ~0u}) {
        char* const output = outputRoom();
        TSCpMapChar(&page, text, output, mapping);
        answers.note(output, kLongest);
    }
    return answers;
}

// A character of the multi-byte state.
Answers shiftedAnswers(const TSObject& page, const char* text, int length)
{
    Answers answers;
    answers.note(TSCpGetWideEx(&page, text, 1));
    if (length >= 2)
        answers.note(std::uint32_t{TSCpMbToUnicode(&page, text)});
    answers.note(TSCpCharTypeRecord(&page, text));
    for (const std::uint32_t mapping : {0u, ~0u}) {
        char* const output = outputRoom();
        answers.note(output, TSCpMapCharEx(&page, text, output, mapping));
    }
    return answers;
}

using Reader = Answers (*)(const TSObject&, const char*, int);

// Reads a character with other bytes behind it, and then with none at all.
bool readsOnlyTheCharacter(const TSObject& page, Reader read, const std::uint8_t* bytes, int length)
{
    char text[2 * kLongest];
    std::memcpy(text, bytes, static_cast<std::size_t>(length));
    std::memset(text + length, 0, kLongest);
    const Answers expected = read(page, text, length);
    std::memset(text + length, 0x41, kLongest);
    if (read(page, text, length) != expected)
        return false;
    char* const exact = exactRoom(length);
    std::memcpy(exact, bytes, static_cast<std::size_t>(length));
    return read(page, exact, length) == expected;
}

bool exerciseCharacters(const TSObject& page)
{
    const TSCodePageHeader& header = tsCodePage(&page);
    const bool stateful = (header.cpFlags & kStateful) != 0;
    for (int lead = 0; lead < 256; ++lead) {
        const int length = header.charLength[lead];
        if (length < 1 || length > kLongest || header.maxCharBytes < 1 ||
            header.maxCharBytes > kLongest) {
            ADD_FAILURE() << "a character of " << length << " bytes";
            return false;
        }
        for (const std::uint8_t trail :
             {std::uint8_t{0x00}, std::uint8_t{0x42}, std::uint8_t{0xFF}}) {
            const std::uint8_t bytes[kLongest] = {static_cast<std::uint8_t>(lead), trail, trail,
                                                  trail};
            if (!readsOnlyTheCharacter(page, plainAnswers, bytes, length)) {
                ADD_FAILURE() << "plain text is read behind a character of " << length
                              << " bytes with lead " << lead;
                return false;
            }
            if (stateful &&
                !readsOnlyTheCharacter(page, shiftedAnswers, bytes, header.maxCharBytes)) {
                ADD_FAILURE() << "shifted text is read behind a character of "
                              << int{header.maxCharBytes} << " bytes with lead " << lead;
                return false;
            }
        }
    }
    return true;
}

bool exerciseUnicode(const TSObject& page)
{
    const TSCodePageHeader& header = tsCodePage(&page);
    std::unique_ptr<char[]> output(new char[kLongest]);
    for (unsigned high = 0; high < 256; ++high) {
        const TSUnicodePage& run = header.unicodePages[high];
        for (const unsigned low : {0u, 0x55u, 0xFFu, unsigned{run.low}, unsigned{run.high},
                                   run.low - 1u, run.high + 1u}) {
            const auto unicode = static_cast<TSChar16>(high << 8 | (low & 0xFF));
            const TSChar32 packed = TSCpUnicodeToWide(&page, unicode);
            const std::int32_t count = TSCpUnicodeToMb(&page, unicode, output.get());
            char expected[kLongest];
            if (count < 1 || count > kLongest || count != TSCpPutWide(expected, packed) ||
                std::memcmp(expected, output.get(), static_cast<std::size_t>(count)) != 0) {
                ADD_FAILURE() << "U+" << std::hex << unicode << " is " << packed;
                return false;
            }
        }
    }
    return true;
}

void exercisePacked(const TSObject& page)
{
    constexpr TSChar32 values[] = {0x100,      0x4242,     0x8140,     0xFFFF,
                                   0x814042,   0xFFFFFF,   0x81404243, 0xFFFFFFFF,
                                   0x01000000, 0x00010001, 0x80000000, 0x9F424242};
    for (const TSChar32 value : values) {
        TSCpWideToUnicode(&page, value);
        const TSTypeRecord* const record = TSCpCharTypeRecordW(&page, value);
        EXPECT_EQ(TSCpMapCharW(&page, value, 0), value);
        EXPECT_EQ(TSCpMapCharW(&page, value, ~0u),
                  record->type != 0 ? value + record->delta : value);
    }
}

// The count of bytes has no end test: the text is long enough for the longest characters.
bool exerciseCounting(const TSObject& page)
{
    constexpr std::int32_t kCount = 8;
    constexpr std::size_t kRoom = kCount * (kLongest + 2) + 1;
    const std::unique_ptr<char[]> text(new char[kRoom]);
    for (const int fill : {0x00, 0x0E, 0x42, 0x81, 0xFF}) {
        std::memset(text.get(), fill, kRoom);
        const std::int32_t bytes = TSCpCharsToBytes(&page, text.get(), 1, kCount);
        if (bytes < kCount || bytes >= static_cast<std::int32_t>(kRoom)) {
            ADD_FAILURE() << kCount << " characters are " << bytes << " bytes";
            return false;
        }
    }
    return true;
}

// The map tables, all of their bytes; volatile, so that every one is read.
void exerciseMaps(const TSObject& page)
{
    const TSCodePageHeader& header = tsCodePage(&page);
    const volatile std::uint8_t* const section = page.sections[0];
    for (std::size_t i = 0; i < 256 * sizeof(Le32); ++i)
        static_cast<void>(section[header.mapValuesOffset + i]);
    for (std::size_t i = 0; i < header.mapPairCount * sizeof(TSMapPair); ++i)
        static_cast<void>(section[header.mapPairsOffset + i]);
}

// True if a text of 16-bit units ends before the size.
bool endsInside(const std::uint8_t* content, std::uint32_t size, std::uint32_t offset)
{
    for (; offset + 2 <= size; offset += 2)
        if (get16(content, offset) == 0)
            return true;
    return false;
}

} // namespace

bool exercisePage(const TSObject& page)
{
    exercisePacked(page);
    exerciseMaps(page);
    return exerciseCharacters(page) && exerciseUnicode(page) && exerciseCounting(page);
}

bool exerciseLanguage(const std::uint8_t* content, std::uint32_t size)
{
    if (size < LanguageContent::kHeaderSize)
        return false;
    for (std::size_t i = 0; i < LanguageContent::kTexts; ++i)
        if (!endsInside(content, size, get16(content, 2 * (LanguageContent::kFirstTextWord + i))))
            return false;
    return get16(content, 98) + 8u * get16(content, 6) <= size &&
           get16(content, 100) + 8u * get16(content, 8) <= size;
}

// The texts stand in the order of their words, each ended by the next one's begin.
bool exerciseTerritory(const std::uint8_t* content, std::uint32_t size)
{
    if (size < TerritoryContent::kHeaderSize)
        return false;
    for (std::size_t i = 0; i < TerritoryContent::kTexts; ++i) {
        const std::size_t word = 2 * (TerritoryContent::kFirstTextWord + i);
        const std::uint32_t begin = get16(content, word);
        const std::uint32_t end = get16(content, word + 2);
        if (end > size || end < begin + 2 || (end - begin) % 2 != 0 || get16(content, end - 2) != 0)
            return false;
    }
    return true;
}

std::uint32_t contentSize(const TSObject& object, const Bytes& file)
{
    return object.flags & TS_OBJ_SECTION1_HEAP ? kContentBlock : get16(file.data(), 10);
}

} // namespace vlx::test
