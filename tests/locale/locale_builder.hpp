// Locale directories for tests: a control table and object files, as bytes in the memory host.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/page_builder.hpp"

namespace vlx::test {

using Content = std::vector<std::uint8_t>;

struct LanguageSpec {
    static constexpr std::size_t kTexts = 44;

    std::uint16_t id = 1;
    std::string name = "English";
    std::uint16_t territory = 1;
    std::uint16_t codePage = 1;
    std::uint16_t sort = 0;
    // Code, name, days, months, AM and PM.
    std::array<std::u16string, kTexts> texts{};
};

enum TerritoryText {
    kCode,
    kName,
    kGrouping,
    kMonetaryGrouping,
    kCurrencySymbol,
    kIntlCurrencySymbol,
    kPositiveSign,
    kNegativeSign,
    kTimeFormat,
    kDateFormat,
    kLongDateFormat,
    kTerritoryTexts
};

struct TerritorySpec {
    std::uint16_t id = 1;
    std::string name = "Testland";
    // Decimal point, thousands, list, monetary decimal point, monetary thousands.
    std::array<TSChar16, 5> separators{'.', ',', ';', ':', '\''};
    std::array<std::uint16_t, 3> digits{2, 3, 4}; // in numbers, currency, international currency
    std::uint8_t positiveSignPosition = 1;
    std::uint8_t negativeSignPosition = 4;
    std::uint16_t word9 = 0x1234;
    std::uint16_t flags = 0;
    std::array<std::u16string, kTerritoryTexts> texts{u"TST", u"Testland", u"3;0",   u"2;3;0",
                                                      u"T$",  u"TSD",      u"+",     u"-",
                                                      u"%H",  u"%d.%m.%y", u"%d. %B"};
};

struct SortSpec {
    std::uint16_t id = 1;
    std::string name = "Dictionary";
};

Content languageContent(const LanguageSpec& language);
Content territoryContent(const TerritorySpec& territory);

// An object as the control file lists it, and its sections.
struct ListedObject {
    std::uint16_t id = 0;
    std::uint8_t type = 0;
    std::string name;
    std::array<Content, 4> sections;
};

class LocaleDirectory {
  public:
    LocaleDirectory& add(const LanguageSpec& language);
    LocaleDirectory& add(const TerritorySpec& territory);
    LocaleDirectory& add(std::string_view name, const PageBuilder& page);
    LocaleDirectory& add(const SortSpec& sort);
    LocaleDirectory& add(ListedObject object);

    // In the order of the control file: by type, then id.
    const std::vector<ListedObject>& objects() const { return objects_; }

    // Puts the control file and one file for each object into the memory host.
    void put(std::string_view path) const;

    static std::string fileOf(std::string_view path, unsigned type, unsigned id);

  private:
    std::vector<ListedObject> objects_;
};

} // namespace vlx::test
