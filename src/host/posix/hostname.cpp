#include "host/posix/hostname.hpp"

#include <cstdio>
#include <cstring>

#include "host/host.hpp"

namespace vlx::host {

namespace {

struct NameRow {
    std::uint16_t id;
    char language[4];  // ISO 639
    char territory[4]; // ISO 3166, or the area's number
};

// The first row of a language stands for its other territories, too, and the first row of a
// language and territory for both.
constexpr NameRow kNames[] = {
    {0x0401, "ar", "SA"}, {0x0402, "bg", "BG"}, {0x0403, "ca", "ES"},  {0x0804, "zh", "CN"},
    {0x0404, "zh", "TW"}, {0x0405, "cs", "CZ"}, {0x0406, "da", "DK"},  {0x0407, "de", "DE"},
    {0x0408, "el", "GR"}, {0x0409, "en", "US"}, {0x0C0A, "es", "ES"},  {0x040A, "es", "ES"},
    {0x040B, "fi", "FI"}, {0x040C, "fr", "FR"}, {0x040D, "he", "IL"},  {0x040E, "hu", "HU"},
    {0x040F, "is", "IS"}, {0x0410, "it", "IT"}, {0x0411, "ja", "JP"},  {0x0412, "ko", "KR"},
    {0x0413, "nl", "NL"}, {0x0414, "nb", "NO"}, {0x0415, "pl", "PL"},  {0x0416, "pt", "BR"},
    {0x0417, "rm", "CH"}, {0x0418, "ro", "RO"}, {0x0419, "ru", "RU"},  {0x041A, "hr", "HR"},
    {0x041B, "sk", "SK"}, {0x041C, "sq", "AL"}, {0x041D, "sv", "SE"},  {0x041E, "th", "TH"},
    {0x041F, "tr", "TR"}, {0x0420, "ur", "PK"}, {0x0421, "id", "ID"},  {0x0422, "uk", "UA"},
    {0x0423, "be", "BY"}, {0x0424, "sl", "SI"}, {0x0425, "et", "EE"},  {0x0426, "lv", "LV"},
    {0x0427, "lt", "LT"}, {0x0428, "mi", "NZ"}, {0x0429, "fa", "IR"},  {0x042A, "vi", "VN"},
    {0x042B, "lo", "LA"}, {0x042C, "km", "KH"}, {0x042D, "eu", "ES"},  {0x042E, "hsb", "DE"},
    {0x042F, "mk", "MK"}, {0x0430, "st", "ZA"}, {0x0431, "ts", "ZA"},  {0x0432, "tn", "ZA"},
    {0x0433, "ve", "ZA"}, {0x0434, "xh", "ZA"}, {0x0435, "zu", "ZA"},  {0x0436, "af", "ZA"},
    {0x0438, "fo", "FO"}, {0x0439, "hi", "IN"}, {0x043A, "mt", "MT"},  {0x043B, "se", "NO"},
    {0x043C, "gd", "GB"}, {0x0801, "ar", "IQ"}, {0x0807, "de", "CH"},  {0x0809, "en", "GB"},
    {0x080A, "es", "MX"}, {0x080C, "fr", "BE"}, {0x0810, "it", "CH"},  {0x0812, "ko", "KR"},
    {0x0813, "nl", "BE"}, {0x0814, "nn", "NO"}, {0x0816, "pt", "PT"},  {0x0818, "ro", "MD"},
    {0x0819, "ru", "MD"}, {0x081A, "sr", "RS"}, {0x0C01, "ar", "EG"},  {0x0C04, "zh", "HK"},
    {0x0C09, "en", "AU"}, {0x0C0C, "fr", "CA"}, {0x1001, "ar", "LY"},  {0x1004, "zh", "SG"},
    {0x1007, "de", "LU"}, {0x1009, "en", "CA"}, {0x100A, "es", "GT"},  {0x100C, "fr", "CH"},
    {0x1401, "ar", "DZ"}, {0x1409, "en", "NZ"}, {0x140A, "es", "CR"},  {0x140C, "fr", "LU"},
    {0x1801, "ar", "MA"}, {0x1809, "en", "IE"}, {0x180A, "es", "PA"},  {0x1C01, "ar", "TN"},
    {0x1C09, "en", "ZA"}, {0x1C0A, "es", "DO"}, {0x2001, "ar", "OM"},  {0x2009, "en", "JM"},
    {0x200A, "es", "VE"}, {0x2401, "ar", "YE"}, {0x2409, "en", "029"}, {0x240A, "es", "CO"},
    {0x2801, "ar", "SY"}, {0x280A, "es", "PE"}, {0x2C01, "ar", "JO"},  {0x2C0A, "es", "AR"},
    {0x3001, "ar", "LB"}, {0x300A, "es", "EC"}, {0x3401, "ar", "KW"},  {0x340A, "es", "CL"},
    {0x3801, "ar", "AE"}, {0x380A, "es", "UY"}, {0x3C01, "ar", "BH"},  {0x3C0A, "es", "PY"},
    {0x4001, "ar", "QA"}, {0x400A, "es", "BO"},
};

// Other codes of the same languages.
struct Alias {
    char language[4];
    char usual[4];
};
constexpr Alias kAliases[] = {{"no", "nb"}, {"iw", "he"}, {"in", "id"}, {"dsb", "hsb"}};

constexpr std::uint32_t kAmericanEnglish = 0x0409;

// A piece of a locale name.
struct Piece {
    const char* text;
    std::size_t length;

    bool is(const char* other) const
    {
        return std::strlen(other) == length && equalIgnoringCase(text, other, length);
    }
};

Piece usualLanguage(const Piece& language)
{
    for (const Alias& alias : kAliases)
        if (language.is(alias.language))
            return {alias.usual, std::strlen(alias.usual)};
    return language;
}

} // namespace

std::uint32_t localeIdOf(const char* name)
{
    const Piece first{name, std::strcspn(name, "_.@")};
    if (first.is("C") || first.is("POSIX"))
        return kAmericanEnglish;
    const Piece language = usualLanguage(first);
    Piece territory{name + first.length, 0};
    if (*territory.text == '_') {
        ++territory.text;
        territory.length = std::strcspn(territory.text, ".@");
    }
    std::uint32_t id = 0;
    for (const NameRow& row : kNames) {
        if (!language.is(row.language))
            continue;
        if (territory.is(row.territory))
            return row.id;
        if (id == 0)
            id = row.id;
    }
    return id;
}

void localeNameOf(std::uint32_t id, char* name, std::size_t size)
{
    *name = 0;
    for (const NameRow& row : kNames)
        if (row.id == id)
            std::snprintf(name, size, "%s_%s", row.language, row.territory);
}

} // namespace vlx::host
