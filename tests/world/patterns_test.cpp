// What times and amounts of every territory look like, against the patterns of CLDR, which are
// expanded here letter by letter.
#include <algorithm>
#include <cctype>

#include "world/cldr.hpp"
#include "world/facts.hpp"

namespace vlx::test {
namespace {

constexpr std::int32_t kRoom = 128;

std::string padded(int number, std::size_t width)
{
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

class PatternsWorld : public CldrWorld {
  protected:
    // The English names stand in for those of any language.
    std::string field(const Locale& locale, char letter, std::size_t count) const
    {
        const auto name = [&](int full, int brief, int index) {
            return utf8Of(unitsOf(locale, (count == 4 ? full : brief) + index));
        };
        switch (letter) {
        case 'E':
        case 'c':
            return name(TS_LI_DAY_1, TS_LI_ABDAY_1, time_.dayOfWeek);
        case 'y':
            return count == 2 ? padded(time_.year % 100, 2) : std::to_string(1900 + time_.year);
        case 'M':
            return count > 2 ? name(TS_LI_MONTH_1, TS_LI_ABMONTH_1, time_.month)
                             : padded(time_.month + 1, count);
        case 'd':
            return padded(time_.dayOfMonth, count);
        case 'H':
            return padded(time_.hours, count);
        case 'h':
            return padded((time_.hours + 11) % 12 + 1, count);
        case 'm':
            return padded(time_.minutes, count);
        case 's':
            return padded(time_.seconds, count);
        case 'a':
            return utf8Of(unitsOf(locale, time_.hours < 12 ? TS_LI_AM : TS_LI_PM));
        default:
            ADD_FAILURE() << "a field " << letter;
            return {};
        }
    }

    std::string expanded(const Locale& locale, const std::string& pattern) const
    {
        std::string out;
        bool quoted = false;
        for (std::size_t at = 0; at < pattern.size();) {
            const char c = pattern[at];
            const std::size_t end = std::min(pattern.find_first_not_of(c, at), pattern.size());
            if (c == '\'') {
                quoted = !quoted;
                ++at;
            } else if (!quoted && std::isalpha(static_cast<unsigned char>(c))) {
                out += field(locale, c, end - at);
                at = end;
            } else {
                out += c;
                ++at;
            }
        }
        return out;
    }

    std::string written(const Locale& locale, const std::u16string& pattern) const
    {
        TSChar16 text[kRoom];
        const std::int32_t count = TSTimeToStringU(
            locale.get(), &time_, text, kRoom, reinterpret_cast<const TSChar16*>(pattern.data()),
            static_cast<std::int32_t>(pattern.size()), 0);
        EXPECT_EQ(TSGetError(locale.get()), TS_ERR_NONE);
        return utf8Of({text, text + std::max(count, 0)});
    }

    std::string amount(const Locale& locale, double value) const
    {
        TSChar16 text[kRoom];
        const std::int32_t count = TSCurrencyToStringU(locale.get(), value, text, kRoom, 0);
        EXPECT_EQ(TSGetError(locale.get()), TS_ERR_NONE);
        return utf8Of({text, text + std::max(count, 0)});
    }

    TSTimeFields time_{};
};

TEST_F(PatternsWorld, DatesAndTimes)
{
    // A Friday and a Sunday; one and two digits in every field, both halves of the day.
    constexpr TSTimeFields kTimes[] = {{9, 7, 5, 4, 2, 105, 5, 62},
                                       {39, 47, 15, 24, 11, 106, 0, 357}};
    for (const TerritoryFacts& facts : kTerritoryFacts) {
        SCOPED_TRACE(facts.name);
        const Locale locale = open(std::string("English_") + facts.name + ".UTF-8");
        ASSERT_NE(locale, nullptr);
        const auto pattern = [&](const std::string& kind, const std::string& length) {
            return cldr_->valueOrRoot(facts.cldr, kGregorian + kind + "Formats/" + kind +
                                                      "FormatLength[@type='" + length + "']/" +
                                                      kind + "Format/pattern");
        };
        const std::string date = bent(facts.name, "date", pattern("date", "short"));
        const std::string longDate = bent(facts.name, "long date", pattern("date", "full"));
        const std::string time = bent(facts.name, "time", pattern("time", "medium"));
        for (const TSTimeFields& fields : kTimes) {
            time_ = fields;
            EXPECT_EQ(written(locale, u"%x"), expanded(locale, date)) << date;
            EXPECT_EQ(written(locale, u"%#x"), expanded(locale, longDate)) << longDate;
            EXPECT_EQ(written(locale, u"%X"), expanded(locale, time)) << time;
        }
    }
    expectBendsUsed({"date", "long date", "time"});
}

void replaceAll(std::string& text, const std::string& from, const std::string& to)
{
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

TEST_F(PatternsWorld, Amounts)
{
    for (const TerritoryFacts& facts : kTerritoryFacts) {
        SCOPED_TRACE(facts.name);
        const Locale locale = open(std::string("English_") + facts.name + ".UTF-8");
        ASSERT_NE(locale, nullptr);
        const std::string pattern = cldr_->valueOrRoot(
            facts.cldr, "numbers/currencyFormats[@numberSystem='latn']/currencyFormatLength[not("
                        "@type)]/currencyFormat[@type='standard']/pattern");
        const std::size_t parting = pattern.find(';');
        const std::string positive = pattern.substr(0, parting);
        const std::string negative =
            parting == std::string::npos ? "-" + positive : pattern.substr(parting + 1);
        for (const double value : {1234567.5, -1234567.5}) {
            std::string expected = bent(facts.name, "amount", value < 0 ? negative : positive);
            const std::size_t first = expected.find_first_of("#0");
            const std::size_t last = expected.find_last_of("#0");
            // The digits as the library groups and parts them: another test holds the separators.
            const std::string shown = amount(locale, value);
            const std::string symbol = text(locale, TS_LI_CURRENCY_SYMBOL);
            std::string digits = shown;
            replaceAll(digits, symbol, "");
            const std::size_t begin = digits.find('1');
            const std::size_t point = numberOf(locale, TS_LI_MON_FRAC_DIGITS) == 0
                                          ? text(locale, TS_LI_MON_DECIMAL_POINT).size()
                                          : 0;
            digits = digits.substr(begin, digits.find_last_of("0123456789") + 1 + point - begin);
            // Most patterns part three digits at a time, that of India two, that of Bulgaria none.
            const std::string groups = expected.substr(first, last + 1 - first);
            const char* const parted = groups.find(',') == std::string::npos ? "1234"
                                       : groups.starts_with("#,##,##0")      ? "12|34|"
                                                                             : "1|234|";
            std::string plain = digits;
            replaceAll(plain, text(locale, TS_LI_MON_THOUSANDS_SEP), "|");
            EXPECT_EQ(plain.substr(0, plain.find('5')), parted);
            expected.replace(first, last + 1 - first, digits);
            replaceAll(expected, "¤", symbol);
            replaceAll(expected, "\u00A0", " ");
            replaceAll(digits, "\u00A0", " ");
            std::string found = shown;
            replaceAll(found, "\u00A0", " ");
            EXPECT_EQ(found, expected) << pattern;
        }
    }
    expectBendsUsed({"amount"});
}

} // namespace
} // namespace vlx::test
