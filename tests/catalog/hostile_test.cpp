// Damaged catalogs: errors or text, and nothing else. The copy of the file and the view that it is
// made from stand in blocks of their own size, so that a sanitizer sees a stray read.
#include <algorithm>
#include <chrono>
#include <gmock/gmock.h>
#include <random>

#include "catalog/catalog_fixture.hpp"

namespace vlx::test {
namespace {

constexpr int kDamaged = 100000;          // files, each opened in both forms
constexpr std::chrono::seconds kLimit{1}; // for one file

class DamagedCatalog : public CatalogTest {
  protected:
    DamagedCatalog()
    {
        loadAll();
        CatalogFile file = smallCatalog();
        file.locale = "Wide_Wide";
        file.sets[0].messages[1].text = "a\x8A\x42";
        good_ = file.bytes();
        locale_ = make("Codes_Codes.Shift");
    }

    void use(const std::vector<std::uint8_t>& bytes, Form form)
    {
        const auto begin = std::chrono::steady_clock::now();
        const Catalog catalog = openBytes(bytes, form, locale_.get());
        if (!catalog) {
            EXPECT_THAT((std::vector<std::int32_t>{20, 71}),
                        testing::Contains(TSGetError(locale_.get())));
        } else {
            for (const auto& [set, number] : {std::pair(1, 1),
                                              {1, 2},
                                              {1, 3}, // missing in the good file
                                              {1, 7},
                                              {2, 1}, // missing
                                              {5, 3},
                                              {5, 900},
                                              {6, 1}}) // missing
                useMessage(catalog.get(), set, number);
        }
        EXPECT_LT(std::chrono::steady_clock::now() - begin, kLimit);
    }

    // One of the members, in turn.
    void useMessage(TSCatalog* catalog, std::int32_t set, std::int32_t number)
    {
        if (++calls_ % 7 == 0)
            useMember<TSChar16>(TSGetMessageU, catalog, set, number);
        else if (calls_ % 7 == 3)
            useMember<TSChar32>(TSGetMessageW, catalog, set, number);
        else
            useMember<char>(TSGetMessage, catalog, set, number);
    }

    template <class Unit, class Member>
    void useMember(Member member, TSCatalog* catalog, std::int32_t set, std::int32_t number)
    {
        constexpr std::int32_t kSize = 11;
        Unit output[kSize + 1];
        std::fill(std::begin(output), std::end(output), Unit{'#'});
        const std::int32_t result = member(catalog, set, number, output, kSize, nullptr);
        EXPECT_TRUE(result == 0 || result == 72);
        EXPECT_NE(std::find(output, output + kSize, Unit{0}), output + kSize);
        EXPECT_EQ(output[kSize], Unit{'#'});
        EXPECT_EQ(TSGetError(locale_.get()), result);
    }

    void useBoth(const std::vector<std::uint8_t>& bytes)
    {
        use(bytes, Form::kSlim);
        use(bytes, Form::kPreloaded);
    }

    // Numbers that lie at the edges of the file and of the number itself.
    std::vector<std::uint32_t> tellingNumbers() const
    {
        std::vector<std::uint32_t> numbers{0x7FFFFFFE, 0x7FFFFFFF, 0x80000000, 0x80000001,
                                           0xFFFFFFF0, 0xFFFFFFFC, 0xFFFFFFFE, 0xFFFFFFFF,
                                           0x0CCCCCCD, 0x15555556, 0x24924925, 0x55555556};
        const auto size = static_cast<std::uint32_t>(good_.size());
        for (std::uint32_t number = 0; number < 40; ++number)
            numbers.push_back(number);
        for (std::uint32_t number = 140; number < size + 3; ++number)
            numbers.push_back(number);
        return numbers;
    }

    // The offsets of all numbers of the good file.
    std::vector<std::size_t> fields() const
    {
        std::vector<std::size_t> offsets{0, 4, 8, 12, 16};
        for (std::uint32_t set = numberAt(good_, 16); set != 0; set = numberAt(good_, set + 4)) {
            for (std::size_t word = 0; word < 7; ++word)
                offsets.push_back(set + 4 * word);
            for (std::size_t word = 0; word < std::size_t{3} * numberAt(good_, set + 8); ++word)
                offsets.push_back(numberAt(good_, set + 12) + 4 * word);
        }
        return offsets;
    }

    std::vector<std::uint8_t> good_;
    unsigned calls_ = 0;
};

TEST_F(DamagedCatalog, EachFieldSweptGivesErrorsOrText)
{
    const std::vector<std::uint32_t> numbers = tellingNumbers();
    ASSERT_EQ(fields().size(), 5u + 2 * 7 + 5 * 3);
    for (const std::size_t offset : fields()) {
        for (const std::uint32_t number : numbers) {
            std::vector<std::uint8_t> bytes = good_;
            putNumber(bytes, offset, number);
            useBoth(bytes);
        }
        if (HasFailure())
            FAIL() << "offset " << offset;
    }
}

TEST_F(DamagedCatalog, EachByteChangedGivesErrorsOrText)
{
    for (std::size_t offset = 0; offset < good_.size(); ++offset)
        for (const int byte : {0, 1, 0x2E, 0x40, 0x5F, 0x80, 0xFF}) {
            std::vector<std::uint8_t> bytes = good_;
            bytes[offset] = static_cast<std::uint8_t>(byte);
            useBoth(bytes);
        }
}

TEST_F(DamagedCatalog, EachCutGivesErrorsOrText)
{
    for (std::size_t size = 0; size <= good_.size(); ++size)
        useBoth({good_.begin(), good_.begin() + static_cast<std::ptrdiff_t>(size)});
}

TEST_F(DamagedCatalog, RandomDamageGivesErrorsOrText)
{
    std::mt19937_64 random(9101);
    const std::vector<std::uint32_t> numbers = tellingNumbers();
    std::vector<std::size_t> offsets = fields();
    offsets.erase(offsets.begin(), offsets.begin() + 3); // what all else stands behind
    for (int file = 0; file < kDamaged && !HasFailure(); ++file) {
        std::vector<std::uint8_t> bytes = good_;
        for (std::size_t i = 1 + random() % 3; i > 0; --i)
            putNumber(bytes, offsets[random() % offsets.size()],
                      numbers[random() % numbers.size()]);
        if (random() % 8 == 0)
            bytes.resize(random() % bytes.size());
        useBoth(bytes);
    }
}

TEST_F(DamagedCatalog, SetsThatClaimTheWholeFileCostNoMoreThanTheFile)
{
    CatalogFile file{.locale = "Codes_Codes", .sets = {}};
    for (std::uint32_t set = 1; set <= 20000; ++set)
        file.sets.push_back({set, {}});
    std::vector<std::uint8_t> bytes = file.bytes();
    for (std::size_t set = 0; set < 20000; ++set) {
        const std::size_t record = 152 + 28 * set;
        putNumber(bytes, record + 8, static_cast<std::uint32_t>(bytes.size() / 12));
        putNumber(bytes, record + 12, 0);
        putNumber(bytes, record + 16, 0);
        putNumber(bytes, record + 20, static_cast<std::uint32_t>(bytes.size()));
    }
    useBoth(bytes);
}

TEST_F(DamagedCatalog, MessagesThatShareALongTextCostNoMoreThanTheFile)
{
    CatalogFile file{.locale = "Codes_Codes", .sets = {{1, {}}}};
    for (std::uint32_t number = 1; number <= 20000; ++number)
        file.sets[0].messages.push_back({number, ""});
    file.sets[0].messages.push_back({20001, std::string(500000, 'x')});
    std::vector<std::uint8_t> bytes = file.bytes();
    const std::size_t table = numberAt(bytes, 152 + 12);
    for (std::size_t i = 0; i < 20000; ++i) {
        putNumber(bytes, table + 12 * i + 4, 500001);
        putNumber(bytes, table + 12 * i + 8, 20000);
    }
    useBoth(bytes);
}

TEST_F(DamagedCatalog, AChainOfOverlappingSetsEnds)
{
    std::vector<std::uint8_t> bytes = good_;
    bytes.resize(400000);
    for (std::size_t offset = 4000; offset + 40 < bytes.size(); offset += 8)
        putNumber(bytes, offset, static_cast<std::uint32_t>(offset + 4));
    putNumber(bytes, 16, 4000);
    useBoth(bytes);
}

} // namespace
} // namespace vlx::test
