// The contract with the host, held against whichever host is linked.
#include "host/host.hpp"

#include <cstring>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "host/workshop.hpp"

namespace vlx::test {
namespace {

using host::Access;
using host::File;
using host::kNoFile;
using host::Mapping;
using host::OpenError;
using host::Origin;

Bytes pattern(std::size_t size)
{
    Bytes bytes(size);
    for (std::size_t at = 0; at != size; ++at)
        bytes[at] = static_cast<std::uint8_t>(at * 7 + at / 251);
    return bytes;
}

class HostTest : public testing::Test {
  protected:
    File opened(const std::string& path, Access access = Access::kRead)
    {
        OpenError error = OpenError::kOther;
        const File file = host::open(path.c_str(), access, error);
        EXPECT_NE(file, kNoFile);
        EXPECT_EQ(error, OpenError::kNone);
        return file;
    }

    Bytes readAll(File file, std::uint32_t step)
    {
        Bytes all;
        Bytes part(step);
        for (std::uint32_t done = 1; done != 0;) {
            EXPECT_TRUE(host::read(file, part.data(), step, done));
            all.insert(all.end(), part.begin(), part.begin() + done);
        }
        return all;
    }

    Workshop workshop_;
};

TEST_F(HostTest, AMissingFileIsNotFound)
{
    OpenError error = OpenError::kNone;
    EXPECT_EQ(host::open(workshop_.path("none").c_str(), Access::kRead, error), kNoFile);
    EXPECT_EQ(error, OpenError::kNotFound);
    error = OpenError::kNone;
    EXPECT_EQ(host::open(workshop_.path("none").c_str(), Access::kUpdate, error), kNoFile);
    EXPECT_EQ(error, OpenError::kNotFound);
    EXPECT_FALSE(host::exists(workshop_.path("none").c_str()));
}

TEST_F(HostTest, ReadsInPiecesUpToTheEnd)
{
    const Bytes bytes = pattern(1000);
    const File file = opened(workshop_.make("data", bytes));
    EXPECT_EQ(readAll(file, 333), bytes);
    std::uint32_t done = 7;
    std::uint8_t byte = 0;
    EXPECT_TRUE(host::read(file, &byte, 1, done));
    EXPECT_EQ(done, 0u);
    EXPECT_TRUE(host::close(file));
}

TEST_F(HostTest, TwoReadersShareAFile)
{
    const std::string path = workshop_.make("data", pattern(10));
    const File one = opened(path);
    const File other = opened(path);
    EXPECT_EQ(readAll(one, 10), readAll(other, 10));
    EXPECT_TRUE(host::close(one));
    EXPECT_TRUE(host::close(other));
}

TEST_F(HostTest, SeeksFromEachOrigin)
{
    const Bytes bytes = pattern(100);
    const File file = opened(workshop_.make("data", bytes));
    std::uint8_t byte = 0;
    std::uint32_t done = 0;
    const auto next = [&] {
        EXPECT_TRUE(host::read(file, &byte, 1, done));
        return done == 1 ? byte : -1;
    };
    EXPECT_TRUE(host::seek(file, 40, Origin::kBegin));
    EXPECT_EQ(next(), bytes[40]);
    EXPECT_TRUE(host::seek(file, -11, Origin::kCurrent));
    EXPECT_EQ(next(), bytes[30]);
    EXPECT_TRUE(host::seek(file, -1, Origin::kEnd));
    EXPECT_EQ(next(), bytes[99]);
    EXPECT_TRUE(host::seek(file, 5, Origin::kEnd));
    EXPECT_EQ(next(), -1);
    EXPECT_FALSE(host::seek(file, -1, Origin::kBegin));
    EXPECT_TRUE(host::close(file));
}

TEST_F(HostTest, TellsTheSizeOfAFileWhereverItsPositionIs)
{
    const File file = opened(workshop_.make("data", pattern(100)));
    std::uint64_t size = 0;
    EXPECT_TRUE(host::size(file, size));
    EXPECT_EQ(size, 100u);
    EXPECT_TRUE(host::seek(file, 40, Origin::kBegin));
    EXPECT_TRUE(host::size(file, size));
    EXPECT_EQ(size, 100u);
    std::uint8_t byte = 0;
    std::uint32_t done = 0;
    EXPECT_TRUE(host::read(file, &byte, 1, done)); // the position has not moved
    EXPECT_EQ(byte, pattern(100)[40]);
    EXPECT_TRUE(host::close(file));
    const File empty = opened(workshop_.make("empty", {}));
    EXPECT_TRUE(host::size(empty, size));
    EXPECT_EQ(size, 0u);
    EXPECT_TRUE(host::close(empty));
}

TEST_F(HostTest, AWriteOpenMakesOrEmptiesAFileAndRefusesReads)
{
    const std::string old = workshop_.make("old", pattern(10));
    for (const std::string& path : {old, workshop_.path("new")}) {
        const File file = opened(path, Access::kWrite);
        std::uint8_t byte = 0;
        std::uint32_t done = 9;
        EXPECT_FALSE(host::read(file, &byte, 1, done));
        EXPECT_EQ(done, 0u);
        EXPECT_EQ(host::createMapping(file), 0);
        EXPECT_TRUE(host::close(file));
        EXPECT_TRUE(host::exists(path.c_str()));
        EXPECT_EQ(workshop_.look(path), Bytes{});
    }
}

TEST_F(HostTest, AnUpdateOpenKeepsTheFileAndReads)
{
    const Bytes bytes = pattern(10);
    const File file = opened(workshop_.make("data", bytes), Access::kUpdate);
    EXPECT_EQ(readAll(file, 4), bytes);
    EXPECT_TRUE(host::close(file));
}

TEST_F(HostTest, RemovesAndReplaces)
{
    const std::string source = workshop_.make("source", pattern(20));
    const std::string target = workshop_.make("target", pattern(10));
    EXPECT_EQ(host::replace(source.c_str(), target.c_str()), 0u);
    EXPECT_FALSE(host::exists(source.c_str()));
    EXPECT_EQ(workshop_.look(target), pattern(20));
    EXPECT_EQ(host::replace(source.c_str(), target.c_str()), 2u); // not found, on both hosts
    EXPECT_EQ(workshop_.look(target), pattern(20));
    EXPECT_TRUE(host::remove(target.c_str()));
    EXPECT_FALSE(host::remove(target.c_str()));
    EXPECT_FALSE(host::exists(target.c_str()));
}

TEST_F(HostTest, StemsEndBeforeTheLastDotOfTheName)
{
    EXPECT_EQ(host::stemLength("dir/name.ext"), 8u);
    EXPECT_EQ(host::stemLength("name.one.two"), 8u);
    EXPECT_EQ(host::stemLength("name."), 4u);
    EXPECT_EQ(host::stemLength("dir.d/name"), 10u);
    EXPECT_EQ(host::stemLength(""), 0u);
    const std::string longName(2000, 'x');
    EXPECT_EQ(host::stemLength(longName.c_str()), 2000u);
}

TEST_F(HostTest, ViewsBeginAtTheGranularityAndShowTheFile)
{
    const std::uint32_t unit = host::granularity();
    ASSERT_NE(unit, 0u);
    const Bytes bytes = pattern(unit + 4464);
    const File file = opened(workshop_.make("data", bytes));
    const Mapping mapping = host::createMapping(file);
    ASSERT_NE(mapping, 0);
    const void* const first = host::mapView(mapping, 0, 100);
    const void* const second = host::mapView(mapping, unit, 4464);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % unit, 0u);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(second) % unit, 0u);
    EXPECT_EQ(std::memcmp(first, bytes.data(), 100), 0);
    EXPECT_EQ(std::memcmp(second, bytes.data() + unit, 4464), 0);
    EXPECT_TRUE(host::unmapView(first));
    EXPECT_TRUE(host::unmapView(second));
    EXPECT_TRUE(host::closeMapping(mapping));
    EXPECT_TRUE(host::close(file));
}

TEST_F(HostTest, ViewsOutliveTheirMappingAndFile)
{
    const Bytes bytes = pattern(300);
    const File file = opened(workshop_.make("data", bytes));
    const Mapping mapping = host::createMapping(file);
    const void* const view = host::mapView(mapping, 0, 300);
    ASSERT_TRUE(view);
    EXPECT_TRUE(host::closeMapping(mapping));
    EXPECT_TRUE(host::close(file));
    EXPECT_EQ(std::memcmp(view, bytes.data(), 300), 0);
    EXPECT_TRUE(host::unmapView(view));
}

TEST_F(HostTest, RefusesViewsOutsideTheFile)
{
    const std::uint32_t unit = host::granularity();
    const File file = opened(workshop_.make("data", pattern(unit + 10)));
    const Mapping mapping = host::createMapping(file);
    EXPECT_EQ(host::mapView(mapping, 0, unit + 11), nullptr);
    EXPECT_EQ(host::mapView(mapping, unit, 11), nullptr);
    EXPECT_EQ(host::mapView(mapping, 2 * unit, 1), nullptr);
    EXPECT_EQ(host::mapView(mapping, 0, 0xFFFFFFFF), nullptr);
    EXPECT_EQ(host::mapView(mapping, 0xFFFFFFFF / unit * unit, unit), nullptr);
    EXPECT_EQ(host::mapView(mapping, 0, 0), nullptr);
    EXPECT_EQ(host::mapView(mapping, 1, 1), nullptr);
    EXPECT_TRUE(host::closeMapping(mapping));
    EXPECT_TRUE(host::close(file));
}

TEST_F(HostTest, AnEmptyFileHasNoMapping)
{
    const File file = opened(workshop_.make("empty", {}));
    EXPECT_EQ(host::createMapping(file), 0);
    EXPECT_TRUE(host::close(file));
}

TEST_F(HostTest, UnmapsOnlyItsOwnViewsAndThoseOnce)
{
    const auto foreign = std::make_unique<std::uint8_t[]>(64);
    EXPECT_FALSE(host::unmapView(foreign.get()));
    EXPECT_FALSE(host::unmapView(nullptr));
    const File file = opened(workshop_.make("data", pattern(10)));
    const Mapping mapping = host::createMapping(file);
    const void* const view = host::mapView(mapping, 0, 10);
    EXPECT_TRUE(host::unmapView(view));
    EXPECT_FALSE(host::unmapView(view));
    EXPECT_TRUE(host::closeMapping(mapping));
    EXPECT_FALSE(host::closeMapping(0));
    EXPECT_TRUE(host::close(file));
}

TEST_F(HostTest, MapsAndUnmapsManyViewsFromManyThreads)
{
    const Bytes bytes = pattern(50);
    const File file = opened(workshop_.make("data", bytes));
    const Mapping mapping = host::createMapping(file);
    const auto work = [&] {
        std::vector<const void*> views(200);
        for (const void*& view : views) {
            view = host::mapView(mapping, 0, 50);
            ASSERT_TRUE(view);
        }
        for (const void* const view : views) {
            EXPECT_EQ(std::memcmp(view, bytes.data(), 50), 0);
            EXPECT_TRUE(host::unmapView(view));
        }
    };
    std::vector<std::thread> threads;
    for (int count = 0; count != 8; ++count)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_TRUE(host::closeMapping(mapping));
    EXPECT_TRUE(host::close(file));
}

TEST_F(HostTest, AReplacedFileKeepsItsOldViews)
{
    if (host::kPathSeparator[0] != '/')
        GTEST_SKIP() << "this host does not replace a file that is mapped";
    const std::string path = workshop_.make("data", Bytes(10, 'a'));
    const File file = opened(path);
    const Mapping mapping = host::createMapping(file);
    const void* const view = host::mapView(mapping, 0, 10);
    const std::string fresh = workshop_.make("fresh", Bytes(20, 'b'));
    EXPECT_EQ(host::replace(fresh.c_str(), path.c_str()), 0u);
    EXPECT_EQ(static_cast<const char*>(view)[9], 'a');
    EXPECT_TRUE(host::unmapView(view));
    EXPECT_TRUE(host::closeMapping(mapping));
    EXPECT_TRUE(host::close(file));
}

TEST_F(HostTest, GivesAndTakesMemory)
{
    void* const memory = host::allocate(5, 1000);
    ASSERT_TRUE(memory);
    std::memset(memory, 0xA5, 1000);
    EXPECT_NE(host::free(5, memory), 0);
}

TEST_F(HostTest, TellsAVariableItsSizeOrThatThereIsNone)
{
    char buffer[8] = "before!";
    EXPECT_EQ(host::environment("VLX_TEST_VARIABLE", buffer, sizeof buffer), -1);
    Workshop::setVariable("VLX_TEST_VARIABLE", "1234567");
    EXPECT_EQ(host::environment("VLX_TEST_VARIABLE", buffer, sizeof buffer), 7);
    EXPECT_STREQ(buffer, "1234567");
    EXPECT_EQ(host::environment("VLX_TEST_VARIABLE", buffer, 7), 8);
    EXPECT_EQ(host::environment("VLX_TEST_VARIABLE", nullptr, 0), 8);
    Workshop::setVariable("VLX_TEST_VARIABLE", "");
    EXPECT_EQ(host::environment("VLX_TEST_VARIABLE", buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(host::environment("VLX_TEST_VARIABLE", nullptr, 0), 1);
    Workshop::clearVariable("VLX_TEST_VARIABLE");
    EXPECT_EQ(host::environment("VLX_TEST_VARIABLE", buffer, sizeof buffer), -1);
}

TEST_F(HostTest, ComparesNamesWithoutTheCaseOfLetters)
{
    EXPECT_TRUE(host::equalIgnoringCase("German_09", "gERMAN_09", 9));
    EXPECT_FALSE(host::equalIgnoringCase("German", "Germen", 6));
    EXPECT_TRUE(host::equalIgnoringCase("German", "Germen", 4));
    EXPECT_TRUE(host::equalIgnoringCase("", "", 0));
    EXPECT_FALSE(host::equalIgnoringCase("@[", "`{", 2));
}

TEST_F(HostTest, FixedNamesFitTogether)
{
    const std::string separator = host::kPathSeparator;
    EXPECT_EQ(separator.size(), 1u);
    EXPECT_EQ(host::kControlName, separator + "control.nls");
    EXPECT_EQ(std::string(host::kDefaultDirectory).find(separator), 0u);
}

} // namespace
} // namespace vlx::test
