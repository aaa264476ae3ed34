// Random calls of the conversion functions, for the comparisons with the oracle: pairs of pages of
// every shape, valid and broken input, and every size of the output from none to more than needed.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "chars/situations.hpp"
#include "frame/globals.hpp"
#include "strings/guarded_area.hpp"
#include "support/oracle_convert.hpp"
#include "tessera.h"

namespace vlx::test {

// A page and what its texts are made of.
struct Sample {
    PageBuilder* page;
    oracle::Locale reference;
    std::vector<TSChar16> unicode; // values that the page can represent
    std::vector<TSChar32> packed;  // its characters
};

// Random pages of every shape, and pages that share their Unicode values with each other.
std::vector<Sample>& samples();

// One of the two locales of a call. The handle is null where the record is the default locale.
struct Party {
    explicit Party(const Sample& sample);
    const oracle::Locale& reference() const { return sample->reference; }

    const Sample* sample;
    TSLocale record;
    TSLocale* handle = nullptr;
};

// What the sizes of an output count.
enum class Sizes { kUnits, kCharacters };

class Conversion {
  public:
    using Areas = std::array<GuardedArea, 2>;

    Conversion(Random& random, const Sample& from, const Sample& to, Areas& areas);

    Random& random;
    Party source;
    Party target;
    oracle::Bytes text;
    std::vector<TSChar16> unicode; // input of the target's page
    std::vector<TSChar32> packed;  // input of the source's page
    std::int32_t length = 0;
    std::int32_t sourceState = 0;
    std::int32_t targetState = 0;
    std::uint32_t options = 0;

    // Chooses an input of some form, with a length that is good for it, and places it so that it
    // ends where nobody may read.
    const char* useText();
    const TSChar16* useUnicode();
    const TSChar32* usePacked();

    oracle::Text input() const { return {oracle::Span(text), sourceState, length}; }
    oracle::UnitText unicodeInput() const { return {{unicode.begin(), unicode.end()}, length}; }
    oracle::UnitText packedInput() const { return {{packed.begin(), packed.end()}, length}; }

    // Which handles are null is left to chance.
    void chooseHandles();

    // Compares the calls of every size; returns how many were well defined.
    template <class Reference, class Call>
    int compareSizes(Sizes sizes, Party& errorParty, Reference reference, Call call);

    std::string describe() const;

  private:
    template <class Unit>
    const Unit* use(const std::vector<Unit>& input);
    template <class Unit, class Call>
    void compareSize(Sizes sizes, Party& errorParty, std::int32_t size,
                     const oracle::Converted<Unit>& wanted, Call call);

    Areas& areas_;
};

// Runs `check` on one conversion after another until its calls are kWantedCalls, or one has failed.
void convertEverywhere(const std::function<int(Conversion&)>& check);

// Options that are accepted, and now and then some that may be refused.
std::uint32_t anyConversionOptions(Random& random);

template <class Unit, class Call>
void Conversion::compareSize(Sizes sizes, Party& errorParty, std::int32_t size,
                             const oracle::Converted<Unit>& wanted, Call call)
{
    const auto room = sizes == Sizes::kCharacters ? std::ssize(wanted.written)
                                                  : std::max<std::ptrdiff_t>(size, 0);
    ASSERT_LE(std::ssize(wanted.written), room) << "the oracle writes over the end";
    std::vector<Unit> area(static_cast<std::size_t>(room), Unit{0x5A});
    Unit* const output = areas_[1].place(area, random() % 2 == 0 ? GuardedArea::Guard::kAbove
                                                                 : GuardedArea::Guard::kBelow);
    chooseHandles();
    const std::int32_t result = call(output, size);
    tsDefaultLocale = nullptr;
    std::copy(wanted.written.begin(), wanted.written.end(), area.begin());
    EXPECT_EQ(result, wanted.result);
    EXPECT_TRUE(areas_[1].holds(area)) << testing::PrintToString(
        std::vector<int>(output, output + std::min<std::ptrdiff_t>(room, 40)));
    EXPECT_EQ(errorParty.record.lastError, wanted.error);
    const Party& other = &errorParty == &target ? source : target;
    EXPECT_EQ(other.record.lastError, kUntouchedError);
    if (testing::Test::HasFailure())
        ADD_FAILURE() << describe() << ", size " << size << ", wanted "
                      << testing::PrintToString(
                             std::vector<int>(wanted.written.begin(), wanted.written.end()));
}

template <class Reference, class Call>
int Conversion::compareSizes(Sizes sizes, Party& errorParty, Reference reference, Call call)
{
    constexpr std::int32_t kPlenty = 1000;
    const auto all = wellDefined([&] { return reference(kPlenty); });
    const std::int32_t most = all ? static_cast<std::int32_t>(all->written.size()) + 3 : 8;
    int calls = 0;
    for (std::int32_t size = -1; size <= most && !testing::Test::HasFailure(); ++size) {
        const auto wanted = wellDefined([&] { return reference(size); });
        if (!wanted)
            continue;
        compareSize(sizes, errorParty, size, *wanted, call);
        ++calls;
    }
    return calls;
}

} // namespace vlx::test
