// What the library has to know of native locale ids, written down once more.
#pragma once

#include <cstdint>
#include <iterator>
#include <ostream>

namespace vlx::test {

struct NativeRow {
    std::uint32_t id;
    const char* name;
};

inline void PrintTo(const NativeRow& row, std::ostream* out)
{
    *out << std::hex << row.id << std::dec;
}

inline constexpr NativeRow kNativeRows[] = {
    {0x0401, "Arabic_SaudiArabia.MS1256"},
    {0x0402, "Bulgarian_Bulgaria.MS1251"},
    {0x0403, "Catalan_Catalonia.MS1252"},
    {0x0404, "TraditionalChinese_Taiwan.MS950"},
    {0x0405, "Czech_CzechRepublic.MS1250"},
    {0x0406, "Danish_Denmark.MS1252"},
    {0x0407, "German_Germany.MS1252"},
    {0x0408, "Greek_Greece.MS1253"},
    {0x0409, "English_UnitedStates.MS1252"},
    {0x040A, "Spanish_Spain.MS1252@TraditionalSpanish"},
    {0x040B, "Finnish_Finland.MS1252"},
    {0x040C, "French_France.MS1252"},
    {0x040D, "Hebrew_Israel.MS1255"},
    {0x040E, "Hungarian_Hungary.MS1250"},
    {0x040F, "Icelandic_Iceland.MS1252"},
    {0x0410, "Italian_Italy.MS1252"},
    {0x0411, "Japanese_Japan.MS932"},
    {0x0412, "Korean_Korea.MS949"},
    {0x0413, "Dutch_Netherlands.MS1252"},
    {0x0414, "Norwegian_Norway.MS1252"},
    {0x0415, "Polish_Poland.MS1250"},
    {0x0416, "Portuguese_Brazil.MS1252"},
    {0x0417, "Rhaeto-Romanic"},
    {0x0418, "Romanian_Romania.MS1250"},
    {0x0419, "Russian_Russia.MS1251"},
    {0x041A, "Croatian_Croatia.MS1250"},
    {0x041B, "Slovak_Slovakia.MS1250"},
    {0x041C, "Albanian_Albania.MS1250"},
    {0x041D, "Swedish_Sweden.MS1252"},
    {0x041E, "Thai_Thailand.MS874"},
    {0x041F, "Turkish_Turkey.MS1254"},
    {0x0420, "Urdu_Pakistan.MS1256"},
    {0x0421, "Indonesian_Indonesia.MS1252"},
    {0x0422, "Ukrainian_Ukraine.MS1251"},
    {0x0423, "Byelorussian_Belarus.MS1251"},
    {0x0424, "Slovenian_Slovenia.MS1250"},
    {0x0425, "Estonian_Estonia.MS1257"},
    {0x0426, "Latvian_Latvia.MS1257"},
    {0x0427, "Lithuanian_Lithuania.MS1257"},
    {0x0428, "Maori"},
    {0x0429, "Farsi_Iran.MS1256"},
    {0x042A, "Vietnamese_VietNam.MS1258"},
    {0x042B, "Laotian"},
    {0x042C, "Kampuchean"},
    {0x042D, "Basque.MS1252"},
    {0x042E, "Sorbian_Germany"},
    {0x042F, "Macedonian_Macedonia.MS1251"},
    {0x0430, "Sutu"},
    {0x0431, "Tsonga"},
    {0x0432, "Tswana"},
    {0x0433, "Venda"},
    {0x0434, "Xhosa"},
    {0x0435, "Zulu"},
    {0x0436, "Afrikaans_SouthAfrica.MS1252"},
    {0x0438, "Faeroese.MS1250"},
    {0x0439, "Hindi_India"},
    {0x043A, "Maltese"},
    {0x043B, "Sami"},
    {0x043C, "ScotsGaelic"},
    {0x0801, "Arabic_Iraq.MS1256"},
    {0x0804, "SimplifiedChinese_China.MS936"},
    {0x0807, "German_German-Switzerland.MS1252"},
    {0x0809, "English_UnitedKingdom.MS1252"},
    {0x080A, "Spanish_Mexico.MS1252"},
    {0x080C, "French_French-Belgium.MS1252"},
    {0x0810, "Italian_Italian-Switzerland.MS1252"},
    {0x0812, "Korean_Korea.MS1361"},
    {0x0813, "Dutch_Dutch-Belgium.MS1252"},
    {0x0814, "Norwegian(Nynorsk)_Norway.MS1252"},
    {0x0816, "Portuguese_Portugal.MS1252"},
    {0x0818, "Romanian_Moldavia"},
    {0x0819, "Russian_Moldavia"},
    {0x081A, "Serbian_Yugoslavia.MS1250"},
    {0x0C01, "Arabic_Egypt.MS1256"},
    {0x0C04, "TraditionalChinese_HongKong.MS950"},
    {0x0C09, "English_Australia.MS1252"},
    {0x0C0A, "Spanish_Spain.MS1252@Spanish"},
    {0x0C0C, "CanadianFrench_French-Canada.MS1252"},
    {0x1001, "Arabic_Libya.MS1256"},
    {0x1004, "SimplifiedChinese_Singapore.MS936"},
    {0x1007, "German_Luxembourg.MS1252"},
    {0x1009, "English_Canada.MS1252"},
    {0x100A, "Spanish_Guatemala.MS1252"},
    {0x100C, "French_French-Switzerland.MS1252"},
    {0x1401, "Arabic_Algeria.MS1256"},
    {0x1409, "English_NewZealand.MS1252"},
    {0x140A, "Spanish_CostaRica.MS1252"},
    {0x140C, "French_Luxembourg.MS1252"},
    {0x1801, "Arabic_Morocco.MS1256"},
    {0x1809, "English_Ireland.MS1252"},
    {0x180A, "Spanish_Panama.MS1252"},
    {0x1C01, "Arabic_Tunisia.MS1256"},
    {0x1C09, "English_SouthAfrica.MS1252"},
    {0x1C0A, "Spanish_DominicanRepublic.MS1252"},
    {0x2001, "Arabic_Oman.MS1256"},
    {0x2009, "English_Jamaica.MS1252"},
    {0x200A, "Spanish_Venezuela.MS1252"},
    {0x2401, "Arabic_Yemen.MS1256"},
    {0x2409, "English_TheCarribean.MS1252"},
    {0x240A, "Spanish_Columbia.MS1252"},
    {0x2801, "Arabic_Syria.MS1256"},
    {0x280A, "Spanish_Peru.MS1252"},
    {0x2C01, "Arabic_Jordan.MS1256"},
    {0x2C0A, "Spanish_Argentina.MS1252"},
    {0x3001, "Arabic_Lebanon.MS1256"},
    {0x300A, "Spanish_Ecuador.MS1252"},
    {0x3401, "Arabic_Kuwait.MS1256"},
    {0x340A, "Spanish_Chile.MS1252"},
    {0x3801, "Arabic_UnitedArabEmirates.MS1256"},
    {0x380A, "Spanish_Uruguay.MS1252"},
    {0x3C01, "Arabic_Bahrain.MS1256"},
    {0x3C0A, "Spanish_Paraguay.MS1252"},
    {0x4001, "Arabic_Qatar.MS1256"},
    {0x400A, "Spanish_Boliva.MS1252"},
};
static_assert(std::size(kNativeRows) == 114);

struct MapRow {
    std::uint16_t language;
    std::uint16_t territory;
    std::uint16_t codePage;
    std::uint16_t sort;
    std::uint32_t nativeId;
};

inline constexpr MapRow kMapRows[] = {
    {1, 840, 1252, 1, 0x0409},   {1, 36, 1252, 1, 0x0C09},    {1, 124, 1252, 1, 0x1009},
    {1, 826, 1252, 1, 0x0809},   {1, 710, 1252, 1, 0x1C09},   {2, 276, 1252, 1, 0x0407},
    {2, 40, 1252, 1, 0x0C07},    {2, 756, 1252, 1, 0x0807},   {3, 250, 1252, 1, 0x040C},
    {3, 757, 1252, 1, 0x100C},   {3, 57, 1252, 1, 0x080C},    {4, 724, 1252, 2, 0x0C0A},
    {4, 724, 1252, 3, 0x040A},   {4, 32, 1252, 2, 0x2C0A},    {4, 152, 1252, 2, 0x340A},
    {4, 484, 1252, 2, 0x080A},   {5, 380, 1252, 1, 0x0410},   {5, 758, 1252, 1, 0x0810},
    {6, 620, 1252, 1, 0x0816},   {6, 76, 1252, 1, 0x0416},    {7, 578, 1252, 4, 0x0414},
    {8, 752, 1252, 5, 0x041D},   {9, 208, 1252, 4, 0x0406},   {10, 246, 1252, 6, 0x040B},
    {11, 392, 932, 0, 0x0411},   {12, 125, 1252, 1, 0x0C0C},  {13, 158, 950, 0, 0x0404},
    {14, 156, 936, 0, 0x0804},   {15, 8, 1250, 1, 0x041C},    {16, 682, 1256, 1, 0x0401},
    {17, 100, 1251, 1, 0x0402},  {18, 112, 1251, 1, 0x0423},  {19, 134, 1252, 1, 0x0403},
    {20, 191, 1250, 7, 0x041A},  {21, 203, 1250, 8, 0x0405},  {22, 528, 1252, 1, 0x0413},
    {22, 56, 1252, 1, 0x0813},   {23, 233, 1257, 9, 0x0425},  {24, 364, 1256, 1, 0x0429},
    {25, 300, 1253, 1, 0x0408},  {26, 376, 1255, 1, 0x040D},  {27, 348, 1250, 10, 0x040E},
    {28, 410, 949, 0, 0x0412},   {28, 410, 1361, 0, 0x0812},  {29, 428, 1257, 11, 0x0426},
    {30, 442, 1257, 12, 0x0427}, {31, 807, 1251, 1, 0x042F},  {32, 642, 1250, 13, 0x0418},
    {33, 643, 1251, 1, 0x0419},  {34, 891, 1250, 1, 0x081A},  {35, 891, 1251, 1, 0x0C1A},
    {36, 703, 1250, 14, 0x041B}, {37, 705, 1250, 15, 0x0424}, {38, 764, 874, 16, 0x041E},
    {39, 792, 1254, 17, 0x041F}, {40, 804, 1251, 18, 0x0422}, {41, 704, 1258, 19, 0x042A},
};
static_assert(std::size(kMapRows) == 57);

} // namespace vlx::test
