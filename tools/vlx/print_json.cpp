#include <nlohmann/json.hpp>

#include "printer.hpp"

namespace vlx::cli {

namespace {

using Json = nlohmann::ordered_json;

// A text may have bytes that are no UTF-8, as a file name may; they become U+FFFD.
std::string dumped(const Json& value)
{
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// A character as a JSON string.
std::string quoted(std::uint16_t value)
{
    if (value < 0x20 || value == '"' || value == '\\' || value == 0x7F)
        return fmt::format(R"("\u{:04x}")", value);
    return '"' + utf8(value) + '"';
}

// The class of a character as the items of a JSON array.
std::string quotedClass(const Item& item)
{
    const std::string words = classWords(item, "\", \"");
    return words.empty() ? words : '"' + words + '"';
}

// Items are written one by one, since a text of some megabytes would not fit into a document in
// memory.
class JsonPrinter : public Printer {
  public:
    JsonPrinter(const Subject& subject, const PaddedText& text, Output& output)
        : subject_(subject), text_(text), out_(output)
    {
    }

    void begin() override
    {
        Json codePage;
        if (subject_.codePage) {
            codePage["name"] = subject_.codePage->name;
            codePage["id"] = subject_.codePage->id;
        }
        out_.print(R"({{
  "file": {},
  "locale": {},
  "codepage": {},
  "stateful": {},
  "maxCharBytes": {},
  "items": [)",
                   dumped(subject_.file), dumped(subject_.locale), dumped(codePage),
                   subject_.page.stateful(), subject_.page.maxBytes());
    }

    void item(const Item& item) override
    {
        out_.print("{}\n    ", first_ ? "" : ",");
        out_.print(R"({{"offset": {}, "bytes": "{}", "state": {}, )", item.offset,
                   hexBytes(text_, item, ""), item.state);
        first_ = false;
        switch (item.kind) {
        case Item::Kind::kCharacter:
            out_.print(R"("packed": "{:0{}X}", "class": [{}], )", item.packed, 2 * item.size,
                       quotedClass(item));
            if (item.unicode)
                out_.print(R"("unicode": "U+{:04X}", "character": {}}})", *item.unicode,
                           quoted(*item.unicode));
            else
                out_.print(R"("unicode": null, "character": null}})");
            break;
        case Item::Kind::kShift:
            out_.print(R"("shift": "{}"}})", item.state ? "in" : "out");
            break;
        case Item::Kind::kCutOff:
            out_.print(R"("cutOffFrom": {}}})", item.needed);
            break;
        }
    }

    void end(const Totals& totals, const Checks& checks, std::int32_t shown) override
    {
        Json counts{{"bytes", totals.bytes},
                    {"characters", totals.characters},
                    {"shown", shown},
                    {"multiByte", totals.multiByte},
                    {"shiftBytes", totals.shiftBytes},
                    {"lines", totals.lines},
                    {"unmapped", nullptr},
                    {"cutOff", nullptr}};
        if (subject_.hasUnicode)
            counts["unmapped"] = totals.unmapped;
        if (totals.cutOff)
            counts["cutOff"] = {{"offset", totals.cutOff->offset},
                                {"bytes", totals.cutOff->size},
                                {"of", totals.cutOff->needed}};
        const Json held{{countFunction(subject_.page),
                         {{"characters", checks.counted}, {"agrees", checks.countAgrees}}},
                        {backFunction(subject_.page),
                         {{"characters", checks.wentBack}, {"agrees", checks.backAgrees}}}};
        out_.print(R"({}],
  "totals": {},
  "checks": {}
}}
)",
                   first_ ? "" : "\n  ", dumped(counts), dumped(held));
    }

  private:
    const Subject& subject_;
    const PaddedText& text_;
    Output& out_;
    bool first_ = true;
};

} // namespace

std::unique_ptr<Printer> jsonPrinter(const Subject& subject, const PaddedText& text, Output& output)
{
    return std::make_unique<JsonPrinter>(subject, text, output);
}

} // namespace vlx::cli
