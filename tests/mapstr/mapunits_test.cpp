// TSMapStringU and TSMapStringW.
#include <gtest/gtest.h>
#include <vector>

#include "frame/globals.hpp"
#include "mapstr/hand_pages.hpp"

namespace vlx::test {
namespace {

template <class Unit>
using Units = std::vector<Unit>;

constexpr std::uint32_t kGoodMappings[] = {
    0,
    TS_MAP_DIGITS,
    TS_MAP_FULL_WIDTH,
    TS_MAP_HALF_WIDTH,
    TS_MAP_COPY,
    TS_MAP_LOWER,
    TS_MAP_UPPER,
    TS_MAP_LOWER | TS_MAP_SIMPLE,
    TS_MAP_UPPER | TS_MAP_SIMPLE,
};

// One of the two members on a buffer of a size; the units that were written.
template <class Unit, class Member>
Units<Unit> call(Member member, TSLocale* locale, Units<Unit> source, std::int32_t length,
                 std::int32_t size, std::uint32_t mapping)
{
    constexpr Unit kFill = 0xEEEE;
    Units<Unit> buffer(64, kFill);
    source.push_back(0);
    const std::int32_t result = member(locale, buffer.data(), size, source.data(), length, mapping);
    for (std::size_t i = result > 0 ? static_cast<std::size_t>(result) : 0; i < buffer.size(); ++i)
        EXPECT_EQ(buffer[i], kFill) << "behind the result";
    if (result < 0)
        return {static_cast<Unit>(result)};
    buffer.resize(static_cast<std::size_t>(result));
    return buffer;
}

Units<TSChar16> mapU(TSLocale* locale, const Units<TSChar16>& source, std::uint32_t mapping,
                     std::int32_t size = 64)
{
    return call(TSMapStringU, locale, source, static_cast<std::int32_t>(source.size()), size,
                mapping);
}

Units<TSChar32> mapW(TSLocale* locale, const Units<TSChar32>& source, std::uint32_t mapping,
                     std::int32_t size = 64)
{
    return call(TSMapStringW, locale, source, static_cast<std::int32_t>(source.size()), size,
                mapping);
}

class MapUnits : public testing::Test {
  protected:
    HandLocale latin_{latinPage()};
    HandLocale wide_{widePage()};
    HandLocale paired_{widePage(),
                       {{0xDF, 0, 'S', 'S'}, {'d', 'z', 'D', 0}, {0xFF41, 'x', 'y', 0x3000}},
                       {{'I', 0, 'j', 0}}};
};

TEST_F(MapUnits, EveryMappingOfTheListIsTakenAndNoOther)
{
    for (const std::uint32_t mapping : kGoodMappings) {
        for (const std::uint32_t counted : {0u, TS_OPT_CHAR_COUNT}) {
            EXPECT_EQ(mapU(latin_.handle(), {'!'}, mapping | counted).size(), 1u);
            EXPECT_EQ(latin_.record.lastError, TS_ERR_NONE);
            EXPECT_EQ(mapW(wide_.handle(), {'!'}, mapping | counted), Units<TSChar32>{'!'});
            EXPECT_EQ(wide_.record.lastError, TS_ERR_NONE);
        }
    }
    for (const std::uint32_t mapping : {0x80000026u, 0x1u, 0x2000u, 0x25u, 0xFFFFFFFFu}) {
        EXPECT_EQ(mapU(latin_.handle(), {'!'}, mapping), Units<TSChar16>{0xFFFF});
        EXPECT_EQ(latin_.record.lastError, TS_ERR_ARGUMENT);
        EXPECT_EQ(mapW(wide_.handle(), {'!'}, mapping), Units<TSChar32>{0xFFFFFFFF});
        EXPECT_EQ(wide_.record.lastError, TS_ERR_ARGUMENT);
    }
}

TEST_F(MapUnits, ANullLocaleIsTheDefaultOne)
{
    tsDefaultLocale = latin_.handle();
    EXPECT_EQ(mapU(nullptr, {'a'}, TS_MAP_UPPER), Units<TSChar16>{'A'});
    EXPECT_EQ(mapW(nullptr, {'a'}, TS_MAP_UPPER), Units<TSChar32>{'A'});
    tsDefaultLocale = nullptr;
}

TEST_F(MapUnits, CaseGoesByTheBuiltInTables)
{
    EXPECT_EQ(mapU(latin_.handle(), {0x00FF, 0x00F7, 'z', 0xDF}, TS_MAP_UPPER),
              (Units<TSChar16>{0x0178, 0x00F7, 'Z', 0xDF}));
    EXPECT_EQ(mapU(latin_.handle(), {0x00D7, 0x0178, 'Z'}, TS_MAP_LOWER),
              (Units<TSChar16>{0x00D7, 0x00FF, 'z'}));
}

TEST_F(MapUnits, WidthGoesByTheBuiltInTables)
{
    EXPECT_EQ(mapU(latin_.handle(), {' ', 'A', 0xFF71, 0x4E00}, TS_MAP_FULL_WIDTH),
              (Units<TSChar16>{0x3000, 0xFF21, 0x30A2, 0x4E00}));
    EXPECT_EQ(mapU(latin_.handle(), {0x3000, 0xFF21, 0x30A2, 0x30AC}, TS_MAP_HALF_WIDTH),
              (Units<TSChar16>{' ', 'A', 0xFF71, 0x30AC}));
}

TEST_F(MapUnits, DigitsOfOtherScriptsBecomeAscii)
{
    EXPECT_EQ(mapU(latin_.handle(), {0x0663, 0x00B2, 0x0BE6, 0xFF17, 'x'}, TS_MAP_DIGITS),
              (Units<TSChar16>{'3', '2', 0x0BE6, '7', 'x'}));
}

TEST_F(MapUnits, ANegativeLengthTakesInTheTerminator)
{
    for (const std::int32_t length : {-1, INT32_MIN}) {
        for (const std::uint32_t mapping : {TS_MAP_UPPER, 0x80004025u}) {
            EXPECT_EQ(
                call(TSMapStringU, latin_.handle(), Units<TSChar16>{'a', 'b'}, length, 64, mapping),
                (Units<TSChar16>{'A', 'B', 0}));
            EXPECT_EQ(call(TSMapStringU, paired_.handle(), Units<TSChar16>{'a', 'b'}, length, 64,
                           mapping),
                      (Units<TSChar16>{'A', 'B', 0}));
            EXPECT_EQ(
                call(TSMapStringW, latin_.handle(), Units<TSChar32>{'a', 'b'}, length, 64, mapping),
                (Units<TSChar32>{'A', 'B', 0}));
        }
        EXPECT_EQ(
            call(TSMapStringU, latin_.handle(), Units<TSChar16>{'a'}, length, 64, TS_MAP_COPY),
            (Units<TSChar16>{'a', 0}));
        EXPECT_EQ(call(TSMapStringW, latin_.handle(), Units<TSChar32>{'a'}, length, 64, 0),
                  (Units<TSChar32>{'a', 0}));
    }
}

TEST_F(MapUnits, EverySizeKeepsWhatFits)
{
    for (std::int32_t size = -1; size < 5; ++size) {
        const auto count = static_cast<std::size_t>(std::clamp(size, 0, 3));
        const char16_t upper[] = u"ABC";
        EXPECT_EQ(mapU(latin_.handle(), {'a', 'b', 'c'}, TS_MAP_UPPER, size),
                  Units<TSChar16>(upper, upper + count));
        EXPECT_EQ(mapW(latin_.handle(), {'a', 'b', 'c'}, TS_MAP_UPPER, size),
                  Units<TSChar32>(upper, upper + count));
        EXPECT_EQ(mapU(paired_.handle(), {'a', 'b', 'c'}, TS_MAP_UPPER, size),
                  Units<TSChar16>(upper, upper + count));
    }
    EXPECT_EQ(mapU(paired_.handle(), {'a'}, TS_MAP_UPPER, INT32_MIN), Units<TSChar16>{});
    EXPECT_EQ(mapW(latin_.handle(), {'a'}, TS_MAP_FULL_WIDTH, INT32_MIN), Units<TSChar32>{});
}

TEST_F(MapUnits, AnImageOfTwoThatDoesNotFitIsLeftOut)
{
    EXPECT_EQ(mapU(paired_.handle(), {0xDF}, TS_MAP_UPPER, 1), Units<TSChar16>{});
    EXPECT_EQ(mapU(paired_.handle(), {'a', 0xDF, 'b'}, TS_MAP_UPPER, 2), Units<TSChar16>{'A'});
    EXPECT_EQ(mapU(paired_.handle(), {'a', 0xDF, 'b'}, TS_MAP_UPPER, 3),
              (Units<TSChar16>{'A', 'S', 'S'}));
}

TEST_F(MapUnits, PairsReplaceOneOrTwoUnits)
{
    EXPECT_EQ(mapU(paired_.handle(), {'d', 'z', 'd', 'd', 'z'}, TS_MAP_UPPER),
              (Units<TSChar16>{'D', 'D', 'D'}));
    EXPECT_EQ(mapU(paired_.handle(), {'d', 'z', 0xDF}, TS_MAP_UPPER | TS_MAP_SIMPLE),
              (Units<TSChar16>{'D', 'Z', 0xDF}));
    EXPECT_EQ(mapU(paired_.handle(), {'A', 'I', 'B'}, TS_MAP_LOWER),
              (Units<TSChar16>{'a', 'j', 'b'}));
    EXPECT_EQ(mapW(paired_.handle(), {'d', 'z', 0x8281, 'x', 0x8281}, TS_MAP_UPPER),
              (Units<TSChar32>{'D', 'y', 0x8140, 0x8260}));
}

TEST_F(MapUnits, PackedValuesGoByTheCodePage)
{
    EXPECT_EQ(mapW(wide_.handle(), {'a', 0x8281, 0x8140}, TS_MAP_UPPER),
              (Units<TSChar32>{'A', 0x8260, 0x8140}));
    EXPECT_EQ(mapW(wide_.handle(), {'A', 0x8260}, TS_MAP_LOWER), (Units<TSChar32>{'a', 0x8281}));
    EXPECT_EQ(mapW(wide_.handle(), {'A', ' ', 'z', 0x8260}, TS_MAP_FULL_WIDTH),
              (Units<TSChar32>{0x8260, 0x8140, 'z', 0x8260}));
    EXPECT_EQ(mapW(wide_.handle(), {0x8260, 0x8140, 0x8199, 'z'}, TS_MAP_HALF_WIDTH),
              (Units<TSChar32>{'A', ' ', 0x8199, 'z'}));
    EXPECT_EQ(mapW(wide_.handle(), {'5', 0x8250, 'x'}, TS_MAP_DIGITS),
              (Units<TSChar32>{'5', '1', 'x'}));
}

TEST_F(MapUnits, PackedWidthInASingleByteLocaleIsACopy)
{
    for (const std::uint32_t mapping : {TS_MAP_FULL_WIDTH, TS_MAP_HALF_WIDTH})
        EXPECT_EQ(mapW(latin_.handle(), {'A', ' ', 0x8260}, mapping),
                  (Units<TSChar32>{'A', ' ', 0x8260}));
}

TEST_F(MapUnits, PackedValuesThatNoPageHasStay)
{
    EXPECT_EQ(mapW(latin_.handle(), {0x8281, 0xFFFFFFFF}, TS_MAP_UPPER),
              (Units<TSChar32>{0x8281, 0xFFFFFFFF}));
    EXPECT_EQ(mapW(latin_.handle(), {0x8281}, TS_MAP_DIGITS), Units<TSChar32>{0x8281});
}

} // namespace
} // namespace vlx::test
