// The examples through the command line, against outputs that were read and found right. After a
// wanted change of the output, the command that a failing test shows makes the new file.
#include <cctype>

#include <gtest/gtest.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

struct Case {
    const char* golden;
    const char* arguments;
    const char* language = "C.UTF-8";
};

constexpr Case kCases[] = {
    {"japanese.ms932.txt", "walk --locale Japanese_Japan.MS932 japanese.ms932.txt"},
    {"japanese.ms932.json", "walk --json --locale Japanese_Japan.MS932 japanese.ms932.txt"},
    {"japanese.ibm930.txt", "walk --locale Japanese_Japan.IBM930 japanese.ibm930.txt"},
    {"japanese.ibm930.json", "walk --json --locale Japanese_Japan.IBM930 japanese.ibm930.txt"},
    {"japanese.ibm930.backward.txt",
     "walk --backward --limit 40 --locale Japanese_Japan.IBM930 japanese.ibm930.txt"},
    {"german.ms1252.txt", "walk --limit 100 --locale German_Germany.MS1252 german.ms1252.txt"},
    {"german.ms1252.json",
     "walk --json --limit 100 --locale German_Germany.MS1252 german.ms1252.txt"},
    {"german.ms1252.ascii.txt", "walk --limit 20 --locale German_Germany.MS1252 german.ms1252.txt",
     "C"},
    {"multilingual.utf8.txt", "walk --locale English.UTF-8 multilingual.utf8.txt"},
    {"multilingual.utf8.json", "walk --json --locale English.UTF-8 multilingual.utf8.txt"},
    {"japanese-as-german.txt", "walk --limit 30 --locale German_Germany.MS1252 japanese.ms932.txt"},
};

class Golden : public testing::TestWithParam<Case> {};

TEST_P(Golden, IsWhatTheCommandWrites)
{
    const Case& param = GetParam();
    const Outcome outcome = run(param.arguments, {.language = param.language});
    EXPECT_EQ(outcome.out, contentOf(std::string(VLX_GOLDEN "/") + param.golden))
        << "cd examples; LC_ALL=" << param.language << " vlx " << param.arguments << " >"
        << param.golden;
    EXPECT_EQ(outcome.errors, "");
}

std::string nameOf(const testing::TestParamInfo<Case>& info)
{
    std::string name = info.param.golden;
    for (char& letter : name)
        if (!std::isalnum(static_cast<unsigned char>(letter)))
            letter = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Examples, Golden, testing::ValuesIn(kCases), nameOf);

} // namespace
} // namespace vlx::cli::test
