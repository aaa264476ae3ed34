// The conversion tables of a code page object, taken out of it once for many characters.
#pragma once

#include <cstdint>

#include "chars/codepage.hpp"

namespace vlx {

// The way from multi-byte characters to Unicode, by the trie of section 2.
class UnicodeTrie {
  public:
    explicit UnicodeTrie(const TSObject* object)
        : nodes_(reinterpret_cast<const TSUnicodeNode*>(object->sections[1])),
          values_(nodes_ ? reinterpret_cast<const Le16*>(object->sections[1] +
                                                         tsCodePage(object).leafTableOffset)
                         : nullptr),
          // A single-byte page has no trie: no value above 255 is a character.
          root_(nodes_ ? *nodes_ : TSUnicodeNode{1, 0, 1, 0, std::uint16_t{0}}),
          limits_(object->flags & TS_OBJ_SECTION2_HEAP ? &tsCodePage(object) : nullptr),
          mayBePair_(!root_.isLeaf && !limits_)
    {
    }

    TSChar16 value(const char* character) const
    {
        const auto* const at = reinterpret_cast<const std::uint8_t*>(character);
        if (!accepts(root_, *at))
            return kNoUnicode;
        return limits_ ? walk(at, Limit{walkLength(*limits_, *at)}) : walk(at, NoLimit{});
    }

    // value() of two bytes, which in most pages end at the second.
    TSChar16 pair(const char* character) const
    {
        const auto* const at = reinterpret_cast<const std::uint8_t*>(character);
        if (!mayBePair_ || !accepts(root_, at[0]))
            return value(character);
        const TSUnicodeNode& node = nodes_[root_.base + (at[0] & root_.mask)];
        if (!node.isLeaf || !accepts(node, at[1]))
            return value(character);
        return values_[node.base + (at[1] & node.mask)];
    }

  private:
    // How many bytes a walk may use.
    struct Limit {
        int left;
        bool ends() { return --left == 0; }
    };
    struct NoLimit {
        static bool ends() { return false; }
    };

    template <class Bytes>
    TSChar16 walk(const std::uint8_t* at, Bytes bytes) const
    {
        unsigned index = root_.base + (*at & root_.mask);
        for (bool isLeaf = root_.isLeaf; !isLeaf;) {
            if (bytes.ends())
                return kNoUnicode;
            const TSUnicodeNode& node = nodes_[index];
            if (!accepts(node, *++at))
                return kNoUnicode;
            index = node.base + (*at & node.mask);
            isLeaf = node.isLeaf;
        }
        // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): the object has this section
        return values_[index];
    }

    static bool accepts(const TSUnicodeNode& node, std::uint8_t byte)
    {
        return byte >= node.low && byte <= node.high;
    }

    const TSUnicodeNode* const nodes_;
    const Le16* const values_;
    const TSUnicodeNode root_;
    // Of a trie that may lead further than a character goes; null where it is used in place.
    const TSCodePageHeader* const limits_;
    const bool mayBePair_;
};

// The way back: from Unicode values to packed ones.
class UnicodePages {
  public:
    explicit UnicodePages(const TSObject* object)
        : pages_(tsCodePage(object).unicodePages), low_(object->sections[2]),
          high_(object->sections[3]), substitute_(tsCodePage(object).substChar)
    {
    }

    TSChar32 packed(TSChar16 value) const
    {
        const TSUnicodePage& page = pages_[value >> 8];
        const auto low = static_cast<std::uint8_t>(value);
        if (low < page.low || low > page.high)
            return substitute_;
        const unsigned index = low & page.mask;
        if (page.kind == kPageWord)
            return word(low_, page.offset3, index);
        if (page.kind == kPageByte)
            return low_[page.offset3 + index];
        return longValue(page, index);
    }

  private:
    static TSChar32 word(const std::uint8_t* section, unsigned offset, unsigned index)
    {
        return reinterpret_cast<const Le16*>(section + offset)[index];
    }

    TSChar32 longValue(const TSUnicodePage& page, unsigned index) const
    {
        switch (page.kind) {
        case kPageWordByte:
            return TSChar32{high_[page.offset4 + index]} << 16 | word(low_, page.offset3, index);
        case kPageWordWord:
            return word(high_, page.offset4, index) << 16 | word(low_, page.offset3, index);
        default: // kPageByteByte, the last kind that passes the check at load
            return TSChar32{high_[page.offset4 + index]} << 8 | low_[page.offset3 + index];
        }
    }

    const TSUnicodePage* const pages_;
    const std::uint8_t* const low_;
    const std::uint8_t* const high_;
    const std::uint8_t substitute_;
};

// UTF-8 by rule.
//
// Deliberate: no test of the continuation bytes or of the shortest form.
inline TSChar16 utf8Pair(const char* lead)
{
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(lead);
    return static_cast<TSChar16>((bytes[0] & 0x1F) << 6 | (bytes[1] & 0x3F));
}
inline TSChar16 utf8Triple(const char* lead)
{
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(lead);
    return static_cast<TSChar16>((bytes[0] & 0x0F) << 12 | (bytes[1] & 0x3F) << 6 |
                                 (bytes[2] & 0x3F));
}
inline TSChar16 utf8ToUnicode(const char* lead)
{
    return static_cast<std::uint8_t>(*lead) >= 0xE0 ? utf8Triple(lead) : utf8Pair(lead);
}

inline TSChar32 unicodeToUtf8(TSChar16 unicode)
{
    const TSChar32 value = unicode;
    if (value <= 0x7F)
        return value;
    if (value <= 0x7FF)
        return (value & 0x7C0) * 4 | (value & 0x3F) | 0xC080;
    return (value & 0xF000) * 16 | (value & 0xFC0) * 4 | (value & 0x3F) | 0xE08080;
}

} // namespace vlx
