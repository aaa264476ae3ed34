// Small pages made by hand, and output areas, for the tests of single promises.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include "chars/situations.hpp"
#include "frame/globals.hpp"
#include "tessera.h"

namespace vlx::test {

// All pages have ASCII. U+3000 to U+3002 are 0x8140 to 0x8142 in the double-byte page, 0x4243 to
// 0x4245 in the stateful one, whose shift bytes are 0x0E and 0x0F, and E3 80 80 to E3 80 82 in
// UTF-8.
class SmallPages : public testing::Test {
  protected:
    SmallPages()
    {
        singleByte_.asciiHalf().map(0x80, 0x20AC);
        doubleByte_.asciiHalf().id(901);
        stateful_.asciiHalf().id(902);
        for (TSChar16 i = 0; i < 3; ++i) {
            doubleByte_.map(0x8140U + i, static_cast<TSChar16>(0x3000 + i));
            stateful_.map(0x4243U + i, static_cast<TSChar16>(0x3000 + i));
        }
        onSingle_ = localeOn(singleByte_.build());
        onDouble_ = localeOn(doubleByte_.build());
        onStateful_ = localeOn(stateful_.build());
        onUtf8_ = localeOn(utf8_.build());
    }
    ~SmallPages() override { tsDefaultLocale = nullptr; }

    char* at() { return output_.at(); }

    // True if the call gave the result and error 0 and wrote these bytes and no other.
    testing::AssertionResult gave(std::int32_t result, std::int32_t wanted,
                                  const oracle::Bytes& bytes, const TSLocale& locale)
    {
        const bool writes = output_.holds(bytes);
        output_ = Output();
        if (result == wanted && writes && locale.lastError == TS_ERR_NONE)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "result " << result << ", error " << locale.lastError
                                           << (writes ? "" : ", other bytes were written");
    }

    PageBuilder singleByte_{PageShape::kSingleByte};
    PageBuilder doubleByte_{PageShape::kDoubleByte};
    PageBuilder stateful_{PageShape::kStateful2};
    PageBuilder utf8_{PageShape::kUtf8};
    TSLocale onSingle_{};
    TSLocale onDouble_{};
    TSLocale onStateful_{};
    TSLocale onUtf8_{};
    Output output_;
};

// An array of elements, and what nobody has written in it.
template <class Unit>
class Elements {
  public:
    static constexpr Unit kUntouched = 0x5A5A;

    Unit* at() { return units_.data() + kMargin; }

    // The elements from the start to the last one written.
    std::vector<Unit> written() const
    {
        std::vector<Unit> result(units_.begin() + kMargin, units_.end());
        while (!result.empty() && result.back() == kUntouched)
            result.pop_back();
        const bool sound = std::all_of(units_.begin(), units_.begin() + kMargin,
                                       [](Unit unit) { return unit == kUntouched; });
        EXPECT_TRUE(sound) << "written before the start";
        return result;
    }

  private:
    static constexpr std::ptrdiff_t kMargin = 4;
    std::vector<Unit> units_ = std::vector<Unit>(24, kUntouched);
};

using Unicode = std::vector<TSChar16>;
using Packed = std::vector<TSChar32>;

} // namespace vlx::test
