// The characters that the library's own tables do not have, by ICU: those that Unicode got after
// version 2.0, and Tibetan. Code pages have some of them.
#include "import.hpp"

#include <fstream>
#include <functional>
#include <iomanip>
#include <iostream>
#include <string>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <vector>

namespace vlx::import {

namespace {

constexpr UChar32 kValues = 0x10000;

constexpr const char* kCategories[] = {"Cn", "Lu", "Ll", "Lt", "Lm", "Lo", "Mn", "Me", "Mc", "Nd",
                                       "Nl", "No", "Zs", "Zl", "Zp", "Cc", "Cf", "Co", "Cs", "Pd",
                                       "Ps", "Pe", "Pc", "Po", "Sm", "Sc", "Sk", "So", "Pi", "Pf"};

// The classes of version 2.0; later ones are those that a character had there.
const char* directionOf(UChar32 value)
{
    switch (u_charDirection(value)) {
    case U_LEFT_TO_RIGHT:
        return "L";
    case U_RIGHT_TO_LEFT:
    case U_RIGHT_TO_LEFT_ARABIC:
        return "R";
    case U_EUROPEAN_NUMBER:
        return "EN";
    case U_EUROPEAN_NUMBER_SEPARATOR:
        return "ES";
    case U_EUROPEAN_NUMBER_TERMINATOR:
        return "ET";
    case U_ARABIC_NUMBER:
        return "AN";
    case U_COMMON_NUMBER_SEPARATOR:
        return "CS";
    case U_WHITE_SPACE_NEUTRAL:
        return "WS";
    default:
        return "ON";
    }
}

bool endsInMark(UChar32 value)
{
    UErrorCode code = U_ZERO_ERROR;
    const UNormalizer2* const nfc = unorm2_getNFCInstance(&code);
    UChar parts[8];
    const int32_t count = unorm2_getRawDecomposition(nfc, value, parts, 8, &code);
    return U_SUCCESS(code) && count > 0 && u_charType(parts[count - 1]) == U_NON_SPACING_MARK;
}

std::string nameOf(UChar32 value)
{
    UErrorCode code = U_ZERO_ERROR;
    char name[128];
    const int32_t size = u_charName(value, U_UNICODE_CHAR_NAME, name, sizeof name, &code);
    return U_SUCCESS(code) ? std::string(name, static_cast<std::size_t>(size)) : std::string();
}

std::string flagsOf(UChar32 value)
{
    std::string flags;
    const auto add = [&](char flag, bool has) { flags += has ? std::string(1, flag) : ""; };
    const std::string name = nameOf(value);
    const bool katakana = name.find("KATAKANA") != std::string::npos;
    const bool hiragana = name.find("HIRAGANA") != std::string::npos;
    add('A', u_hasBinaryProperty(value, UCHAR_ALPHABETIC));
    add('I', u_hasBinaryProperty(value, UCHAR_IDEOGRAPHIC));
    add('D', u_charType(value) == U_DECIMAL_DIGIT_NUMBER);
    add('M', u_hasBinaryProperty(value, UCHAR_DIACRITIC));
    add('E', u_hasBinaryProperty(value, UCHAR_EXTENDER));
    add('C', endsInMark(value));
    add('B', katakana && hiragana);
    add('K', katakana && !hiragana);
    add('G', hiragana && !katakana);
    add('W', name.find(" WITH ") != std::string::npos);
    return flags.empty() ? "-" : flags;
}

bool isLeftOut(UChar32 value)
{
    UVersionInfo age;
    u_charAge(value, age);
    const int8_t type = u_charType(value);
    // The library's table leaves Tibetan out.
    const bool leftOut =
        age[0] > 2 || (age[0] == 2 && age[1] > 0) || ublock_getCode(value) == UBLOCK_TIBETAN;
    return leftOut && type != U_UNASSIGNED && type != U_SURROGATE && type != U_PRIVATE_USE_CHAR;
}

void writeHead(std::ostream& out, const char* title)
{
    out << "# " << title << "\n# origin: ICU 72.1 (Unicode 15), by vlx-import characters\n"
        << "# licence: Unicode-DFS-2016, see data/NOTICES.md\n#\n";
}

void writeValue(std::ostream& out, UChar32 value)
{
    out << std::hex << std::uppercase << std::setfill('0') << std::setw(4) << value << std::dec;
}

// Equal neighbours are one row.
void writeProperties(std::ostream& out, const std::vector<bool>& younger)
{
    writeHead(
        out,
        "Character properties of the values that Unicode got after version 2.0, and of Tibetan.");
    out << "# Columns and flags: those of properties-2.0.tsv. Only code pages take them.\n";
    const auto textOf = [&](UChar32 value) {
        return younger[static_cast<std::size_t>(value)]
                   ? std::string(kCategories[u_charType(value)]) + '\t' + directionOf(value) +
                         '\t' + flagsOf(value)
                   : std::string();
    };
    for (UChar32 first = 0; first < kValues;) {
        const std::string text = textOf(first);
        UChar32 next = first + 1;
        while (next < kValues && textOf(next) == text)
            ++next;
        if (!text.empty()) {
            writeValue(out, first);
            out << '\t';
            writeValue(out, next - 1);
            out << '\t' << text << '\n';
        }
        first = next;
    }
}

void writeCase(std::ostream& out, const std::vector<bool>& younger)
{
    writeHead(out, "Simple case mappings from or to a value that Unicode got after version 2.0.");
    out << "# Columns: those of simple-case.tsv. Only code pages take them.\n";
    const std::pair<const char*, UChar32 (*)(UChar32)> directions[] = {{"lower", u_tolower},
                                                                       {"upper", u_toupper}};
    for (const auto& [direction, map] : directions) {
        for (UChar32 value = 0; value < kValues; ++value) {
            const UChar32 image = map(value);
            if (image == value || image >= kValues ||
                !(younger[static_cast<std::size_t>(value)] ||
                  younger[static_cast<std::size_t>(image)]))
                continue;
            out << direction << '\t';
            writeValue(out, value);
            out << '\t';
            writeValue(out, value);
            out << "\t1\t" << std::showpos << image - value << std::noshowpos << '\n';
        }
    }
}

bool writeFile(const std::string& path, const std::function<void(std::ostream&)>& write)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    write(out);
    out.close();
    if (!out)
        std::cerr << path << ": cannot be written\n";
    return !out.fail();
}

} // namespace

bool importCharacters(const Options& options)
{
    std::vector<bool> younger;
    for (UChar32 value = 0; value < kValues; ++value)
        younger.push_back(isLeftOut(value));
    const std::string& directory = options.outputDirectory;
    return writeFile(directory + "/properties-younger.tsv",
                     [&](std::ostream& out) { writeProperties(out, younger); }) &&
           writeFile(directory + "/case-younger.tsv",
                     [&](std::ostream& out) { writeCase(out, younger); });
}

} // namespace vlx::import
