// What the tests of updates share.
#pragma once

#include <cstddef>

#include "locale/item_world.hpp"

namespace vlx::test {

// A 16-bit text for the `U` member.
inline const TSChar16* u(const char16_t* text)
{
    return reinterpret_cast<const TSChar16*>(text);
}

class UpdateTest : public ItemTest {
  protected:
    // A call that is to fail leaves the record as it was, but for the error.
    template <class Call>
    void expectRefused(TSLocale& locale, std::int32_t error, const Call& call)
    {
        const oracle::Values before = valuesOf(locale);
        const std::string image = imageOf(locale);
        EXPECT_EQ(call(), 0);
        EXPECT_EQ(TSGetError(&locale), error);
        EXPECT_EQ(valuesOf(locale), before);
        TSLocale cleared = locale;
        std::memcpy(&cleared.lastError, image.data() + offsetof(TSLocale, lastError),
                    sizeof cleared.lastError);
        EXPECT_EQ(imageOf(cleared), image);
    }
};

} // namespace vlx::test
