// Locales with everything that numbers, money and times read: a page of any shape, a language, a
// territory and the values of a record. The texts stand in all forms at once, for the library and
// for the oracle.
#pragma once

#include "chars/situations.hpp"
#include "locale/content.hpp"
#include "support/object_builder.hpp"
#include "text/oracle_text.hpp"

namespace vlx::test {

// The values of a record and of its objects. Texts of the record are given in characters.
struct LocaleSpec {
    PageShape shape = PageShape::kSingleByte;
    bool ebcdic = false;
    std::uint16_t id = 900;
    LanguageContent language = LanguageContent::sample();
    TerritoryContent territory = TerritoryContent::sample();
    std::array<std::uint16_t, 3> digits{2, 2, 2};
    std::uint16_t flags = kLocalePositiveSymbolPrecedes | kLocaleNegativeSymbolPrecedes;
    std::array<std::uint8_t, 2> positions{3, 0};
    std::array<char16_t, 5> separators{u'.', u',', u';', u'.', u','};
    std::array<std::u16string, 8> texts{u"3;0",          u"$",          u"3;0",          u"", u"-",
                                        u"%#I:%M:%S %p", u"%#m/%#d/%y", u"%A, %B %d, %Y"};

    // The values of the built-in locale.
    static LocaleSpec builtin();
};

class TextLocale {
  public:
    explicit TextLocale(const LocaleSpec& spec);
    TextLocale(const TextLocale&) = delete;
    TextLocale& operator=(const TextLocale&) = delete;

    TSLocale* handle() { return &record; }

    // A text in the code page, as a record keeps it; in 16-bit units and in packed values.
    std::string bytesOf(std::u16string_view text) const;
    std::vector<TSChar16> unicodeOf(std::u16string_view text) const;
    std::vector<TSChar32> packedOf(std::u16string_view text) const;

    PageBuilder page;
    TSLocale record{};
    oracle::TextLocale reference;

    // Characters of two bytes or more, as Unicode values; empty in a single-byte page.
    static constexpr char16_t kLong[] = {0x3000, 0x5186, 0x6708, 0xFF11, 0xFF15, 0x65E5};

  private:
    void mapCharacters(bool ebcdic);
    void keepTexts(const LocaleSpec& spec);

    Bytes languageBytes_;
    Bytes territoryBytes_;
    TSObject language_{};
    TSObject territory_{};
    std::array<std::string, 8> texts_;
    std::array<std::vector<TSChar16>, 8> textsU_;
};

} // namespace vlx::test
