#include "world/cldr.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace vlx::test {
namespace {

const std::string kCldr = "/usr/share/unicode/cldr/common";

std::vector<Bend> readBends()
{
    std::ifstream in(VLX_WORLD_DIRECTORY "/bent.tsv");
    EXPECT_TRUE(in);
    std::vector<Bend> bends;
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (line.empty() || line[0] == '#')
            continue;
        std::istringstream columns(line);
        Bend bend{};
        std::string reason;
        std::getline(columns, bend.object, '\t');
        std::getline(columns, bend.field, '\t');
        std::getline(columns, bend.from, '\t');
        std::getline(columns, bend.to, '\t');
        std::getline(columns, reason, '\t');
        EXPECT_FALSE(reason.empty()) << "line " << number << " has no reason";
        bend.line = number;
        bends.push_back(bend);
    }
    return bends;
}

// Characters of the table as \uXXXX, so that the invisible ones can be read.
std::string unescaped(const std::string& text)
{
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        if (text.compare(at, 2, "\\u") != 0) {
            out += text[at++];
            continue;
        }
        const unsigned long value = std::stoul(text.substr(at + 2, 4), nullptr, 16);
        at += 6;
        if (value >= 0x800)
            out += static_cast<char>(0xE0 | value >> 12);
        out += static_cast<char>(value >= 0x800 ? 0x80 | (value >> 6 & 0x3F) : 0xC0 | value >> 6);
        out += static_cast<char>(0x80 | (value & 0x3F));
    }
    return out;
}

} // namespace

std::string regionOf(const std::string& locale)
{
    return locale.substr(locale.size() - 2);
}

Cldr::Cldr()
{
    EXPECT_TRUE(supplemental_.load_file((kCldr + "/supplemental/supplementalData.xml").c_str()));
}

bool Cldr::isHere()
{
    return std::filesystem::exists(kCldr + "/main/root.xml");
}

pugi::xml_node Cldr::fact(const std::string& path) const
{
    return supplemental_.select_node(("/supplementalData/" + path).c_str()).node();
}

std::string Cldr::currency(const std::string& region) const
{
    return fact("currencyData/region[@iso3166='" + region + "']/currency[not(@to)][not(@tender)]")
        .attribute("iso4217")
        .value();
}

std::string Cldr::value(std::string locale, const std::string& path)
{
    for (; locale != "root"; locale = parentOf(locale))
        if (const std::string found = valueOf(locale, path); !found.empty())
            return found;
    return {};
}

std::string Cldr::valueOrRoot(const std::string& locale, const std::string& path)
{
    const std::string found = value(locale, path);
    return found.empty() ? rootValue(path) : found;
}

std::string Cldr::parentOf(const std::string& locale) const
{
    for (const pugi::xml_node entry :
         supplemental_.child("supplementalData").child("parentLocales")) {
        const std::string locales = " " + std::string(entry.attribute("locales").value()) + " ";
        if (locales.find(" " + locale + " ") != std::string::npos)
            return entry.attribute("parent").value();
    }
    const std::size_t cut = locale.rfind('_');
    return cut == std::string::npos ? "root" : locale.substr(0, cut);
}

std::string Cldr::valueOf(const std::string& locale, const std::string& path)
{
    auto& file = files_[locale];
    if (!file) {
        file = std::make_unique<pugi::xml_document>();
        file->load_file((kCldr + "/main/" + locale + ".xml").c_str());
    }
    const std::string value =
        file->select_node(("/ldml/" + path + "[not(@alt)]").c_str()).node().text().get();
    return value == "↑↑↑" ? "" : value;
}

void CldrWorld::SetUp()
{
    if (!Cldr::isHere())
        GTEST_SKIP() << "no CLDR files: the package unicode-cldr-core is not installed";
    cldr_ = std::make_unique<Cldr>();
    bends_ = readBends();
    utf8_ = open("English.UTF-8");
}

std::string CldrWorld::utf8Of(const std::u16string& units) const
{
    char bytes[512];
    const std::int32_t count = TSUnicodeToString(utf8_.get(), bytes, sizeof bytes,
                                                 reinterpret_cast<const TSChar16*>(units.data()),
                                                 static_cast<std::int32_t>(units.size()), 0);
    return {bytes, bytes + count};
}

std::string CldrWorld::bent(const std::string& object, const std::string& field, std::string value)
{
    for (Bend& bend : bends_) {
        if ((bend.object != "*" && bend.object != object) || bend.field != field)
            continue;
        const std::string from = unescaped(bend.from);
        const std::string to = unescaped(bend.to);
        for (std::size_t at = value.find(from); at != std::string::npos;
             at = value.find(from, at + to.size())) {
            value.replace(at, from.size(), to);
            bend.used = true;
        }
    }
    return value;
}

void CldrWorld::expectBendsUsed(const std::vector<std::string>& fields) const
{
    for (const Bend& bend : bends_)
        if (std::find(fields.begin(), fields.end(), bend.field) != fields.end()) {
            EXPECT_TRUE(bend.used) << "bent.tsv, line " << bend.line << " changes nothing";
        }
}

std::string CldrWorld::name(const std::string& locale, const std::string& kind,
                            const std::string& width, const std::string& leaf)
{
    const auto path = [&](const std::string& wanted) {
        return kGregorian + kind + "s/" + kind + "Context[@type='format']/" + kind +
               "Width[@type='" + wanted + "']/" + leaf;
    };
    for (const std::string& wanted : {width, std::string("wide")})
        if (const std::string found = cldr_->value(locale, path(wanted)); !found.empty())
            return found;
    return cldr_->rootValue(path("wide"));
}

} // namespace vlx::test
