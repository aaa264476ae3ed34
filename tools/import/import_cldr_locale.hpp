// The locale files of CLDR as one store: values by path, found through the inheritance of locales
// and the aliases of the root locale, and the supplemental facts about territories and currencies.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <pugixml.hpp>

namespace vlx::import {

// One step of a path: an element and the attribute that tells it from its siblings, if any.
struct CldrStep {
    std::string element;
    std::string attribute;
    std::string value;
};
using CldrPath = std::vector<CldrStep>;

// A path as CLDR writes it: `days/dayContext[@type='format']`. Steps `..` stay steps.
CldrPath cldrPath(const std::string& text);

class CldrStore {
  public:
    // The directory that holds `common`.
    explicit CldrStore(std::string directory);

    // Reads what every locale needs; false, with a message on the error stream, if it is not there.
    bool open();
    const std::string& version() const { return version_; }     // "41"
    const std::string& copyright() const { return copyright_; } // the line of the files themselves

    // The text at a path of a locale, or what the locale inherits there.
    std::optional<std::string> text(const std::string& locale, const std::string& path);

    // Facts about a territory, by its two letters. Empty if CLDR has none.
    std::string alpha3(const std::string& region) const;
    std::string currency(const std::string& region) const; // legal tender today
    int currencyDigits(const std::string& currency) const;

  private:
    const pugi::xml_document* file(const std::string& locale);
    std::string parentOf(const std::string& locale) const;
    std::optional<std::string> direct(const std::string& locale, const CldrPath& path);
    std::optional<CldrPath> alias(const CldrPath& path);
    bool readHead();
    void readParents();

    std::string directory_;
    std::string version_;
    std::string copyright_;
    pugi::xml_document supplemental_;
    std::map<std::string, std::string> parents_;
    std::map<std::string, std::unique_ptr<pugi::xml_document>> files_; // null: no such file
};

} // namespace vlx::import
