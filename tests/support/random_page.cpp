// Valid pages by chance.
#include <utility>

#include "support/page_builder.hpp"

namespace vlx::test {

namespace {

class RandomPage {
  public:
    RandomPage(std::mt19937_64& random, PageShape shape)
        : random_(random), page_(shape), stateful_(isStateful(shape)),
          longest_(longestCharacter(shape))
    {
        for (std::uint32_t& high : highBytes_)
            high = below(256);
        highBytes_[0] = 0;
    }

    PageBuilder make()
    {
        page_.randomLayout(random_()).substitute(static_cast<std::uint8_t>(1 + below(255)));
        if (below(2) == 0)
            page_.ebcdic();
        if (stateful_)
            chooseShifts();
        if (page_.shape() == PageShape::kUtf8)
            addUtf8Characters();
        else if (longest_ > 1)
            addLongCharacters();
        addBytes();
        page_.build();
        return std::move(page_);
    }

  private:
    static constexpr std::uint32_t kHighBytes = 6;

    std::uint32_t word() { return static_cast<std::uint32_t>(random_()); }
    std::uint32_t below(std::uint32_t limit)
    {
        return static_cast<std::uint32_t>(random_() % limit);
    }
    std::uint8_t byteFrom(std::uint32_t first, std::uint32_t count)
    {
        return static_cast<std::uint8_t>(first + below(count));
    }

    // Characters share few high bytes, so that the pages of Unicode have thin and dense runs.
    TSChar16 unicode()
    {
        const std::uint32_t high = highBytes_[below(kHighBytes)];
        const std::uint32_t value = high << 8 | below(256);
        return static_cast<TSChar16>(value == kNoUnicode ? 0x20 : value);
    }

    // The lowest byte above the others is chosen often, since it is where the sign begins.
    std::uint8_t shiftByte()
    {
        if (page_.shape() != PageShape::kStatefulHigh)
            return byteFrom(1, 0x7F);
        return below(4) == 0 ? 0x80 : byteFrom(0x80, 0x80);
    }

    void chooseShifts()
    {
        const std::uint8_t in = shiftByte();
        std::uint8_t out = shiftByte();
        while (out == in)
            out = shiftByte();
        page_.shifts(in, out);
    }

    bool isShift(std::uint32_t byte) const
    {
        return stateful_ && (byte == page_.shiftIn() || byte == page_.shiftOut());
    }

    // A byte of a longer character.
    std::uint32_t part()
    {
        std::uint32_t byte = byteFrom(1, 255);
        while (isShift(byte))
            byte = byteFrom(1, 255);
        return byte;
    }

    // Some characters are decoded only, some are encoded only.
    void addMapping(TSChar32 character)
    {
        switch (below(8)) {
        case 0:
            page_.decodeOnly(character, unicode());
            break;
        case 1:
            page_.encodeOnly(unicode(), character);
            break;
        default:
            page_.map(character, unicode());
        }
    }

    void addProperties(TSChar32 character)
    {
        if (below(2) == 0)
            page_.type(character, word(), below(2) == 0 ? word() : below(0x100));
        if (below(2) == 0)
            page_.mapValue(character, word());
    }

    // Adds characters that begin with a prefix. The bytes of a place lie close together or apart.
    void addBehind(TSChar32 prefix, std::uint32_t missing)
    {
        if (missing == 0) {
            addMapping(prefix);
            addProperties(prefix);
            return;
        }
        if (missing == 1 && below(8) == 0)
            page_.typeOfPrefix(prefix, word(), below(0x200));
        const std::uint32_t first = part();
        for (std::uint32_t count = 1 + below(missing == 1 ? 12 : 3); count > 0; --count) {
            const std::uint32_t near = (first + below(8)) & 0xFF;
            const std::uint32_t byte = near == 0 || isShift(near) || below(2) == 0 ? part() : near;
            addBehind(prefix << 8 | byte, missing - 1);
        }
    }

    void addLongCharacters()
    {
        for (std::uint32_t count = 1 + below(5); count > 0; --count) {
            const std::uint32_t lead = part();
            if (isLead_[lead])
                continue;
            isLead_[lead] = true;
            const bool fixed = stateful_ || below(2) == 0;
            const std::uint32_t length = fixed ? longest_ : 2 + below(longest_ - 1);
            addBehind(lead, length - 1);
            if (!stateful_ || below(2) == 0)
                page_.lead(static_cast<std::uint8_t>(lead), static_cast<std::uint8_t>(length));
        }
    }

    void addUtf8Characters()
    {
        for (int count = 0; count < 20; ++count) {
            addProperties(static_cast<TSChar32>(byteFrom(0xC0, 0x20) << 8 | byteFrom(0x80, 0x40)));
            addProperties(static_cast<TSChar32>(byteFrom(0xE0, 3) << 16 | byteFrom(0x80, 2) << 8 |
                                                byteFrom(0x80, 0x40)));
        }
    }

    // The bytes that are characters by themselves; in a stateful page a lead byte is one, too.
    void addBytes()
    {
        for (std::uint32_t byte = 0; byte < 256; ++byte) {
            const bool isCharacter = !isShift(byte) && (stateful_ || !isLead_[byte]);
            if (page_.shape() != PageShape::kUtf8 && isCharacter && below(4) != 0)
                addMapping(byte);
            page_.type(byte, word()).mapValue(byte, word());
        }
        for (int count = 0; count < 20; ++count)
            page_.casePair(byteFrom(0, 256), byteFrom(0, 256));
    }

    std::mt19937_64& random_;
    PageBuilder page_;
    bool stateful_;
    std::uint32_t longest_;
    std::uint32_t highBytes_[kHighBytes];
    bool isLead_[256] = {};
};

} // namespace

PageBuilder randomPage(std::mt19937_64& random, PageShape shape)
{
    return RandomPage(random, shape).make();
}

} // namespace vlx::test
