// Cases that hold in every form of text.
#include <gtest/gtest.h>

#include "strings/forms.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kFill = 0xCD;

Units filled(std::size_t size)
{
    return Units(size, kFill);
}

// `front`, and the fill of what a call leaves alone.
Units before(Units front, std::size_t size)
{
    front.resize(size, kFill);
    return front;
}

Units terminated(Units text)
{
    text.push_back(0);
    return text;
}

std::int32_t sizeOf(const Units& text)
{
    return static_cast<std::int32_t>(text.size());
}

TEST(EveryForm, CopiesAWholeStringWithItsTerminator)
{
    inEveryForm([](Form& form) {
        const Units text = form.encode("aAbBc");
        const Units wanted = before(terminated(text), 30);
        for (const Length length : {Length::kLonger, Length::kTerminated}) {
            Units destination = filled(30);
            EXPECT_EQ(form.copy(destination, 30, text, Form::lengthOf(text, length)),
                      sizeOf(text) + 1);
            EXPECT_EQ(destination, wanted);
        }
    });
}

TEST(EveryForm, CopiesNoTerminatorThatTheLengthLeavesOut)
{
    inEveryForm([](Form& form) {
        const Units text = form.encode("aAbBc");
        Units destination = filled(30);
        EXPECT_EQ(form.copy(destination, 30, text, sizeOf(text)), sizeOf(text));
        EXPECT_EQ(destination, before(text, 30));
    });
}

TEST(EveryForm, CutsACopyAtAWholeCharacter)
{
    inEveryForm([](Form& form) {
        const Units text = form.encode("abcA");
        for (const Length length : kLengths) {
            Units destination = filled(30);
            EXPECT_EQ(form.copy(destination, 3, text, Form::lengthOf(text, length)), 3);
            EXPECT_EQ(destination, before(form.encode("abc"), 30));
        }
        Units destination = filled(30);
        const std::int32_t cut = sizeOf(form.encode("A")) > 1 ? 3 : 4;
        EXPECT_EQ(form.copy(destination, 4, text, -1), cut);
        EXPECT_EQ(destination, before(cut == 4 ? text : form.encode("abc"), 30));
    });
}

TEST(EveryForm, CopiesNothingForALengthOrASizeOfNothing)
{
    inEveryForm([](Form& form) {
        const Units text = form.encode("aA");
        Units destination = filled(8);
        EXPECT_EQ(form.copy(destination, 8, text, 0), 0);
        EXPECT_EQ(form.copy(destination, 0, text, -1), 0);
        EXPECT_EQ(form.copy(destination, -1, text, -1), 0);
        EXPECT_EQ(destination, filled(8));
    });
}

TEST(EveryForm, AppendsAWholeString)
{
    inEveryForm([](Form& form) {
        const Units source = form.encode("Bb");
        Units destination = before(terminated(form.encode("aA")), 30);
        const Units wanted = terminated(form.encode("aABb"));
        EXPECT_EQ(form.append(destination, source, -1, 0), sizeOf(wanted));
        destination.resize(wanted.size());
        EXPECT_EQ(destination, wanted);
    });
}

TEST(EveryForm, AppendsToNothing)
{
    inEveryForm([](Form& form) {
        for (const Length length : {Length::kExact, Length::kTerminated}) {
            const Units source = form.encode("aAb");
            Units destination = before({0}, 30);
            EXPECT_EQ(
                form.append(destination, source, Form::lengthOf(source, length), TS_OPT_TERMINATE),
                sizeOf(source) + 1);
            EXPECT_EQ(destination, before(terminated(source), 30));
        }
    });
}

TEST(EveryForm, AppendsWithoutATerminatorUnlessItIsAskedFor)
{
    inEveryForm([](Form& form) {
        const Units source = form.encode("Ab");
        const Units wanted = form.encode("aAb");
        Units destination = before(terminated(form.encode("a")), 30);
        EXPECT_EQ(form.append(destination, source, sizeOf(source), 0), sizeOf(wanted));
        EXPECT_EQ(destination, before(wanted, 30));
    });
}

TEST(EveryForm, AppendingNothingReturnsTheLengthPlusOneAndWritesNothing)
{
    inEveryForm([](Form& form) {
        const Units text = terminated(form.encode("aA"));
        Units destination = before(text, 10);
        EXPECT_EQ(form.append(destination, form.encode("b"), 0, TS_OPT_TERMINATE), sizeOf(text));
        EXPECT_EQ(destination, before(text, 10));
    });
}

TEST(EveryForm, FindsTheFirstMatchAndTheLast)
{
    inEveryForm([](Form& form) {
        constexpr std::string_view kText = "abABaABb";
        const Units text = form.encode(kText);
        for (const Length length : kLengths) {
            const std::int32_t told = Form::lengthOf(text, length);
            for (const char letter : {'a', 'b', 'A', 'B'}) {
                EXPECT_EQ(form.find(text, told, letter, 0),
                          form.positionOf(kText, kText.find(letter)));
                EXPECT_EQ(form.find(text, told, letter, TS_OPT_LAST_MATCH),
                          form.positionOf(kText, kText.rfind(letter)));
            }
            EXPECT_EQ(form.find(text, told, 'C', 0), -1);
            EXPECT_EQ(form.find(text, told, 'c', TS_OPT_LAST_MATCH), -1);
        }
    });
}

TEST(EveryForm, FindsTheTerminatorOnlyIfTheLengthTakesItIn)
{
    inEveryForm([](Form& form) {
        const Units text = form.encode("aA");
        EXPECT_EQ(form.find(text, -1, '\0', 0), sizeOf(text));
        EXPECT_EQ(form.find(text, sizeOf(text) + 1, '\0', 0), sizeOf(text));
        EXPECT_EQ(form.find(text, sizeOf(text), '\0', 0), -1);
        EXPECT_EQ(form.find(text, 0, 'a', 0), -1);
    });
}

TEST(EveryForm, MeasuresASpanOfMembers)
{
    inEveryForm([](Form& form) {
        constexpr std::string_view kText = "aAbAc";
        const Units text = form.encode(kText);
        const Units set = form.encode("bAa");
        for (const Length length : kLengths) {
            for (const Length setLength : {Length::kExact, Length::kTerminated}) {
                const std::int32_t told = Form::lengthOf(text, length);
                EXPECT_EQ(form.span(text, told, set, Form::lengthOf(set, setLength)),
                          form.positionOf(kText, 4));
            }
            EXPECT_EQ(form.span(text, Form::lengthOf(text, length), set, 0), 0);
        }
        EXPECT_EQ(form.span(text, 0, set, -1), 0);
        EXPECT_EQ(form.span(set, -1, set, -1), sizeOf(set));
        EXPECT_EQ(form.span(set, sizeOf(set), set, -1), sizeOf(set));
    });
}

TEST(EveryForm, MeasuresASpanOfOthers)
{
    inEveryForm([](Form& form) {
        constexpr std::string_view kText = "aAbAcC";
        const Units text = form.encode(kText);
        const Units set = form.encode("Cxc");
        for (const Length length : kLengths) {
            for (const Length setLength : {Length::kExact, Length::kTerminated}) {
                const std::int32_t told = Form::lengthOf(text, length);
                EXPECT_EQ(form.spanNot(text, told, set, Form::lengthOf(set, setLength)),
                          form.positionOf(kText, 4));
            }
        }
        EXPECT_EQ(form.spanNot(text, sizeOf(text), set, 0), sizeOf(text));
        EXPECT_EQ(form.spanNot(text, -1, form.encode("Dd"), -1), sizeOf(text));
        EXPECT_EQ(form.spanNot(text, 0, set, -1), 0);
    });
}

TEST(EveryForm, SplitsATextIntoItsTokens)
{
    inEveryForm([](Form& form) {
        for (const std::string_view text : {"aA,b,,B", ",aA,Db,DB", "aADDbDB,", "aA,b,B"}) {
            const Units string = form.encode(text);
            const Units delimiters = form.encode(",D");
            const std::vector<Units> wanted = {form.encode("aA"), form.encode("b"),
                                               form.encode("B")};
            for (const Length length : {Length::kExact, Length::kTerminated})
                EXPECT_EQ(form.tokens(string, Form::lengthOf(string, length), delimiters,
                                      Form::lengthOf(delimiters, length)),
                          wanted)
                    << text;
        }
    });
}

TEST(EveryForm, DelimitersAloneAreNoToken)
{
    inEveryForm([](Form& form) {
        const Units delimiters = form.encode(",D");
        EXPECT_EQ(form.tokens(form.encode(",DD,"), -1, delimiters, -1), std::vector<Units>{});
    });
}

} // namespace
} // namespace vlx::test
