// CLDR as its files have it, read by XPath and by the plain rules of inheritance, without the
// importer, and the list of the places where the directory differs from it.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "world/world.hpp"

namespace vlx::test {

class Cldr {
  public:
    Cldr();

    // Whether its files are installed.
    static bool isHere();

    // A fact about territories and currencies.
    pugi::xml_node fact(const std::string& path) const;
    // The legal tender of a region today.
    std::string currency(const std::string& region) const;

    // The value that a locale has itself or has from a locale above it, but for root; empty if
    // none.
    std::string value(std::string locale, const std::string& path);
    std::string rootValue(const std::string& path) { return valueOf("root", path); }
    // The same with root, for values that root gives by itself.
    std::string valueOrRoot(const std::string& locale, const std::string& path);

  private:
    std::string parentOf(const std::string& locale) const;
    std::string valueOf(const std::string& locale, const std::string& path);

    pugi::xml_document supplemental_;
    std::map<std::string, std::unique_ptr<pugi::xml_document>> files_;
};

// A line of bent.tsv: what stands for a text of CLDR in a field of an object, or of all.
struct Bend {
    std::string object;
    std::string field;
    std::string from;
    std::string to;
    int line;
    bool used = false;
};

class CldrWorld : public WorldTest {
  protected:
    void SetUp() override;

    // The text of an item in UTF-8, and any text.
    std::string text(const Locale& locale, int item) { return utf8Of(unitsOf(locale, item)); }
    std::string utf8Of(const std::u16string& units) const;

    // A value of CLDR as the directory has it.
    std::string bent(const std::string& object, const std::string& field, std::string value);
    // Every line of these fields has changed something.
    void expectBendsUsed(const std::vector<std::string>& fields) const;

    // A name in the width that is wanted, or else in full; `leaf` is such as day[@type='sun'].
    std::string name(const std::string& locale, const std::string& kind, const std::string& width,
                     const std::string& leaf);

    std::unique_ptr<Cldr> cldr_;
    std::vector<Bend> bends_;
    Locale utf8_;
};

// The last two letters.
std::string regionOf(const std::string& locale);

inline const std::string kGregorian = "dates/calendars/calendar[@type='gregorian']/";

} // namespace vlx::test
