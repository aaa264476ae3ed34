#include "sourcefile.hpp"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <ostream>
#include <sstream>

namespace vlx::data {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::optional<std::uint32_t> parseNumber(std::string_view text, int base, std::uint32_t limit)
{
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, code] = std::from_chars(text.data(), end, value, base);
    if (code != std::errc{} || stop != end || value > limit)
        return std::nullopt;
    return value;
}

} // namespace

std::optional<std::string> readText(const std::string& path, Diagnostics& diagnostics)
{
    std::ifstream in(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    if (!in.is_open() || in.bad()) {
        diagnostics.push_back({path, 0, "cannot be read"});
        return std::nullopt;
    }
    return text;
}

std::optional<Bytes> readBytes(const std::string& path, Diagnostics& diagnostics)
{
    const auto text = readText(path, diagnostics);
    if (!text)
        return std::nullopt;
    return Bytes(text->begin(), text->end());
}

std::optional<std::vector<SourceLine>> readSource(const std::string& path, Diagnostics& diagnostics)
{
    const auto text = readText(path, diagnostics);
    if (!text)
        return std::nullopt;
    std::vector<SourceLine> lines;
    std::istringstream in(*text);
    std::string raw;
    for (int number = 1; std::getline(in, raw); ++number) {
        const std::string_view line = trimmed(std::string_view(raw).substr(0, raw.find('#')));
        if (!line.empty())
            lines.push_back({number, std::string(line)});
    }
    return lines;
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::vector<std::string_view> wordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    for (std::size_t at = text.find_first_not_of(kBlanks); at != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(kBlanks, at), text.size());
        words.push_back(text.substr(at, end - at));
        at = text.find_first_not_of(kBlanks, end);
    }
    return words;
}

std::optional<std::uint32_t> parseHex(std::string_view text, std::uint32_t limit)
{
    return parseNumber(text, 16, limit);
}

std::optional<std::uint32_t> parseDecimal(std::string_view text, std::uint32_t limit)
{
    return parseNumber(text, 10, limit);
}

std::string hexText(std::uint32_t value, int digits)
{
    std::string text(static_cast<std::size_t>(digits), '0');
    for (auto at = text.rbegin(); at != text.rend(); ++at, value >>= 4)
        *at = "0123456789ABCDEF"[value & 15];
    return text;
}

void Reporter::error(int line, std::string message)
{
    diagnostics_.push_back({file_, line, std::move(message)});
    ++errors_;
}

bool hasErrors(const Diagnostics& diagnostics)
{
    return std::any_of(diagnostics.begin(), diagnostics.end(),
                       [](const Diagnostic& one) { return !one.warning; });
}

void print(const Diagnostics& diagnostics, std::ostream& out)
{
    for (const Diagnostic& one : diagnostics) {
        out << one.file;
        if (one.line > 0)
            out << ':' << one.line;
        out << ": " << (one.warning ? "warning: " : "") << one.message << '\n';
    }
}

} // namespace vlx::data
