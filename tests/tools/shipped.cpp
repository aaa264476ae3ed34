#include "shipped.hpp"

#include <cstdio>
#include <fstream>
#include <sstream>

std::vector<ShippedPage> shippedPages()
{
    std::vector<ShippedPage> pages;
    std::ifstream in(VLX_TEST_DIRECTORY "/codepages.tsv");
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        ShippedPage page;
        if (line.starts_with('#') || !(words >> page.name >> page.id >> page.icu >> page.glibc))
            continue;
        for (std::string* const converter : {&page.icu, &page.glibc})
            if (*converter == "-")
                converter->clear();
        pages.push_back(page);
    }
    return pages;
}

std::vector<ShippedPage> shippedPages(std::string ShippedPage::*converter)
{
    std::vector<ShippedPage> pages = shippedPages();
    std::erase_if(pages,
                  [converter](const ShippedPage& page) { return (page.*converter).empty(); });
    return pages;
}

std::string pageName(const ShippedPage& page)
{
    std::string name = page.name;
    std::erase(name, '-');
    return name;
}

std::string compiledPath(int id)
{
    char name[32];
    std::snprintf(name, sizeof name, "/cp_%05d.nls", id);
    return std::string(VLX_LOCALE) + name;
}

std::string sourcePath(const std::string& name)
{
    return std::string(VLX_DATA_DIRECTORY) + "/codepages/" + name + ".cp";
}

std::map<std::uint32_t, std::uint16_t> decodeTableOf(const std::string& path)
{
    constexpr char kBase[] = "based on = ";
    std::map<std::uint32_t, std::uint16_t> table;
    std::ifstream in(path);
    std::string line;
    bool inside = false;
    while (std::getline(in, line)) {
        if (line.starts_with(kBase))
            table = decodeTableOf(sourcePath(line.substr(sizeof kBase - 1)));
        if (!line.empty() && line[0] == '[')
            inside = line == "[decode]";
        const std::size_t colon = line.find(':');
        if (!inside || line.empty() || colon == std::string::npos)
            continue;
        auto character = static_cast<std::uint32_t>(std::stoul(line.substr(0, colon), nullptr, 16));
        std::istringstream cells(line.substr(colon + 1));
        for (std::string cell; cells >> cell;) {
            if (cell == "----") {
                table.erase(character++);
                continue;
            }
            const unsigned long first = std::stoul(cell.substr(0, 4), nullptr, 16);
            const bool run = cell.find("..") != std::string::npos;
            const unsigned long last = run ? std::stoul(cell.substr(6), nullptr, 16) : first;
            for (unsigned long value = first; value <= last; ++value)
                table[character++] = static_cast<std::uint16_t>(value);
        }
    }
    return table;
}
