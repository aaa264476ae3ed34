// gettext's .po files as message catalogs. Contexts are sets; a message's number is its place among
// the entries of its context, so that all languages that were made from one template agree.
#include "messages.hpp"

#include <sstream>

#include "sourcefile.hpp"

namespace vlx::data {

namespace {

// One entry, as far as it has been read.
struct Entry {
    std::string context;
    std::string id;
    std::string text;
    int line = 0;
    bool fuzzy = false;
    bool hasId = false;
    bool plural = false;
};

class PortableObjectReader {
  public:
    PortableObjectReader(const std::string& path, const ContextMap& contexts,
                         Diagnostics& diagnostics)
        : report_(path, diagnostics), contexts_(contexts)
    {
    }

    std::optional<MessageCatalog> read(const std::string& text)
    {
        std::istringstream in(text);
        std::string raw;
        for (line_ = 1; std::getline(in, raw); ++line_)
            readLine(trimmed(raw));
        finish();
        if (report_.clean() && catalog_.sets.empty())
            report_.error(0, "there is no translated message");
        if (!report_.clean())
            return std::nullopt;
        return catalog_;
    }

  private:
    void readLine(std::string_view line)
    {
        if (line.empty())
            finish();
        else if (line.starts_with("#"))
            readComment(line);
        else if (line.starts_with("\""))
            addText(line);
        else
            readKeyword(line);
    }

    void readComment(std::string_view line)
    {
        if (entry_.hasId && !line.starts_with("#~"))
            finish();
        if (line.starts_with("#,") && line.find("fuzzy") != std::string_view::npos)
            entry_.fuzzy = true;
    }

    void readKeyword(std::string_view line)
    {
        const std::size_t end = line.find_first_of(" \t[");
        const std::string_view keyword = line.substr(0, end);
        const std::size_t quote = line.find('"');
        if (keyword == "msgctxt" || (keyword == "msgid" && entry_.hasId)) {
            if (entry_.hasId)
                finish();
        }
        if (keyword == "msgctxt") {
            field_ = &entry_.context;
        } else if (keyword == "msgid") {
            entry_.hasId = true;
            entry_.line = line_;
            field_ = &entry_.id;
        } else if (keyword == "msgid_plural") {
            entry_.plural = true;
            field_ = &ignored_;
        } else if (keyword == "msgstr") {
            field_ = &entry_.text;
        } else {
            report_.error(line_, "unknown keyword '" + std::string(keyword) + "'");
            return;
        }
        if (quote == std::string_view::npos)
            report_.error(line_, "a text in quotes is missing");
        else
            addText(line.substr(quote));
    }

    void addText(std::string_view line)
    {
        if (!field_ || line.size() < 2 || line.back() != '"') {
            report_.error(line_,
                          field_ ? "the closing quote is missing" : "a text without keyword");
            return;
        }
        const std::string_view body = line.substr(1, line.size() - 2);
        for (std::size_t i = 0; i < body.size(); ++i)
            if (body[i] != '\\')
                *field_ += body[i];
            else
                addEscape(++i < body.size() ? body[i] : '\0');
    }

    void addEscape(char letter)
    {
        static constexpr std::string_view kLetters = "ntr\"\\";
        static constexpr std::string_view kMeanings = "\n\t\r\"\\";
        const std::size_t at = kLetters.find(letter);
        if (letter == '\0' || at == std::string_view::npos)
            report_.error(line_, "unknown escape sequence");
        else
            *field_ += kMeanings[at];
    }

    std::optional<std::uint32_t> setOf(const std::string& context)
    {
        if (const auto known = contexts_.find(context); known != contexts_.end())
            return known->second;
        if (context.empty())
            return 1;
        const auto number = parseDecimal(context, 0x7FFFFFFF);
        return number && *number > 0 ? number : std::nullopt;
    }

    // Numbers are given to all entries but the header, translated or not.
    void finish()
    {
        const Entry entry = std::exchange(entry_, Entry());
        field_ = nullptr;
        if (!entry.hasId || (entry.id.empty() && entry.context.empty()))
            return;
        if (entry.plural) {
            report_.error(entry.line, "plural forms have no place in a catalog");
            return;
        }
        const auto set = setOf(entry.context);
        if (!set) {
            report_.error(entry.line, "no set is told for the context '" + entry.context + "'");
            return;
        }
        const std::uint32_t number = ++last_[*set];
        if (!entry.text.empty() && !entry.fuzzy)
            catalog_.sets[*set][number] = {entry.text, entry.line};
    }

    Reporter report_;
    const ContextMap& contexts_;
    MessageCatalog catalog_;
    std::map<std::uint32_t, std::uint32_t> last_; // number of each set
    Entry entry_;
    std::string* field_ = nullptr; // that texts in quotes go on with
    std::string ignored_;
    int line_ = 0;
};

} // namespace

std::optional<MessageCatalog>
readPortableObject(const std::string& path, const ContextMap& contexts, Diagnostics& diagnostics)
{
    const auto text = readText(path, diagnostics);
    if (!text)
        return std::nullopt;
    return PortableObjectReader(path, contexts, diagnostics).read(*text);
}

} // namespace vlx::data
