// The names of the files of a locale directory, and the choice of the directory.
#include "frame/locdir.hpp"
#include "frame/store.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kBufferSize = 260; // what the library passes
constexpr std::size_t kLongestDirectory = 247;

std::string longPath(std::size_t length)
{
    return "/" + std::string(length - 1, 'd');
}

class Names : public StoreTest {
  protected:
    Names() { start(nullptr); }

    char buffer_[2 * kBufferSize] = "";
};

TEST_F(Names, TheControlNameIsTheDirectoryAndItsOwnSeparator)
{
    EXPECT_EQ(TSComposeControlName("/a/b", buffer_, kBufferSize), buffer_);
    EXPECT_STREQ(buffer_, "/a/b/control.nls");
    EXPECT_EQ(TSComposeControlName("", buffer_, kBufferSize), buffer_);
    EXPECT_STREQ(buffer_, "/control.nls");
}

TEST_F(Names, TheControlNameNeeds13BytesBehindTheDirectory)
{
    EXPECT_EQ(TSComposeControlName("/a/b", buffer_, 4 + 13), buffer_);
    EXPECT_EQ(TSComposeControlName("/a/b", buffer_, 4 + 12), nullptr);
    EXPECT_EQ(TSComposeControlName("/a/b", buffer_, 4), nullptr);
    EXPECT_EQ(TSComposeControlName("/a/b", buffer_, 3), nullptr);
    EXPECT_EQ(TSComposeControlName("/a/b", buffer_, 0), nullptr);
}

TEST_F(Names, ADirectoryOf247CharactersComposesAndOneOf248DoesNot)
{
    EXPECT_EQ(TSComposeControlName(longPath(kLongestDirectory).c_str(), buffer_, kBufferSize),
              buffer_);
    EXPECT_EQ(std::string(buffer_), longPath(kLongestDirectory) + "/control.nls");
    EXPECT_EQ(TSComposeControlName(longPath(248).c_str(), buffer_, kBufferSize), nullptr);
}

TEST_F(Names, EachTypeHasItsCodeInTheObjectName)
{
    const char* const expected[] = {"/d/la_00002.nls", "/d/te_00002.nls", "/d/cp_00002.nls",
                                    "/d/so_00002.nls"};
    for (unsigned type = 0; type < 4; ++type) {
        EXPECT_EQ(TSComposeObjectName("/d", type, 2, buffer_, kBufferSize), buffer_);
        EXPECT_STREQ(buffer_, expected[type]);
    }
}

TEST_F(Names, Sort7IsPaddedAndAnIdOfFiveDigitsIsNot)
{
    TSComposeObjectName("/d", TS_OBJ_SORT, 7, buffer_, kBufferSize);
    EXPECT_STREQ(buffer_, "/d/so_00007.nls");
    TSComposeObjectName("/d", TS_OBJ_CODEPAGE, 1252, buffer_, kBufferSize);
    EXPECT_STREQ(buffer_, "/d/cp_01252.nls");
    TSComposeObjectName("/d", TS_OBJ_CODEPAGE, 12345, buffer_, kBufferSize);
    EXPECT_STREQ(buffer_, "/d/cp_12345.nls");
    TSComposeObjectName("/d", TS_OBJ_CODEPAGE, 65535, buffer_, kBufferSize);
    EXPECT_STREQ(buffer_, "/d/cp_65535.nls");
}

TEST_F(Names, TheObjectNameTakesTheSeparatorsOfTheGlobalArea)
{
    tsGlobals->pathSeparator[0] = '!';
    tsGlobals->fieldSeparator[0] = '-';
    TSComposeObjectName("/d", TS_OBJ_LANGUAGE, 3, buffer_, kBufferSize);
    EXPECT_STREQ(buffer_, "/d!la-00003.nls");
    TSComposeAliasName("/d", buffer_, kBufferSize);
    EXPECT_STREQ(buffer_, "/d!alias.txt");
}

TEST_F(Names, TheObjectNameNeeds14BytesBeyondTheDirectoryAndSaysSo)
{
    EXPECT_EQ(TSComposeObjectName("/d", 0, 2, buffer_, 2 + 14), buffer_);
    testing::internal::CaptureStderr();
    EXPECT_EQ(TSComposeObjectName("/d", 0, 2, buffer_, 2 + 13), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Buffer provided = 15, needed = 16\n");
}

TEST_F(Names, ADirectoryOf246CharactersHasObjectNamesAndOneOf247HasNone)
{
    EXPECT_EQ(TSComposeObjectName(longPath(246).c_str(), 0, 2, buffer_, kBufferSize), buffer_);
    testing::internal::CaptureStderr();
    EXPECT_EQ(TSComposeObjectName(longPath(247).c_str(), 0, 2, buffer_, kBufferSize), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Buffer provided = 260, needed = 261\n");
}

TEST_F(Names, AnUnknownTypeHasNoObjectName)
{
    EXPECT_EQ(TSComposeObjectName("/d", 4, 2, buffer_, kBufferSize), nullptr);
    EXPECT_EQ(TSComposeObjectName("/d", 255, 2, buffer_, kBufferSize), nullptr);
}

TEST_F(Names, TheAliasNameNeeds10BytesBeyondTheDirectoryAndSaysSo)
{
    EXPECT_EQ(TSComposeAliasName("/d", buffer_, kBufferSize), buffer_);
    EXPECT_STREQ(buffer_, "/d/alias.txt");
    testing::internal::CaptureStderr();
    EXPECT_EQ(TSComposeAliasName("/d", buffer_, 2 + 9), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Buffer provided = 11, needed = 12\n");
}

TEST_F(Names, AnAliasNameThatTheTestLetsThroughByOneByteIsCut)
{
    char tight[12];
    EXPECT_EQ(TSComposeAliasName("/d", tight, sizeof tight), tight);
    EXPECT_STREQ(tight, "/d/alias.tx");
}

TEST_F(Names, AConfigurationValueIsItsLengthPlusOneAndCopiedOnlyIfItFits)
{
    EXPECT_EQ(TSGetConfigValue("TS_LOCALEDIR", buffer_, 10), 0u);
    setConfig("TS_LOCALEDIR", "abc");
    EXPECT_EQ(TSGetConfigValue("TS_LOCALEDIR", buffer_, 4), 4u);
    EXPECT_STREQ(buffer_, "abc");
    buffer_[0] = 'x';
    EXPECT_EQ(TSGetConfigValue("TS_LOCALEDIR", buffer_, 3), 4u);
    EXPECT_STREQ(buffer_, "xbc");
    setConfig("TS_LOCALEDIR", "");
    EXPECT_EQ(TSGetConfigValue("TS_LOCALEDIR", buffer_, 10), 1u);
    EXPECT_STREQ(buffer_, "");
}

TEST_F(Names, Candidate0IsTheVariable)
{
    EXPECT_EQ(TSLocaleDirCandidate(buffer_, kBufferSize, 0), -1);
    setConfig("TS_LOCALEDIR", "/x");
    EXPECT_EQ(TSLocaleDirCandidate(buffer_, kBufferSize, 0), 3);
    EXPECT_STREQ(buffer_, "/x");
    setConfig("TS_LOCALEDIR", longPath(259));
    EXPECT_EQ(TSLocaleDirCandidate(buffer_, kBufferSize, 0), 260);
    setConfig("TS_LOCALEDIR", longPath(260));
    EXPECT_EQ(TSLocaleDirCandidate(buffer_, kBufferSize, 0), 0);
}

TEST_F(Names, Candidate1IsTheFixedPathOf17Bytes)
{
    EXPECT_EQ(TSLocaleDirCandidate(buffer_, 17, 1), 17);
    EXPECT_STREQ(buffer_, kDefaultDirectory);
    EXPECT_EQ(TSLocaleDirCandidate(buffer_, 16, 1), 0);
}

// The order of the argument, the variable TS_LOCALEDIR and the default.
class Choice : public StoreTest {
  protected:
    // A start; the trace of opens tells what was tried.
    std::int32_t tried(const char* directory, std::uint32_t options = 0)
    {
        Trace::setMask(TRC1_INPUTS | TRC1_ERRORS);
        return start(directory, options);
    }
    static bool opened(const std::string& directory)
    {
        return Trace::printed("Opening file " + directory + "/control.nls");
    }
};

TEST_F(Choice, TheArgumentComesFirstAndIsKept)
{
    for (const char* directory : {kDirectory, "/variable", kDefaultDirectory})
        putDirectory(directory);
    setConfig("TS_LOCALEDIR", "/variable");
    EXPECT_EQ(tried(kDirectory), TS_ERR_NONE);
    EXPECT_STREQ(manager().directory, kDirectory);
    EXPECT_FALSE(opened("/variable"));
}

TEST_F(Choice, AnArgumentWithoutAControlFileGivesWayToTheVariable)
{
    putDirectory("/variable");
    putDirectory(kDefaultDirectory);
    setConfig("TS_LOCALEDIR", "/variable");
    EXPECT_EQ(tried("/empty"), TS_ERR_NONE);
    EXPECT_STREQ(manager().directory, "/variable");
    EXPECT_TRUE(Trace::printed("Unable to open /empty/control.nls, err = 1000"));
    EXPECT_FALSE(opened(kDefaultDirectory));
    EXPECT_EQ(TSReleaseLocale(goodLocale("Northern")), 0);
    EXPECT_FALSE(isBuiltin(listed(TS_OBJ_LANGUAGE, kNorthern)));
}

TEST_F(Choice, WithoutArgumentAndVariableTheDefaultIsTaken)
{
    putDirectory(kDefaultDirectory);
    EXPECT_EQ(tried(nullptr), TS_ERR_NONE);
    EXPECT_STREQ(manager().directory, kDefaultDirectory);
}

TEST_F(Choice, AVariableWhoseFileDoesNotOpenGivesWayToTheDefault)
{
    putDirectory(kDefaultDirectory);
    setConfig("TS_LOCALEDIR", "/nowhere");
    EXPECT_EQ(tried(nullptr), TS_ERR_NONE);
    EXPECT_STREQ(manager().directory, kDefaultDirectory);
    EXPECT_TRUE(opened("/nowhere"));
}

TEST_F(Choice, AnEmptyVariableIsTheRootAndThenTheDefault)
{
    putDirectory(kDefaultDirectory);
    setConfig("TS_LOCALEDIR", "");
    EXPECT_EQ(tried(nullptr), TS_ERR_NONE);
    EXPECT_TRUE(opened(""));
    EXPECT_STREQ(manager().directory, kDefaultDirectory);
    TSTerm();

    putDirectory("");
    EXPECT_EQ(tried(nullptr), TS_ERR_NONE);
    EXPECT_STREQ(manager().directory, "");
}

TEST_F(Choice, AnEmptyArgumentIsTheRoot)
{
    putDirectory("");
    EXPECT_EQ(tried(""), TS_ERR_NONE);
    EXPECT_STREQ(manager().directory, "");
    EXPECT_EQ(TSReleaseLocale(goodLocale("Northern")), 0);
    EXPECT_FALSE(isBuiltin(listed(TS_OBJ_LANGUAGE, kNorthern)));
}

TEST_F(Choice, AVariableOf300CharactersStopsTheSearch)
{
    putDirectory(kDefaultDirectory);
    setConfig("TS_LOCALEDIR", longPath(300));
    EXPECT_EQ(tried(nullptr), TS_ERR_NO_CONTROL_FILE);
    EXPECT_FALSE(opened(kDefaultDirectory));
    EXPECT_TRUE(hasBuiltinTable());
    EXPECT_STREQ(manager().directory, "");
}

TEST_F(Choice, AVariableThatFitsButComposesNotStopsTheSearch)
{
    putDirectory(kDefaultDirectory);
    setConfig("TS_LOCALEDIR", longPath(248));
    EXPECT_EQ(tried(nullptr), TS_ERR_NO_CONTROL_FILE);
    EXPECT_FALSE(opened(kDefaultDirectory));
    EXPECT_STREQ(manager().directory, "");
}

TEST_F(Choice, AnArgumentThatIsTooLongStopsTheSearch)
{
    putDirectory("/variable");
    putDirectory(kDefaultDirectory);
    setConfig("TS_LOCALEDIR", "/variable");
    const std::string directory = longPath(248);
    EXPECT_EQ(tried(directory.c_str()), TS_ERR_NO_CONTROL_FILE);
    EXPECT_FALSE(opened("/variable"));
    EXPECT_FALSE(opened(kDefaultDirectory));
    EXPECT_TRUE(Trace::printed("Unable to construct control file name in directory " + directory));
    EXPECT_TRUE(Trace::printed("control size = 260"));
    EXPECT_TRUE(Trace::printed("Unable to open control file"));
}

TEST_F(Choice, ADirectoryThatDidNotWorkIsNotKept)
{
    setConfig("TS_LOCALEDIR", "/nowhere");
    EXPECT_EQ(tried("/empty", TS_STRICT_OBJECTS), TS_ERR_NO_CONTROL_FILE);
    EXPECT_STREQ(manager().directory, "");
}

TEST_F(Choice, TheCodeIsThatOfTheLastAttempt)
{
    std::int32_t code = 0;
    start(nullptr); // for the slots
    TSObjManager* found = TSInitObjManager("/nowhere", TS_STRICT_OBJECTS, &code);
    EXPECT_EQ(code, TS_ERR_FILE_NOT_FOUND);
    EXPECT_EQ(TSDestroyObjManager(found), 0);

    putDirectory(kDefaultDirectory);
    MemoryHost::deny(std::string(kDefaultDirectory) + "/control.nls");
    found = TSInitObjManager("/nowhere", TS_STRICT_OBJECTS, &code);
    EXPECT_EQ(code, TS_ERR_FILE_ACCESS);
    EXPECT_EQ(TSDestroyObjManager(found), 0);

    setConfig("TS_LOCALEDIR", longPath(300));
    found = TSInitObjManager("/nowhere", TS_STRICT_OBJECTS, &code);
    EXPECT_EQ(code, TS_ERR_FILE_READ);
    EXPECT_EQ(TSDestroyObjManager(found), 0);
}

TEST_F(Choice, ASuccessfulOpenClearsTheCodeOfTheAttemptsBefore)
{
    std::int32_t code = 4711;
    start(nullptr);
    putDirectory(kDefaultDirectory);
    TSObjManager* const found = TSInitObjManager("/nowhere", 0, &code);
    EXPECT_EQ(code, TS_ERR_NONE);
    EXPECT_EQ(TSDestroyObjManager(found), 0);
}

TEST_F(Choice, ABadControlFileEndsTheSearchAndTheNextDirectoryIsNotTried)
{
    putDirectory(kDefaultDirectory);
    putFile("control.nls", Bytes(100, 0));
    EXPECT_EQ(tried(kDirectory), TS_ERR_NO_CONTROL_FILE);
    EXPECT_FALSE(opened(kDefaultDirectory));
    EXPECT_TRUE(hasBuiltinTable());
}

TEST_F(Choice, ADirectoryOf247CharactersStartsAndItsObjectsTakeTheBuiltinData)
{
    const std::string directory = longPath(kLongestDirectory);
    putDirectory(directory);
    EXPECT_EQ(start(directory.c_str()), TS_ERR_NONE);
    EXPECT_EQ(directory, manager().directory);
    testing::internal::CaptureStderr();
    TSLocale* const locale = goodLocale("Northern_Northland.Double@BINARY");
    ASSERT_NE(locale, nullptr);
    EXPECT_STREQ(locale->language->name, "Northern");
    EXPECT_TRUE(isBuiltin(locale->language));
    TSReleaseLocale(locale);
    std::int32_t code = 0;
    EXPECT_EQ(TSGetLocale("English_Northland.Double@Plain", 0, &code), nullptr);
    EXPECT_EQ(code, TS_ERR_NO_OBJECTS);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

} // namespace
} // namespace vlx::test
