#include "text/token.hpp"

namespace vlx {

namespace {

// Sets the values of consecutive codes.
constexpr void setRun(DigitTable& table, unsigned first, unsigned last, int value)
{
    for (unsigned byte = first; byte <= last; ++byte)
        table.values[byte] = static_cast<std::int8_t>(value++);
}

constexpr DigitTable emptyTable()
{
    DigitTable table{};
    for (std::int8_t& value : table.values)
        value = -1;
    return table;
}

constexpr DigitTable asciiTable()
{
    DigitTable table = emptyTable();
    setRun(table, 0x30, 0x39, 0);
    setRun(table, 0x41, 0x5A, 10);
    setRun(table, 0x61, 0x7A, 10);
    return table;
}

constexpr DigitTable capitalsTable()
{
    DigitTable table = emptyTable();
    setRun(table, 0xF0, 0xF9, 0);
    setRun(table, 0xC1, 0xC9, 10);
    setRun(table, 0xD1, 0xD9, 19);
    setRun(table, 0xE2, 0xE9, 28);
    return table;
}

constexpr DigitTable ebcdicTable()
{
    DigitTable table = capitalsTable();
    setRun(table, 0x81, 0x89, 10);
    setRun(table, 0x91, 0x99, 19);
    setRun(table, 0xA2, 0xA9, 28);
    return table;
}

constexpr DigitTable ebcdicTable930()
{
    DigitTable table = capitalsTable();
    setRun(table, 0x62, 0x69, 10);
    setRun(table, 0x71, 0x78, 18);
    setRun(table, 0x8B, 0x8B, 26);
    setRun(table, 0x9B, 0x9B, 27);
    setRun(table, 0xAB, 0xAB, 28);
    setRun(table, 0xB3, 0xB9, 29);
    return table;
}

} // namespace

constexpr DigitTable kAsciiDigits = asciiTable();
constexpr DigitTable kEbcdicDigits = ebcdicTable();
constexpr DigitTable kEbcdicDigits930 = ebcdicTable930();

} // namespace vlx
