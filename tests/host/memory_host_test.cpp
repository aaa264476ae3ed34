// What the memory host offers beyond the contract.
#include "support/memory_host.hpp"

#include <gtest/gtest.h>

#include "host/host.hpp"

namespace vlx::test {
namespace {

using host::Access;
using host::File;
using host::OpenError;

class MemoryHostTest : public testing::Test {
  protected:
    MemoryHostTest() { MemoryHost::reset(); }
    ~MemoryHostTest() override { MemoryHost::reset(); }

    OpenError error_ = OpenError::kNone;
};

TEST_F(MemoryHostTest, ViewsHaveAGranularityOfTheirOwn)
{
    EXPECT_EQ(host::granularity(), 65536u);
}

TEST_F(MemoryHostTest, CountsWhatIsOpen)
{
    MemoryHost::put("/a", "text");
    const File file = host::open("/a", Access::kRead, error_);
    const host::Mapping mapping = host::createMapping(file);
    const void* const view = host::mapView(mapping, 0, 4);
    void* const block = host::allocate(0, 8);
    EXPECT_EQ(MemoryHost::openFiles(), 1);
    EXPECT_EQ(MemoryHost::openMappings(), 1);
    EXPECT_EQ(MemoryHost::openViews(), 1);
    EXPECT_EQ(MemoryHost::liveBlocks(), 1);
    EXPECT_EQ(MemoryHost::calls(), 4u);
    EXPECT_TRUE(host::unmapView(view));
    EXPECT_TRUE(host::closeMapping(mapping));
    EXPECT_TRUE(host::close(file));
    EXPECT_NE(host::free(0, block), 0);
    EXPECT_EQ(MemoryHost::openFiles(), 0);
    EXPECT_EQ(MemoryHost::openMappings(), 0);
    EXPECT_EQ(MemoryHost::openViews(), 0);
    EXPECT_EQ(MemoryHost::liveBlocks(), 0);
}

TEST_F(MemoryHostTest, WhatWasOpenBeforeAResetCanStillBeGivenBack)
{
    void* const block = host::allocate(0, 8);
    MemoryHost::reset();
    EXPECT_EQ(MemoryHost::liveBlocks(), 0);
    EXPECT_NE(host::free(0, block), 0);
    EXPECT_EQ(MemoryHost::liveBlocks(), 0);
    EXPECT_EQ(host::free(0, block), 0);
}

TEST_F(MemoryHostTest, FailsTheOrderedCallOnce)
{
    MemoryHost::put("/a", "text");
    MemoryHost::failCall(2);
    const File file = host::open("/a", Access::kRead, error_);
    EXPECT_NE(file, host::kNoFile);
    EXPECT_FALSE(host::close(file));
    EXPECT_EQ(MemoryHost::openFiles(), 1);
    EXPECT_TRUE(host::close(file));
}

TEST_F(MemoryHostTest, EveryCallThatCanFailFailsOnDemand)
{
    MemoryHost::put("/a", "text");
    const File file = host::open("/a", Access::kRead, error_);
    const host::Mapping mapping = host::createMapping(file);
    const void* const view = host::mapView(mapping, 0, 4);
    void* const block = host::allocate(0, 8);
    char buffer[4];
    std::uint32_t done = 1;
    const auto next = [] { MemoryHost::failCall(1); };
    next();
    EXPECT_EQ(host::open("/a", Access::kRead, error_), host::kNoFile);
    EXPECT_EQ(error_, OpenError::kOther);
    next();
    EXPECT_FALSE(host::read(file, buffer, 4, done));
    EXPECT_EQ(done, 0u);
    next();
    EXPECT_FALSE(host::seek(file, 0, host::Origin::kBegin));
    next();
    EXPECT_FALSE(host::remove("/a"));
    next();
    EXPECT_EQ(host::replace("/a", "/b"), MemoryHost::kReplaceError);
    next();
    EXPECT_EQ(host::createMapping(file), 0);
    next();
    EXPECT_EQ(host::mapView(mapping, 0, 4), nullptr);
    next();
    EXPECT_FALSE(host::unmapView(view));
    next();
    EXPECT_FALSE(host::closeMapping(mapping));
    next();
    EXPECT_EQ(host::allocate(0, 8), nullptr);
    next();
    EXPECT_EQ(host::free(0, block), 0);
    EXPECT_TRUE(host::unmapView(view));
    EXPECT_TRUE(host::closeMapping(mapping));
    EXPECT_TRUE(host::close(file));
    EXPECT_NE(host::free(0, block), 0);
}

TEST_F(MemoryHostTest, DeniesAPath)
{
    MemoryHost::put("/a", "text");
    MemoryHost::deny("/a");
    EXPECT_EQ(host::open("/a", Access::kRead, error_), host::kNoFile);
    EXPECT_EQ(error_, OpenError::kAccessDenied);
    EXPECT_FALSE(host::remove("/a"));
    EXPECT_TRUE(MemoryHost::get("/a"));
}

TEST_F(MemoryHostTest, TellsTheUserThatTheTestSets)
{
    EXPECT_EQ(host::userLocaleId(), 0u);
    MemoryHost::setUserLocaleId(0x407);
    EXPECT_EQ(host::userLocaleId(), 0x407u);
}

TEST_F(MemoryHostTest, AReadOutsideAViewEndsTheProcess)
{
    MemoryHost::put("/a", std::string(5000, 'x'));
    const File file = host::open("/a", Access::kRead, error_);
    const host::Mapping mapping = host::createMapping(file);
    const auto* const view = static_cast<const volatile char*>(host::mapView(mapping, 0, 5000));
    EXPECT_EQ(view[4999], 'x');
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(static_cast<void>(view[65536]), "");
    EXPECT_DEATH(static_cast<void>(view[8192]), "");
    EXPECT_TRUE(host::unmapView(const_cast<const char*>(view)));
    EXPECT_TRUE(host::closeMapping(mapping));
    EXPECT_TRUE(host::close(file));
}

} // namespace
} // namespace vlx::test
