// Messages as 16-bit and as packed values.
#include "catalog/catalog_fixture.hpp"

namespace vlx::test {
namespace {

template <class Unit>
using Elements = std::vector<Unit>;

// The members under one name.
std::int32_t getMessage(TSCatalog* catalog, std::int32_t set, std::int32_t number, TSChar16* output,
                        std::int32_t size, const TSChar16* defaultText)
{
    return TSGetMessageU(catalog, set, number, output, size, defaultText);
}
std::int32_t getMessage(TSCatalog* catalog, std::int32_t set, std::int32_t number, TSChar32* output,
                        std::int32_t size, const TSChar32* defaultText)
{
    return TSGetMessageW(catalog, set, number, output, size, defaultText);
}

template <class Unit>
class Units : public CatalogTest {
  protected:
    // The yen of the double-byte page.
    static constexpr Unit kYenUnit = sizeof(Unit) == 2 ? 0x5186 : 0x8A42;
    static constexpr Unit kFill = 0x2323;

    Units()
    {
        CatalogFile file = smallCatalog();
        file.locale = "Wide_Wide";
        file.sets[0].messages[0].text = "a\x8A\x42z";
        catalog_ = open(file, Form::kPreloaded, "Wide_Wide");
    }

    // The output of a call of a size, and its result.
    std::pair<std::int32_t, Elements<Unit>> get(TSCatalog* catalog, int number, std::int32_t size,
                                                const Elements<Unit>& defaultText = {})
    {
        Elements<Unit> output(static_cast<std::size_t>(std::max(size, 1)) + 1, kFill);
        const std::int32_t result = getMessage(catalog, 1, number, output.data(), size,
                                               defaultText.empty() ? nullptr : defaultText.data());
        EXPECT_EQ(output.back(), kFill);
        output.pop_back();
        return {result, output};
    }

    TSCatalog* preloaded() { return catalog_.get(); }

    Catalog catalog_;
};

using UnitTypes = testing::Types<TSChar16, TSChar32>;
TYPED_TEST_SUITE(Units, UnitTypes);

template <class Unit>
Elements<Unit> of(std::initializer_list<std::uint32_t> values)
{
    Elements<Unit> units;
    for (const std::uint32_t value : values)
        units.push_back(static_cast<Unit>(value));
    return units;
}

TYPED_TEST(Units, AMessageHasItsTerminatorAndTheLastElementIs0)
{
    const auto [result, output] = this->get(this->preloaded(), 1, 6);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(output, of<TypeParam>({'a', this->kYenUnit, 'z', 0, this->kFill, 0}));
}

TYPED_TEST(Units, AMessageThatIsTooLongIsCut)
{
    EXPECT_EQ(this->get(this->preloaded(), 1, 3).second, of<TypeParam>({'a', this->kYenUnit, 0}));
    EXPECT_EQ(this->get(this->preloaded(), 1, 4).second,
              of<TypeParam>({'a', this->kYenUnit, 'z', 0}));
}

TYPED_TEST(Units, AnOutputOfOneElementIsATerminator)
{
    EXPECT_EQ(this->get(this->preloaded(), 1, 1), std::pair(0, of<TypeParam>({0})));
    EXPECT_EQ(this->get(this->preloaded(), 1, 0), std::pair(0, of<TypeParam>({0})));
    EXPECT_EQ(this->get(this->preloaded(), 9, -5), std::pair(0, of<TypeParam>({0})));
}

TYPED_TEST(Units, AMissingMessageIs72InTheLocaleToo)
{
    const auto [result, output] = this->get(this->preloaded(), 9, 3);
    EXPECT_EQ(result, 72);
    EXPECT_EQ(output, of<TypeParam>({0, this->kFill, 0}));
    EXPECT_EQ(TSGetError(this->locale_.get()), 72);
}

TYPED_TEST(Units, ADefaultTextThatIsCutKeepsItsTerminator)
{
    const auto text = of<TypeParam>({'d', this->kYenUnit, 'e', 'f', 0});
    EXPECT_EQ(this->get(this->preloaded(), 9, 9, text).second,
              of<TypeParam>(
                  {'d', this->kYenUnit, 'e', 'f', 0, this->kFill, this->kFill, this->kFill, 0}));
    EXPECT_EQ(this->get(this->preloaded(), 9, 3, text),
              std::pair(0, of<TypeParam>({'d', this->kYenUnit, 0})));
    Elements<TypeParam> longText(50, 'x');
    longText.push_back(0);
    EXPECT_EQ(this->get(this->preloaded(), 9, 2, longText), std::pair(0, of<TypeParam>({'x', 0})));
}

TYPED_TEST(Units, ANullOutputIsRefused)
{
    TypeParam* const none = nullptr;
    for (const std::int32_t size : {5, 0}) {
        EXPECT_EQ(getMessage(this->preloaded(), 1, 1, none, size, nullptr), 72);
        EXPECT_EQ(TSGetError(this->locale_.get()), TS_ERR_ARGUMENT);
    }
}

TYPED_TEST(Units, WithoutMemoryItIs20)
{
    for (std::uint32_t n = 1; n < 3; ++n) {
        const auto text = of<TypeParam>({'d', 0});
        Allocator::failAllocation(n);
        EXPECT_EQ(this->get(this->preloaded(), 1, 6, text).first, 72) << n;
        EXPECT_EQ(TSGetError(this->locale_.get()), 20);
    }
    TypeParam one = this->kFill;
    EXPECT_EQ(getMessage(this->preloaded(), 1, 1, &one, INT32_MAX, nullptr), 72);
    EXPECT_EQ(TSGetError(this->locale_.get()), 20);
}

TYPED_TEST(Units, AStatefulLocaleGivesTheSameCharacters)
{
    CatalogFile file = smallCatalog();
    file.locale = "Wide_Wide";
    file.sets[0].messages[0].text = "a\x8A\x42\x8A\x42";
    const Catalog catalog = this->open(file, Form::kPreloaded, "Codes_Codes.Shift");
    const auto yen = static_cast<TypeParam>(sizeof(TypeParam) == 2 ? 0x5186 : 0x4243);
    EXPECT_EQ(this->get(catalog.get(), 1, 4).second, of<TypeParam>({'a', yen, yen, 0}));
    EXPECT_EQ(this->get(catalog.get(), 1, 3).second, of<TypeParam>({'a', yen, 0}));
    const auto text = of<TypeParam>({yen, yen, 0});
    EXPECT_EQ(this->get(catalog.get(), 9, 4, text).second, of<TypeParam>({yen, yen, 0, 0}));
}

} // namespace
} // namespace vlx::test
