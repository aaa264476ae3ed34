// `vlx sort -k`: the parts of lines, held against sort(1), and options that are refused.
#include <cstdio>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;

Outcome sorted(const std::string& arguments, const std::string& text)
{
    const Workshop workshop;
    return run("sort --locale " + arguments + " " + workshop.file("text", text));
}

// The standard output of a command of the system.
std::string outputOf(const std::string& command)
{
    std::string text;
    FILE* const pipe = popen(command.c_str(), "r");
    char piece[4096];
    while (const std::size_t count = std::fread(piece, 1, sizeof piece, pipe))
        text.append(piece, count);
    pclose(pipe);
    return text;
}

class Dice {
  public:
    explicit Dice(unsigned seed) : random_(seed) {}

    int roll(int sides) { return static_cast<int>(random_() % static_cast<unsigned>(sides)); }
    std::string oneOf(const std::vector<std::string>& choices)
    {
        return choices[static_cast<std::size_t>(roll(static_cast<int>(choices.size())))];
    }

  private:
    std::mt19937 random_;
};

std::string randomText(Dice& dice)
{
    std::string text;
    for (int line = 0; line < 60; ++line) {
        for (int left = dice.roll(14); left > 0; --left)
            text += dice.oneOf({"a", "b", "B", "c", " ", " ", "\t", ":", ":", "-"});
        text += '\n';
    }
    return text;
}

std::string randomPlace(Dice& dice, bool isEnd)
{
    std::string place = std::to_string(1 + dice.roll(4));
    if (dice.roll(2))
        place += '.' + std::to_string(isEnd ? dice.roll(4) : 1 + dice.roll(3));
    for (const char* const letter : {"b", "f", "r"})
        if (dice.roll(4) == 0)
            place += letter;
    return place;
}

std::string randomOptions(Dice& dice)
{
    std::string options = dice.oneOf({"", "", " -b", " -f", " -r", " -u"});
    options += dice.oneOf({"", " -t :"});
    for (int keys = 1 + dice.roll(2); keys > 0; --keys)
        options +=
            " -k " + randomPlace(dice, false) + (dice.roll(3) ? "," + randomPlace(dice, true) : "");
    return options;
}

TEST(SortFields, AreThoseOfTheSystemsSort)
{
    Dice dice(20261122);
    const Workshop workshop;
    for (int round = 0; round < 50; ++round) {
        const std::string file = workshop.file("text", randomText(dice));
        const std::string options = randomOptions(dice);
        EXPECT_EQ(run("sort --locale English.US-ASCII@BINARY" + options + " " + file).out,
                  outputOf("LC_ALL=C sort -s" + options + " " + file))
            << options;
    }
}

TEST(SortFields, CountCharactersNotBytes)
{
    EXPECT_EQ(sorted("German.UTF-8 -k 1.3", "äöb\nüßa\n").out, "üßa\näöb\n");
    EXPECT_EQ(sorted("Japanese.MS932@General -k 1.2,1.2", "\x83\x41z\nby\n").out,
              "by\n\x83\x41z\n");
    // あ2 and B1, where the digit stands behind a shift byte.
    EXPECT_EQ(sorted("Japanese.IBM930@General -k 1.2", "\x0E\x44\x81\x0F\xF2\x25\xC2\xF1\x25").out,
              "\xC2\xF1\x25\x0E\x44\x81\x0F\xF2\x25");
}

TEST(SortFields, MayBeginInTheMultiByteState)
{
    // あい and うあ by the second character; in the order of codes, too.
    const std::string text = "\x0E\x44\x81\x44\x82\x0F\x25\x0E\x44\x83\x44\x81\x0F\x25";
    const std::string wanted = "\x0E\x44\x83\x44\x81\x0F\x25\x0E\x44\x81\x44\x82\x0F\x25";
    EXPECT_EQ(sorted("Japanese.IBM930@General -k 1.2,1.2", text).out, wanted);
    EXPECT_EQ(sorted("Japanese.IBM930@BINARY -k 1.2,1.2", text).out, wanted);
    EXPECT_THAT(sorted("Japanese.IBM930@BINARY --key -k 1.2,1.2", text).out,
                testing::StartsWith("0E4482\t"));
}

TEST(SortFields, StandBetweenAnyCharacters)
{
    EXPECT_EQ(sorted("German.UTF-8 -t § -k 2", "a§c\nb§b\n").out, "b§b\na§c\n");
    EXPECT_EQ(sorted("German.UTF-8 -t '\\t' -k 2", "a x\tc\nb\tb\n").out, "b\tb\na x\tc\n");
    EXPECT_EQ(sorted("Japanese.MS932@General -t 、 -k 2", "a\x81\x41z\nb\x81\x41y\n").out,
              "b\x81\x41y\na\x81\x41z\n");
    EXPECT_EQ(sorted("Japanese.IBM930@General -t 、 -k 2",
                     "\xC1\x0E\x43\x44\x0F\xE9\x25\xC2\x0E\x43\x44\x0F\xE8\x25")
                  .out,
              "\xC2\x0E\x43\x44\x0F\xE8\x25\xC1\x0E\x43\x44\x0F\xE9\x25");
    // The second byte of ソ is that of a backslash.
    EXPECT_EQ(sorted("Japanese.MS932@General -t '\\' -k 2", "b\\b\n\x83\x5C\\a\n").out,
              "\x83\x5C\\a\nb\\b\n");
}

TEST(SortFields, OfNumbersAreReadAsTheLocaleWritesThem)
{
    const std::string text = "10\n9\n-3\n1.000,5\n1.000,25\n\nx\n0,5\n-0\n";
    EXPECT_EQ(sorted("German_Germany.UTF-8 -n", text).out,
              "-3\n\nx\n-0\n0,5\n9\n10\n1.000,25\n1.000,5\n");
    EXPECT_EQ(sorted("German_Germany.UTF-8 -nr", text).out,
              "1.000,5\n1.000,25\n10\n9\n0,5\n\nx\n-0\n-3\n");
    EXPECT_EQ(sorted("English_UnitedStates.UTF-8 -n", "1,000\n999.5\n").out, "999.5\n1,000\n");
    EXPECT_EQ(
        sorted("German_Germany.IBM273 -t ';' -k 2n", "\xC1\x5E\xF1\xF0\x15\xC2\x5E\xF9\x15").out,
        "\xC2\x5E\xF9\x15\xC1\x5E\xF1\xF0\x15");
}

TEST(SortFields, TakeTheOptionsBesideThemUnlessTheyHaveOwnOnes)
{
    const std::string text = "a 1\nB 2\nb 1\n";
    EXPECT_EQ(sorted("German.UTF-8@BINARY -f -k 1,1 -k 2nr", text).out, "a 1\nB 2\nb 1\n");
    EXPECT_EQ(sorted("German.UTF-8@BINARY -f -k 1,1 -k 2", text).out, "a 1\nb 1\nB 2\n");
    EXPECT_EQ(sorted("German.UTF-8@BINARY -r -k 1,1 -k 2n", text).out, "b 1\na 1\nB 2\n");
    EXPECT_EQ(sorted("German.UTF-8@BINARY -k2,2 -k1,1r", text).out, "b 1\na 1\nB 2\n");
}

// A zero byte in the key of a part is no end of it.
TEST(SortFields, DecideOneAfterTheOther)
{
    const std::string text = "a\0b:1\na:2\na\0:3\na:1\n"s;
    EXPECT_EQ(sorted("German.UTF-8@BINARY -t : -k 1,1 -k 2", text).out,
              "a:1\na:2\na\0:3\na\0b:1\n"s);
    EXPECT_EQ(sorted("German.UTF-8@BINARY -t : -k 1,1r -k 2", text).out,
              "a\0b:1\na\0:3\na:1\na:2\n"s);
    EXPECT_EQ(sorted("German.UTF-8 -t : -k 1,1 -k 2n", "ab:10\nA:1\nab:9\na:1\n").out,
              "a:1\nA:1\nab:9\nab:10\n");
}

TEST(SortFields, WithoutAnEndReachToTheEndOfTheLine)
{
    EXPECT_EQ(sorted("German.UTF-8 -k 2", "a b d\nb b c\n").out, "b b c\na b d\n");
    const std::string tail(300'000, 'x'); // more than is made in one go
    EXPECT_EQ(sorted("German.UTF-8 -k 2", "a " + tail + "b\nb " + tail + "a\n").out,
              "b " + tail + "a\na " + tail + "b\n");
}

void expectRefused(const std::string& arguments, const std::string& what)
{
    const Outcome outcome = sorted(arguments, "a\n");
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_THAT(outcome.errors, HasSubstr(what)) << arguments;
    EXPECT_EQ(outcome.out, "") << arguments;
}

TEST(SortOptions, AreRefusedWhereTheyMeanNothing)
{
    expectRefused("German.UTF-8 -k 0", "-k 0: 0 is no number of a field");
    expectRefused("German.UTF-8 -k 1.0", "-k 1.0: 0 is no number of a field");
    expectRefused("German.UTF-8 -k 1,0", "0 is no number of a field");
    expectRefused("German.UTF-8 -k x", "-k x: a number is missing");
    expectRefused("German.UTF-8 -k 1,", "a number is missing");
    expectRefused("German.UTF-8 -k 1z", "there is no option z; they are b, f, n, r and w");
    expectRefused("German.UTF-8 -k 1,2,3", "there is no option ,");
    expectRefused("German.UTF-8 -k 1fw", "case and width cannot be ignored together");
    expectRefused("German.UTF-8 -nf", "a key of numbers has neither case nor width");
    expectRefused("German.UTF-8 -t ab", "-t ab: give one character");
    expectRefused("German.MS1252 -t あ", "-t あ: the locale's code page has no such character");
    expectRefused("German.UTF-8 -S 0", "-S 0: give a number of KiB");
    expectRefused("German.UTF-8 -S 1X", "-S 1X: give a number of KiB");
    expectRefused("German.UTF-8 -S 1KK", "-S 1KK: give a number of KiB");
    expectRefused("German.UTF-8 -S 99999999T", "-S 99999999T: no machine has so much memory");
    expectRefused("German.UTF-8 --json", "--json goes with -c, --key or --explain");
    expectRefused("Elvish", "no locale \"Elvish\"");
    expectRefused("German@Runes", "its sort is not listed");
    expectRefused("German.UTF-8 -c --key", "--check");
    expectRefused("German.UTF-8 --key -o /dev/null", "-o takes sorted lines");
    EXPECT_THAT(run("sort </dev/null").errors, HasSubstr("--locale is required"));
}

// The built-in objects have no order but that of codes.
TEST(SortOptions, NeedALocaleDirectory)
{
    const Outcome outcome =
        run("sort --locale English </dev/null", {.localeDirectory = "/nonexistent"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("no good control.nls in /nonexistent"));
}

TEST(SortOptions, AreToldByTheHelp)
{
    const Outcome help = run("sort --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, HasSubstr("ordered by their keys (TSStrxfrm)"));
    EXPECT_THAT(help.out, HasSubstr("Exit status: 0 good; 1 with -c or -C"));
    EXPECT_THAT(run("--help").out, HasSubstr("Sort the lines of texts"));
}

} // namespace
} // namespace vlx::cli::test
