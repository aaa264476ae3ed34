// `vlx conv`: its output file, an input without an end, and what it shows on a terminal.
#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;
using testing::Not;

std::size_t filesIn(const std::string& directory)
{
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(directory),
                                                  std::filesystem::directory_iterator()));
}

TEST(ConvOutput, TakesTheNameOnceItIsWhole)
{
    const Workshop workshop;
    const std::string file = workshop.file("text", "caf\xE9");
    ASSERT_EQ(chmod(file.c_str(), 0640), 0);
    EXPECT_EQ(run("conv -f MS1252 -t UTF-8 " + file + " -o " + file).status, 0);
    EXPECT_EQ(contentOf(file), "caf\u00E9");
    struct stat status = {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST(ConvOutput, IsReplacedThoughSomethingWasLost)
{
    const Workshop workshop;
    const std::string file = workshop.file("text", "old");
    EXPECT_EQ(run("conv -f UTF-8 -t MS1252 sources/japanese.txt -o " + file).status, 1);
    EXPECT_THAT(contentOf(file), HasSubstr("?"));
}

TEST(ConvOutput, StaysAsItWasAfterAFailure)
{
    const Workshop workshop;
    const std::string file = workshop.file("text", "old");
    const Outcome outcome =
        run("conv -f MS1252 -t UTF-8 german.ms1252.txt no-such-file -o " + file);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("cannot open no-such-file"));
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(run("conv -f MS1252 -t UTF-8 . -o " + file).status, 2);
    EXPECT_EQ(run("conv -f MS1252 -t klingon german.ms1252.txt -o " + file).status, 2);
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(filesIn(workshop.path("")), 1U) << "something is left over";
}

TEST(ConvOutput, StaysAsItWasAfterASignal)
{
    const Workshop workshop;
    const std::string file = workshop.file("text", "old");
    Child child({"conv", "-f", "MS1252", "-t", "UTF-8", "-o", file});
    while (filesIn(workshop.path("")) == 1)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    child.signal(SIGTERM); // as soon as there is something to remove
    const int status = child.finish().status;
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM) << status;
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(filesIn(workshop.path("")), 1U) << "something is left over";
}

TEST(ConvOutput, LeavesALinkInItsPlace)
{
    const Workshop workshop;
    const std::string file = workshop.file("text", "old");
    std::filesystem::create_symlink(file, workshop.path("link"));
    EXPECT_EQ(run("conv -f MS1252 -t UTF-8 german.ms1252.txt -o " + workshop.path("link")).status,
              0);
    EXPECT_TRUE(std::filesystem::is_symlink(workshop.path("link")));
    EXPECT_THAT(contentOf(file), HasSubstr("\u00FC"));
}

TEST(ConvOutput, MayBeADevice)
{
    EXPECT_EQ(run("conv -f MS1252 -t UTF-8 german.ms1252.txt -o /dev/null").status, 0);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    const Outcome full = run("conv -f MS1252 -t UTF-8 german.ms1252.txt -o /dev/full");
    EXPECT_EQ(full.status, 2);
    EXPECT_THAT(full.errors, HasSubstr("/dev/full could not be written: No space left"));
    EXPECT_THAT(run("conv -f MS1252 -t UTF-8 german.ms1252.txt >/dev/full").errors,
                HasSubstr("standard output could not be written"));
}

TEST(ConvOutput, NeedsAPlaceThatCanBeWritten)
{
    const Outcome outcome = run("conv -f MS1252 -t UTF-8 german.ms1252.txt -o no/such/file");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("cannot write no/such/file: No such file"));
}

// Each line comes out before the next one is there.
TEST(ConvStream, WritesWhatItHas)
{
    Child child({"conv", "-f", "UTF-8", "-t", "IBM930"});
    child.write("a\n");
    EXPECT_EQ(child.read(2), "\x62\x25");
    child.write("\u3042\n\xE3");
    EXPECT_EQ(child.read(5), "\x0E\x44\x81\x0F\x25");
    child.write("\x81\x84");
    EXPECT_EQ(child.read(3), "\x0E\x44\x82");
    child.endInput();
    EXPECT_EQ(child.read(9), "\x0F");
    EXPECT_EQ(child.finish().status, 0);
}

TEST(ConvStream, NeedsNoMoreMemoryForMoreText)
{
    const std::string line = "\u3042 abc ? \u20AC\n"; // with a loss, and a byte that looks like one
    std::string piece;
    while (piece.size() < 1 << 20)
        piece += line;
    long memory[2] = {};
    for (const int pieces : {1, 32}) {
        Child child({"conv", "-f", "UTF-8", "-t", "IBM930", "-o", "/dev/null"});
        for (int i = 0; i < pieces; ++i)
            child.write(piece);
        const Child::End end = child.finish();
        EXPECT_EQ(WEXITSTATUS(end.status), 1);
        memory[pieces != 1] = end.mostMemory;
    }
    EXPECT_LT(memory[1], memory[0] + 8 * 1024);
}

TEST(ConvStream, IsEndedByAReaderThatHasEnough)
{
    EXPECT_EQ(run("conv -f MS1252 -t UTF-8 | head -c 4", {.input = "yes"}).out, "y\ny\n");
}

TEST(ConvProgress, IsShownForALongFileOnATerminal)
{
    const Workshop workshop;
    const std::string file = workshop.file("long", std::string(20 << 20, 'a'));
    const std::string shown = onTerminal("conv -f MS1252 -t UTF-8 " + file + " -o /dev/null", "");
    EXPECT_THAT(shown, HasSubstr("%"));
    EXPECT_THAT(shown, HasSubstr(" of 20 MiB, "));
    EXPECT_EQ(shown.substr(shown.size() - 4), "\r\033[K") << "the line is taken away";
    EXPECT_EQ(run("conv -f MS1252 -t UTF-8 " + file + " -o /dev/null").errors, "");
}

TEST(ConvProgress, TellsTheAmountWhereNobodyKnowsTheLength)
{
    const Workshop workshop;
    const std::string pipe = workshop.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer(
        [&] { std::ofstream(pipe, std::ios::binary) << std::string(20 << 20, 'a'); });
    const std::string shown = onTerminal("conv -f MS1252 -t UTF-8 " + pipe + " -o /dev/null", "");
    writer.join();
    EXPECT_THAT(shown, HasSubstr("MiB/s"));
    EXPECT_THAT(shown, Not(HasSubstr("%")));
}

TEST(ConvProgress, IsNotShownForAShortFile)
{
    EXPECT_EQ(onTerminal("conv -f MS1252 -t UTF-8 german.ms1252.txt -o /dev/null", ""), "");
}

} // namespace
} // namespace vlx::cli::test
