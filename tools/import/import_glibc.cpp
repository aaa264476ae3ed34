#include "import_glibc.hpp"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

#include "data/content_text.hpp"

namespace vlx::import {

namespace {

using Operands = std::vector<std::string>;

// A day that the list of day names may begin with, as `week` names it.
constexpr const char* kSunday = "19971130";

// The operands of each keyword, under "SECTION keyword".
class LocaleSource {
  public:
    explicit LocaleSource(std::istream& in)
    {
        std::string section;
        for (std::string line; nextLine(in, line);) {
            std::istringstream words(line);
            std::string keyword;
            words >> keyword;
            if (keyword.starts_with("LC_"))
                section = keyword;
            else if (keyword == "comment_char")
                words >> comment_;
            else if (keyword == "escape_char")
                words >> escape_;
            else if (!keyword.empty())
                keywords_[section + " " + keyword] =
                    operandsOf(line.substr(line.find(keyword) + keyword.size()));
        }
    }

    // No operands if the keyword is not there.
    Operands operands(const std::string& name) const
    {
        const auto found = keywords_.find(name);
        return found == keywords_.end() ? Operands() : found->second;
    }

    std::string operand(const std::string& name, std::size_t index) const
    {
        const Operands all = operands(name);
        return index < all.size() ? all[index] : std::string();
    }

  private:
    // A line with those that continue it: such a one ends with the escape character.
    bool nextLine(std::istream& in, std::string& line) const
    {
        line.clear();
        for (std::string part; std::getline(in, part);) {
            if (part.starts_with(comment_)) {
                if (line.empty())
                    return true;
                continue;
            }
            line += part;
            if (!line.ends_with(escape_))
                return true;
            line.pop_back();
        }
        return !line.empty();
    }

    // Parted by semicolons outside of quotes, blanks around them and quotes left off.
    Operands operandsOf(const std::string& text) const
    {
        Operands operands(1);
        bool quoted = false;
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (text[at] == '"')
                quoted = !quoted;
            else if (!quoted && text[at] == ';')
                operands.emplace_back();
            else if (text[at] == escape_ && at + 1 < text.size())
                operands.back() += text[++at];
            else if (text[at] == '<')
                operands.back() += symbolAt(text, at);
            else if (quoted || (text[at] != ' ' && text[at] != '\t'))
                operands.back() += text[at];
        }
        return operands;
    }

    // The character of a symbol <U1E4B>; `at` moves on to its end.
    static std::string symbolAt(const std::string& text, std::size_t& at)
    {
        const std::size_t end = text.find('>', at);
        if (end != at + 6 || text[at + 1] != 'U')
            return "<";
        const char16_t unit =
            static_cast<char16_t>(std::stoul(text.substr(at + 2, 4), nullptr, 16));
        at = end;
        return data::utf8Of({&unit, 1});
    }

    char comment_ = '#';
    char escape_ = '\\';
    std::map<std::string, Operands> keywords_;
};

bool areNames(const Operands& names, std::size_t count)
{
    return names.size() == count &&
           std::none_of(names.begin(), names.end(),
                        [](const std::string& name) { return name.empty(); });
}

} // namespace

std::optional<GlibcLocale> readGlibcLocale(const std::string& path, std::string& complaint)
{
    std::ifstream in(path);
    if (!in) {
        complaint = "cannot be read";
        return std::nullopt;
    }
    const LocaleSource source(in);
    GlibcLocale locale;
    locale.revision = source.operand("LC_IDENTIFICATION revision", 0);
    locale.date = source.operand("LC_IDENTIFICATION date", 0);
    locale.days = source.operands("LC_TIME day");
    locale.shortDays = source.operands("LC_TIME abday");
    locale.months = source.operands("LC_TIME mon");
    locale.shortMonths = source.operands("LC_TIME abmon");
    locale.am = source.operand("LC_TIME am_pm", 0);
    locale.pm = source.operand("LC_TIME am_pm", 1);
    if (!areNames(locale.days, 7) || !areNames(locale.shortDays, 7) ||
        !areNames(locale.months, 12) || !areNames(locale.shortMonths, 12))
        complaint = "does not name seven days and twelve months, in full and short";
    else if (source.operand("LC_TIME week", 1) != kSunday)
        complaint = "does not begin its days with Sunday";
    else
        return locale;
    return std::nullopt;
}

} // namespace vlx::import
