// Queries by chance, against the oracle, in every kind of code page.
#include "chars/situations.hpp"
#include "locale/item_world.hpp"

namespace vlx::test {

namespace {

constexpr int kCallsOfAWorld = 2000;

class ItemsRandomTest : public RandomItems {
  protected:
    // Texts in the record that no territory has.
    void shake()
    {
        for (int i = 0; i < 6; ++i) {
            const oracle::Bytes text = anyBytes();
            TSSetLocaleTextInfoEx(
                locale_.get(), anyItem(),
                reinterpret_cast<const char*>(area_.place(text, GuardedArea::Guard::kAbove)),
                static_cast<std::int32_t>(below(2)), static_cast<std::int32_t>(text.size()), 0);
        }
        const auto index = [](const TSObject* object) {
            return object ? static_cast<int>(object - manager().objects)
                          : oracle::Resolution::kNone;
        };
        record_.resolution = {0, index(locale_->language), index(locale_->territory),
                              index(locale_->codePage), index(locale_->sort)};
        record_.values = valuesOf(*locale_);
    }

    std::int32_t anySize() { return static_cast<std::int32_t>(below(once(8) ? 80 : 12)) - 1; }

    template <class Unit, class Call>
    void expect(const oracle::Answer& wanted, const Call& call)
    {
        const std::vector<Unit> room(wanted.written.size(), static_cast<Unit>(0x55555555));
        Unit* const buffer =
            area_.place(room, once(2) ? GuardedArea::Guard::kAbove : GuardedArea::Guard::kBelow);
        locale_->lastError = kUntouched;
        EXPECT_EQ(call(buffer), wanted.result) << wanted;
        EXPECT_EQ(locale_->lastError, wanted.error) << wanted;
        EXPECT_TRUE(area_.holds(std::vector<Unit>(wanted.written.begin(), wanted.written.end())))
            << wanted;
    }

    void callEverywhere(const std::function<void()>& call)
    {
        for (int done = 0; done < kWantedCalls && !HasFailure(); done += kCallsOfAWorld) {
            begin();
            if (HasFatalFailure())
                return;
            for (int i = 0; i < kCallsOfAWorld && !HasFailure(); ++i) {
                if (i % 200 == 100)
                    shake();
                call();
            }
        }
    }
};

TEST_F(ItemsRandomTest, Numbers)
{
    callEverywhere([&] {
        const std::int32_t item = anyItem();
        const std::uint32_t options = anyOptions(1);
        const oracle::Answer wanted = oracle::numInfo(record_, item, options);
        locale_->lastError = kUntouched;
        EXPECT_EQ(TSGetLocaleNumInfo(locale_.get(), item, options), wanted.result) << item;
        EXPECT_EQ(locale_->lastError, wanted.error) << item;
    });
}

TEST_F(ItemsRandomTest, TextsInBytes)
{
    callEverywhere([&] {
        const std::int32_t item = anyItem();
        const std::int32_t size = anySize();
        const std::uint32_t options = anyOptions(0x4001);
        SCOPED_TRACE(testing::Message() << item << ", size " << size << ", options " << options);
        expect<unsigned char>(
            oracle::textInfo(record_, item, size, options), [&](unsigned char* buffer) {
                return TSGetLocaleTextInfo(locale_.get(), item, reinterpret_cast<char*>(buffer),
                                           size, options);
            });
    });
}

TEST_F(ItemsRandomTest, TextsInStatefulBytes)
{
    callEverywhere([&] {
        const std::int32_t item = anyItem();
        const std::int32_t size = anySize();
        const auto state = static_cast<std::int32_t>(below(2));
        const std::uint32_t options = anyOptions(0x4001);
        SCOPED_TRACE(testing::Message() << item << ", state " << state << ", size " << size
                                        << ", options " << options);
        expect<unsigned char>(
            oracle::textInfoEx(record_, item, state, size, options), [&](unsigned char* buffer) {
                return TSGetLocaleTextInfoEx(locale_.get(), item, reinterpret_cast<char*>(buffer),
                                             state, size, options);
            });
    });
}

TEST_F(ItemsRandomTest, TextsInUnicode)
{
    callEverywhere([&] {
        const std::int32_t item = anyItem();
        const std::int32_t size = anySize();
        const std::uint32_t options = anyOptions(0x4001);
        SCOPED_TRACE(testing::Message() << item << ", size " << size << ", options " << options);
        expect<TSChar16>(oracle::textInfoU(record_, item, size, options), [&](TSChar16* buffer) {
            return TSGetLocaleTextInfoU(locale_.get(), item, buffer, size, options);
        });
    });
}

TEST_F(ItemsRandomTest, TextsInPackedValues)
{
    callEverywhere([&] {
        const std::int32_t item = anyItem();
        const std::int32_t size = anySize();
        const std::uint32_t options = anyOptions(0x4001);
        SCOPED_TRACE(testing::Message() << item << ", size " << size << ", options " << options);
        expect<TSChar32>(oracle::textInfoW(record_, item, size, options), [&](TSChar32* buffer) {
            return TSGetLocaleTextInfoW(locale_.get(), item, buffer, size, options);
        });
    });
}

// The elements of a text in place.
std::vector<std::uint32_t> elementsAt(const void* at, std::uint32_t kind, std::size_t count)
{
    std::vector<std::uint32_t> elements;
    for (std::size_t i = 0; i < count; ++i) {
        if (kind == TS_TEXT_UNICODE) {
            TSChar16 unit;
            std::memcpy(&unit, static_cast<const char*>(at) + i * sizeof unit, sizeof unit);
            elements.push_back(unit);
        } else {
            elements.push_back(static_cast<const unsigned char*>(at)[i]);
        }
    }
    return elements;
}

TEST_F(ItemsRandomTest, TextsInPlace)
{
    callEverywhere([&] {
        const std::int32_t item = anyItem();
        const bool useRecord = once(2);
        const bool unicode = once(2);
        SCOPED_TRACE(item);
        oracle::Item wanted = unicode ? oracle::textItemU(record_, item, useRecord)
                                      : oracle::textItem(record_, item, useRecord);
        std::uint32_t kind = 0;
        locale_->lastError = kUntouched;
        const void* const at = unicode ? TSLocaleGetTextItemU(locale_.get(), item, useRecord, &kind)
                                       : TSLocaleGetTextItem(locale_.get(), item, useRecord, &kind);
        EXPECT_EQ(locale_->lastError, kUntouched);
        EXPECT_EQ(kind, wanted.kind);
        EXPECT_EQ(at != nullptr, wanted.kind != 0);
        if (!at)
            return;
        // A single element may be a zero; a text ends with one.
        if (!wanted.single || wanted.elements.empty())
            wanted.elements.push_back(0);
        EXPECT_EQ(elementsAt(at, kind, wanted.elements.size()), wanted.elements);
    });
}

} // namespace

} // namespace vlx::test
