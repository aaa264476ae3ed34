#include "support/page_builder.hpp"

#include <cstring>
#include <stdexcept>

namespace vlx::test {

namespace {

constexpr int kByteValues = 256;

} // namespace

bool isStateful(PageShape shape)
{
    return shape == PageShape::kStateful2 || shape == PageShape::kStateful3 ||
           shape == PageShape::kStatefulHigh;
}

std::uint8_t longestCharacter(PageShape shape)
{
    switch (shape) {
    case PageShape::kSingleByte:
        return 1;
    case PageShape::kDoubleByte:
    case PageShape::kStateful2:
    case PageShape::kStatefulHigh:
        return 2;
    case PageShape::kThreeByte:
    case PageShape::kStateful3:
    case PageShape::kUtf8:
        return 3;
    case PageShape::kFourByte:
        break;
    }
    return 4;
}

CharBytes bytesOf(TSChar32 character)
{
    CharBytes bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto byte = static_cast<std::uint8_t>(character >> shift);
        if (byte == 0 && !bytes.empty())
            throw std::invalid_argument("a character has no zero byte inside");
        if (byte != 0 || shift == 0)
            bytes.push_back(byte);
    }
    return bytes;
}

PageBuilder::PageBuilder(PageShape shape) : shape_(shape)
{
    header_.substChar = '?';
    header_.maxCharBytes = longestCharacter(shape);
    header_.cpFlags =
        static_cast<std::uint16_t>(kAsciiFamily | (test::isStateful(shape) ? kStateful : 0));
    lineEnds('\n', '\r', '\n', '\n');
    for (int byte = 0; byte < kByteValues; ++byte) {
        header_.charLength[byte] = 1;
        header_.toUpper[byte] = header_.toLower[byte] = static_cast<std::uint8_t>(byte);
        header_.toUnicode[byte] = kNoUnicode;
    }
    if (shape == PageShape::kStatefulHigh)
        shifts(0x8E, 0x8F);
    else if (test::isStateful(shape))
        shifts(0x0E, 0x0F);
    object_.id = 900;
    object_.type = TS_OBJ_CODEPAGE;
    std::memcpy(object_.name, "Built", sizeof "Built");
    if (shape == PageShape::kUtf8) {
        id(kUtf8CodePage).asciiHalf();
        for (int byte = 0xC0; byte < 0xF0; ++byte)
            lead(static_cast<std::uint8_t>(byte), byte < 0xE0 ? 2 : 3);
    }
}

PageBuilder& PageBuilder::id(std::uint16_t value)
{
    object_.id = value;
    return *this;
}

PageBuilder& PageBuilder::ebcdic()
{
    header_.cpFlags = static_cast<std::uint16_t>(header_.cpFlags & ~kAsciiFamily);
    return *this;
}

PageBuilder& PageBuilder::shifts(std::uint8_t in, std::uint8_t out)
{
    header_.shiftIn = in;
    header_.shiftOut = out;
    return *this;
}

PageBuilder& PageBuilder::substitute(std::uint8_t byte)
{
    header_.substChar = byte;
    return *this;
}

PageBuilder& PageBuilder::lineEnds(std::uint8_t lineFeed, std::uint8_t carriageReturn,
                                   std::uint8_t third, std::uint8_t fourth)
{
    header_.lineFeedChar = lineFeed;
    header_.carriageReturnChar = carriageReturn;
    header_.lineEnd3Char = third;
    header_.lineEnd4Char = fourth;
    return *this;
}

PageBuilder& PageBuilder::lead(std::uint8_t byte, std::uint8_t length)
{
    header_.charLength[byte] = length;
    return *this;
}

PageBuilder& PageBuilder::asciiHalf()
{
    for (int byte = 0; byte < 0x80; ++byte)
        map(static_cast<TSChar32>(byte), static_cast<TSChar16>(byte));
    for (int letter = 'A'; letter <= 'Z'; ++letter)
        casePair(static_cast<std::uint8_t>(letter), static_cast<std::uint8_t>(letter + 0x20));
    return *this;
}

PageBuilder& PageBuilder::map(TSChar32 character, TSChar16 unicode)
{
    return decodeOnly(character, unicode).encodeOnly(unicode, character);
}

PageBuilder& PageBuilder::decodeOnly(TSChar32 character, TSChar16 unicode)
{
    const CharBytes bytes = bytesOf(character);
    if (bytes.size() == 1) {
        header_.toUnicode[bytes[0]] = unicode;
        return *this;
    }
    decode_[bytes] = unicode;
    return test::isStateful(shape_) ? *this
                                    : lead(bytes[0], static_cast<std::uint8_t>(bytes.size()));
}

PageBuilder& PageBuilder::encodeOnly(TSChar16 unicode, TSChar32 character)
{
    encode_[unicode] = character;
    return *this;
}

PageBuilder& PageBuilder::type(TSChar32 character, std::uint32_t type, std::uint32_t delta)
{
    const CharBytes bytes = bytesOf(character);
    if (bytes.size() == 1)
        header_.charType[bytes[0]] = type;
    else
        types_[bytes] = {type, delta};
    return *this;
}

PageBuilder& PageBuilder::typeOfPrefix(TSChar32 prefix, std::uint32_t type, std::uint32_t delta)
{
    types_[bytesOf(prefix)] = {type, delta};
    return *this;
}

PageBuilder& PageBuilder::casePair(std::uint8_t upper, std::uint8_t lower)
{
    header_.toLower[upper] = lower;
    header_.toUpper[lower] = upper;
    return *this;
}

PageBuilder& PageBuilder::mapValue(TSChar32 character, std::uint32_t value)
{
    if (character < kByteValues)
        mapValues_[character] = value;
    else
        mapPairs_[character] = value;
    return *this;
}

PageBuilder& PageBuilder::pageKind(std::uint8_t highByte, PageKind kind)
{
    kinds_[highByte] = kind;
    return *this;
}

PageBuilder& PageBuilder::narrow()
{
    narrow_ = true;
    return *this;
}

PageBuilder& PageBuilder::randomLayout(std::uint64_t seed)
{
    layout_.emplace(seed);
    return *this;
}

} // namespace vlx::test
