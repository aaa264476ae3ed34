// The locale directory as files: its size, and what the data compiler lists of it.
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLargestPack = 4'000'000;

std::string contentOf(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in) << path;
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// A little-endian number of a file.
std::uint64_t numberAt(const std::string& content, std::size_t at, int bytes)
{
    std::uint64_t number = 0;
    for (int i = bytes; i-- > 0;)
        number =
            number << 8 | static_cast<unsigned char>(content.at(at + static_cast<std::size_t>(i)));
    return number;
}

std::string outputOf(const std::string& command)
{
    FILE* const pipe = popen(command.c_str(), "r");
    std::string output;
    std::array<char, 4096> part{};
    while (const std::size_t count = fread(part.data(), 1, part.size(), pipe))
        output.append(part.data(), count);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

TEST(Pack, IsUnderFourMegabytes)
{
    std::uintmax_t bytes = 0;
    int files = 0;
    for (const auto& entry : fs::directory_iterator(VLX_LOCALE)) {
        bytes += entry.file_size();
        ++files;
    }
    EXPECT_LT(bytes, kLargestPack);
    EXPECT_GT(files, 200);
    RecordProperty("bytes", std::to_string(bytes));
}

// Every object of the control file, with the sizes and the fingerprint that stand in its file; and
// no file besides.
TEST(Pack, IsListedWithSizesAndFingerprints)
{
    const std::map<std::string, std::string> codes = {
        {"language", "la"}, {"territory", "te"}, {"codepage", "cp"}, {"sort", "so"}};
    std::istringstream list(outputOf("'" VLX_DATA_COMMAND "' list '" VLX_LOCALE "'"));
    std::size_t objects = 0;
    for (std::string line; std::getline(list, line);) {
        std::istringstream words(line);
        std::string type;
        std::string name;
        std::string fingerprint;
        int id = 0;
        std::array<std::uint64_t, 4> sizes{};
        words >> type >> id >> name >> sizes[0] >> sizes[1] >> sizes[2] >> sizes[3] >> fingerprint;
        if (!codes.contains(type))
            continue;
        SCOPED_TRACE(line);
        ++objects;
        char file[32];
        std::snprintf(file, sizeof file, "%s_%05d.nls", codes.at(type).c_str(), id);
        const std::string content = contentOf(fs::path(VLX_LOCALE) / file);
        const std::array<std::size_t, 4> places = {10, 16, 24, 32};
        for (std::size_t i = 0; i < sizes.size(); ++i)
            EXPECT_EQ(sizes[i], numberAt(content, places[i], 2)) << "section " << i + 1;
        char expected[17];
        std::snprintf(expected, sizeof expected, "%016llX",
                      static_cast<unsigned long long>(numberAt(content, 52, 8)));
        EXPECT_EQ(fingerprint, expected);
    }
    const auto all = fs::directory_iterator(VLX_LOCALE);
    EXPECT_EQ(objects + 2, static_cast<std::size_t>(std::distance(begin(all), end(all))));
}

} // namespace
