// Builds sort objects in memory, byte by byte by their offsets and without the library's own
// structures, so that a test has the sort that it needs and no other.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "frame/objman.hpp"
#include "support/object_builder.hpp"

namespace vlx::test {

// The weights of an element on levels 1 to 3.
struct Weights {
    std::uint16_t one;
    std::uint8_t two = 1;
    std::uint8_t three = 1;
};

class SortBuilder {
  public:
    static constexpr std::uint8_t kForward = 0xF;

    // No page has weights, and the default weights are 1.
    SortBuilder();

    // The object points into the builder, which can move but has no copy.
    SortBuilder(SortBuilder&&) = default;
    SortBuilder& operator=(SortBuilder&&) = default;

    SortBuilder& defaults(std::uint8_t two, std::uint8_t three);

    // How a page's entry stands, whatever it means. A page that gets a record has none of the bits.
    SortBuilder& page(std::uint8_t high, std::uint8_t flags, std::uint16_t base = 0,
                      std::uint8_t directions = kForward);
    SortBuilder& silentPage(std::uint8_t high) { return page(high, 1); }
    SortBuilder& level1Page(std::uint8_t high, std::uint16_t base,
                            std::uint8_t directions = kForward)
    {
        return page(high, 2, base, directions);
    }
    SortBuilder& level4Page(std::uint8_t high, std::uint16_t base,
                            std::uint8_t directions = kForward)
    {
        return page(high, 4, base, directions);
    }

    SortBuilder& letter(TSChar16 value, Weights weights, std::uint8_t directions = kForward);
    SortBuilder& special(TSChar16 value, std::uint16_t weight4, std::uint8_t directions = kForward);
    // The record that says that a character is an expansion, and the one with its weights.
    SortBuilder& expansion(TSChar16 value, Weights first, Weights second,
                           std::uint8_t directions = kForward);
    SortBuilder& markExpansion(TSChar16 value, std::uint8_t directions = kForward);
    SortBuilder& expansionRecord(TSChar16 value, Weights first, Weights second);
    SortBuilder& contraction(TSChar16 first, TSChar16 second, Weights weights,
                             std::uint8_t directions = kForward);
    SortBuilder& specialContraction(TSChar16 first, TSChar16 second, std::uint16_t weight4,
                                    std::uint8_t directions = kForward);

    // The lists stand in the order in which they were told, or in ascending order.
    SortBuilder& ordered();

    Bytes bytes() const;
    Bytes file() const;

    // Lays the content out. The object lives as long as the builder stays where it is. Without its
    // traits it is read in the slow ways.
    TSObject& build(bool withTraits = true);
    TSObject& object() { return object_; }
    const Bytes& content() const { return content_; }

  private:
    struct Page {
        std::uint8_t flags = 1;
        std::uint8_t directions = kForward;
        std::uint16_t base = 0;
    };
    struct Contraction {
        TSChar16 first;
        TSChar16 second;
        Bytes rest; // the weights and the bits
    };

    SortBuilder& record(TSChar16 value, Weights weights, unsigned bits);

    std::uint8_t default2_ = 1;
    std::uint8_t default3_ = 1;
    Page pages_[256];
    std::map<TSChar16, Bytes> records_;
    std::vector<std::pair<TSChar16, Bytes>> expansions_;
    std::vector<Contraction> contractions_;
    bool ordered_ = false;
    Bytes content_;
    TSObject object_{};
};

} // namespace vlx::test
