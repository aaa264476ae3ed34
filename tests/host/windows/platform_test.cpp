// What a Windows host has beyond the contract.
#include "host/host.hpp"

#include <string>

#include <windows.h>

#include <gtest/gtest.h>

#include "host/workshop.hpp"

namespace vlx::test {
namespace {

using host::Access;
using host::File;
using host::kNoFile;
using host::OpenError;

class WindowsHostTest : public testing::Test {
  protected:
    OpenError errorOf(const std::string& path, Access access)
    {
        OpenError error = OpenError::kNone;
        EXPECT_EQ(host::open(path.c_str(), access, error), kNoFile);
        return error;
    }

    Workshop workshop_;
};

TEST_F(WindowsHostTest, ADirectoryIsDenied)
{
    ASSERT_TRUE(CreateDirectoryA(workshop_.path("directory").c_str(), nullptr));
    EXPECT_EQ(errorOf(workshop_.path("directory"), Access::kRead), OpenError::kAccessDenied);
    EXPECT_TRUE(host::exists(workshop_.path("directory").c_str()));
}

TEST_F(WindowsHostTest, AMissingDirectoryIsNotAMissingFile)
{
    EXPECT_EQ(errorOf(workshop_.path("none/file"), Access::kRead), OpenError::kOther);
}

TEST_F(WindowsHostTest, AWriterSharesWithNobody)
{
    OpenError error = OpenError::kNone;
    const std::string path = workshop_.make("data", Bytes(10));
    const File file = host::open(path.c_str(), Access::kUpdate, error);
    EXPECT_EQ(errorOf(path, Access::kRead), OpenError::kOther);
    EXPECT_TRUE(host::close(file));
}

TEST_F(WindowsHostTest, ADotBeginsAnExtensionWhereverItStands)
{
    EXPECT_EQ(host::stemLength("c:\\home\\.profile"), 8u);
    EXPECT_EQ(host::stemLength("c:\\dir.d\\name"), 13u);
}

TEST_F(WindowsHostTest, TellsTheUsersLocale)
{
    EXPECT_EQ(host::userLocaleId(), GetUserDefaultLCID());
    EXPECT_NE(host::userLocaleId(), 0u);
}

} // namespace
} // namespace vlx::test
