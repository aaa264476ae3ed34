// The shipped sources and the locale directory that the build made of them.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct ShippedPage {
    const char* name;
    int id;
    const char* icu;
    const char* glibc;
};

// Those with tables; UTF-8 goes by rule.
inline constexpr ShippedPage kShippedPages[] = {
    {"US-ASCII", 1, "US-ASCII", "ANSI_X3.4-1968"},
    {"ASCII", 367, "US-ASCII", "ANSI_X3.4-1968"},
    {"MS932", 932, "ibm-943_P15A-2003", "CP932"},
    {"MS950", 950, "windows-950-2000", "CP950"},
    {"MS1251", 1251, "ibm-5347_P100-1998", "CP1251"},
    {"MS1252", 1252, "ibm-5348_P100-1997", "CP1252"},
    {"MS1254", 1254, "ibm-5350_P100-1998", "CP1254"},
    {"IBM037", 37, "ibm-37_P100-1995", "IBM037"},
    {"IBM273", 273, "ibm-273_P100-1995", "IBM273"},
    {"IBM500", 500, "ibm-500_P100-1995", "IBM500"},
    {"IBM1047", 1047, "ibm-1047_P100-1995", "IBM1047"},
    {"IBM930", 930, "ibm-930_P120-1999", "IBM930"},
    {"IBM939", 939, "ibm-939_P120-1999", "IBM939"},
};

// By the path of its file: VLX_LOCALE and VLX_DATA_DIRECTORY are set by the build.
std::string compiledPath(int id);
std::string sourcePath(const std::string& name);

// The decode table of a source file, read here without the compiler's parser.
std::map<std::uint32_t, std::uint16_t> decodeTableOf(const std::string& path);

inline std::string pageName(const ShippedPage& page)
{
    std::string name;
    for (const char* at = page.name; *at != '\0'; ++at)
        if (*at != '-')
            name += *at;
    return name;
}
