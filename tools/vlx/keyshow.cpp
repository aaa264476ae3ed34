// `vlx sort --key`: the key of each line, its levels told apart.
#include "keyshow.hpp"

#include <nlohmann/json.hpp>

#include "keyedlines.hpp"
#include "sort.hpp"

namespace vlx::cli {

namespace {

// The hex of items of so many bytes, with a blank between them.
std::string spacedHex(std::string_view bytes, std::size_t itemSize)
{
    std::string hex;
    for (std::size_t at = 0; at < bytes.size(); at += itemSize)
        hex += (at == 0 ? "" : " ") + hexOf(bytes.substr(at, itemSize));
    return hex;
}

// Takes a run off the front of a key, with the zero byte behind it. No weight has a zero byte at
// its front.
std::string_view takeRun(std::string_view& key, std::size_t itemSize)
{
    std::size_t size = 0;
    while (size < key.size() && key[size] != 0)
        size += itemSize;
    const std::string_view run = key.substr(0, size);
    key.remove_prefix(std::min(size + 1, key.size()));
    return run;
}

class KeyPrinter {
  public:
    KeyPrinter(TSLocale* locale, const SortOptions& options, Output& output)
        : locale_(locale), json_(options.json), out_(output)
    {
        if (json_)
            out_.print("[");
    }

    void print(const std::vector<MadeKey>& keys, const KeyedLines& lines)
    {
        if (json_)
            printJson(keys, lines);
        else
            printPlain(keys, lines.line().content);
    }

    void finish()
    {
        if (json_)
            out_.print("\n]\n");
        out_.finish();
    }

  private:
    using Json = nlohmann::ordered_json;

    void printJson(const std::vector<MadeKey>& keys, const KeyedLines& lines)
    {
        Json document = {{"file", lines.file()},
                         {"line", lines.number()},
                         {"text", plainText(locale_, lines.line().content)},
                         {"keys", Json::array()}};
        for (const MadeKey& key : keys) {
            Json shown = {{"key", hexOf(key.bytes)}};
            if (key.hasLevels)
                shown["levels"] = levelsOf(key.bytes);
            document["keys"].push_back(shown);
        }
        out_.print("{}\n  {}", any_ ? "," : "",
                   document.dump(-1, ' ', false, Json::error_handler_t::replace));
        any_ = true;
    }

    void printPlain(const std::vector<MadeKey>& keys, std::string_view line)
    {
        for (const MadeKey& key : keys) {
            if (key.hasLevels) {
                const auto levels = levelsOf(key.bytes);
                out_.print("{} | {} | {} | {}", levels[0], levels[1], levels[2], levels[3]);
            } else {
                out_.print("{}", hexOf(key.bytes));
            }
            out_.print("\t");
        }
        out_.print("{}\n", out_.styled(kMark, shownText(locale_, line, out_.terminal().utf8)));
    }

    TSLocale* const locale_;
    const bool json_;
    Output& out_;
    bool any_ = false;
};

} // namespace

std::string hexOf(std::string_view bytes)
{
    std::string hex;
    for (const char byte : bytes)
        hex += fmt::format("{:02X}", static_cast<std::uint8_t>(byte));
    return hex;
}

std::array<std::string, kKeyLevels> levelsOf(std::string_view key)
{
    const std::string_view level1 = takeRun(key, 2);
    const std::string_view level2 = takeRun(key, 1);
    const std::string_view level3 = takeRun(key, 1);
    const bool weightsAlone = level1.empty() && level2.empty() && level3.empty();
    std::string level4 = spacedHex(key, weightsAlone ? 2 : 4);
    for (std::size_t at = 4; !weightsAlone && at < level4.size(); at += 10)
        level4.insert(at, ":");
    return {spacedHex(level1, 2), spacedHex(level2, 1), spacedHex(level3, 1), level4};
}

int showKeys(TSLocale* locale, const SortOptions& options, Output& output)
{
    KeyBuilder keys = keyBuilderOf(locale, options);
    const LineEnds ends(locale);
    Progress progress(std::nullopt, false);
    KeyPrinter printer(locale, options, output);
    for (const std::string& file : options.files) {
        KeyedLines lines(file, ends, keys, progress);
        while (lines.next())
            printer.print(lines.keyParts(), lines);
    }
    printer.finish();
    return kExitGood;
}

} // namespace vlx::cli
