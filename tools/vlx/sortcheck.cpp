// `vlx sort -c`: whether the lines of a text are in order already.
#include <nlohmann/json.hpp>

#include "failure.hpp"
#include "keyedlines.hpp"
#include "sort.hpp"

namespace vlx::cli {

namespace {

using Json = nlohmann::ordered_json;

void print(const Json& document, Output& output)
{
    output.print("{}\n", document.dump(2, ' ', false, Json::error_handler_t::replace));
    output.finish();
}

} // namespace

int checkOrder(TSLocale* locale, const SortOptions& options, Output& output)
{
    if (options.files.size() != 1)
        throw Failure("-c checks one text; give one file");
    KeyBuilder keys = keyBuilderOf(locale, options);
    const LineEnds ends(locale);
    Progress progress(totalSize(options.files), !options.checksQuietly);
    KeyedLines lines(options.files.front(), ends, keys, progress);
    std::string lastKey;
    std::string lastLine;
    while (lines.next()) {
        const std::string_view key = lines.key();
        const bool repeated = lines.number() > 1 && options.unique && key == lastKey;
        if (repeated || key < lastKey) {
            progress.clear();
            if (!options.checksQuietly)
                fmt::print(stderr, "vlx: {}: {}: {}\n", lines.place(),
                           repeated ? "equal to the line before" : "out of order",
                           shownText(locale, lines.line().content, output.terminal().utf8));
            if (options.json)
                print({{"inOrder", false},
                       {"file", lines.file()},
                       {"line", lines.number()},
                       {"text", plainText(locale, lines.line().content)},
                       {"before", plainText(locale, lastLine)}},
                      output);
            return kExitText;
        }
        lastKey = key;
        if (options.json)
            lastLine = lines.line().content;
    }
    if (options.json)
        print({{"inOrder", true}, {"file", lines.file()}, {"lines", lines.number()}}, output);
    return kExitGood;
}

} // namespace vlx::cli
