// The shipped sources and the locale directory that the build made of them.
#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

// A row of codepages.tsv; a converter that a library does not have is empty.
struct ShippedPage {
    std::string name;
    int id;
    std::string icu;
    std::string glibc;
};

// Those with tables; UTF-8 goes by rule.
std::vector<ShippedPage> shippedPages();
// Those that a library has: &ShippedPage::icu, &ShippedPage::glibc.
std::vector<ShippedPage> shippedPages(std::string ShippedPage::*converter);

// By the path of its file: VLX_LOCALE and VLX_DATA_DIRECTORY are set by the build.
std::string compiledPath(int id);
std::string sourcePath(const std::string& name);

// The decode table of a source file and its bases, read here without the compiler's parser.
std::map<std::uint32_t, std::uint16_t> decodeTableOf(const std::string& path);

// Names as those of tests have to be.
std::string pageName(const ShippedPage& page);

inline std::ostream& operator<<(std::ostream& out, const ShippedPage& page)
{
    return out << page.name;
}
