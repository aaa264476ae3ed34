#include "import_sorts_table.hpp"

namespace vlx::import {

namespace {

// å written as aa, where the second a has an accent of its own.
constexpr const char* kDanish = R"(
[[combine]] # å in its older spelling aa, with an accent on the second letter
first = "aA"
second = "àáâãäåÀÁÂÃÄÅ"
)";

// Three letters stay with their sort of two, and a doubled digraph is sorted as it is written.
constexpr const char* kHungarian = R"(not_held = [
    "dzs", "Dzs", "DZS", "ccs", "Ccs", "CCS", "ddz", "Ddz", "DDZ", "ddzs", "Ddzs", "DDZS",
    "ggy", "Ggy", "GGY", "lly", "Lly", "LLY", "nny", "Nny", "NNY", "ssz", "Ssz", "SSZ",
    "tty", "Tty", "TTY", "zzs", "Zzs", "ZZS"]
)";

constexpr const char* kThai = R"(
[[combine]] # vowels that are written ahead of their consonant and sorted behind it
first = "เแโใไ"
second = "กขฃคฅฆงจฉชซฌญฎฏฐฑฒณดตถทธนบปผฝพฟภมยรฤลฦวศษสหฬอฮ"

[[combine]] # a consonant or vowel and a mark
first = "กขฃคฅฆงจฉชซฌญฎฏฐฑฒณดตถทธนบปผฝพฟภมยรลวศษสหฬอฮะ\u0E31า\u0E34\u0E35\u0E36\u0E37\u0E38\u0E39"
second = "\u0E47\u0E48\u0E49\u0E4A\u0E4B\u0E4C\u0E4E"
)";

constexpr const char* kVietnamese = R"(
[[combine]] # letter and tone mark as code page 1258 has them
first = "aăâeêioôơuưyAĂÂEÊIOÔƠUƯY"
second = "\u0300\u0309\u0303\u0301\u0323"
)";

constexpr SortRow kRows[] = {
    {1, "General", "the root order, for all languages without a sort of their own", nullptr,
     nullptr, "", nullptr, nullptr, "", nullptr},
    {2, "Spanish", "Spanish", "es", "standard", nullptr, nullptr, nullptr, ""},
    {3, "TraditionalSpanish", "Spanish with the letters ch and ll", "es", "traditional", nullptr,
     nullptr, nullptr, ""},
    {4, "DanishNorwegian", "Danish and Norwegian", "da", "standard", nullptr, nullptr, nullptr,
     kDanish},
    {5, "Swedish", "Swedish, w apart from v", "sv", "reformed", nullptr, nullptr, nullptr, ""},
    {6, "Finnish", "Finnish", "fi", "standard", nullptr, nullptr, nullptr, ""},
    {7, "Croatian", "Croatian", "hr", "standard", nullptr, nullptr, nullptr, ""},
    {8, "Czech", "Czech", "cs", "standard", nullptr, nullptr, nullptr, ""},
    {9, "Estonian", "Estonian", "et", "standard", nullptr, nullptr, nullptr, ""},
    {10, "Hungarian", "Hungarian", "hu", "standard", nullptr, nullptr,
     "A contraction has two characters, so the letters of three and the doubled digraphs "
     "cannot be held.",
     kHungarian},
    {11, "Latvian", "Latvian", "lv", "standard", nullptr, nullptr, nullptr, ""},
    {12, "Lithuanian", "Lithuanian", "lt", "standard", nullptr, nullptr, nullptr, ""},
    {13, "Romanian", "Romanian", "ro", "standard", nullptr, nullptr, nullptr, ""},
    {14, "Slovak", "Slovak", "sk", "standard", nullptr, nullptr, nullptr, ""},
    {15, "Slovenian", "Slovenian", "sl", "standard", nullptr, nullptr, nullptr, ""},
    {16, "Thai", "Thai", "th", "standard", nullptr, "[alternate shifted]",
     "Punctuation has level 1 weights as in the other sorts: as special characters it would "
     "make the tail of a longer string decide too early.",
     kThai},
    {17, "Turkish", "Turkish", "tr", "standard", nullptr, nullptr, nullptr, ""},
    {18, "Ukrainian", "Ukrainian", "uk", "standard", nullptr, nullptr,
     "U+A676, a combining letter, is on a page without records.", "not_held = [\"\\uA676\"]\n"},
    {19, "Vietnamese", "Vietnamese", "vi", "standard", nullptr, nullptr, nullptr, kVietnamese},
    {20, "CanadianFrench", "Canadian French, accents compared from the end", "fr_CA", "standard",
     nullptr, nullptr, nullptr, ""},
    {21, "Polish", "Polish", "pl", "standard", nullptr, nullptr, nullptr, ""},
    {22, "Icelandic", "Icelandic", "is", "standard", nullptr, nullptr, nullptr, ""},
    {23, "Albanian", "Albanian", "sq", "standard", nullptr, nullptr, nullptr, ""},
    {24, "Catalan", "Catalan, the root order with l· held as a pair", nullptr, nullptr,
     "&L<<ŀ=l·<<<Ŀ=L·", nullptr, nullptr, ""},
    {25, "GermanPhonebook", "German as telephone directories have it, ä as ae", "de", "phonebook",
     nullptr, nullptr, nullptr, ""},
    {26, "IgnorePunctuation", "the root order, with blanks and punctuation last of all", nullptr,
     nullptr, "[alternate shifted]", nullptr, nullptr, "", nullptr},
};

} // namespace

std::span<const SortRow> sortRows()
{
    return kRows;
}

} // namespace vlx::import
