#include "import_cldr_locale.hpp"

#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string_view>
#include <utility>

namespace vlx::import {

namespace {

// Attributes that say something about a value without making it another value.
bool isRemark(const char* attribute)
{
    return std::strcmp(attribute, "draft") == 0 || std::strcmp(attribute, "references") == 0;
}

// Exact match: a node with further attributes (alt, count, a type where none is wanted) is another
// value, and often stands before the wanted one in the file.
bool matches(pugi::xml_node node, const CldrStep& step)
{
    if (step.element != node.name())
        return false;
    bool found = step.attribute.empty();
    for (const pugi::xml_attribute attribute : node.attributes()) {
        if (step.attribute == attribute.name() && step.value == attribute.value())
            found = true;
        else if (!isRemark(attribute.name()))
            return false;
    }
    return found;
}

pugi::xml_node childOf(pugi::xml_node node, const CldrStep& step)
{
    return node.find_child([&](pugi::xml_node child) { return matches(child, step); });
}

std::string readAll(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The text between two marks, which do not belong to it; empty if they are not there.
std::string between(const std::string& text, const std::string& open, const std::string& close)
{
    const std::size_t start = text.find(open);
    if (start == std::string::npos)
        return {};
    const std::size_t end = text.find(close, start + open.size());
    return end == std::string::npos ? std::string()
                                    : text.substr(start + open.size(), end - start - open.size());
}

} // namespace

CldrPath cldrPath(const std::string& text)
{
    CldrPath path;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, '/');) {
        const std::size_t bracket = part.find('[');
        path.push_back(
            {part.substr(0, bracket), between(part, "[@", "="), between(part, "'", "'")});
    }
    return path;
}

CldrStore::CldrStore(std::string directory) : directory_(std::move(directory)) {}

bool CldrStore::open()
{
    const std::string path = directory_ + "/common/supplemental/supplementalData.xml";
    if (!supplemental_.load_file(path.c_str())) {
        std::cerr << path << ": cannot be read\n";
        return false;
    }
    readParents();
    if (file("root") == nullptr || !readHead()) {
        std::cerr << directory_ << ": no CLDR files with a version and a root locale\n";
        return false;
    }
    return true;
}

bool CldrStore::readHead()
{
    const std::string dtd = readAll(directory_ + "/common/dtd/ldml.dtd");
    version_ = between(dtd, "cldrVersion CDATA #FIXED \"", "\"");
    copyright_ =
        "Copyright" + between(readAll(directory_ + "/common/main/root.xml"), "Copyright", "\n");
    return !version_.empty();
}

void CldrStore::readParents()
{
    const pugi::xml_node all = supplemental_.child("supplementalData").child("parentLocales");
    for (const pugi::xml_node entry : all.children("parentLocale")) {
        std::istringstream locales(entry.attribute("locales").value());
        for (std::string locale; locales >> locale;)
            parents_[locale] = entry.attribute("parent").value();
    }
}

const pugi::xml_document* CldrStore::file(const std::string& locale)
{
    const auto [place, isNew] = files_.try_emplace(locale);
    if (isNew) {
        auto document = std::make_unique<pugi::xml_document>();
        if (document->load_file((directory_ + "/common/main/" + locale + ".xml").c_str()))
            place->second = std::move(document);
    }
    return place->second.get();
}

std::string CldrStore::parentOf(const std::string& locale) const
{
    if (const auto parent = parents_.find(locale); parent != parents_.end())
        return parent->second;
    const std::size_t cut = locale.rfind('_');
    return cut == std::string::npos ? "root" : locale.substr(0, cut);
}

std::optional<std::string> CldrStore::direct(const std::string& locale, const CldrPath& path)
{
    const pugi::xml_document* const document = file(locale);
    if (document == nullptr)
        return std::nullopt;
    pugi::xml_node node = document->child("ldml");
    for (const CldrStep& step : path)
        node = childOf(node, step);
    // Three arrows stand for the inherited value. An empty element is a value, no element is none.
    if (!node || node.child("alias") || std::string_view(node.text().get()) == "↑↑↑")
        return std::nullopt;
    return node.text().get();
}

// Where the root locale sends a path, if an element on the way is an alias there.
std::optional<CldrPath> CldrStore::alias(const CldrPath& path)
{
    pugi::xml_node node = file("root")->child("ldml");
    for (std::size_t i = 0; i < path.size(); ++i) {
        node = childOf(node, path[i]);
        const pugi::xml_node alias = node.child("alias");
        if (!alias)
            continue;
        const auto here = path.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        CldrPath target(path.begin(), here);
        for (const CldrStep& step : cldrPath(alias.attribute("path").value())) {
            if (step.element != "..")
                target.push_back(step);
            else if (!target.empty())
                target.pop_back();
        }
        target.insert(target.end(), here, path.end());
        return target;
    }
    return std::nullopt;
}

std::optional<std::string> CldrStore::text(const std::string& locale, const std::string& path)
{
    constexpr int kMostAliases = 8; // the longest chain in use has three
    std::optional<CldrPath> steps = cldrPath(path);
    for (int i = 0; steps && i < kMostAliases; ++i) {
        std::string from = locale;
        for (;;) {
            if (std::optional<std::string> value = direct(from, *steps))
                return value;
            if (from == "root")
                break;
            from = parentOf(from);
        }
        steps = alias(*steps);
    }
    return std::nullopt;
}

std::string CldrStore::alpha3(const std::string& region) const
{
    const pugi::xml_node all = supplemental_.child("supplementalData").child("codeMappings");
    return all.find_child_by_attribute("territoryCodes", "type", region.c_str())
        .attribute("alpha3")
        .value();
}

std::string CldrStore::currency(const std::string& region) const
{
    const pugi::xml_node all = supplemental_.child("supplementalData").child("currencyData");
    const pugi::xml_node entry = all.find_child_by_attribute("region", "iso3166", region.c_str());
    for (const pugi::xml_node currency : entry.children("currency"))
        if (!currency.attribute("to") && !currency.attribute("tender"))
            return currency.attribute("iso4217").value();
    return {};
}

int CldrStore::currencyDigits(const std::string& currency) const
{
    const pugi::xml_node all =
        supplemental_.child("supplementalData").child("currencyData").child("fractions");
    pugi::xml_node info = all.find_child_by_attribute("info", "iso4217", currency.c_str());
    if (!info)
        info = all.find_child_by_attribute("info", "iso4217", "DEFAULT");
    return info.attribute("digits").as_int(2);
}

} // namespace vlx::import
