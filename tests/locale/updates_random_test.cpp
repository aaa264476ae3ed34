// Updates by chance, against the oracle, in every kind of code page: the result, the error, and the
// whole record after each call.
#include "chars/situations.hpp"
#include "locale/item_world.hpp"

namespace vlx::test {

namespace {

constexpr int kCallsOfAWorld = 2000;

class UpdatesRandomTest : public RandomItems {
  protected:
    GuardedArea::Guard anyGuard()
    {
        return once(2) ? GuardedArea::Guard::kAbove : GuardedArea::Guard::kBelow;
    }

    // Now and then an object, most often a value.
    std::int32_t anyUpdateItem()
    {
        constexpr std::int32_t kItems[] = {59, 60, 61, 66, 67, 62, 64, 68, 71, 72, 79, 80, 81};
        if (!once(4))
            return kItems[below(std::size(kItems))];
        constexpr std::int32_t kNames[] = {2, 6, 10, 12};
        return once(3) ? anyItem() : kNames[below(std::size(kNames))];
    }

    // Makes the oracle's call and then the library's; a call that is not well defined is left out.
    template <class Reference, class Call>
    void compare(const Reference& reference, const Call& call)
    {
        const oracle::Record before = record_;
        const auto wanted = wellDefined([&] { return reference(record_); });
        if (!wanted) {
            record_ = before;
            return;
        }
        ++done_;
        locale_->lastError = kUntouched;
        EXPECT_EQ(call(), wanted->result);
        EXPECT_EQ(locale_->lastError, wanted->error);
        EXPECT_EQ(valuesOf(*locale_), record_.values);
        const auto index = [](const TSObject* object) {
            return object ? static_cast<int>(object - manager().objects)
                          : oracle::Resolution::kNone;
        };
        const oracle::Resolution objects{0, index(locale_->language), index(locale_->territory),
                                         index(locale_->codePage), index(locale_->sort)};
        EXPECT_EQ(objects, record_.resolution);
        const auto name = oracle::textItem(record_, TS_LI_LOCALE_NAME, true).elements;
        EXPECT_EQ(locale_->fullName, std::string(name.begin(), name.end()));
    }

    void callEverywhere(const std::function<void()>& call)
    {
        while (done_ < kWantedCalls && !HasFailure()) {
            begin();
            if (HasFatalFailure())
                return;
            for (int i = 0; i < kCallsOfAWorld && !HasFailure(); ++i)
                call();
        }
    }

    int done_ = 0;
};

TEST_F(UpdatesRandomTest, Numbers)
{
    callEverywhere([&] {
        const std::int32_t item = anyItem();
        auto value = static_cast<std::int32_t>(below(8)) - 1;
        if (once(4))
            value = static_cast<std::int32_t>(random_());
        if (once(4)) {
            const auto& objects = directory_->objects();
            value = objects[below(static_cast<std::uint32_t>(objects.size()))].id;
        }
        SCOPED_TRACE(testing::Message() << item << " to " << value);
        compare([&](oracle::Record& record) { return oracle::setNumInfo(record, item, value); },
                [&] { return TSSetLocaleNumInfo(locale_.get(), item, value); });
    });
}

TEST_F(UpdatesRandomTest, TextsInBytes)
{
    callEverywhere([&] {
        const std::int32_t item = anyUpdateItem();
        const oracle::Bytes text = anyBytes();
        const std::int32_t length = anyLength(text);
        const std::uint32_t options = anyOptions(0x4000);
        SCOPED_TRACE(testing::Message()
                     << item << ' ' << testing::PrintToString(text) << ", length " << length);
        compare(
            [&](oracle::Record& record) {
                return oracle::setTextInfo(record, item, text, length, options);
            },
            [&] {
                auto* const given = area_.place(text, anyGuard());
                return TSSetLocaleTextInfo(locale_.get(), item,
                                           reinterpret_cast<const char*>(given), length, options);
            });
    });
}

TEST_F(UpdatesRandomTest, TextsInStatefulBytes)
{
    callEverywhere([&] {
        const std::int32_t item = anyUpdateItem();
        const oracle::Bytes text = anyBytes();
        const std::int32_t length = anyLength(text);
        const auto state = static_cast<std::int32_t>(below(2));
        const std::uint32_t options = anyOptions(0x4000);
        SCOPED_TRACE(testing::Message() << item << ' ' << testing::PrintToString(text) << ", state "
                                        << state << ", length " << length);
        compare(
            [&](oracle::Record& record) {
                return oracle::setTextInfoEx(record, item, text, state, length, options);
            },
            [&] {
                auto* const given = area_.place(text, anyGuard());
                return TSSetLocaleTextInfoEx(locale_.get(), item,
                                             reinterpret_cast<const char*>(given), state, length,
                                             options);
            });
    });
}

TEST_F(UpdatesRandomTest, TextsInUnicode)
{
    callEverywhere([&] {
        const std::int32_t item = anyUpdateItem();
        const std::vector<TSChar16> text = anyUnits();
        const std::int32_t length = anyLength(text);
        const std::uint32_t options = anyOptions(0x4000);
        SCOPED_TRACE(testing::Message()
                     << item << ' ' << testing::PrintToString(text) << ", length " << length);
        compare(
            [&](oracle::Record& record) {
                return oracle::setTextInfoU(record, item, text, length, options);
            },
            [&] {
                return TSSetLocaleTextInfoU(locale_.get(), item, area_.place(text, anyGuard()),
                                            length, options);
            });
    });
}

TEST_F(UpdatesRandomTest, TextsInPackedValues)
{
    callEverywhere([&] {
        const std::int32_t item = anyUpdateItem();
        const std::vector<TSChar32> text = anyPacked();
        const std::int32_t length = anyLength(text);
        const std::uint32_t options = anyOptions(0x4000);
        SCOPED_TRACE(testing::Message()
                     << item << ' ' << testing::PrintToString(text) << ", length " << length);
        compare(
            [&](oracle::Record& record) {
                return oracle::setTextInfoW(record, item, text, length, options);
            },
            [&] {
                return TSSetLocaleTextInfoW(locale_.get(), item, area_.place(text, anyGuard()),
                                            length, options);
            });
    });
}

} // namespace

} // namespace vlx::test
