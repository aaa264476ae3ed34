// Files of a POSIX host that are special: links, pipes, and files that may not be read.
#include <cstring>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

#include "frame/file.hpp"
#include "frame/real_store.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

namespace fs = std::filesystem;

class RealPosix : public RealStoreTest {
  protected:
    // Loads the language and gives the code.
    std::int32_t loadLanguage()
    {
        EXPECT_EQ(start(TS_STRICT_OBJECTS), TS_ERR_NONE);
        std::int32_t code = 4711;
        TSGetObjFromID(&manager(), TS_OBJ_LANGUAGE, 1, 0, &code);
        return code;
    }
    std::string language() const { return workshop_.path("la_00001.nls"); }
};

// The superuser may read everything, so the test is somebody else meanwhile.
class Unprivileged {
  public:
    Unprivileged()
    {
        if (geteuid() == 0)
            changed_ = seteuid(kNobody) == 0;
    }
    ~Unprivileged()
    {
        if (changed_)
            changed_ = seteuid(0) != 0;
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

  private:
    static constexpr uid_t kNobody = 65534;
    bool changed_ = false;
};

TEST_F(RealPosix, ALinkToAnObjectFileIsLoaded)
{
    fs::rename(language(), workshop_.path("elsewhere"));
    fs::create_symlink("elsewhere", language());
    EXPECT_EQ(loadLanguage(), TS_ERR_NONE);
}

TEST_F(RealPosix, ALinkToNothingIs1000)
{
    fs::remove(language());
    fs::create_symlink("nowhere", language());
    EXPECT_EQ(loadLanguage(), TS_ERR_FILE_NOT_FOUND);
}

TEST_F(RealPosix, ALinkToItselfIs1)
{
    fs::remove(language());
    fs::create_symlink("la_00001.nls", language());
    EXPECT_EQ(loadLanguage(), TS_ERR_FAILED);
}

TEST_F(RealPosix, ALinkToTheLocaleDirectoryStarts)
{
    const std::string link = workshop_.path("link");
    fs::create_directory_symlink(".", link);
    EXPECT_EQ(TSInit(link.c_str(), nullptr, nullptr, nullptr, nullptr, 0, 0), TS_ERR_NONE);
}

TEST_F(RealPosix, ADirectoryIs1)
{
    fs::remove(language());
    fs::create_directory(language());
    EXPECT_EQ(loadLanguage(), TS_ERR_FAILED);
}

TEST_F(RealPosix, APipeIs1AndNobodyWaits)
{
    fs::remove(language());
    ASSERT_EQ(mkfifo(language().c_str(), 0666), 0);
    EXPECT_EQ(loadLanguage(), TS_ERR_FAILED);
}

TEST_F(RealPosix, ADeviceIs1)
{
    fs::remove(language());
    fs::create_symlink("/dev/zero", language());
    EXPECT_EQ(loadLanguage(), TS_ERR_FAILED);
}

TEST_F(RealPosix, AFileThatMayNotBeReadIs1001)
{
    ASSERT_EQ(chmod(language().c_str(), 0), 0);
    const Unprivileged meanwhile;
    EXPECT_EQ(loadLanguage(), TS_ERR_FILE_ACCESS);
}

TEST_F(RealPosix, AControlFileThatMayNotBeReadGives10)
{
    ASSERT_EQ(chmod(workshop_.path("control.nls").c_str(), 0), 0);
    const Unprivileged meanwhile;
    EXPECT_EQ(start(), TS_ERR_NO_CONTROL_FILE);
    EXPECT_TRUE(Trace::printed("control.nls, err = 1001"));
}

TEST_F(RealPosix, AnAliasFileThatMayNotBeReadIsNoFailure)
{
    alias("Page one\n");
    ASSERT_EQ(chmod(workshop_.path("alias.txt").c_str(), 0), 0);
    const Unprivileged meanwhile;
    EXPECT_EQ(start(), TS_ERR_NONE);
    EXPECT_EQ(manager().aliases, nullptr);
    EXPECT_TRUE(Trace::printed("Alias list build failed. No aliases supported"));
}

TEST_F(RealPosix, AnAliasFileThatIsAPipeIsNoFailureAndNobodyWaits)
{
    ASSERT_EQ(mkfifo(workshop_.path("alias.txt").c_str(), 0666), 0);
    EXPECT_EQ(start(), TS_ERR_NONE);
    EXPECT_EQ(manager().aliases, nullptr);
    EXPECT_TRUE(Trace::printed("Alias list build failed. No aliases supported"));
}

TEST_F(RealPosix, AnAliasFileWithoutAnEndIsNoFailure)
{
    fs::create_symlink("/dev/zero", workshop_.path("alias.txt"));
    EXPECT_EQ(start(), TS_ERR_NONE);
    EXPECT_EQ(manager().aliases, nullptr);
    EXPECT_TRUE(Trace::printed("Alias list build failed. No aliases supported"));
}

TEST_F(RealPosix, AFileReplacedByARenameLeavesALoadedObjectAsItWas)
{
    EXPECT_EQ(loadLanguage(), TS_ERR_NONE);
    std::int32_t code = 0;
    const TSObject* const object = TSGetObjFromID(&manager(), TS_OBJ_LANGUAGE, 1, 0, &code);
    const Bytes expected = LanguageContent::sample().bytes();
    const std::string next = workshop_.make("next", Bytes(10, 0xFF));
    fs::rename(next, language());
    EXPECT_EQ(std::memcmp(object->sections[0], expected.data(), expected.size()), 0);
}

TEST_F(RealPosix, AFailedReplacementIs1AndKeepsTheTarget)
{
    start();
    const std::string path = workshop_.make("old.dat", Bytes(3, 'x'));
    std::int32_t code = 0;
    TSFile* const file = TSOpenFile(0, path.c_str(), TS_FILE_WRITE, 0, &code);
    ASSERT_NE(file, nullptr);
    fs::remove(path);
    fs::create_directory(path); // which no file replaces
    EXPECT_EQ(TSCloseFile(file, 0), 1);
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_TRUE(workshop_.look(workshop_.path("old.tmp")));
}

} // namespace
} // namespace vlx::test
