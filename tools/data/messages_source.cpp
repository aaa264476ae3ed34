// The source of a message catalog: TOML.
#include "messages.hpp"

#include <ostream>

#include <toml++/toml.h>

#include "content_text.hpp"
#include "sourcefile.hpp"

namespace vlx::data {

namespace {

constexpr std::uint32_t kLargestNumber = 0x7FFFFFFF; // callers count with signed numbers

int lineOf(const toml::node& node)
{
    return static_cast<int>(node.source().begin.line);
}

class MessageSource {
  public:
    MessageSource(const std::string& path, Diagnostics& diagnostics) : report_(path, diagnostics) {}

    std::optional<MessageCatalog> read(const toml::table& root)
    {
        for (const auto& [key, node] : root)
            if (key.str() == "locale")
                readLocale(node);
            else if (key.str() == "set")
                readSets(node);
            else
                report_.error(lineOf(node), "unknown key '" + std::string(key.str()) + "'");
        if (report_.clean() && catalog_.locale.empty())
            report_.error(0, "the key 'locale' is missing");
        if (report_.clean() && catalog_.sets.empty())
            report_.error(0, "there is no set");
        if (!report_.clean())
            return std::nullopt;
        return catalog_;
    }

  private:
    void readLocale(const toml::node& node)
    {
        catalog_.locale = node.value_or(std::string());
        if (!node.is_string() || catalog_.locale.empty())
            report_.error(lineOf(node), "'locale' is the name of a locale");
    }

    std::optional<std::uint32_t> numberOf(std::string_view key, const toml::node& node)
    {
        const auto number = parseDecimal(key, kLargestNumber);
        if (!number || *number == 0 || key.front() == '0') {
            report_.error(lineOf(node), "'" + std::string(key) + "' is no number above 0");
            return std::nullopt;
        }
        return number;
    }

    void readSets(const toml::node& node)
    {
        const toml::table* const sets = node.as_table();
        if (!sets) {
            report_.error(lineOf(node), "'set' has sets by their numbers: [set.1]");
            return;
        }
        for (const auto& [key, set] : *sets)
            if (const auto number = numberOf(key.str(), set))
                readMessages(set, catalog_.sets[*number]);
    }

    void readMessages(const toml::node& node, std::map<std::uint32_t, Message>& messages)
    {
        const toml::table* const table = node.as_table();
        if (!table) {
            report_.error(lineOf(node), "a set has messages by their numbers: 1 = \"text\"");
            return;
        }
        for (const auto& [key, message] : *table) {
            const auto number = numberOf(key.str(), message);
            if (!number)
                continue;
            if (!message.is_string())
                report_.error(lineOf(message), "a message is a text");
            messages[*number] = {message.value_or(std::string()), lineOf(message)};
        }
    }

    Reporter report_;
    MessageCatalog catalog_;
};

} // namespace

std::optional<MessageCatalog> readMessageSource(const std::string& path, Diagnostics& diagnostics)
{
    const auto text = readText(path, diagnostics);
    if (!text)
        return std::nullopt;
    try {
        return MessageSource(path, diagnostics).read(toml::parse(*text, path));
    } catch (const toml::parse_error& error) {
        diagnostics.push_back(
            {path, static_cast<int>(error.source().begin.line), std::string(error.description())});
        return std::nullopt;
    }
}

void dumpMessages(const MessageCatalog& catalog, std::ostream& out)
{
    const auto inQuotes = [](const std::string& text) {
        std::string complaint;
        return quoted(unitsOf(text, complaint).value_or(u"?"));
    };
    out << "locale = " << inQuotes(catalog.locale) << '\n';
    for (const auto& [set, messages] : catalog.sets) {
        out << "\n[set." << set << "]\n";
        for (const auto& [number, message] : messages)
            out << number << " = " << inQuotes(message.text) << '\n';
    }
}

} // namespace vlx::data
