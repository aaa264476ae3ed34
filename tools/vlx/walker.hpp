// Steps through a text by the library's exported functions, forward or backward, counts what it
// meets, and holds the functions against each other.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "tessera.h"
#include "text.hpp"
#include "unicode_view.hpp"

namespace vlx::cli {

// What a locale's code page is like, asked from the exported functions, and from the view what they
// do not tell.
class PageFacts {
  public:
    PageFacts(TSLocale* locale, const UnicodeView* view);

    bool stateful() const { return stateful_; }
    int maxBytes() const { return maxBytes_; }
    bool isShift(std::uint8_t byte) const
    {
        return stateful_ && (byte == shiftIn_ || byte == shiftOut_);
    }
    bool isShiftIn(std::uint8_t byte) const { return stateful_ && byte == shiftIn_; }
    std::uint8_t shiftIn() const { return shiftIn_; }
    std::uint8_t shiftOut() const { return shiftOut_; }
    bool isLineEnd(std::uint8_t byte) const { return lineEnds_[byte]; }

  private:
    bool stateful_ = false;
    std::uint8_t shiftIn_ = 0;
    std::uint8_t shiftOut_ = 0;
    int maxBytes_ = 1;
    std::array<bool, 256> lineEnds_{};
};

// A piece of text: a character, a shift byte, or the bytes of a character that the end cuts off.
struct Item {
    enum class Kind : std::uint8_t { kCharacter, kShift, kCutOff };

    Kind kind;
    std::int32_t offset;
    std::int32_t size;       // bytes that are there
    std::int32_t state;      // of a character, or the one that a shift byte sets
    std::int32_t needed = 0; // of a character that is cut off, the bytes that it would have
    TSChar32 packed = 0;
    std::uint32_t characterClass = 0;          // of a character, the bits of TS_CT_CLASS
    std::optional<std::uint16_t> unicode = {}; // nothing where the character is unmapped
};

struct Totals {
    std::int32_t bytes = 0;
    std::int32_t characters = 0;
    std::int32_t multiByte = 0;
    std::int32_t shiftBytes = 0;
    std::int32_t shiftRuns = 0; // shift bytes directly behind another
    std::int32_t lines = 0;
    std::int32_t unmapped = 0;
    std::optional<Item> cutOff;

    // Whether every character is a whole one of the code page.
    bool clean() const { return unmapped == 0 && !cutOff; }

    // Whether all functions have to read the text alike. Where shift bytes follow each other they
    // do not: some pass one of them before a character, others one more behind it. In an unmapped
    // character a trail byte may look like a shift byte.
    bool plain() const { return clean() && shiftRuns == 0; }
};

struct Checks {
    std::int32_t counted = 0; // by TSNumChars or TSNumCharsEx
    bool countAgrees = false;
    std::int32_t wentBack = 0; // characters, by TSPrevChar or TSPrevCharEx
    bool backAgrees = false;

    bool agree() const { return countAgrees && backAgrees; }
};

// Receives an item; false stops the reports, not the walk.
using ItemReceiver = std::function<bool(const Item&)>;

class Walker {
  public:
    // `view` may be null: then no character has a Unicode value, and none is unmapped.
    Walker(TSLocale* locale, const PaddedText& text, const UnicodeView* view);

    const PageFacts& page() const { return page_; }

    // Forward through the whole text, once. Without a receiver it only counts.
    Totals forward(const ItemReceiver& receive);

    // From the end to the start, after forward().
    void backward(const ItemReceiver& receive) const;

    // After forward().
    Checks check() const;

  private:
    // The start of a character and the state there.
    struct Place {
        std::int32_t offset;
        std::int32_t state;
    };

    Item characterAt(Place place, std::int32_t size) const;
    Item shiftAt(std::int32_t offset) const;
    // Takes the character at the place, with the shift bytes around it; false at the text's end.
    bool step(Place& place);
    void keep(const Item& item);
    void count(const Item& item);
    Place previous(std::int32_t start, Place place) const;
    std::int32_t checkpointBefore(std::int32_t offset) const;

    static constexpr int kBackChecks = 8;
    static constexpr int kCheckpointEvery = 64; // characters

    TSLocale* const locale_;
    const PaddedText& text_;
    const UnicodeView* const view_;
    const PageFacts page_;
    const ItemReceiver* receive_ = nullptr;
    Totals totals_;
    bool lineIsOpen_ = false;
    std::array<Place, kBackChecks> last_{}; // the last characters, in turn
    Place behindLast_{0, 0};                // behind the last whole character
    std::vector<Item> tail_;                // what stands behind that
    // In text without states a step back is a walk from the start. Any place where a character
    // begins may stand for the start, so some are kept to make the walk short.
    std::vector<std::int32_t> checkpoints_;
};

} // namespace vlx::cli
