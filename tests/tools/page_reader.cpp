#include "page_reader.hpp"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

constexpr int kUtf8 = 57352;
constexpr std::uint16_t kNone = 0xFFFD;

} // namespace

PageReader::PageReader(const std::string& path, int id) : sections_(5), id_(id)
{
    std::ifstream in(path, std::ios::binary);
    sections_[0].assign(std::istreambuf_iterator<char>(in), {});
    if (dword(0, 0) != 0x5A3C9E17)
        throw std::runtime_error(path + " is no object file");
    const std::size_t sizeAt[] = {10, 16, 24, 32};
    const std::size_t offsetAt[] = {12, 20, 28, 36};
    for (std::size_t i = 0; i < word(0, 8); ++i)
        for (std::size_t at = 0; at < word(0, sizeAt[i]); ++at)
            sections_[i + 1].push_back(byte(0, dword(0, offsetAt[i]) + at));
}

PageReader::Bytes PageReader::bytesOf(std::uint32_t character)
{
    Bytes bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        if (const auto one = static_cast<std::uint8_t>(character >> shift);
            one != 0 || shift == 0 || !bytes.empty())
            bytes.push_back(one);
    return bytes;
}

std::uint16_t PageReader::decode(std::uint32_t character) const
{
    if (character < 0x100)
        return word(1, 0x30A + 2 * character);
    const Bytes bytes = bytesOf(character);
    if (id_ == kUtf8 && bytes[0] >= 0xE0)
        return static_cast<std::uint16_t>((bytes.at(0) & 0x0F) << 12 | (bytes.at(1) & 0x3F) << 6 |
                                          (bytes.at(2) & 0x3F));
    if (id_ == kUtf8)
        return static_cast<std::uint16_t>((bytes.at(0) & 0x1F) << 6 | (bytes.at(1) & 0x3F));
    std::size_t node = 0;
    for (const std::uint8_t at : bytes) {
        if (at < byte(2, node + 2) || at > byte(2, node + 3))
            return kNone;
        const std::size_t next =
            word(2, node + 4) + static_cast<std::size_t>(at & byte(2, node + 1));
        if (byte(2, node) != 0)
            return word(2, word(1, 0x1116) + 2 * next);
        node = 6 * next;
    }
    throw std::runtime_error("no leaf within the character");
}

std::uint32_t PageReader::encode(std::uint16_t value) const
{
    const std::uint32_t v = value;
    if (id_ == kUtf8) {
        if (v < 0x80)
            return v;
        if (v < 0x800)
            return (v & 0x7C0) * 4 | (v & 0x3F) | 0xC080;
        return (v & 0xF000) * 16 | (v & 0xFC0) * 4 | (v & 0x3F) | 0xE08080;
    }
    const std::size_t entry = 0x90C + 8 * (v >> 8);
    const std::uint32_t low = v & 0xFF;
    if (low < byte(1, entry + 2) || low > byte(1, entry + 3))
        return substitution();
    const std::size_t index = low & byte(1, entry + 1);
    const std::size_t at3 = word(1, entry + 4);
    const std::size_t at4 = word(1, entry + 6);
    switch (byte(1, entry)) {
    case 0:
        return byte(3, at3 + index);
    case 1:
        return word(3, at3 + 2 * index);
    case 2:
        return static_cast<std::uint32_t>(byte(4, at4 + index)) << 16 | word(3, at3 + 2 * index);
    case 3:
        return static_cast<std::uint32_t>(word(4, at4 + 2 * index)) << 16 |
               word(3, at3 + 2 * index);
    case 4:
        return static_cast<std::uint32_t>(byte(4, at4 + index)) << 8 | byte(3, at3 + index);
    default:
        throw std::runtime_error("a page of an unknown kind");
    }
}

PageReader::TypeRecord PageReader::record(std::uint32_t character) const
{
    std::size_t node = word(1, 0x1112);
    for (const std::uint8_t at : bytesOf(character)) {
        const std::size_t next =
            word(1, node + 2) + static_cast<std::size_t>(at & byte(1, node + 1));
        if (byte(1, node) != 0) {
            const std::size_t record = word(1, 0x1114) + 8 * next;
            return {dword(1, record), dword(1, record + 4)};
        }
        node = word(1, 0x1112) + 4 * next;
    }
    throw std::runtime_error("no type record within the character");
}

std::uint32_t PageReader::mapValue(std::uint32_t character) const
{
    if (character < 0x100)
        return dword(1, word(1, 0x110E) + 4 * character);
    for (std::size_t i = 0; i < word(1, 6); ++i)
        if (dword(1, word(1, 0x1110) + 8 * i) == character)
            return dword(1, word(1, 0x1110) + 8 * i + 4);
    return 0;
}

std::map<std::uint32_t, std::uint16_t> PageReader::allDecoded() const
{
    std::map<std::uint32_t, std::uint16_t> found;
    for (std::uint32_t character = 0; character < 0x1000000; ++character) {
        const Bytes bytes = bytesOf(character);
        const bool multi = bytes.size() > 1;
        const int wanted = !stateful() ? length(bytes[0]) : multi ? maxBytes() : 1;
        if (static_cast<int>(bytes.size()) != wanted) {
            // The rest of a first byte of another length, all at once.
            if (bytes.size() == 3)
                character |= 0xFFFF;
            continue;
        }
        if (const std::uint16_t value = decode(character); value != kNone)
            found.emplace(character, value);
    }
    return found;
}

std::map<std::uint16_t, std::uint32_t> PageReader::allEncoded() const
{
    std::map<std::uint16_t, std::uint32_t> found;
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        const auto value16 = static_cast<std::uint16_t>(value);
        const std::uint32_t character = encode(value16);
        if (character != substitution() || decode(character) == value16)
            found.emplace(value16, character);
    }
    return found;
}
