#include <algorithm>

#include "printer.hpp"

namespace vlx::cli {

std::string hexBytes(const PaddedText& text, const Item& item, const char* gap)
{
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string hex;
    for (std::int32_t i = 0; i < item.size; ++i) {
        const std::uint8_t byte = text.byte(item.offset + i);
        if (i > 0)
            hex += gap;
        hex += digits[byte >> 4];
        hex += digits[byte & 15];
    }
    return hex;
}

std::string classWords(const Item& item, const char* gap)
{
    static constexpr const char* words[] = {"alpha", "upper", "lower", "digit", "xdigit",
                                            "punct", "space", "blank", "cntrl", "ascii"};
    std::string text;
    for (std::size_t bit = 0; bit < std::size(words); ++bit)
        if (item.characterClass >> bit & 1)
            text += (text.empty() ? "" : gap) + std::string(words[bit]);
    return text;
}

namespace {

class PlainPrinter : public Printer {
  public:
    PlainPrinter(const Subject& subject, const PaddedText& text, Output& output)
        : subject_(subject), text_(text), out_(output),
          bytesWidth_(std::max(5, 3 * subject.page.maxBytes() - 1)),
          packedWidth_(std::max(6, 2 * subject.page.maxBytes()))
    {
    }

    void begin() override
    {
        const std::string codePage =
            subject_.codePage
                ? fmt::format("{} (id {})", subject_.codePage->name, subject_.codePage->id)
                : "the built-in code page";
        out_.print("{}\n\n", out_.styled(kFaint, fmt::format("{} in {}, {}", subject_.file,
                                                             subject_.locale, codePage)));
        const std::string& heading = row("Offset", "Bytes", "State", "Packed", "Unicode", "Class",
                                         out_.terminal().utf8 && subject_.hasUnicode ? "Char" : "");
        out_.print("{}\n", out_.styled(kHeading, heading));
    }

    void item(const Item& item) override
    {
        switch (item.kind) {
        case Item::Kind::kCharacter:
            printCharacter(item);
            break;
        case Item::Kind::kShift:
            printMarked(item, '[' + hexBytes(text_, item, " ") + ']',
                        out_.styled(kMark, item.state ? "shift in" : "shift out"));
            break;
        case Item::Kind::kCutOff:
            printMarked(
                item, hexBytes(text_, item, " "),
                out_.styled(kBad, fmt::format("cut off: {} of {} bytes", item.size, item.needed)));
            break;
        }
    }

    void end(const Totals& totals, const Checks& checks, std::int32_t shown) override
    {
        if (shown < totals.characters)
            out_.print("{}\n", out_.styled(kFaint, fmt::format("({} of {} characters shown)", shown,
                                                               totals.characters)));
        out_.print("\n{}\n", out_.styled(kHeading, "Total"));
        printTotals(totals);
        out_.print("\n{}\n", out_.styled(kHeading, "Checks"));
        printCheck(
            fmt::format("{} of the whole text: {}", countFunction(subject_.page), checks.counted),
            checks.countAgrees, totals);
        printCheck(
            fmt::format("{} from the end, steps: {}", backFunction(subject_.page), checks.wentBack),
            checks.backAgrees, totals);
    }

  private:
    // A line of the table; columns that the page has no use for are left out. The text is good
    // until the next call.
    const std::string& row(std::string_view offset, std::string_view bytes, std::string_view state,
                           std::string_view packed, std::string_view unicode,
                           std::string_view characterClass, std::string_view note)
    {
        line_.clear();
        const auto column = [this](std::string_view text, int width, bool right) {
            const auto room = static_cast<std::size_t>(width);
            const std::size_t gap = room > text.size() ? room - text.size() : 0;
            line_.append(right ? gap : 0, ' ').append(text).append(right ? 2 : gap + 2, ' ');
        };
        column(offset, 9, true);
        column(bytes, bytesWidth_, false);
        if (subject_.page.stateful())
            column(state, 5, false);
        column(packed, packedWidth_, true);
        if (subject_.hasUnicode)
            column(unicode, 7, false);
        column(characterClass, kClassWidth, false);
        line_ += note;
        line_.erase(line_.find_last_not_of(' ') + 1);
        return line_;
    }

    void printCharacter(const Item& item)
    {
        const bool unmapped = subject_.hasUnicode && !item.unicode;
        std::string note;
        if (unmapped)
            note = out_.styled(kBad, "unmapped");
        else if (item.unicode && out_.terminal().utf8)
            note = visible(*item.unicode);
        out_.print("{}\n",
                   row(fmt::format_int(item.offset).c_str(), hexBytes(text_, item, " "),
                       item.state ? "1" : "0", fmt::format("{:0{}X}", item.packed, 2 * item.size),
                       item.unicode ? fmt::format("U+{:04X}", *item.unicode) : "-",
                       classWords(item, " "), note));
    }

    void printMarked(const Item& item, const std::string& bytes, const std::string& note)
    {
        out_.print("{}\n", row(fmt::format_int(item.offset).c_str(), bytes, item.state ? "1" : "0",
                               "", "", "", note));
    }

    void printCount(std::string_view name, std::int32_t count, bool bad = false)
    {
        const std::string figure = fmt::format("{:>9}", count);
        out_.print("  {:<12}{}\n", name, bad && count > 0 ? out_.styled(kBad, figure) : figure);
    }

    void printTotals(const Totals& totals)
    {
        printCount("bytes", totals.bytes);
        printCount("characters", totals.characters);
        if (subject_.page.maxBytes() > 1)
            printCount("multi-byte", totals.multiByte);
        if (subject_.page.stateful())
            printCount("shift bytes", totals.shiftBytes);
        printCount("lines", totals.lines);
        if (subject_.hasUnicode)
            printCount("unmapped", totals.unmapped, true);
        if (totals.cutOff)
            out_.print(
                "  {:<12}{:>9}\n", "cut off",
                out_.styled(kBad, fmt::format("{} of {} bytes at offset {}", totals.cutOff->size,
                                              totals.cutOff->needed, totals.cutOff->offset)));
    }

    void printCheck(const std::string& what, bool agrees, const Totals& totals)
    {
        std::string verdict = agrees ? out_.styled(kGood, "agrees") : out_.styled(kBad, "differs");
        if (!agrees && totals.shiftRuns > 0)
            verdict += " (shift bytes follow each other, which the functions read differently)";
        out_.print("  {}, {}\n", what, verdict);
    }

    static constexpr int kClassWidth = 24; // of a capital letter that is a hexadecimal digit

    const Subject& subject_;
    const PaddedText& text_;
    Output& out_;
    const int bytesWidth_;
    const int packedWidth_;
    std::string line_;
};

} // namespace

std::unique_ptr<Printer> plainPrinter(const Subject& subject, const PaddedText& text,
                                      Output& output)
{
    return std::make_unique<PlainPrinter>(subject, text, output);
}

} // namespace vlx::cli
