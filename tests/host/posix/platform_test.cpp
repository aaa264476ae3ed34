// What a POSIX host has beyond the contract.
#include "host/host.hpp"

#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "host/workshop.hpp"

namespace vlx::test {
namespace {

using host::Access;
using host::File;
using host::kNoFile;
using host::OpenError;

class PosixHostTest : public testing::Test {
  protected:
    OpenError errorOf(const std::string& path, Access access)
    {
        OpenError error = OpenError::kNone;
        EXPECT_EQ(host::open(path.c_str(), access, error), kNoFile);
        return error;
    }

    Workshop workshop_;
};

TEST_F(PosixHostTest, ADirectoryIsNoFile)
{
    ASSERT_EQ(mkdir(workshop_.path("directory").c_str(), 0777), 0);
    for (const Access access : {Access::kRead, Access::kWrite, Access::kUpdate})
        EXPECT_EQ(errorOf(workshop_.path("directory"), access), OpenError::kOther);
    EXPECT_TRUE(host::exists(workshop_.path("directory").c_str()));
}

TEST_F(PosixHostTest, APipeIsNoFileAndIsNotWaitedFor)
{
    ASSERT_EQ(mkfifo(workshop_.path("pipe").c_str(), 0666), 0);
    for (const Access access : {Access::kRead, Access::kWrite, Access::kUpdate})
        EXPECT_EQ(errorOf(workshop_.path("pipe"), access), OpenError::kOther);
}

TEST_F(PosixHostTest, AFileUsedAsADirectoryIsNotFound)
{
    const std::string path = workshop_.make("data", Bytes(10));
    EXPECT_EQ(errorOf(path + "/control.nls", Access::kRead), OpenError::kNotFound);
}

TEST_F(PosixHostTest, AFileWithoutPermissionIsDenied)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "nothing is denied to this user";
    const std::string path = workshop_.make("data", Bytes(10));
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    EXPECT_EQ(errorOf(path, Access::kRead), OpenError::kAccessDenied);
}

TEST_F(PosixHostTest, FilesAndMappingsDoNotReachOtherPrograms)
{
    OpenError error = OpenError::kNone;
    const std::string path = workshop_.make("data", Bytes(10));
    const File file = host::open(path.c_str(), Access::kRead, error);
    const host::Mapping mapping = host::createMapping(file);
    EXPECT_EQ(fcntl(static_cast<int>(file), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    EXPECT_EQ(fcntl(static_cast<int>(mapping - 1), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    EXPECT_TRUE(host::closeMapping(mapping));
    EXPECT_TRUE(host::close(file));
}

// The system would map the range and end the process at the first read.
TEST_F(PosixHostTest, AFileThatShrankGivesNoViewBehindItsEnd)
{
    OpenError error = OpenError::kNone;
    const std::string path = workshop_.make("data", Bytes(3 * host::granularity()));
    const File file = host::open(path.c_str(), Access::kRead, error);
    const host::Mapping mapping = host::createMapping(file);
    ASSERT_EQ(truncate(path.c_str(), 10), 0);
    EXPECT_EQ(host::mapView(mapping, host::granularity(), 10), nullptr);
    const void* const view = host::mapView(mapping, 0, 10);
    EXPECT_NE(view, nullptr);
    EXPECT_TRUE(host::unmapView(view));
    EXPECT_TRUE(host::closeMapping(mapping));
    EXPECT_TRUE(host::close(file));
}

TEST_F(PosixHostTest, TheDotOfAHiddenFileIsPartOfItsName)
{
    EXPECT_EQ(host::stemLength("/home/.profile"), 14u);
    EXPECT_EQ(host::stemLength("/home/.profile.old"), 14u);
}

} // namespace
} // namespace vlx::test
