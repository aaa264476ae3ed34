#include "content_text.hpp"

#include <algorithm>
#include <array>
#include <fstream>
#include <set>
#include <utility>

#include <toml++/toml.h>

#include "sourcefile.hpp"
#include "tsconst.h"

namespace vlx::data {

namespace {

// The code point of a well-formed UTF-8 sequence at `at`, which moves behind it; -1 for any other.
std::int32_t codePointAt(std::string_view text, std::size_t& at)
{
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned lead = byte(at);
    const std::size_t length = lead < 0x80                    ? 1
                               : lead >= 0xC2 && lead <= 0xDF ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    if (length == 0 || length > text.size() - at)
        return -1;
    auto value = static_cast<std::int32_t>(length == 1 ? lead : lead & (0x7FU >> length));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80)
            return -1;
        value = value << 6 | (byte(at + i) & 0x3F);
    }
    static constexpr std::array<std::int32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
    if (value < kLeast[length] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
        return -1;
    at += length;
    return value;
}

std::string hexOf(std::uint32_t value)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (int shift = value > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4)
        text += kDigits[value >> shift & 0xF];
    return text;
}

bool isSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDFFF;
}

// What a reader of a source would not see, or take for an ordinary blank.
bool isInvisible(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit <= 0xA0) || unit == 0xAD || unit == 0x61C ||
           (unit >= 0x2000 && unit <= 0x200F) || (unit >= 0x2028 && unit <= 0x202F) ||
           (unit >= 0x205F && unit <= 0x206F) || unit == 0x3000 || unit == 0xFEFF ||
           isSurrogate(unit);
}

std::size_t bytesOf(char16_t unit, std::uint16_t codePage)
{
    if (unit < 0x80 || codePage == 874 || (codePage >= 1250 && codePage <= 1258))
        return 1;
    if (codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950 || unit < 0x800)
        return 2;
    return 3;
}

} // namespace

std::optional<std::u16string> unitsOf(std::string_view utf8, std::string& complaint)
{
    std::u16string units;
    for (std::size_t at = 0; at < utf8.size();) {
        const std::int32_t value = codePointAt(utf8, at);
        if (value > 0 && value <= 0xFFFF) {
            units += static_cast<char16_t>(value);
            continue;
        }
        complaint = value < 0 ? "text that is not UTF-8"
                              : "character U+" + hexOf(static_cast<std::uint32_t>(value)) +
                                    (value == 0 ? ", which would end the text"
                                                : ", but objects end at U+FFFF");
        return std::nullopt;
    }
    return units;
}

std::string utf8Of(std::u16string_view units)
{
    std::string text;
    for (const char16_t unit : units) {
        const unsigned value = isSurrogate(unit) ? 0xFFFD : unit;
        if (value < 0x80) {
            text += static_cast<char>(value);
            continue;
        }
        if (value >= 0x800)
            text += static_cast<char>(0xE0 | value >> 12);
        text += static_cast<char>(value < 0x800 ? 0xC0 | value >> 6 : 0x80 | (value >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (value & 0x3F));
    }
    return text;
}

std::string quoted(std::u16string_view units)
{
    std::string text = "\"";
    for (const char16_t unit : units) {
        if (isInvisible(unit))
            text += "\\u" + hexOf(unit);
        else if (unit == '"' || unit == '\\')
            text += std::string("\\") + static_cast<char>(unit);
        else
            text += utf8Of({&unit, 1});
    }
    return text + "\"";
}

std::string plainText(std::u16string_view text)
{
    for (const char16_t unit : text) {
        if (isSurrogate(unit))
            return "surrogate U+" + hexOf(unit);
        if (unit < 0x20 || (unit >= 0x7F && unit < 0xA0))
            return "control character U+" + hexOf(unit);
    }
    return {};
}

std::string filledText(std::u16string_view text)
{
    return text.empty() ? "empty text" : plainText(text);
}

TextRule shortText(std::uint16_t codePage)
{
    return [codePage](std::u16string_view text) {
        std::size_t bytes = 0;
        for (const char16_t unit : text)
            bytes += bytesOf(unit, codePage);
        return bytes <= kShortText ? std::string()
                                   : "text of " + std::to_string(bytes) + " bytes, above " +
                                         std::to_string(kShortText);
    };
}

TextRule both(TextRule first, TextRule second)
{
    return [first = std::move(first), second = std::move(second)](std::u16string_view text) {
        std::string complaint = first(text);
        return complaint.empty() ? second(text) : complaint;
    };
}

struct Source::Tree {
    toml::table root;
    std::vector<std::string> linesOfFile;
    std::set<std::string> asked;
    std::set<std::string> refused;

    toml::node_view<toml::node> find(const std::string& key)
    {
        asked.insert(key);
        return root.at_path(key);
    }

    static int lineOf(const toml::node& node)
    {
        return std::max(1, static_cast<int>(node.source().begin.line));
    }

    // The line of the key, or of the innermost table that should have it.
    int lineOf(std::string key)
    {
        for (;;) {
            if (const toml::node* const node = root.at_path(key).node())
                return lineOf(*node);
            const std::size_t dot = key.rfind('.');
            if (dot == std::string::npos)
                return 1;
            key.resize(dot);
        }
    }

    // Whether something inside the table of this key has been asked for.
    bool askedWithin(const std::string& key) const
    {
        const auto next = asked.lower_bound(key + ".");
        return next != asked.end() && next->starts_with(key + ".");
    }
};

Source::Source(const std::string& path, Diagnostics& out)
    : path_(path), out_(out), tree_(std::make_unique<Tree>())
{
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);)
        tree_->linesOfFile.emplace_back(trimmed(line));
    try {
        tree_->root = toml::parse_file(path);
    } catch (const toml::parse_error& error) {
        report(static_cast<int>(error.source().begin.line), std::string(error.description()));
    }
}

Source::~Source() = default;

void Source::report(int line, const std::string& message)
{
    out_.push_back({path_, line, message, false});
    good_ = false;
}

void Source::refuse(const std::string& key, const std::string& message)
{
    // One complaint a key: what was put in its place, or in place of a list, cannot be right
    // either.
    if (!tree_->refused.contains(key.substr(0, key.rfind('['))) &&
        tree_->refused.insert(key).second)
        report(tree_->lineOf(key), key + ": " + message);
}

void Source::check(const std::vector<TextField>& fields, const std::vector<std::u16string>& texts)
{
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (const std::string complaint = fields[i].rule(texts[i]); !complaint.empty())
            refuse(fields[i].key, complaint);
}

SourceHead Source::head(std::uint8_t type)
{
    SourceHead head;
    head.type = type;
    head.id = number("id", 1, 65535);
    const std::u16string name = text("name", filledText);
    // The characters that part a locale name into its objects cannot stand in an object's name.
    for (const char16_t unit : name)
        if (unit <= ' ' || unit > '~' || unit == '_' || unit == '.' || unit == '@') {
            refuse("name", "an object name has only visible ASCII characters without _ . @");
            break;
        }
    if (name.size() > 32)
        refuse("name", "an object name has at most 32 characters");
    head.name = utf8Of(name);
    return head;
}

std::uint16_t Source::number(const std::string& key, int lowest, int highest)
{
    const auto node = tree_->find(key);
    if (!node) {
        refuse(key, "missing");
    } else if (!node.is_integer()) {
        refuse(key, "not a whole number");
    } else if (const std::int64_t value = **node.as_integer(); value < lowest || value > highest) {
        refuse(key, std::to_string(value) + " is outside " + std::to_string(lowest) + " to " +
                        std::to_string(highest));
    } else {
        return static_cast<std::uint16_t>(value);
    }
    return static_cast<std::uint16_t>(lowest);
}

bool Source::flag(const std::string& key)
{
    const auto node = tree_->find(key);
    if (node && node.is_boolean())
        return **node.as_boolean();
    refuse(key, node ? "not true or false" : "missing");
    return false;
}

std::u16string Source::text(const std::string& key, const TextRule& rule)
{
    const auto node = tree_->find(key);
    if (!node || !node.is_string()) {
        refuse(key, node ? "not a text" : "missing");
        return {};
    }
    std::string complaint;
    const std::optional<std::u16string> units = unitsOf(**node.as_string(), complaint);
    if (units && rule)
        complaint = rule(*units);
    if (!complaint.empty())
        refuse(key, complaint);
    return units.value_or(std::u16string());
}

bool Source::has(const std::string& key)
{
    return static_cast<bool>(tree_->root.at_path(key));
}

void Source::know(const std::string& key)
{
    tree_->asked.insert(key);
}

SourceText Source::lines(const std::string& key)
{
    const auto node = tree_->find(key);
    if (!node || !node.is_string()) {
        refuse(key, node ? "not a text" : "missing");
        return {};
    }
    // A line end right behind the quotation marks is none of the text.
    const int line = Tree::lineOf(*node.node());
    const std::string& first = tree_->linesOfFile[static_cast<std::size_t>(line) - 1];
    const bool isBelow = first.ends_with("\"\"\"") || first.ends_with("'''");
    return {**node.as_string(), isBelow ? line + 1 : line};
}

std::vector<std::u16string> Source::texts(const std::string& key, std::size_t least,
                                          std::size_t most)
{
    const auto node = tree_->find(key);
    const toml::array* const array = node.as_array();
    if (array == nullptr) {
        refuse(key, node ? "not a list of texts" : "missing");
        return std::vector<std::u16string>(least);
    }
    if (array->size() < least || array->size() > most) {
        refuse(key, std::to_string(array->size()) + " texts, where " + std::to_string(least) +
                        (most == least ? "" : " to " + std::to_string(most)) + " are wanted");
        return std::vector<std::u16string>(least);
    }
    std::vector<std::u16string> texts;
    for (std::size_t i = 0; i < array->size(); ++i)
        texts.push_back(text(key + "[" + std::to_string(i) + "]"));
    return texts;
}

char16_t Source::character(const std::string& key)
{
    const std::u16string one = text(key, [](std::u16string_view units) {
        return units.size() > 1 ? "more than one character" : plainText(units);
    });
    return one.empty() ? u'\0' : one[0];
}

std::vector<SourcePair> Source::pairs(const std::string& key)
{
    const auto node = tree_->find(key);
    if (!node)
        return {};
    const toml::array* const array = node.as_array();
    if (array == nullptr) {
        refuse(key, "not a list of tables");
        return {};
    }
    const TextRule oneOrTwo = [](std::u16string_view units) {
        return units.size() > 2 ? "more than two characters" : filledText(units);
    };
    std::vector<SourcePair> pairs;
    for (std::size_t i = 0; i < array->size(); ++i) {
        const std::string entry = key + "[" + std::to_string(i) + "]";
        const toml::table* const table = array->get(i)->as_table();
        if (table == nullptr) {
            refuse(entry, "not a table");
            continue;
        }
        pairs.push_back({text(entry + ".from", oneOrTwo), text(entry + ".to", oneOrTwo)});
        for (const auto& [name, value] : *table)
            if (name.str() != "from" && name.str() != "to")
                report(Tree::lineOf(value),
                       entry + "." + std::string(name.str()) + ": unknown key");
    }
    return pairs;
}

std::uint16_t Source::reference(const std::string& key, std::uint8_t type,
                                const Catalogue& catalogue)
{
    const std::string name = utf8Of(text(key, filledText));
    if (name.empty() || (type == TS_OBJ_SORT && name == "Binary"))
        return 0;
    const std::optional<std::uint16_t> id = catalogue.idOf(type, name);
    if (!id)
        refuse(key, "no object \"" + name + "\" among the sources");
    return id.value_or(0);
}

std::optional<Object> Source::finish(const SourceHead& head, const std::optional<Bytes>& content)
{
    const auto walk = [this](const auto& self, const toml::table& table,
                             const std::string& prefix) -> void {
        for (const auto& [name, value] : table) {
            const std::string key = prefix + std::string(name.str());
            if (tree_->asked.contains(key))
                continue;
            if (value.is_table() && tree_->askedWithin(key))
                self(self, *value.as_table(), key + ".");
            else
                report(Tree::lineOf(value), key + ": unknown key");
        }
    };
    walk(walk, tree_->root, "");
    if (!content)
        report(0, "content above " + std::to_string(kLargestSection) + " bytes");
    if (!good_)
        return std::nullopt;
    return Object{head.type, head.id, head.name, {*content}};
}

std::optional<SourceHead> readHead(const std::string& path, std::uint8_t type, Diagnostics& out)
{
    Source source(path, out);
    if (!source.good())
        return std::nullopt;
    SourceHead head = source.head(type);
    return source.good() ? std::optional(std::move(head)) : std::nullopt;
}

std::uint16_t TextBlock::putText(std::u16string_view text)
{
    const std::uint16_t offset = end();
    for (const char16_t unit : text)
        append(Le16(unit));
    append(Le16(0));
    return offset;
}

} // namespace vlx::data
