#include "support/sort_builder.hpp"

#include <algorithm>
#include <set>
#include <tuple>

#include "frame/sections.hpp"

namespace vlx::test {

namespace {

constexpr std::size_t kHeaderSize = 1036;
constexpr std::size_t kRecordSize = 6;
constexpr std::size_t kExpansionSize = 14;
constexpr std::size_t kContractionSize = 10;
constexpr unsigned kSpecial = 0x8000;
constexpr unsigned kExpansion = 0x4000;

unsigned bitsOf(std::uint8_t directions)
{
    return static_cast<unsigned>(directions) << 10;
}

Bytes weightBytes(Weights weights)
{
    Bytes bytes(4);
    put16(bytes, 0, weights.one);
    bytes[2] = weights.two;
    bytes[3] = weights.three;
    return bytes;
}

Bytes recordBytes(Weights weights, unsigned bits)
{
    Bytes bytes = weightBytes(weights);
    bytes.resize(kRecordSize);
    put16(bytes, 4, bits);
    return bytes;
}

} // namespace

SortBuilder::SortBuilder() = default;

SortBuilder& SortBuilder::defaults(std::uint8_t two, std::uint8_t three)
{
    default2_ = two;
    default3_ = three;
    return *this;
}

SortBuilder& SortBuilder::page(std::uint8_t high, std::uint8_t flags, std::uint16_t base,
                               std::uint8_t directions)
{
    pages_[high] = {flags, directions, base};
    return *this;
}

SortBuilder& SortBuilder::record(TSChar16 value, Weights weights, unsigned bits)
{
    records_[value] = recordBytes(weights, bits);
    return *this;
}

SortBuilder& SortBuilder::letter(TSChar16 value, Weights weights, std::uint8_t directions)
{
    return record(value, weights, bitsOf(directions));
}

SortBuilder& SortBuilder::special(TSChar16 value, std::uint16_t weight4, std::uint8_t directions)
{
    // The two weights of a special character are not read.
    return record(value, {weight4, 0x77, 0x66}, bitsOf(directions) | kSpecial);
}

SortBuilder& SortBuilder::markExpansion(TSChar16 value, std::uint8_t directions)
{
    // It comes before the bit of a special character, and holds no weights.
    return record(value, {0x5555, 0x44, 0x33}, bitsOf(directions) | kExpansion | kSpecial);
}

SortBuilder& SortBuilder::expansionRecord(TSChar16 value, Weights first, Weights second)
{
    Bytes bytes = weightBytes(first);
    append(bytes, weightBytes(second));
    append(bytes, Bytes(4, 0x99));
    expansions_.emplace_back(value, bytes);
    return *this;
}

SortBuilder& SortBuilder::expansion(TSChar16 value, Weights first, Weights second,
                                    std::uint8_t directions)
{
    return markExpansion(value, directions).expansionRecord(value, first, second);
}

SortBuilder& SortBuilder::contraction(TSChar16 first, TSChar16 second, Weights weights,
                                      std::uint8_t directions)
{
    contractions_.push_back({first, second, recordBytes(weights, bitsOf(directions))});
    return *this;
}

SortBuilder& SortBuilder::specialContraction(TSChar16 first, TSChar16 second, std::uint16_t weight4,
                                             std::uint8_t directions)
{
    contractions_.push_back(
        {first, second, recordBytes({weight4, 0x22, 0x11}, bitsOf(directions) | kSpecial)});
    return *this;
}

SortBuilder& SortBuilder::ordered()
{
    ordered_ = true;
    return *this;
}

Bytes SortBuilder::bytes() const
{
    std::set<unsigned> tablePages;
    for (const auto& [value, record] : records_)
        tablePages.insert(value >> 8);
    auto expansions = expansions_;
    auto contractions = contractions_;
    if (ordered_) {
        std::stable_sort(expansions.begin(), expansions.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        std::stable_sort(contractions.begin(), contractions.end(),
                         [](const auto& a, const auto& b) {
                             return std::tie(a.first, a.second) < std::tie(b.first, b.second);
                         });
    }
    const std::size_t charTable = kHeaderSize;
    const std::size_t expansionTable = charTable + tablePages.size() * 256 * kRecordSize;
    const std::size_t contractionTable = expansionTable + expansions.size() * kExpansionSize;
    Bytes bytes(contractionTable + contractions.size() * kContractionSize);
    bytes[0] = default2_;
    bytes[1] = default3_;
    put16(bytes, 2, static_cast<std::uint32_t>(expansions.size()));
    put16(bytes, 4, static_cast<std::uint32_t>(contractions.size()));
    unsigned base = 0;
    for (unsigned high = 0; high < 256; ++high) {
        Page page = pages_[high];
        if (tablePages.count(high) != 0) {
            page = {0, 0xA, static_cast<std::uint16_t>(base)};
            base += 256;
        }
        const std::size_t entry = 6 + 4 * static_cast<std::size_t>(high);
        bytes[entry] = page.flags;
        bytes[entry + 1] = page.directions;
        put16(bytes, entry + 2, page.base);
    }
    put16(bytes, 1030, static_cast<std::uint32_t>(charTable));
    put16(bytes, 1032, static_cast<std::uint32_t>(expansionTable));
    put16(bytes, 1034, static_cast<std::uint32_t>(contractionTable));
    for (const auto& [value, record] : records_) {
        const auto rank = static_cast<std::size_t>(
            std::distance(tablePages.begin(), tablePages.find(value >> 8u)));
        std::copy(record.begin(), record.end(),
                  bytes.begin() + static_cast<std::ptrdiff_t>(
                                      charTable + (rank * 256 + (value & 0xFFu)) * kRecordSize));
    }
    std::size_t at = expansionTable;
    for (const auto& [value, rest] : expansions) {
        put16(bytes, at, value);
        std::copy(rest.begin(), rest.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at) + 2);
        at += kExpansionSize;
    }
    for (const Contraction& contraction : contractions) {
        put16(bytes, at, contraction.first);
        put16(bytes, at + 2, contraction.second);
        std::copy(contraction.rest.begin(), contraction.rest.end(),
                  bytes.begin() + static_cast<std::ptrdiff_t>(at) + 4);
        at += kContractionSize;
    }
    return bytes;
}

Bytes SortBuilder::file() const
{
    ObjectFile file;
    file.sections = {bytes()};
    return file.bytes();
}

TSObject& SortBuilder::build(bool withTraits)
{
    content_ = bytes();
    object_.id = 1;
    object_.type = TS_OBJ_SORT;
    object_.sections[0] = content_.data();
    object_.sortTraits = {};
    object_.sortTraitsState = withTraits ? TSObject::kTraitsWanted : TSObject::kTraitsThere;
    return object_;
}

} // namespace vlx::test
