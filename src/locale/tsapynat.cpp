// TSApplyNativeValues: the host's settings over those of a territory.
#include <cstdlib>
#include <cstring>

#include "chars/codepage.hpp"
#include "frame/trace.hpp"
#include "host/host.hpp"
#include "locale/items.hpp"

TS_TRACE_UNIT("tsapynat");

namespace {

namespace host = vlx::host;
using host::Setting;

constexpr std::uint32_t kEntries = 32; // of the buffer that a setting is read into
constexpr std::uint32_t kMaxCharacter = 4;
constexpr std::uint32_t kUnitsOfPicture = 3; // of a format, for each unit of a picture

struct DigitsRow {
    Setting setting;
    std::uint16_t TSLocale::*field;
};
constexpr DigitsRow kDigits[] = {
    {Setting::kFractionDigits, &TSLocale::fractionDigits},
    {Setting::kCurrencyDigits, &TSLocale::currencyDigits},
    {Setting::kIntlCurrencyDigits, &TSLocale::intlCurrencyDigits},
};

struct FlagRow {
    Setting setting;
    std::uint16_t flag;
};
constexpr FlagRow kFlags[] = {
    {Setting::kPositiveSymbolPrecedes, vlx::kLocalePositiveSymbolPrecedes},
    {Setting::kPositiveSymbolSpaced, vlx::kLocalePositiveSymbolSpaced},
    {Setting::kNegativeSymbolPrecedes, vlx::kLocaleNegativeSymbolPrecedes},
    {Setting::kNegativeSymbolSpaced, vlx::kLocaleNegativeSymbolSpaced},
};

struct PositionRow {
    Setting setting;
    std::uint8_t TSLocale::*field;
};
constexpr PositionRow kPositions[] = {
    {Setting::kPositiveSignPosition, &TSLocale::positiveSignPosition},
    {Setting::kNegativeSignPosition, &TSLocale::negativeSignPosition},
};

// In the order of vlx::kLocaleSeparator and vlx::kTextItems.
constexpr Setting kSeparators[vlx::kSeparators] = {
    Setting::kDecimalPoint, Setting::kThousandsSeparator, Setting::kListSeparator,
    Setting::kMonetaryDecimalPoint, Setting::kMonetaryThousandsSeparator};
struct TextRow {
    Setting setting;
    bool isPicture;
};
constexpr TextRow kTexts[vlx::kLocaleTexts] = {
    {Setting::kGrouping, false},
    {Setting::kCurrencySymbol, false},
    {Setting::kMonetaryGrouping, false},
    {Setting::kPositiveSign, false},
    {Setting::kNegativeSign, false},
    {Setting::kTime, true},
    {Setting::kDate, true},
    {Setting::kLongDate, true},
};

// The settings of a native id, open while it lives.
class OpenSettings {
  public:
    OpenSettings(std::uint32_t nativeId, bool changedByUser)
        : settings_(host::openSettings(nativeId, changedByUser))
    {
    }
    ~OpenSettings() { host::closeSettings(settings_); }
    OpenSettings(const OpenSettings&) = delete;
    OpenSettings& operator=(const OpenSettings&) = delete;

    bool read(Setting setting, char* text) const
    {
        return host::readSetting(settings_, setting, text, kEntries);
    }
    bool read16(Setting setting, TSChar16* text) const
    {
        return host::readSetting16(settings_, setting, text, kEntries);
    }

  private:
    const host::Settings settings_;
};

// Reads the settings of one native id into one record.
class Overlay {
  public:
    Overlay(TSLocale& locale, std::uint32_t nativeId, bool changedByUser)
        : locale_(locale), nativeId_(nativeId), settings_(nativeId, changedByUser)
    {
    }

    void numbers()
    {
        int value = 0;
        for (const DigitsRow& row : kDigits)
            if (readNumber(row.setting, value))
                locale_.*row.field = static_cast<std::uint16_t>(value);
        for (const FlagRow& row : kFlags)
            if (readNumber(row.setting, value))
                locale_.flags = static_cast<std::uint16_t>(value ? locale_.flags | row.flag
                                                                 : locale_.flags & ~row.flag);
        for (const PositionRow& row : kPositions)
            if (readNumber(row.setting, value))
                locale_.*row.field = static_cast<std::uint8_t>(value);
    }

    // From a host that has 16-bit text.
    void wideTexts()
    {
        TSChar16 text[kEntries];
        for (int i = 0; i < vlx::kSeparators; ++i)
            if (settings_.read16(kSeparators[i], text))
                setSeparator(i, text[0]);
        for (int i = 0; i < vlx::kLocaleTexts; ++i)
            if (settings_.read16(kTexts[i].setting, text))
                setText(i, text);
    }

    // From an older host, which has text in a code page alone.
    void narrowTexts()
    {
        std::uint32_t codePage = 0;
        if (!readCodePage(codePage))
            return;
        for (int i = 0; i < vlx::kSeparators; ++i) {
            if (!readNarrow(kSeparators[i], codePage))
                continue;
            // Deliberate: only the first takes its Unicode value, and the others take the narrow
            // byte with its sign for one.
            setSeparator(i, i == 0 ? wide_[0] : static_cast<TSChar16>(signedByte(narrow_[0])));
        }
        for (int i = 0; i < vlx::kLocaleTexts; ++i)
            if (readNarrow(kTexts[i].setting, codePage))
                setNarrowText(i);
    }

  private:
    static std::int16_t signedByte(char byte)
    {
        return static_cast<std::int16_t>(static_cast<signed char>(byte));
    }

    bool readNumber(Setting setting, int& value) const
    {
        char text[kEntries];
        if (!settings_.read(setting, text))
            return false;
        value = static_cast<int>(std::strtol(text, nullptr, 10));
        return true;
    }

    // Always the user's.
    bool readCodePage(std::uint32_t& codePage) const
    {
        char text[kEntries];
        if (!OpenSettings(nativeId_, true).read(Setting::kAnsiCodePage, text))
            return false;
        codePage = static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10));
        return true;
    }

    bool readNarrow(Setting setting, std::uint32_t codePage)
    {
        std::memset(narrow_, 0, sizeof narrow_); // its end is read, too
        return settings_.read(setting, narrow_) &&
               host::toUnicode(codePage, narrow_, wide_, kEntries);
    }

    // Both forms, if the character is one byte in the locale's code page, else neither.
    void setSeparator(int index, TSChar16 character)
    {
        char bytes[kMaxCharacter];
        if (TSCpUnicodeToMb(locale_.codePage, character, bytes) != 1)
            return;
        locale_.*vlx::kLocaleSeparator[index].byte = static_cast<std::uint8_t>(bytes[0]);
        locale_.*vlx::kLocaleSeparator[index].unicode = character;
    }

    void setText(int index, const TSChar16* text)
    {
        TSChar16 format[kEntries * kUnitsOfPicture];
        if (kTexts[index].isPicture) {
            TSNativeTimeFormat(text, format);
            text = format;
        }
        char bytes[kEntries * kUnitsOfPicture * kMaxCharacter];
        std::int32_t length = 0;
        for (; *text != 0; ++text)
            length += TSCpUnicodeToMb(locale_.codePage, *text, bytes + length);
        bytes[length] = 0;
        TSSetLocaleTextInfo(&locale_, vlx::kTextItems[index], bytes, length, 0);
    }

    // Deliberate: pairs of narrow bytes are taken for 16-bit values, pictures too, and their
    // characters are written over them.
    void setNarrowText(int index)
    {
        std::uint32_t written = 0;
        for (std::uint32_t read = 0; read + sizeof(TSChar16) <= kEntries;
             read += sizeof(TSChar16)) {
            TSChar16 value;
            std::memcpy(&value, narrow_ + read, sizeof value);
            if (value == 0 || written + kMaxCharacter >= kEntries)
                break;
            written += static_cast<std::uint32_t>(
                TSCpUnicodeToMb(locale_.codePage, value, narrow_ + written));
        }
        narrow_[written] = 0;
        TSSetLocaleTextInfo(&locale_, vlx::kTextItems[index], narrow_,
                            static_cast<std::int32_t>(written), 0);
    }

    TSLocale& locale_;
    const std::uint32_t nativeId_;
    const OpenSettings settings_;
    char narrow_[kEntries];
    TSChar16 wide_[kEntries];
};

} // namespace

void TSApplyNativeValues(const std::uint32_t* nativeId, TSLocale* locale, std::uint32_t noOverride)
{
    TS_TRACE(TSApplyNativeValues);
    Overlay overlay(*locale, *nativeId, noOverride == 0);
    overlay.numbers();
    if (host::hasSettings16())
        overlay.wideTexts();
    else
        overlay.narrowTexts();
    TS_RETURN();
}
