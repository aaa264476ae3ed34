#include "codepage_source.hpp"

#include <filesystem>
#include <functional>

#include "chars/cpfile.hpp"
#include "codepage_base.hpp"
#include "codepage_check.hpp"
#include "container.hpp"
#include "sourcefile.hpp"

#include "tsconst.h"

namespace vlx::data {

namespace {

constexpr std::size_t kRowCells = 16;
constexpr const char* kUnassigned = "----";
constexpr const char* kBasedOn = "based on";
constexpr int kMaxDepth = 8; // of sources that are based on others

// The library compares shift bytes as signed in some places, so none is above 7F.
bool isShift(std::uint8_t byte)
{
    return byte > 0 && byte < 0x80;
}

bool isSurrogate(std::uint32_t value)
{
    return value >= 0xD800 && value <= 0xDFFF;
}

std::optional<std::uint16_t> parseUnicode(std::string_view text)
{
    const auto value = text.size() == 4 ? parseHex(text, 0xFFFF) : std::nullopt;
    if (!value || isSurrogate(*value) || *value == kNoUnicode)
        return std::nullopt;
    return static_cast<std::uint16_t>(*value);
}

// Two digits for each byte. No byte of a longer character is zero: packed values cannot hold one.
std::optional<Packed> parsePacked(std::string_view text)
{
    if (text.size() < 2 || text.size() > 8 || text.size() % 2 != 0)
        return std::nullopt;
    const auto value = parseHex(text, 0xFFFFFFFF);
    for (std::size_t at = 0; value && text.size() > 2 && at < text.size(); at += 2)
        if (text.substr(at, 2) == "00")
            return std::nullopt;
    return value;
}

// One source being read: the settings, then the sections, line by line.
class SourceReader {
  public:
    SourceReader(std::string path, Diagnostics& diagnostics)
        : path_(std::move(path)), diagnostics_(diagnostics), report_(path_, diagnostics)
    {
    }
    std::optional<CodePageSource> read();

  private:
    using Setter = std::function<bool(std::string_view)>;

    bool readLines();
    void readLine(const SourceLine& line);
    void readSetting(const SourceLine& line);
    void readRow(const SourceLine& line);
    void readRun(int line, Packed& cell, std::string_view first, std::string_view last);
    void addCell(int line, Packed cell, std::uint16_t value);
    void readEncode(const SourceLine& line);
    void readMapValue(const SourceLine& line);
    void fillSettings();
    bool takeBase(int depth);
    bool cut(const SourceLine& line, std::string_view& key, std::string_view& value);

    std::string path_;
    Diagnostics& diagnostics_;
    Reporter report_;
    CodePageSource source_;
    std::string section_;
    std::map<std::string, Setter, std::less<>> settings_;
    SourcePlaces places_;
};

std::function<bool(std::string_view)> byteSetter(std::uint8_t& target)
{
    return [&target](std::string_view text) {
        const auto value = text.size() == 2 ? parseHex(text, 0xFF) : std::nullopt;
        target = static_cast<std::uint8_t>(value.value_or(0));
        return value.has_value();
    };
}

void SourceReader::fillSettings()
{
    settings_["id"] = [this](std::string_view text) {
        const auto value = parseDecimal(text, 0xFFFF);
        source_.id = static_cast<std::uint16_t>(value.value_or(0));
        return value.has_value();
    };
    settings_["name"] = [this](std::string_view text) {
        source_.name = text;
        return text.size() <= kMaxNameLength;
    };
    settings_["family"] = [this](std::string_view text) {
        source_.asciiFamily = text == "ascii";
        return text == "ascii" || text == "ebcdic";
    };
    settings_["max bytes"] = [this](std::string_view text) {
        const auto value = parseDecimal(text, 4);
        source_.maxBytes = static_cast<int>(value.value_or(1));
        return value.has_value() && *value > 0;
    };
    settings_["shift"] = [this](std::string_view text) {
        const auto words = wordsOf(text);
        return words.size() == 2 && byteSetter(source_.shiftIn)(words[0]) &&
               byteSetter(source_.shiftOut)(words[1]) && source_.shiftIn != source_.shiftOut &&
               isShift(source_.shiftIn) && isShift(source_.shiftOut);
    };
    settings_["rule"] = [this](std::string_view text) { return source_.utf8 = text == "utf8"; };
    settings_[kBasedOn] = [this](std::string_view text) {
        source_.basedOn = text;
        return text.find_first_of("/\\") == std::string_view::npos;
    };
    settings_["substitution"] = byteSetter(source_.substitution);
    settings_["lf"] = byteSetter(source_.lineFeed);
    settings_["cr"] = byteSetter(source_.carriageReturn);
    settings_["lineEnd3"] = byteSetter(source_.lineEnd3);
    settings_["lineEnd4"] = byteSetter(source_.lineEnd4);
}

bool SourceReader::cut(const SourceLine& line, std::string_view& key, std::string_view& value)
{
    const std::string_view text = line.text;
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        report_.error(line.number, "not of the form key = value");
        return false;
    }
    key = trimmed(text.substr(0, equals));
    value = trimmed(text.substr(equals + 1));
    return true;
}

void SourceReader::readSetting(const SourceLine& line)
{
    std::string_view key;
    std::string_view value;
    if (!cut(line, key, value))
        return;
    const auto setter = settings_.find(key);
    if (setter == settings_.end())
        report_.error(line.number, "unknown key '" + std::string(key) + "'");
    else if (!places_.settings.emplace(key, line.number).second)
        report_.error(line.number, "'" + std::string(key) + "' is given twice");
    else if (value.empty() || !setter->second(value))
        report_.error(line.number, "bad value for '" + std::string(key) + "'");
}

void SourceReader::addCell(int line, Packed cell, std::uint16_t value)
{
    if (!source_.decode.emplace(cell, value).second) {
        report_.error(line, hexText(cell, packedLength(cell) * 2) + " is defined twice");
        return;
    }
    places_.cells[cell] = line;
}

// A run of values, 4E00..4E0F, for as many cells.
void SourceReader::readRun(int line, Packed& cell, std::string_view first, std::string_view last)
{
    const auto from = parseUnicode(first);
    const auto to = parseUnicode(last);
    if (!from || !to || *from > *to || *to - *from >= 0x100) {
        report_.error(line, "'" + std::string(first) + ".." + std::string(last) + "' is no run");
        return;
    }
    for (std::uint32_t value = *from; value <= *to; ++value)
        addCell(line, cell++, static_cast<std::uint16_t>(value));
}

void SourceReader::readRow(const SourceLine& line)
{
    const std::size_t colon = line.text.find(':');
    const auto start = parsePacked(std::string_view(line.text).substr(0, colon));
    if (colon == std::string::npos || !start) {
        report_.error(line.number,
                      "a row begins with the bytes of its first character and a colon");
        return;
    }
    Packed cell = *start;
    for (const std::string_view word : wordsOf(std::string_view(line.text).substr(colon + 1))) {
        if (word == kUnassigned) {
            places_.unassigned.insert(cell++);
        } else if (word.size() == 10 && word.substr(4, 2) == "..") {
            readRun(line.number, cell, word.substr(0, 4), word.substr(6));
        } else if (const auto value = parseUnicode(word)) {
            addCell(line.number, cell++, *value);
        } else {
            report_.error(line.number, "'" + std::string(word) + "' is no Unicode value");
            return;
        }
    }
    if (cell == *start || cell - *start > kRowCells || (*start & 0xFF) + (cell - *start) > 0x100)
        report_.error(line.number, "a row has 1 to 16 characters that differ in their last byte");
}

void SourceReader::readEncode(const SourceLine& line)
{
    std::string_view key;
    std::string_view value;
    if (!cut(line, key, value))
        return;
    const auto unicode = parseUnicode(key);
    const auto character = value == "none" ? kNoCharacter : parsePacked(value);
    if (!unicode || !character)
        report_.error(line.number, "not of the form Unicode value = bytes, or none");
    else if (!places_.encode.emplace(*unicode, EncodeLine{*character, line.number}).second)
        report_.error(line.number, std::string(key) + " is encoded twice");
}

void SourceReader::readMapValue(const SourceLine& line)
{
    std::string_view key;
    std::string_view value;
    if (!cut(line, key, value))
        return;
    const auto from = parsePacked(key);
    const auto to = value == "none" ? kNoCharacter : parsePacked(value);
    if (!from || !to)
        report_.error(line.number, "not of the form bytes = bytes, or none");
    else if (!source_.mapValues.emplace(*from, *to).second)
        report_.error(line.number, std::string(key) + " is mapped twice");
    else
        places_.mapValues[*from] = line.number;
}

void SourceReader::readLine(const SourceLine& line)
{
    if (line.text.front() == '[') {
        section_ = line.text;
        if (section_ != "[decode]" && section_ != "[encode]" && section_ != "[map values]")
            report_.error(line.number, "unknown section " + section_);
    } else if (section_.empty()) {
        readSetting(line);
    } else if (section_ == "[decode]") {
        readRow(line);
    } else if (section_ == "[encode]") {
        readEncode(line);
    } else if (section_ == "[map values]") {
        readMapValue(line);
    }
}

// False if there is a base and it has errors of its own.
bool SourceReader::takeBase(int depth)
{
    if (source_.basedOn.empty())
        return true;
    const std::string path =
        (std::filesystem::path(path_).parent_path() / (source_.basedOn + ".cp")).string();
    const int line = places_.settings[kBasedOn];
    SourceReader base(path, diagnostics_);
    if (depth == kMaxDepth || !base.readLines() || !base.takeBase(depth + 1) ||
        !base.report_.clean()) {
        report_.error(line, "'" + source_.basedOn + "' cannot be read as the base");
        return false;
    }
    inherit(source_, places_, base.source_, base.places_, line);
    return true;
}

bool SourceReader::readLines()
{
    const auto lines = readSource(path_, diagnostics_);
    if (!lines)
        return false;
    fillSettings();
    for (const SourceLine& line : *lines)
        readLine(line);
    return true;
}

std::optional<CodePageSource> SourceReader::read()
{
    if (!readLines())
        return std::nullopt;
    if (takeBase(0))
        completeSource(source_, places_, report_);
    if (!report_.clean())
        return std::nullopt;
    return source_;
}

} // namespace

int packedLength(Packed character)
{
    int length = 1;
    while (length < 4 && character >> (8 * length) != 0)
        ++length;
    return length;
}

std::optional<CodePageSource> readCodePageSource(const std::string& path, Diagnostics& diagnostics)
{
    return SourceReader(path, diagnostics).read();
}

// The settings alone, quickly; what is wrong in them is reported by the compilation.
std::optional<SourceHead> readCodePageHead(const std::string& path, Diagnostics& diagnostics)
{
    const auto lines = readSource(path, diagnostics);
    if (!lines)
        return std::nullopt;
    SourceHead head{TS_OBJ_CODEPAGE, 0, {}};
    bool hasId = false;
    for (const SourceLine& line : *lines) {
        const std::size_t equals = line.text.find('=');
        if (line.text.front() == '[' || equals == std::string::npos)
            break;
        const std::string_view key = trimmed(std::string_view(line.text).substr(0, equals));
        const std::string_view value = trimmed(std::string_view(line.text).substr(equals + 1));
        if (key == "name")
            head.name = value;
        else if (const auto id = parseDecimal(value, 0xFFFF); key == "id" && id) {
            head.id = static_cast<std::uint16_t>(*id);
            hasId = true;
        }
    }
    if (!hasId || head.name.empty()) {
        diagnostics.push_back({path, 0, "has no good id and name"});
        return std::nullopt;
    }
    return head;
}

} // namespace vlx::data
