#include "sort_rules.hpp"

#include <algorithm>
#include <array>

#include "content_text.hpp"

namespace vlx::data {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
// What has a meaning in the syntax, if it is neither escaped nor quoted.
constexpr std::string_view kSyntax = "&<=/|[]*#'\\";

bool isSyntax(char c)
{
    return kSyntax.find(c) != std::string_view::npos;
}

// Walks over the text and counts lines.
class RuleReader {
  public:
    RuleReader(std::string_view text, int line, Reporter& report)
        : text_(text), line_(line), report_(report)
    {
    }

    std::vector<SortRule> read()
    {
        while (skipBlanks())
            readRule();
        return std::move(rules_);
    }

  private:
    bool atEnd() const { return at_ == text_.size(); }
    char peek() const { return text_[at_]; }
    bool take(char c)
    {
        if (atEnd() || peek() != c)
            return false;
        ++at_;
        return true;
    }
    void error(const std::string& message)
    {
        report_.error(line_, message);
        failed_ = true;
    }

    // Over blanks and comments; false at the end.
    bool skipBlanks()
    {
        while (!atEnd()) {
            if (peek() == '#')
                at_ = std::min(text_.find('\n', at_), text_.size());
            else if (kBlanks.find(peek()) == std::string_view::npos)
                return true;
            else
                line_ += text_[at_++] == '\n';
        }
        return false;
    }

    void readRule()
    {
        failed_ = false;
        SortRule rule;
        rule.line = line_;
        if (take('&'))
            readReset(rule);
        else if (take('['))
            readSetting(rule);
        else if (peek() == '<' || peek() == '=')
            readRelation(rule);
        else
            error(std::string("'") + peek() + "' where a rule begins with & < = or [");
        if (failed_)
            at_ = std::min(text_.find_first_of("&\n", at_ + 1), text_.size()); // the next rule
        else
            rules_.push_back(std::move(rule));
    }

    void readReset(SortRule& rule)
    {
        rule.kind = SortRule::kReset;
        if (skipBlanks() && take('[')) {
            const std::string words(bracketed());
            if (words == "before 1")
                rule.strength = Strength::kPrimary;
            else if (!failed_)
                error("[" + words + "] is no place; [before 1] is known");
        }
        rule.text = readText();
        hasReset_ = true;
    }

    void readRelation(SortRule& rule)
    {
        rule.kind = SortRule::kRelation;
        if (!take('=')) {
            int count = 0;
            while (take('<'))
                ++count;
            if (count > 3)
                return error("more than three <");
            rule.strength = static_cast<Strength>(count);
        }
        if (!atEnd() && peek() == '*')
            return error("lists of single characters (<*) are not taken; write the relations out");
        if (!hasReset_)
            return error("a relation without an & ahead of it");
        rule.text = readText();
        if (skipBlanks() && peek() == '|')
            return error("a context (|) cannot be held");
        if (take('/'))
            rule.extension = readText();
    }

    // The words in brackets. An inner pair belongs to the last word.
    std::string_view bracketed()
    {
        const std::size_t begin = at_;
        for (int depth = 1; !atEnd(); ++at_) {
            depth += peek() == '[' ? 1 : peek() == ']' ? -1 : 0;
            if (depth == 0)
                return text_.substr(begin, at_++ - begin);
            if (peek() == '\n')
                break;
        }
        at_ = begin;
        error("a [ without its ]");
        return {};
    }

    void readSetting(SortRule& rule)
    {
        std::string_view rest = trimmed(bracketed());
        while (!rest.empty() && rest.front() != '[') {
            const std::size_t end = std::min(rest.find_first_of(" \t["), rest.size());
            rule.words.emplace_back(rest.substr(0, end));
            rest = trimmed(rest.substr(end));
        }
        if (!rest.empty())
            rule.words.emplace_back(rest);
        if (rule.words.empty() && !failed_)
            error("an empty setting");
    }

    // \u0301, \' and the like; the backslash is taken.
    std::string escaped()
    {
        if (atEnd())
            return {};
        const char kind = text_[at_];
        if (kind != 'u')
            return {text_[at_++]};
        const auto value = parseHex(text_.substr(at_ + 1, 4), 0xFFFF);
        if (!value || text_.size() - at_ < 5 || *value == 0 ||
            (*value >= 0xD800 && *value <= 0xDFFF)) {
            error("\\u without the four digits of a character");
            return {};
        }
        at_ += 5;
        const auto unit = static_cast<char16_t>(*value);
        return utf8Of({&unit, 1});
    }

    // Between apostrophes; two of them are one.
    std::string quotedText()
    {
        std::string text;
        while (!atEnd() && peek() != '\n') {
            if (!take('\'')) {
                text += text_[at_++];
                continue;
            }
            if (!take('\''))
                return text;
            text += '\'';
        }
        error("an apostrophe without its second one");
        return {};
    }

    // Characters up to the next sign of the syntax, blanks left out.
    std::u16string readText()
    {
        std::string utf8;
        while (!failed_ && skipBlanks()) {
            if (take('\\')) {
                utf8 += escaped();
            } else if (take('\'')) {
                utf8 += take('\'') ? "'" : quotedText();
            } else if (isSyntax(peek())) {
                break;
            } else {
                utf8 += text_[at_++];
            }
        }
        std::string complaint;
        const auto units = unitsOf(utf8, complaint);
        if (!complaint.empty())
            error(complaint);
        else if (units->empty() && !failed_)
            error("characters are missing");
        return units.value_or(u"");
    }

    std::string_view text_;
    std::size_t at_ = 0;
    int line_;
    Reporter& report_;
    bool failed_ = false;
    bool hasReset_ = false;
    std::vector<SortRule> rules_;
};

} // namespace

std::vector<SortRule> parseSortRules(std::string_view text, int firstLine, Reporter& report)
{
    return RuleReader(text, firstLine, report).read();
}

std::optional<std::u16string> parseSortSet(std::string_view text)
{
    if (text.size() < 2 || text.front() != '[' || text.back() != ']')
        return std::nullopt;
    std::string complaint;
    const auto units = unitsOf(text.substr(1, text.size() - 2), complaint);
    if (!units)
        return std::nullopt;
    std::u16string set;
    bool isRange = false;
    for (const char16_t unit : *units) {
        if (unit == u' ')
            continue;
        if (unit == u'-' && !set.empty() && !isRange) {
            isRange = true;
            continue;
        }
        if (unit == u'[' || unit == u']' || unit == u'\\' || (isRange && unit < set.back()))
            return std::nullopt;
        if (!isRange)
            set += unit;
        for (char16_t next = set.back(); isRange && next < unit;)
            set += ++next;
        isRange = false;
    }
    return isRange || set.empty() ? std::nullopt : std::optional(set);
}

} // namespace vlx::data
