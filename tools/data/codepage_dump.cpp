#include <ostream>

#include "codepage_compile.hpp"
#include "codepage_view.hpp"
#include "sourcefile.hpp"

namespace vlx::data {

namespace {

std::string characterText(Packed character)
{
    return hexText(character, packedLength(character) * 2);
}

void dumpFields(const TSCodePageHeader& header, std::ostream& out)
{
    out << "substChar " << hexText(header.substChar, 2) << '\n'
        << "lineFeedChar " << hexText(header.lineFeedChar, 2) << '\n'
        << "carriageReturnChar " << hexText(header.carriageReturnChar, 2) << '\n'
        << "lineEnd3Char " << hexText(header.lineEnd3Char, 2) << '\n'
        << "lineEnd4Char " << hexText(header.lineEnd4Char, 2) << '\n'
        << "maxCharBytes " << int{header.maxCharBytes} << '\n'
        << "shiftIn " << hexText(header.shiftIn, 2) << '\n'
        << "shiftOut " << hexText(header.shiftOut, 2) << '\n'
        << "cpFlags " << hexText(header.cpFlags, 4) << '\n'
        << "mapValuesOffset " << header.mapValuesOffset << '\n'
        << "mapPairsOffset " << header.mapPairsOffset << ", mapPairCount " << header.mapPairCount
        << '\n'
        << "typeTrieOffset " << header.typeTrieOffset << ", typeRecordsOffset "
        << header.typeRecordsOffset << '\n'
        << "leafTableOffset " << header.leafTableOffset << '\n';
}

void dumpBytes(const CodePageView& view, std::ostream& out)
{
    const TSCodePageHeader& header = view.header();
    out << "\nbyte\tlength\tUnicode\tupper\tlower\ttype\twide\n";
    for (unsigned byte = 0; byte < 256; ++byte) {
        out << hexText(byte, 2) << '\t' << int{header.charLength[byte]} << '\t'
            << hexText(header.toUnicode[byte], 4) << '\t' << hexText(header.toUpper[byte], 2)
            << '\t' << hexText(header.toLower[byte], 2) << '\t' << hexText(header.charType[byte], 8)
            << '\t';
        const auto wide = header.mapValuesOffset != 0
                              ? view.mapValue(static_cast<std::uint8_t>(byte))
                              : std::nullopt;
        out << (wide && *wide != 0 ? characterText(*wide) : "-") << '\n';
    }
}

void dumpPages(const TSCodePageHeader& header, std::ostream& out)
{
    out << "\npage\tkind\tmask\tlow\thigh\toffset3\toffset4\n";
    for (unsigned high = 0; high < 256; ++high) {
        const TSUnicodePage& page = header.unicodePages[high];
        if (page.low <= page.high)
            out << hexText(high, 2) << '\t' << int{page.kind} << '\t' << hexText(page.mask, 2)
                << '\t' << hexText(page.low, 2) << '\t' << hexText(page.high, 2) << '\t'
                << page.offset3 << '\t' << page.offset4 << '\n';
    }
}

// Characters of several bytes, as the tries have them. The mapped character is the other case.
void dumpCharacters(const CodePageView& view, std::ostream& out)
{
    out << "\ncharacter\tUnicode\ttype\tother case\n";
    for (const Packed character : view.characters()) {
        if (character <= 0xFF)
            continue;
        const auto value = view.decode(character);
        const auto record = view.typeOf(character);
        out << characterText(character) << '\t' << (value ? hexText(*value, 4) : "?") << '\t'
            << (record ? hexText(record->type, 8) : "?") << '\t';
        out << (record && record->delta != 0 ? characterText(character + record->delta) : "-")
            << '\n';
    }
    for (std::size_t i = 0; i < view.header().mapPairCount; ++i)
        if (const auto pair = view.mapPair(i))
            out << "map pair " << characterText(pair->key) << " = " << characterText(pair->value)
                << '\n';
}

void dumpEncode(const CodePageView& view, std::ostream& out)
{
    out << "\nUnicode\tcharacter\n";
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        const auto value16 = static_cast<std::uint16_t>(value);
        const auto character = view.encode(value16);
        if (!character)
            out << hexText(value, 4) << "\t?\n";
        else if (*character != view.header().substChar || view.decode(*character) == value16)
            out << hexText(value, 4) << '\t' << characterText(*character) << '\n';
    }
}

} // namespace

void dumpCodePage(const std::vector<Bytes>& sections, std::uint16_t id, std::ostream& out)
{
    const auto view = CodePageView::open(sections, id);
    if (!view) {
        out << "section 1 is shorter than a code page header\n";
        return;
    }
    dumpFields(view->header(), out);
    dumpBytes(*view, out);
    if (!view->utf8())
        dumpPages(view->header(), out);
    if (view->header().maxCharBytes > 1)
        dumpCharacters(*view, out);
    if (!view->utf8())
        dumpEncode(*view, out);
}

} // namespace vlx::data
