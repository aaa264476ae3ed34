// Configuration values of the base services.
#include <string>

#include <gtest/gtest.h>

#include "host/services.hpp"
#include "support/process.hpp"

namespace {

using vlx::test::clearProcessVariable;
using vlx::test::setProcessVariable;

TEST(EnvironTest, AnUnsetVariableIsNull)
{
    clearProcessVariable("ZBQ_TEST_VALUE");
    EXPECT_EQ(SYS1_GetEnv("ZBQ_TEST_VALUE", 0), nullptr);
}

TEST(EnvironTest, AValueStaysWhenTheEnvironmentChanges)
{
    setProcessVariable("ZBQ_TEST_VALUE", "first");
    const char* const first = SYS1_GetEnv("ZBQ_TEST_VALUE", 0);
    setProcessVariable("ZBQ_TEST_VALUE", "second");
    EXPECT_STREQ(SYS1_GetEnv("ZBQ_TEST_VALUE", 0), "second");
    EXPECT_STREQ(first, "first");
    setProcessVariable("ZBQ_TEST_VALUE", "first");
    EXPECT_EQ(SYS1_GetEnv("ZBQ_TEST_VALUE", 0), first);
    clearProcessVariable("ZBQ_TEST_VALUE");
    EXPECT_EQ(SYS1_GetEnv("ZBQ_TEST_VALUE", 0), nullptr);
}

TEST(EnvironTest, LongAndEmptyValuesAreKeptToo)
{
    for (const std::size_t size : {0u, 1u, 511u, 512u, 513u, 5000u}) {
        const std::string value(size, 'v');
        setProcessVariable("ZBQ_TEST_VALUE", value);
        const char* const kept = SYS1_GetEnv("ZBQ_TEST_VALUE", 0);
        ASSERT_TRUE(kept);
        EXPECT_EQ(kept, value);
        EXPECT_EQ(SYS1_GetEnv("ZBQ_TEST_VALUE", 0), kept);
    }
    clearProcessVariable("ZBQ_TEST_VALUE");
}

} // namespace
