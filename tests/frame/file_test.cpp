// The file layer on the memory host, whose granularity is 65,536: opening, reading, mapping.
#include "frame/file_fixture.hpp"
#include "host/host.hpp"

namespace vlx::test {
namespace {

TEST_F(File, OpensAnExistingFileForReadingAndClearsTheCode)
{
    MemoryHost::put("/f", "text");
    TSFile* const file = open("/f", TS_FILE_READ);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(code_, TS_ERR_NONE);
    EXPECT_EQ(file->mode, TS_FILE_READ);
    EXPECT_EQ(file->mapping, 0);
    EXPECT_FALSE(file->usesTemp);
    EXPECT_FALSE(file->atEnd);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, TheContextIsNotRead)
{
    MemoryHost::put("/f", "text");
    for (const TSContext context : {TSContext{0}, TSContext{1}, ~TSContext{0}}) {
        TSFile* const file = TSOpenFile(context, "/f", TS_FILE_READ, 0, &code_);
        ASSERT_NE(file, nullptr);
        EXPECT_EQ(TSCloseFile(file, 0), 0);
    }
    EXPECT_TRUE(Allocator::sameContext());
}

TEST_F(File, AMissingFileIs1000InBothModesThatNeedOne)
{
    for (const std::uint8_t mode : {std::uint8_t{TS_FILE_READ}, std::uint8_t{TS_FILE_UPDATE}}) {
        EXPECT_EQ(open("/none", mode), nullptr);
        EXPECT_EQ(code_, TS_ERR_FILE_NOT_FOUND);
    }
    EXPECT_FALSE(MemoryHost::get("/none"));
}

TEST_F(File, ADeniedFileIs1001InEveryMode)
{
    MemoryHost::put("/f", "text");
    MemoryHost::deny("/f");
    for (std::uint8_t mode = 0; mode < 3; ++mode) {
        EXPECT_EQ(open("/f", mode, 1), nullptr);
        EXPECT_EQ(code_, TS_ERR_FILE_ACCESS);
    }
}

TEST_F(File, AnyOtherFailureOfTheOpenIs1)
{
    MemoryHost::put("/f", "text");
    for (std::uint8_t mode = 0; mode < 3; ++mode) {
        MemoryHost::failCall(1);
        EXPECT_EQ(open("/f", mode, 1), nullptr);
        EXPECT_EQ(code_, TS_ERR_FAILED);
    }
}

TEST_F(File, NoMemoryForTheRecordIs20AndOpensNothing)
{
    MemoryHost::put("/f", "text");
    Allocator::failAllocation(Slot::kAllocate, 1);
    const std::uint32_t calls = MemoryHost::calls();
    EXPECT_EQ(open("/f", TS_FILE_READ), nullptr);
    EXPECT_EQ(code_, TS_ERR_MEMORY);
    EXPECT_EQ(MemoryHost::calls(), calls);
}

TEST_F(File, AnUnknownModeIsRefused)
{
    MemoryHost::put("/f", "text");
    for (const std::uint8_t mode : {std::uint8_t{3}, std::uint8_t{255}}) {
        EXPECT_EQ(open("/f", mode), nullptr);
        EXPECT_EQ(code_, TS_ERR_ARGUMENT);
    }
}

TEST_F(File, ReadsFromThePositionAndIsAtTheEndWhenAReadGivesNothing)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_READ);
    char buffer[8] = "";
    EXPECT_EQ(TSReadFile(file, buffer, 4, &code_), 4u);
    EXPECT_STREQ(buffer, "abcd");
    EXPECT_FALSE(file->atEnd);
    EXPECT_EQ(TSReadFile(file, buffer, 4, &code_), 2u);
    EXPECT_FALSE(file->atEnd);
    EXPECT_EQ(TSReadFile(file, buffer, 4, &code_), 0u);
    EXPECT_EQ(code_, TS_ERR_NONE);
    EXPECT_TRUE(file->atEnd);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, AFailedReadIs1003And0)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_READ);
    char buffer[8];
    MemoryHost::failCall(1);
    EXPECT_EQ(TSReadFile(file, buffer, 4, &code_), 0u);
    EXPECT_EQ(code_, TS_ERR_FILE_READ);
    EXPECT_FALSE(file->atEnd);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, SeeksByItsThreeOriginsAndClearsTheEnd)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_READ);
    char byte = 0;
    const auto at = [&] {
        EXPECT_EQ(TSReadFile(file, &byte, 1, &code_), 1u);
        return byte;
    };
    EXPECT_EQ(TSSeekFile(file, 2, TS_SEEK_SET), 0);
    EXPECT_EQ(at(), 'c');
    EXPECT_EQ(TSSeekFile(file, 1, TS_SEEK_CUR), 0);
    EXPECT_EQ(at(), 'e');
    EXPECT_EQ(TSSeekFile(file, -1, TS_SEEK_END), 0);
    EXPECT_EQ(at(), 'f');
    EXPECT_EQ(TSReadFile(file, &byte, 1, &code_), 0u);
    EXPECT_TRUE(file->atEnd);
    EXPECT_EQ(TSSeekFile(file, -7, TS_SEEK_END), 1);
    EXPECT_FALSE(file->atEnd);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, ASeekOfAnUnknownOriginFailsAndMovesNothing)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_READ);
    for (const std::int32_t whence : {-1, 0, 1, 2, 9, 13, INT32_MIN, INT32_MAX})
        EXPECT_EQ(TSSeekFile(file, 3, whence), 1);
    char byte = 0;
    TSReadFile(file, &byte, 1, &code_);
    EXPECT_EQ(byte, 'a');
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, WriteModeRefusesReadsAndMapsWith1002)
{
    TSFile* const file = open("/f", TS_FILE_WRITE);
    char byte;
    EXPECT_EQ(TSReadFile(file, &byte, 1, &code_), 0u);
    EXPECT_EQ(code_, TS_ERR_FILE_MODE);
    for (const std::uint32_t size : {0u, 1u}) {
        code_ = 0;
        EXPECT_EQ(TSLoadFile(file, 0, size, &code_), nullptr);
        EXPECT_EQ(code_, TS_ERR_FILE_MODE);
    }
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, UpdateModePermitsReadsAndMaps)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_UPDATE);
    ASSERT_NE(file, nullptr);
    EXPECT_FALSE(file->atEnd);
    char byte = 0;
    EXPECT_EQ(TSReadFile(file, &byte, 1, &code_), 1u);
    EXPECT_EQ(byte, 'a');
    const void* const bytes = TSLoadFile(file, 2, 4, &code_);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(std::memcmp(bytes, "cdef", 4), 0);
    EXPECT_EQ(TSUnloadFile(bytes), 0);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, ALoadAt70000IsMappedFrom65536AndStands4464BytesIntoTheView)
{
    Bytes content(80000);
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
    MemoryHost::put("/f", content);
    TSFile* const file = open("/f", TS_FILE_READ);
    const void* const bytes = TSLoadFile(file, 70000, 100, &code_);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(code_, TS_ERR_NONE);
    ASSERT_EQ(host::granularity(), 65536u);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % 65536, 4464u);
    EXPECT_EQ(std::memcmp(bytes, content.data() + 70000, 100), 0);
    EXPECT_EQ(std::memcmp(static_cast<const char*>(bytes) - 4464, content.data() + 65536, 4464), 0);
    EXPECT_EQ(TSUnloadFile(bytes), 0);
    EXPECT_EQ(MemoryHost::openViews(), 0);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, ALoadOfSize0IsNullWithCode0AndMakesNoMapping)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_READ);
    code_ = 4711;
    EXPECT_EQ(TSLoadFile(file, 3, 0, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_NONE);
    EXPECT_EQ(file->mapping, 0);
    EXPECT_EQ(MemoryHost::openMappings(), 0);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, TheMappingIsMadeOnceAndEndsWithTheFile)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_READ);
    const void* const one = TSLoadFile(file, 0, 6, &code_);
    const void* const two = TSLoadFile(file, 1, 2, &code_);
    EXPECT_EQ(MemoryHost::openMappings(), 1);
    EXPECT_EQ(MemoryHost::openViews(), 2);
    EXPECT_EQ(TSUnloadFile(one), 0);
    EXPECT_EQ(TSUnloadFile(two), 0);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
    EXPECT_EQ(MemoryHost::openMappings(), 0);
}

TEST_F(File, AViewOutlivesItsFile)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_READ);
    const void* const bytes = TSLoadFile(file, 1, 5, &code_);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
    EXPECT_EQ(std::memcmp(bytes, "bcdef", 5), 0);
    EXPECT_EQ(TSUnloadFile(bytes), 0);
}

TEST_F(File, AMappingThatFailsIs1AndAViewThatFailsIs1003)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_READ);
    MemoryHost::failCall(1);
    EXPECT_EQ(TSLoadFile(file, 0, 6, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_FAILED);
    EXPECT_EQ(file->mapping, 0);
    MemoryHost::failCall(2);
    EXPECT_EQ(TSLoadFile(file, 0, 6, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_FILE_READ);
    const void* const bytes = TSLoadFile(file, 0, 6, &code_);
    EXPECT_NE(bytes, nullptr);
    EXPECT_EQ(code_, TS_ERR_NONE);
    TSUnloadFile(bytes);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, ALoadOutsideTheFileIs1003)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_READ);
    constexpr std::uint32_t ranges[][2] = {{0, 7},   {6, 1},     {5, 2},   {100000, 1},
                                           {~0u, 1}, {~0u, ~0u}, {0, ~0u}, {0xFFFF0001, ~0u},
                                           {1, ~0u}, {2, ~0u}};
    for (const auto& [offset, size] : ranges) {
        code_ = 0;
        EXPECT_EQ(TSLoadFile(file, offset, size, &code_), nullptr) << offset << ' ' << size;
        EXPECT_EQ(code_, TS_ERR_FILE_READ);
    }
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, AnEmptyFileHasNoMappingAndIs1)
{
    MemoryHost::put("/f", "");
    TSFile* const file = open("/f", TS_FILE_READ);
    EXPECT_EQ(TSLoadFile(file, 0, 1, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_FAILED);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, AnUnloadThatFailsIs1005)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_READ);
    const void* const bytes = TSLoadFile(file, 2, 4, &code_);
    MemoryHost::failCall(1);
    EXPECT_EQ(TSUnloadFile(bytes), TS_ERR_FILE_UNMAP);
    EXPECT_EQ(TSUnloadFile(bytes), 0);
    EXPECT_EQ(TSUnloadFile(bytes), TS_ERR_FILE_UNMAP);
    EXPECT_EQ(TSUnloadFile(nullptr), TS_ERR_FILE_UNMAP);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

TEST_F(File, ACloseWhoseMappingDoesNotEndIs1AndTheFileStaysOpen)
{
    MemoryHost::put("/f", "abcdef");
    TSFile* const file = open("/f", TS_FILE_READ);
    TSUnloadFile(TSLoadFile(file, 0, 6, &code_));
    MemoryHost::failCall(1);
    EXPECT_EQ(TSCloseFile(file, 0), 1);
    EXPECT_EQ(MemoryHost::openFiles(), 1);
    char byte = 0;
    EXPECT_EQ(TSReadFile(file, &byte, 1, &code_), 1u);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

} // namespace
} // namespace vlx::test
