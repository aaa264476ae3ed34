// The file layer's writing: over an existing file only at the close, by way of a temporary one.
#include "frame/file_fixture.hpp"

namespace vlx::test {
namespace {

class FileWrite : public File {};

TEST_F(FileWrite, AWriteOpenOfANewPathWritesItDirectly)
{
    TSFile* const file = open("/new.dat", TS_FILE_WRITE);
    ASSERT_NE(file, nullptr);
    EXPECT_FALSE(file->usesTemp);
    EXPECT_TRUE(file->atEnd);
    EXPECT_TRUE(MemoryHost::get("/new.dat"));
    EXPECT_FALSE(MemoryHost::get("/new.tmp"));
    EXPECT_EQ(TSCloseFile(file, 0), 0);
    EXPECT_FALSE(Trace::printed("Renaming"));
    EXPECT_FALSE(Trace::printed("Using temp file"));
    EXPECT_TRUE(MemoryHost::get("/new.dat"));
}

TEST_F(FileWrite, ADiscardedWriteOfANewPathStaysAsWritten)
{
    TSFile* const file = open("/new.dat", TS_FILE_WRITE);
    EXPECT_EQ(TSCloseFile(file, 1), 0);
    EXPECT_TRUE(MemoryHost::get("/new.dat"));
}

TEST_F(FileWrite, AWriteOpenOfAnExistingPathLeavesItUnchangedUntilTheClose)
{
    MemoryHost::put("/d/old.dat", "old");
    TSFile* const file = open("/d/old.dat", TS_FILE_WRITE);
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(file->usesTemp);
    EXPECT_STREQ(file->targetStem, "/d/old");
    EXPECT_STREQ(file->targetExtension, ".dat");
    EXPECT_TRUE(Trace::printed("Using temp file /d/old.tmp"));
    EXPECT_EQ(MemoryHost::get("/d/old.dat"), text("old"));
    ASSERT_TRUE(MemoryHost::get("/d/old.tmp"));
    write("/d/old.tmp", "new");
    EXPECT_EQ(TSCloseFile(file, 0), 0);
    EXPECT_TRUE(Trace::printed("Renaming /d/old.tmp to /d/old.dat"));
    EXPECT_EQ(MemoryHost::get("/d/old.dat"), text("new"));
    EXPECT_FALSE(MemoryHost::get("/d/old.tmp"));
}

TEST_F(FileWrite, ADiscardedWriteLeavesAnExistingFileUnchangedForGood)
{
    MemoryHost::put("/d/old.dat", "old");
    TSFile* const file = open("/d/old.dat", TS_FILE_WRITE);
    write("/d/old.tmp", "new");
    EXPECT_EQ(TSCloseFile(file, 1), 0);
    EXPECT_EQ(MemoryHost::get("/d/old.dat"), text("old"));
    EXPECT_FALSE(MemoryHost::get("/d/old.tmp"));
    EXPECT_FALSE(Trace::printed("Renaming"));
}

TEST_F(FileWrite, OnlyADiscardOf1Discards)
{
    MemoryHost::put("/d/old.dat", "old");
    TSFile* const file = open("/d/old.dat", TS_FILE_WRITE);
    write("/d/old.tmp", "new");
    EXPECT_EQ(TSCloseFile(file, 2), 0);
    EXPECT_EQ(MemoryHost::get("/d/old.dat"), text("new"));
}

TEST_F(FileWrite, ADiscardThatCannotRemoveTheTemporaryFileIsNoFailure)
{
    MemoryHost::put("/d/old.dat", "old");
    TSFile* const file = open("/d/old.dat", TS_FILE_WRITE);
    MemoryHost::erase("/d/old.tmp");
    EXPECT_EQ(TSCloseFile(file, 1), 0);
}

TEST_F(FileWrite, AFailedRenameIs1AndLeavesTheTemporaryFileAndTheTarget)
{
    MemoryHost::put("/d/old.dat", "old");
    TSFile* const file = open("/d/old.dat", TS_FILE_WRITE);
    write("/d/old.tmp", "new");
    MemoryHost::failCall(2); // the close, the rename
    EXPECT_EQ(TSCloseFile(file, 0), 1);
    EXPECT_EQ(MemoryHost::get("/d/old.dat"), text("old"));
    EXPECT_EQ(MemoryHost::get("/d/old.tmp"), text("new"));
}

TEST_F(FileWrite, AnOverwriteWritesOverTheExistingFile)
{
    MemoryHost::put("/d/old.dat", "old");
    TSFile* const file = open("/d/old.dat", TS_FILE_WRITE, 1);
    ASSERT_NE(file, nullptr);
    EXPECT_FALSE(file->usesTemp);
    EXPECT_EQ(MemoryHost::get("/d/old.dat"), Bytes());
    EXPECT_EQ(TSCloseFile(file, 0), 0);
    EXPECT_FALSE(MemoryHost::get("/d/old.tmp"));
}

TEST_F(FileWrite, TheTemporaryNameHasTheExtensionTmpWhateverThePathHas)
{
    const char* const paths[][2] = {{"/d/a.b.c", "/d/a.b.tmp"},
                                    {"/d/none", "/d/none.tmp"},
                                    {"/d.x/none", "/d.x/none.tmp"},
                                    {"/d/a.", "/d/a.tmp"}};
    for (const auto& [path, temp] : paths) {
        MemoryHost::put(path, "old");
        TSFile* const file = open(path, TS_FILE_WRITE);
        ASSERT_NE(file, nullptr);
        EXPECT_TRUE(MemoryHost::get(temp)) << temp;
        EXPECT_EQ(TSCloseFile(file, 0), 0);
        EXPECT_FALSE(MemoryHost::get(temp));
        EXPECT_EQ(MemoryHost::get(path), Bytes());
    }
}

TEST_F(FileWrite, APathWhosePartsDoNotFitTheRecordIs1003AndTheLongestOnesFit)
{
    const std::string stem = "/" + std::string(259, 's');
    const std::string extension = "." + std::string(258, 'e');
    const std::pair<std::string, bool> paths[] = {{stem + ".x", true},
                                                  {stem + "s.x", false},
                                                  {"/s" + extension, true},
                                                  {"/s" + extension + "e", false},
                                                  {stem + extension, true}};
    for (const auto& [path, fits] : paths) {
        MemoryHost::put(path, "old");
        TSFile* const file = open(path.c_str(), TS_FILE_WRITE);
        EXPECT_EQ(file != nullptr, fits);
        EXPECT_EQ(code_, fits ? TS_ERR_NONE : TS_ERR_FILE_READ);
        if (file) {
            EXPECT_EQ(TSCloseFile(file, 0), 0);
            EXPECT_EQ(MemoryHost::get(path), Bytes());
        }
    }
}

TEST_F(FileWrite, ACloseThatFailsIs1AndKeepsTheRecordAndTheTemporaryFile)
{
    MemoryHost::put("/d/old.dat", "old");
    TSFile* const file = open("/d/old.dat", TS_FILE_WRITE);
    const int blocks = Allocator::liveBlocks();
    MemoryHost::failCall(1);
    EXPECT_EQ(TSCloseFile(file, 0), 1);
    EXPECT_EQ(Allocator::liveBlocks(), blocks);
    EXPECT_EQ(MemoryHost::get("/d/old.dat"), text("old"));
    EXPECT_TRUE(MemoryHost::get("/d/old.tmp"));
    EXPECT_EQ(TSCloseFile(file, 1), 0);
    EXPECT_EQ(Allocator::liveBlocks(), blocks - 1);
}

} // namespace
} // namespace vlx::test
