// `vlx sort` past its memory: runs on disk, temporary files, the output file, signals, progress.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <random>
#include <thread>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "command.hpp"
#include "frame/objfile.hpp"
#include "sort_view.hpp"
#include "sort_walk.hpp"

namespace vlx::cli::test {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kIsSanitized = true;
#elif defined(__has_feature)
constexpr bool kIsSanitized = __has_feature(address_sanitizer);
#else
constexpr bool kIsSanitized = false;
#endif

std::size_t filesIn(const std::string& directory)
{
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(directory),
                                                  std::filesystem::directory_iterator()));
}

// Lines in MS1252, of words that differ late, in accents and in case, and some more than once.
std::vector<std::string> randomLines(int count)
{
    std::mt19937 random(20261122);
    const std::string letters = "aabcdeeilmnorstuABE \xE4\xE9\xF6\xFC\xDF\xE6-";
    std::vector<std::string> lines;
    for (int i = 0; i < count; ++i) {
        std::string line;
        for (auto left = random() % 12; left > 0; --left)
            line += letters[random() % letters.size()];
        lines.push_back(line);
    }
    return lines;
}

std::string textOf(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

// The general sort, read by the data compiler's own reader: all of a key, slowly.
class Oracle {
  public:
    explicit Oracle(const std::vector<std::string>& lines)
    {
        for (const std::string& line : lines) {
            std::u16string units; // in MS1252 these bytes are their own values
            for (const char byte : line)
                units += static_cast<unsigned char>(byte);
            keyed_.emplace_back(walk_.key(units), line);
        }
        std::stable_sort(keyed_.begin(), keyed_.end(), [](const auto& one, const auto& other) {
            return one.first < other.first;
        });
    }

    // In the order of the keys; of the lines of one key the first one, or all.
    std::string sorted(bool unique) const
    {
        std::string text;
        for (std::size_t i = 0; i < keyed_.size(); ++i)
            if (!unique || i == 0 || keyed_[i].first != keyed_[i - 1].first)
                text += keyed_[i].second + '\n';
        return text;
    }

  private:
    static data::Bytes content()
    {
        const std::string file = contentOf(VLX_LOCALE "/so_00001.nls");
        TSObjHeader header;
        std::memcpy(&header, file.data(), sizeof header);
        return {file.begin() + static_cast<std::ptrdiff_t>(header.sectionOffset(0)), file.end()};
    }

    const data::Bytes content_ = content();
    const data::SortView view_ = *data::SortView::open(content_);
    const data::SortWalk walk_{view_};
    std::vector<std::pair<std::string, std::string>> keyed_;
};

TEST(SortDisk, GivesWhatTheSortInMemoryGives)
{
    const Workshop workshop;
    const std::vector<std::string> lines = randomLines(100'000);
    const std::string file = workshop.file("text", textOf(lines));
    const Oracle oracle(lines);
    const std::string wanted = oracle.sorted(false);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(run("sort --locale German.MS1252 " + file).out, wanted);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
    for (const char* const size : {"16K", "300K", "2M"}) // several passes; one; few runs
        EXPECT_EQ(run("sort --locale German.MS1252 -S "s + size + " " + file).out, wanted) << size;
    const std::string unique = oracle.sorted(true);
    EXPECT_LT(unique.size(), wanted.size());
    EXPECT_EQ(run("sort --locale German.MS1252 -u " + file).out, unique);
    EXPECT_EQ(run("sort --locale German.MS1252 -u -S 16K " + file).out, unique);
    EXPECT_EQ(run("sort --locale German.MS1252 -r -S 16K -k 1,1 " + file).out,
              run("sort --locale German.MS1252 -r -k 1,1 " + file).out);
}

TEST(SortDisk, TakesALineLongerThanItsMemory)
{
    std::vector<std::string> lines = randomLines(100);
    lines.insert(lines.begin() + 50, "z" + std::string(1 << 20, 'a'));
    lines.insert(lines.begin() + 20, "y" + std::string(1 << 20, 'b'));
    const Workshop workshop;
    const std::string file = workshop.file("text", textOf(lines));
    const std::string wanted = Oracle(lines).sorted(false);
    for (const char* const size : {"1b", "1K", "1M"})
        EXPECT_EQ(run("sort --locale German.MS1252 -S "s + size + " " + file).out, wanted) << size;
}

// Whatever the number of runs, two files are open.
TEST(SortDisk, NeedsFewOpenFiles)
{
    const Workshop workshop;
    const std::string file = workshop.file("text", textOf(randomLines(20'000)));
    const Outcome outcome =
        run("sort --locale German.MS1252 -S 4K " + file, {.input = "ulimit -n 24; true"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.out, run("sort --locale German.MS1252 " + file).out);
}

TEST(SortDisk, KeepsToItsMemory)
{
    if (kIsSanitized)
        GTEST_SKIP() << "the sanitizer keeps what was given back";
    const std::string text = textOf(randomLines(50'000));
    long memory[2] = {};
    for (const int pieces : {1, 15}) {
        Child child({"sort", "--locale", "German.MS1252", "-S", "1M", "-o", "/dev/null"});
        for (int i = 0; i < pieces; ++i)
            child.write(text);
        const Child::End end = child.finish();
        EXPECT_EQ(end.status, 0);
        memory[pieces != 1] = end.mostMemory;
    }
    EXPECT_LT(memory[1], memory[0] + 4 * 1024);
}

TEST(SortDisk, NeedsADirectoryForTemporaryFiles)
{
    const Workshop workshop;
    const std::string file = workshop.file("text", textOf(randomLines(1000)));
    const std::string output = workshop.file("output", "old");
    const Outcome outcome =
        run("sort --locale German.MS1252 -S 4K -T /nonexistent " + file + " -o " + output);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("cannot make a temporary file in /nonexistent: No such "
                                          "file or directory; set TMPDIR, or give -T"));
    EXPECT_EQ(contentOf(output), "old");
    EXPECT_EQ(filesIn(workshop.path("")), 2U);
    EXPECT_EQ(run("sort --locale German.MS1252 -T /nonexistent " + file).status, 0) << "in memory";
    const std::string small = "sort --locale German.MS1252 -S 4K " + file;
    const Outcome chosen = run(small, {.input = "export TMPDIR=/nonexistent; true"});
    EXPECT_EQ(chosen.status, 2);
    EXPECT_THAT(chosen.errors, HasSubstr("cannot make a temporary file in /nonexistent"));
    EXPECT_EQ(run(small, {.input = "export TMPDIR=; true"}).status, 0);
    EXPECT_EQ(run(small, {.input = "unset TMPDIR; true"}).status, 0);
}

// Whether a process has a file without a name open in a directory.
bool hasNamelessFileIn(int process, const std::string& directory)
{
    const std::string open = "/proc/" + std::to_string(process) + "/fd";
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(open, ignored)) {
        const std::string target = std::filesystem::read_symlink(entry.path(), ignored).string();
        if (target.rfind(directory, 0) == 0 && target.find(" (deleted)") != std::string::npos)
            return true;
    }
    return false;
}

TEST(SortDisk, LeavesNothingAfterASignal)
{
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGKILL}) {
        const Workshop workshop;
        const std::string output = workshop.file("output", "old");
        std::filesystem::create_directory(workshop.path("tmp"));
        Child child({"sort", "--locale", "German.MS1252", "-S", "4K", "-T", workshop.path("tmp"),
                     "-o", output});
        child.write(textOf(randomLines(5000)));
        while (!hasNamelessFileIn(child.id(), workshop.path("tmp")))
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        child.signal(signal);
        const int status = child.finish().status;
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_EQ(filesIn(workshop.path("tmp")), 0U) << "something is left over";
        EXPECT_EQ(contentOf(output), "old");
        const bool isKilled = signal == SIGKILL; // its output file has a name
        EXPECT_EQ(filesIn(workshop.path("")), isKilled ? 3U : 2U) << "something is left over";
    }
}

TEST(SortOutput, MayBeTheInput)
{
    const Workshop workshop;
    const std::string file = workshop.file("text", "b\nc\na\n");
    ASSERT_EQ(chmod(file.c_str(), 0640), 0);
    EXPECT_EQ(run("sort --locale German.UTF-8 " + file + " -o " + file).status, 0);
    EXPECT_EQ(contentOf(file), "a\nb\nc\n");
    struct stat status = {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
    EXPECT_EQ(filesIn(workshop.path("")), 1U);
}

TEST(SortOutput, StaysAsItWasAfterAFailure)
{
    const Workshop workshop;
    const std::string file = workshop.file("text", "b\na\n");
    const Outcome missing = run("sort --locale German.UTF-8 " + file + " no-such-file -o " + file);
    EXPECT_EQ(missing.status, 2);
    EXPECT_THAT(missing.errors, HasSubstr("cannot open no-such-file"));
    EXPECT_EQ(run("sort --locale German.UTF-8 " + file + " . -o " + file).status, 2);
    EXPECT_EQ(run("sort --locale German.UTF-8 -k x " + file + " -o " + file).status, 2);
    EXPECT_EQ(contentOf(file), "b\na\n");
    EXPECT_EQ(filesIn(workshop.path("")), 1U);
}

TEST(SortOutput, NeedsAPlaceThatCanBeWritten)
{
    EXPECT_THAT(run("sort --locale German.UTF-8 german.ms1252.txt -o no/such/file").errors,
                HasSubstr("cannot write no/such/file: No such file"));
    const Outcome full = run("sort --locale German.MS1252 german.ms1252.txt -o /dev/full");
    EXPECT_EQ(full.status, 2);
    EXPECT_THAT(full.errors, HasSubstr("/dev/full could not be written: No space left"));
    EXPECT_THAT(run("sort --locale German.MS1252 german.ms1252.txt >/dev/full").errors,
                HasSubstr("standard output could not be written"));
}

TEST(SortOutput, IsEndedByAReaderThatHasEnough)
{
    EXPECT_EQ(run("sort --locale German.MS1252 | head -n 1", {.input = "seq 200000"}).out, "1\n");
}

TEST(SortMemory, ThatIsMissingIsTold)
{
    if (kIsSanitized)
        GTEST_SKIP() << "the sanitizer needs more address space than there is";
    const Outcome outcome = run("sort --locale German.MS1252 -S 1T german.ms1252.txt",
                                {.input = "ulimit -v 400000; true"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("give a smaller size with -S"));
    // No memory for the key of one line.
    const Outcome line = run("sort --locale German.MS1252 -S 1M",
                             {.input = "ulimit -v 400000; head -c 50000000 /dev/zero"});
    EXPECT_EQ(line.status, 2);
    EXPECT_EQ(line.out, "");
    EXPECT_THAT(line.errors, HasSubstr("standard input:1: no key can be made of 50000000 bytes"));
}

TEST(SortProgress, IsShownForALongTextOnATerminal)
{
    const Workshop workshop;
    const std::string line(99, 'a');
    std::string text;
    while (text.size() < 9 << 20)
        text += line + '\n';
    const std::string file = workshop.file("long", text);
    const std::string arguments = "sort --locale German.MS1252 -S 2M " + file + " -o /dev/null";
    const std::string shown = onTerminal(arguments, "");
    EXPECT_THAT(shown, HasSubstr(" of 9 MiB, "));
    EXPECT_EQ(shown.substr(shown.size() - 4), "\r\033[K") << "the line is taken away";
    EXPECT_EQ(run(arguments).errors, "");
    EXPECT_EQ(onTerminal("sort --locale German.MS1252 german.ms1252.txt -o /dev/null", ""), "");
}

} // namespace
} // namespace vlx::cli::test
