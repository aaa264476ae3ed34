#include "chars/long_texts.hpp"

namespace vlx::test {

namespace {

LongPage finished(PageBuilder page)
{
    page.build();
    LongPage made{std::move(page), {}, {}, {}};
    const auto& decoded = made.page.decoded();
    for (const auto& [unicode, character] : made.page.encoded()) {
        const CharBytes bytes = bytesOf(character);
        if (unicode < 0x80 || (bytes.size() > 1 && !decoded.contains(bytes)))
            continue;
        made.characters.emplace_back(bytes.begin(), bytes.end());
        made.unicode.push_back(unicode);
    }
    return made;
}

PageBuilder latin()
{
    PageBuilder page(PageShape::kSingleByte);
    page.asciiHalf();
    for (TSChar16 i = 0; i < 0x20; ++i)
        page.map(0x80u + i, static_cast<TSChar16>(0x2010 + i));
    for (TSChar16 byte = 0xA0; byte < 0x100; ++byte)
        page.map(byte, byte);
    for (int upper = 0xC0; upper < 0xDE; ++upper)
        page.casePair(static_cast<std::uint8_t>(upper), static_cast<std::uint8_t>(upper + 0x20));
    return page;
}

PageBuilder cyrillic()
{
    PageBuilder page(PageShape::kSingleByte);
    page.asciiHalf();
    for (TSChar16 i = 0; i < 0x80; ++i)
        page.map(0x80u + i, static_cast<TSChar16>(0x0400 + i));
    return page;
}

// Characters with the Unicode values from `first` on: `count` from each of some packed values.
PageBuilder multi(PageShape shape, const std::vector<TSChar32>& begins, int count, TSChar16 first)
{
    PageBuilder page(shape);
    page.asciiHalf();
    for (const TSChar32 begin : begins)
        for (int i = 0; i < count; ++i)
            page.map(begin + static_cast<TSChar32>(i), first++);
    return page;
}

PageBuilder doubleByte()
{
    PageBuilder page = multi(PageShape::kDoubleByte, {0x8140, 0x8340, 0x88A0}, 0x30, 0x3000);
    for (TSChar16 i = 0; i < 0x20; ++i)
        page.map(0xB0u + i, static_cast<TSChar16>(0xFF70 + i));
    page.id(932);
    return page;
}

PageBuilder withoutAscii()
{
    PageBuilder page(PageShape::kStateful2);
    page.ebcdic().substitute(0x6F);
    for (TSChar32 byte = 0x40; byte < 0xFF; ++byte)
        page.map(byte, static_cast<TSChar16>(0x20 + (byte * 7) % 0xBF));
    for (TSChar32 i = 0; i < 0x60; ++i)
        page.map(0x4341 + i, static_cast<TSChar16>(0x3041 + i));
    return page;
}

PageBuilder utf8(bool odd)
{
    PageBuilder page(PageShape::kUtf8);
    for (const int first : {0xA0, 0x3041, 0x4E00, 0xFF01})
        for (int i = 0; i < 0x20; ++i) {
            const auto unicode = static_cast<TSChar16>(first + i);
            const TSChar32 value = unicode;
            page.map(value <= 0x7FF
                         ? 0xC080 | (value & 0x7C0) << 2 | (value & 0x3F)
                         : 0xE08080 | (value & 0xF000) << 4 | (value & 0xFC0) << 2 | (value & 0x3F),
                     unicode);
        }
    if (odd) // the rule reads two bytes of these, too
        page.lead(0xC8, 3).lead(0xF0, 4);
    return page;
}

bool isShift(const PageBuilder& page, unsigned byte)
{
    return isStateful(page.shape()) && (byte == page.shiftIn() || byte == page.shiftOut());
}

class Writer {
  public:
    Writer(Random& random, const LongPage& on, std::int32_t state)
        : random_(random), on_(on), state_(state)
    {
    }

    void addAscii(std::int32_t count)
    {
        for (; count > 0; --count) {
            const auto byte = static_cast<unsigned char>(pick(random_, 0x20, 0x7E));
            if (isShift(on_.page, byte))
                continue;
            enter(0);
            text.push_back(byte);
        }
    }

    void addOthers(std::int32_t count)
    {
        for (; count > 0; --count) {
            const oracle::Bytes& character = on_.characters[random_() % on_.characters.size()];
            enter(character.size() > 1);
            text.insert(text.end(), character.begin(), character.end());
        }
    }

    void addBroken() { text.push_back(static_cast<unsigned char>(random_())); }

    oracle::Bytes text;

  private:
    void enter(std::int32_t state)
    {
        if (!isStateful(on_.page.shape()) || state == state_)
            return;
        text.push_back(state ? on_.page.shiftIn() : on_.page.shiftOut());
        state_ = state;
    }

    Random& random_;
    const LongPage& on_;
    std::int32_t state_;
};

} // namespace

std::vector<LongPage>& longPages()
{
    static std::vector<LongPage> pages = [] {
        std::vector<LongPage> made;
        made.push_back(finished(latin()));
        made.push_back(finished(cyrillic()));
        made.push_back(finished(doubleByte()));
        made.push_back(
            finished(multi(PageShape::kThreeByte, {0x8140, 0x9041, 0xA14142}, 0x20, 0x4E00)));
        made.push_back(
            finished(multi(PageShape::kFourByte, {0x8140, 0x90414243, 0xA1414240}, 0x20, 0x4E00)));
        made.push_back(finished(multi(PageShape::kStateful2, {0x4341, 0x4541}, 0x30, 0x3041)));
        made.push_back(finished(withoutAscii()));
        made.push_back(finished(utf8(false)));
        made.push_back(finished(utf8(true)));
        for (LongPage& page : made)
            page.reference = oracleLocale(page.page);
        return made;
    }();
    return pages;
}

oracle::Bytes longText(Random& random, const LongPage& on, std::int32_t state, std::int32_t size)
{
    Writer writer(random, on, state);
    const bool isClean = random() % 2 == 0;
    while (std::ssize(writer.text) < size) {
        switch (random() % 8) {
        case 0:
            writer.addOthers(pick(random, 1, 24));
            break;
        case 1:
        case 2:
            writer.addAscii(pick(random, 1, 70));
            break;
        case 3:
            if (!isClean)
                writer.addBroken();
            break;
        case 4:
            writer.addAscii(1);
            break;
        case 5:
            writer.addAscii(16);
            break;
        default:
            writer.addOthers(pick(random, 1, 2));
        }
    }
    writer.text.resize(static_cast<std::size_t>(size));
    if (random() % 2 == 0)
        writer.text.push_back(0);
    return writer.text;
}

std::vector<TSChar16> longUnits(Random& random, const LongPage& on, std::int32_t count)
{
    std::vector<TSChar16> units;
    while (std::ssize(units) < count) {
        const std::uint64_t kind = random() % 8;
        for (std::int32_t run = pick(random, 1, 40); run > 0; --run) {
            if (kind < 3)
                units.push_back(static_cast<TSChar16>(pick(random, 1, 0x7F)));
            else if (kind < 5)
                units.push_back(static_cast<TSChar16>(pick(random, 0x80, 0x17F)));
            else if (kind < 7)
                units.push_back(on.unicode[random() % on.unicode.size()]);
            else
                units.push_back(static_cast<TSChar16>(random() | 1));
            if (random() % 16 == 0)
                units.push_back(on.unicode[random() % on.unicode.size()]);
        }
    }
    units.resize(static_cast<std::size_t>(count));
    if (random() % 2 == 0)
        units.push_back(0);
    return units;
}

} // namespace vlx::test
