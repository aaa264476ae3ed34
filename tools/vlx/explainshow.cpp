// `vlx sort --explain`: shows an explanation.
#include <nlohmann/json.hpp>

#include "explain.hpp"
#include "failure.hpp"
#include "sort.hpp"

namespace vlx::cli {

namespace {

using Json = nlohmann::ordered_json;

std::uint32_t optionsOf(const SortOptions& options)
{
    if (options.ignoresCase && options.ignoresWidth)
        throw Failure("case and width cannot be ignored together");
    if (options.ignoresCase)
        return TS_OPT_IGNORE_CASE;
    return options.ignoresWidth ? TS_OPT_IGNORE_WIDTH : 0;
}

std::string weightText(std::size_t level, unsigned weight)
{
    const int digits = level == 0 || level == 3 ? 4 : 2;
    return weight == 0 ? std::string(static_cast<std::size_t>(digits), '-')
                       : fmt::format("{:0{}X}", weight, digits);
}

class PlainExplanation {
  public:
    PlainExplanation(const Explanation& explanation, Output& output)
        : what_(explanation), out_(output)
    {
    }

    void print()
    {
        const std::string sort = fmt::format("sort {} ({})", what_.sortName(), what_.sortId());
        out_.print("{}\n", out_.styled(kFaint, sort));
        if (what_.hasLevels())
            for (const ExplainedText* const text : {&what_.first(), &what_.second()})
                printElements(*text);
        out_.print("\n{}\n", out_.styled(kHeading, "Keys"));
        if (what_.hasLevels())
            printLevels();
        else
            for (const ExplainedText* const text : {&what_.first(), &what_.second()})
                out_.print("  {}  {}\n", hexOf(text->key), shown(unitsOf(text->text)));
        out_.print("\n{}\n", verdict());
        if (const int compared = what_.comparison(); compared != what_.parting().order)
            out_.print("{}\n", out_.styled(kBad, "A comparison of the texts (TSStrcoll) says: " +
                                                     relation(compared)));
    }

  private:
    std::string shown(const Units& units) const
    {
        if (units.empty())
            return "\"\"";
        std::string text;
        for (const TSChar16 unit : units) {
            if (unit > 0x20 && unit < 0x7F)
                text += static_cast<char>(unit);
            else
                text += out_.terminal().utf8
                            ? visible(unit)
                            : fmt::format("\\u{:04X}", static_cast<unsigned>(unit));
        }
        return text;
    }

    void printElements(const ExplainedText& text)
    {
        out_.print("\n{}\n", out_.styled(kHeading, shown(unitsOf(text.text))));
        for (const CollationElement& element : text.elements) {
            std::string line;
            for (std::size_t level = 0; level < kKeyLevels; ++level)
                if (level < 3 || element.weights[level] != 0)
                    line += "  " + weightText(level, element.weights[level]);
            const std::string name = element.characters.empty() ? "+" : shown(element.characters);
            out_.print("{}  {}\n", line, out_.styled(kMark, name));
        }
    }

    // The level where they part stands out.
    void printLevels()
    {
        const auto first = levelsOf(what_.first().key);
        const auto second = levelsOf(what_.second().key);
        for (std::size_t level = 0; level < kKeyLevels; ++level) {
            const bool parts = what_.parting().order != 0 && level == what_.parting().level;
            for (const std::string* const run : {&first[level], &second[level]}) {
                const std::string line =
                    fmt::format("  level {}:{}{}", level + 1, run->empty() ? "" : "  ", *run);
                out_.print("{}\n", parts ? out_.styled(kBad, line) : line);
            }
        }
    }

    std::string relation(int order) const
    {
        constexpr const char* words[] = {"comes before", "is equal to", "comes after"};
        return fmt::format("{} {} {}", shown(unitsOf(what_.first().text)), words[order + 1],
                           shown(unitsOf(what_.second().text)));
    }

    // What a text has where they part, as in "ü has 2B".
    std::string holding(const ExplainedText& text) const
    {
        const Parting& parting = what_.parting();
        const std::string name = shown(unitsOf(text.text));
        if (!what_.hasLevels())
            return parting.index < text.key.size()
                       ? fmt::format("{} has {}", name, hexOf(text.key.substr(parting.index, 1)))
                       : fmt::format("{} has no more", name);
        const WeightRun& run = text.runs[parting.level];
        if (parting.index >= run.size())
            return fmt::format("{} has no more", name);
        std::size_t element = run[parting.index].element;
        const std::string weight = weightText(parting.level, run[parting.index].weight);
        const std::string position =
            parting.level == 3 ? fmt::format(", character {},", text.elements[element].position)
                               : "";
        while (text.elements[element].characters.empty())
            --element;
        return fmt::format("{}{} has {}", shown(text.elements[element].characters), position,
                           weight);
    }

    std::string verdict() const
    {
        const Parting& parting = what_.parting();
        if (parting.order == 0)
            return relation(0) + ": their keys are the same";
        const std::string place =
            what_.hasLevels()
                ? fmt::format("level {}, weight {}", parting.level + 1, parting.index + 1)
                : fmt::format("byte {}", parting.index + 1);
        return fmt::format("{}: they part at {}, where {} and {}", relation(parting.order), place,
                           holding(what_.first()), holding(what_.second()));
    }

    const Explanation& what_;
    Output& out_;
};

Json documentOf(const ExplainedText& text, bool hasLevels)
{
    Json document = {{"text", text.text}, {"key", hexOf(text.key)}};
    if (!hasLevels)
        return document;
    document["levels"] = levelsOf(text.key);
    document["elements"] = Json::array();
    for (const CollationElement& element : text.elements)
        document["elements"].push_back(
            {{"characters", utf8Of(element.characters.data(),
                                   static_cast<std::int32_t>(element.characters.size()))},
             {"weights", element.weights}});
    return document;
}

void printJson(const Explanation& explanation, Output& output)
{
    const Parting& parting = explanation.parting();
    Json document = {{"sort", {{"name", explanation.sortName()}, {"id", explanation.sortId()}}},
                     {"first", documentOf(explanation.first(), explanation.hasLevels())},
                     {"second", documentOf(explanation.second(), explanation.hasLevels())},
                     {"order", parting.order},
                     {"comparison", explanation.comparison()}};
    if (parting.order != 0 && explanation.hasLevels())
        document["level"] = parting.level + 1;
    if (parting.order != 0)
        document["index"] = parting.index;
    output.print("{}\n", document.dump(2, ' ', false, Json::error_handler_t::replace));
}

} // namespace

int explainPair(const Library& library, TSLocale* locale, const SortOptions& options,
                Output& output)
{
    if (options.files.size() != 2)
        throw Failure(
            "--explain takes two strings, as in `vlx sort --locale German --explain Muller "
            "Müller`; write -- before them where one begins with -");
    const Explanation explanation(library, locale, options.files, optionsOf(options));
    if (options.json)
        printJson(explanation, output);
    else
        PlainExplanation(explanation, output).print();
    output.finish();
    return kExitGood;
}

} // namespace vlx::cli
