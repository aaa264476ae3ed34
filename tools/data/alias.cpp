#include "alias.hpp"

#include <map>
#include <sstream>

#include "sourcefile.hpp"

#include "tsconst.h"

namespace vlx::data {

namespace {

// The limits of the reader.
constexpr std::size_t kMaxLine = 32765; // with its line end, in a buffer of 32767 bytes
constexpr std::size_t kMaxCodePage = 32;
constexpr std::size_t kMaxAlias = 64;

std::string upper(std::string_view text)
{
    std::string folded(text);
    for (char& c : folded)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return folded;
}

class AliasChecker {
  public:
    AliasChecker(const Catalogue& catalogue, Reporter& report)
        : catalogue_(catalogue), report_(report)
    {
    }

    void checkLine(int number, const std::string& line)
    {
        if (line.size() > kMaxLine)
            report_.error(number, "longer than 32,765 bytes");
        for (const char c : line)
            if (c != '\t' && (c < ' ' || c > '~'))
                return report_.error(number, "holds a character that is not printable ASCII");
        auto words = wordsOf(line);
        if (words.empty() || line.front() == '#')
            return;
        if (line.front() == ' ' || line.front() == '\t') {
            if (!inEntry_)
                report_.error(number, "an alias without a code page");
        } else {
            checkCodePage(number, words.front());
            words.erase(words.begin());
        }
        for (const std::string_view alias : words)
            checkAlias(number, alias);
    }

  private:
    void checkCodePage(int number, std::string_view name)
    {
        inEntry_ = true;
        if (name.size() > kMaxCodePage)
            report_.error(number, "the name of a code page has at most 32 characters");
        if (!catalogue_.idOf(TS_OBJ_CODEPAGE, std::string(name)))
            report_.error(number, "there is no code page '" + std::string(name) + "'");
    }

    void checkAlias(int number, std::string_view alias)
    {
        if (alias.size() > kMaxAlias)
            report_.error(number, "an alias has at most 64 characters");
        // An alias is asked for first, so it would hide the code page.
        if (catalogue_.idOf(TS_OBJ_CODEPAGE, std::string(alias)))
            report_.error(number, "'" + std::string(alias) + "' is the name of a code page");
        const auto [found, fresh] = lines_.emplace(upper(alias), number);
        if (!fresh)
            report_.error(number, "'" + std::string(alias) + "' is an alias already, in line " +
                                      std::to_string(found->second));
    }

    const Catalogue& catalogue_;
    Reporter& report_;
    bool inEntry_ = false;
    std::map<std::string, int> lines_;
};

} // namespace

void checkAliases(const std::string& text, const std::string& file, const Catalogue& catalogue,
                  Diagnostics& diagnostics)
{
    Reporter report(file, diagnostics);
    AliasChecker checker(catalogue, report);
    std::istringstream in(text);
    std::string line;
    for (int number = 1; std::getline(in, line); ++number)
        checker.checkLine(number, line);
}

} // namespace vlx::data
