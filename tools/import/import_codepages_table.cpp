// The tables themselves; import_codepages_table.hpp tells what stands in them.
#include "import_codepages_table.hpp"

namespace vlx::import {

namespace {

constexpr PageRow kAscii[] = {
    {"ASCII", 367, "the seven bits of ISO 646 IRV", "US-ASCII", "ANSI_X3.4-1968"},
};

constexpr PageRow kWindows[] = {
    {"MS1250", 1250, "Central European", "ibm-5346_P100-1998", "CP1250"},
    {"MS1251", 1251, "Cyrillic", "ibm-5347_P100-1998", "CP1251"},
    {"MS1252", 1252, "Western European", "ibm-5348_P100-1997", "CP1252"},
    {"MS1253", 1253, "Greek", "ibm-5349_P100-1998", "CP1253"},
    {"MS1254", 1254, "Turkish", "ibm-5350_P100-1998", "CP1254"},
    {"MS1255", 1255, "Hebrew", "ibm-9447_P100-2002", "CP1255"},
    {"MS1256", 1256, "Arabic", "ibm-9448_X100-2005", "CP1256"},
    {"MS1257", 1257, "Baltic", "ibm-9449_P100-2002", "CP1257"},
    {"MS1258", 1258, "Vietnamese", "ibm-5354_P100-1998", "CP1258"},
    {"MS874", 874, "Thai", "windows-874-2000", "CP874"},
};

constexpr PageRow kIso[] = {
    {"ISO8859-1", 819, "Latin 1, Western European", "ISO-8859-1", "ISO-8859-1"},
    {"ISO8859-2", 912, "Latin 2, Central European", "ibm-912_P100-1995", "ISO-8859-2"},
    {"ISO8859-3", 913, "Latin 3, Southern European", "ibm-913_P100-2000", "ISO-8859-3"},
    {"ISO8859-4", 914, "Latin 4, Northern European", "ibm-914_P100-1995", "ISO-8859-4"},
    {"ISO8859-5", 915, "Cyrillic", "ibm-915_P100-1995", "ISO-8859-5"},
    {"ISO8859-6", 1089, "Arabic", "ibm-1089_P100-1995", "ISO-8859-6"},
    {"ISO8859-7", 813, "Greek, with the euro of 2003", "ibm-9005_X110-2007", "ISO-8859-7"},
    {"ISO8859-8", 916, "Hebrew", "ibm-5012_P100-1999", "ISO-8859-8"},
    {"ISO8859-9", 920, "Latin 5, Turkish", "ibm-920_P100-1995", "ISO-8859-9"},
    {"ISO8859-10", 28600, "Latin 6, Nordic", "iso-8859_10-1998", "ISO-8859-10"},
    {"ISO8859-11", 28601, "Thai", "iso-8859_11-2001", "ISO-8859-11"},
    {"ISO8859-13", 921, "Latin 7, Baltic", "ibm-921_P100-1995", "ISO-8859-13"},
    {"ISO8859-14", 28604, "Latin 8, Celtic", "iso-8859_14-1998", "ISO-8859-14"},
    {"ISO8859-15", 923, "Latin 9, Western European with the euro", "ibm-923_P100-1998",
     "ISO-8859-15"},
};

constexpr PageRow kIsoOfGlibc[] = {
    {"ISO8859-16", 28606, "Latin 10, South-Eastern European", "ISO-8859-16", nullptr},
};

constexpr PageRow kPc[] = {
    {"IBM437", 437, "United States", "ibm-437_P100-1995", "IBM437"},
    {"IBM737", 737, "Greek", "ibm-737_P100-1997", "CP737"},
    {"IBM775", 775, "Baltic", "ibm-775_P100-1996", "CP775"},
    {"IBM850", 850, "Latin 1", "ibm-850_P100-1995", "IBM850"},
    {"IBM852", 852, "Latin 2", "ibm-852_P100-1995", "IBM852"},
    {"IBM855", 855, "Cyrillic", "ibm-855_P100-1995", "IBM855"},
    {"IBM857", 857, "Turkish", "ibm-857_P100-1995", "IBM857"},
    {"IBM858", 858, "Latin 1 with the euro", "ibm-858_P100-1997", "IBM858"},
    {"IBM860", 860, "Portuguese", "ibm-860_P100-1995", "IBM860"},
    {"IBM861", 861, "Icelandic", "ibm-861_P100-1995", "IBM861"},
    {"IBM862", 862, "Hebrew", "ibm-862_P100-1995", "IBM862"},
    {"IBM863", 863, "Canadian French", "ibm-863_P100-1995", "IBM863"},
    {"IBM864", 864, "Arabic", "ibm-864_X110-1999", "IBM864"},
    {"IBM865", 865, "Nordic", "ibm-865_P100-1995", "IBM865"},
    {"IBM866", 866, "Cyrillic, Russian", "ibm-866_P100-1995", "IBM866"},
    {"IBM869", 869, "Modern Greek", "ibm-869_P100-1995", "IBM869"},
};

constexpr PageRow kKoi[] = {
    {"KOI8-R", 878, "Russian", "ibm-878_P100-1996", "KOI8-R"},
    {"KOI8-U", 1168, "Ukrainian", "ibm-1168_P100-2002", "KOI8-U"},
};

constexpr PageRow kEbcdic[] = {
    {"IBM037", 37, "United States and Canada", "ibm-37_P100-1995", "IBM037"},
    {"IBM273", 273, "German", "ibm-273_P100-1995", "IBM273"},
    {"IBM277", 277, "Danish and Norwegian", "ibm-277_P100-1995", "IBM277"},
    {"IBM278", 278, "Finnish and Swedish", "ibm-278_P100-1995", "IBM278"},
    {"IBM280", 280, "Italian", "ibm-280_P100-1995", "IBM280"},
    {"IBM284", 284, "Spanish", "ibm-284_P100-1995", "IBM284"},
    {"IBM285", 285, "United Kingdom", "ibm-285_P100-1995", "IBM285"},
    {"IBM297", 297, "French", "ibm-297_P100-1995", "IBM297"},
    {"IBM420", 420, "Arabic", "ibm-420_X120-1999", "IBM420"},
    {"IBM424", 424, "Hebrew", "ibm-424_P100-1995", "IBM424"},
    {"IBM500", 500, "international", "ibm-500_P100-1995", "IBM500"},
    {"IBM871", 871, "Icelandic", "ibm-871_P100-1995", "IBM871"},
    {"IBM875", 875, "Greek", "ibm-875_P100-1995", "IBM875"},
    {"IBM1025", 1025, "Cyrillic", "ibm-1025_P100-1995", "IBM1025"},
    {"IBM1026", 1026, "Turkish", "ibm-1026_P100-1995", "IBM1026"},
    {"IBM1047", 1047, "open systems, Latin 1", "ibm-1047_P100-1995", "IBM1047"},
    {"IBM1112", 1112, "Baltic", "ibm-1112_P100-1995", "IBM1112"},
    {"IBM1122", 1122, "Estonian", "ibm-1122_P100-1999", "IBM1122"},
    {"IBM1123", 1123, "Cyrillic, Ukrainian", "ibm-1123_P100-1995", "IBM1123"},
    {"IBM1140", 1140, "United States and Canada, with the euro", "ibm-1140_P100-1997", "IBM1140"},
    {"IBM1141", 1141, "German, with the euro", "ibm-1141_P100-1997", "IBM1141"},
    {"IBM1142", 1142, "Danish and Norwegian, with the euro", "ibm-1142_P100-1997", "IBM1142"},
    {"IBM1143", 1143, "Finnish and Swedish, with the euro", "ibm-1143_P100-1997", "IBM1143"},
    {"IBM1144", 1144, "Italian, with the euro", "ibm-1144_P100-1997", "IBM1144"},
    {"IBM1145", 1145, "Spanish, with the euro", "ibm-1145_P100-1997", "IBM1145"},
    {"IBM1146", 1146, "United Kingdom, with the euro", "ibm-1146_P100-1997", "IBM1146"},
    {"IBM1147", 1147, "French, with the euro", "ibm-1147_P100-1997", "IBM1147"},
    {"IBM1148", 1148, "international, with the euro", "ibm-1148_P100-1997", "IBM1148"},
    {"IBM1149", 1149, "Icelandic, with the euro", "ibm-1149_P100-1997", "IBM1149"},
};

constexpr PageRow kWindowsDouble[] = {
    {"MS932", 932, "Japanese (Shift JIS with the NEC and IBM rows)", "ibm-943_P15A-2003", "CP932"},
    {"MS936", 936, "simplified Chinese (GBK with user-defined rows)", "windows-936-2000", "CP936"},
    {"MS949", 949, "Korean (unified Hangul code with user-defined rows)", "windows-949-2000",
     "UHC"},
    {"MS950", 950, "traditional Chinese (Big5 with user-defined rows)", "windows-950-2000",
     "CP950"},
};

constexpr PageRow kEastAsia[] = {
    {"MS1361", 1361, "Johab, Korean", "JOHAB", nullptr},
    {"EUC-KR", 970, "EUC, Korean", "EUC-KR", "ibm-970_P110_P110-2006_U2"},
    {"EUC-CN", 1383, "EUC, simplified Chinese (GB 2312)", "EUC-CN", "ibm-1383_P110-1999"},
};

constexpr PageRow kTriple[] = {
    {"EUC-JP", 954, "EUC, Japanese (JIS X 0208 and 0212)", "EUC-JP", "euc-jp-2007"},
};

constexpr PageRow kStateful[] = {
    {"IBM930", 930, "Japanese, katakana in the place of small letters", "ibm-930_P120-1999",
     "IBM930"},
    {"IBM933", 933, "Korean", "ibm-933_P110-1995", "IBM933"},
    {"IBM935", 935, "simplified Chinese", "ibm-935_P110-1999", "IBM935"},
    {"IBM937", 937, "traditional Chinese", "ibm-937_P110-1999", "IBM937"},
    {"IBM939", 939, "Japanese, Latin with small letters", "ibm-939_P120-1999", "IBM939"},
    {"IBM1364", 1364, "Korean, with the syllables of Unicode 2.0", "ibm-1364_P110-2007", "IBM1364"},
    {"IBM1371", 1371, "traditional Chinese, with the euro", "ibm-1371_P100-1999", "IBM1371"},
    {"IBM1388", 1388, "simplified Chinese, with the characters of GBK", "ibm-1388_P103-2001",
     "IBM1388"},
    {"IBM1390", 1390, "Japanese, katakana, with the euro and JIS X 0213", "ibm-1390_P110-2003",
     "IBM1390"},
    {"IBM1399", 1399, "Japanese, Latin, with the euro and JIS X 0213", "ibm-1399_P110-2003",
     "IBM1399"},
};

constexpr PageFamily kFamilies[] = {
    {"", Origin::kIcu, Shape::kAscii, 1, kAscii},
    {"Windows, ", Origin::kIcu, Shape::kAscii, 1, kWindows},
    {"", Origin::kIcu, Shape::kAscii, 1, kIso},
    {"", Origin::kGlibc, Shape::kAscii, 1, kIsoOfGlibc},
    {"PC, ", Origin::kIcu, Shape::kAscii, 1, kPc},
    {"KOI8, ", Origin::kIcu, Shape::kAscii, 1, kKoi},
    {"EBCDIC, ", Origin::kIcu, Shape::kEbcdic, 1, kEbcdic},
    {"Windows, ", Origin::kIcu, Shape::kAscii, 2, kWindowsDouble},
    {"", Origin::kGlibc, Shape::kAscii, 2, kEastAsia},
    {"", Origin::kGlibc, Shape::kAscii, 3, kTriple},
    {"EBCDIC, ", Origin::kIcu, Shape::kStateful, 2, kStateful},
};

constexpr PageCorrection kCorrections[] = {
    {"MS1250 MS1251 MS1252 MS1253 MS1254 MS1255 MS1257 MS1258 MS874",
     "the C1 controls that ICU has in unassigned bytes are left out",
     {{0x80, 0x9F, kNoControls}}},
    {"MS1253", "AA is unassigned, as in all other sources", {{0xAA, 0xAA, kUnassigned}}},
    {"MS874",
     "DB to DE and FC to FF, private in ICU, are unassigned",
     {{0xDB, 0xDE, kUnassigned}, {0xFC, 0xFF, kUnassigned}}},
    {"IBM437 IBM737 IBM775 IBM850 IBM852 IBM855 IBM857 IBM858 IBM860 IBM861 IBM862 IBM863 IBM864 "
     "IBM865 IBM866 IBM869 MS932",
     "1A, 1C and 7F, which ICU turns around as the hardware showed them, are controls",
     {{0x1A, 0x1A, 0x001A}, {0x1C, 0x1C, 0x001C}, {0x7F, 0x7F, 0x007F}}},
    {"IBM437 IBM860 IBM861 IBM862 IBM863 IBM865",
     "E6 is the micro sign, as in all other sources",
     {{0xE6, 0xE6, 0x00B5}}},
    {"IBM852", "AA is the not sign, as in all other sources", {{0xAA, 0xAA, 0x00AC}}},
    {"IBM864",
     "D7, D8 and F1 are as in all other sources, and 9F is unassigned",
     {{0x9F, 0x9F, kUnassigned}, {0xD7, 0xD7, 0xFEC1}, {0xD8, 0xD8, 0xFEC5}, {0xF1, 0xF1, 0x0651}}},
    {"IBM869",
     "88 and EF are as in all other sources",
     {{0x88, 0x88, 0x00B7}, {0xEF, 0xEF, 0x0384}}},
    {"IBM1026", "9A is the ordinal, as in all other sources", {{0x9A, 0x9A, 0x00AA}}},
    {"MS1361",
     "5C is the backslash, as in all other sources; the won sign of glibc is left out",
     {{0x5C, 0x5C, 0x005C}}},
    {"EUC-JP",
     "the C1 controls of glibc are left out",
     {{0x80, 0x8D, kUnassigned}, {0x90, 0x9F, kUnassigned}}},
    {"IBM1388",
     "the user-defined rows 7641 to 804E, U+E000 to U+E765, are left out for want of room",
     {{0x7641, 0x80FE, kNoPrivate}}},
};

} // namespace

std::span<const PageFamily> pageFamilies()
{
    return kFamilies;
}

std::span<const PageCorrection> pageCorrections()
{
    return kCorrections;
}

} // namespace vlx::import
