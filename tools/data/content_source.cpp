// A TOML source with its lines.
#include <algorithm>
#include <fstream>
#include <set>
#include <utility>

#include <toml++/toml.h>

#include "content_text.hpp"
#include "sourcefile.hpp"
#include "tsconst.h"

namespace vlx::data {

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
    const bool isBelow = first.ends_with(R"(""")") || first.ends_with("'''");
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

} // namespace vlx::data
