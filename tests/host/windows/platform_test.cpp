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

TEST_F(WindowsHostTest, TellsSettingsInBothForms)
{
    ASSERT_TRUE(host::hasSettings16());
    const host::Settings american = host::openSettings(0x0409, false);
    char narrow[32];
    ASSERT_TRUE(host::readSetting(american, host::Setting::kDecimalPoint, narrow, sizeof narrow));
    EXPECT_STREQ(narrow, ".");
    TSChar16 wide[32];
    ASSERT_TRUE(host::readSetting16(american, host::Setting::kDecimalPoint, wide, 32));
    EXPECT_EQ(wide[0], '.');
    EXPECT_EQ(wide[1], 0);
    EXPECT_FALSE(host::readSetting16(american, host::Setting::kDecimalPoint, wide, 1)); // no room
    EXPECT_FALSE(host::readSetting16(american, static_cast<host::Setting>(0xFFF), wide, 32));
    host::closeSettings(american);
    const host::Settings german = host::openSettings(0x0407, false);
    ASSERT_TRUE(host::readSetting16(german, host::Setting::kDecimalPoint, wide, 32));
    EXPECT_EQ(wide[0], ',');
    host::closeSettings(german);
}

TEST_F(WindowsHostTest, SettingsOfTheUserAreTheSystemsOwn)
{
    const host::Settings users = host::openSettings(host::userLocaleId(), true);
    TSChar16 ours[32];
    ASSERT_TRUE(host::readSetting16(users, host::Setting::kDate, ours, 32));
    host::closeSettings(users);
    WCHAR theirs[32];
    ASSERT_NE(GetLocaleInfoW(GetUserDefaultLCID(), LOCALE_SSHORTDATE, theirs, 32), 0);
    EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>(ours)),
              std::u16string(reinterpret_cast<const char16_t*>(theirs)));
}

TEST_F(WindowsHostTest, ConvertsFromACodePage)
{
    TSChar16 wide[4];
    ASSERT_TRUE(host::toUnicode(1252, "\x80!", wide, 4));
    EXPECT_EQ(wide[0], 0x20AC);
    EXPECT_EQ(wide[1], '!');
    EXPECT_EQ(wide[2], 0);
    EXPECT_FALSE(host::toUnicode(1252, "1234", wide, 4));
    EXPECT_FALSE(host::toUnicode(65432, "1", wide, 4));
}

} // namespace
} // namespace vlx::test
