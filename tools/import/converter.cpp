#include "converter.hpp"

#include <cerrno>
#include <iconv.h>
#include <optional>
#include <unicode/ucnv.h>
#include <vector>

namespace vlx::import {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr char kShiftIn = 0x0E;
constexpr char kShiftOut = 0x0F;

// One character at a time, in both directions; nothing where there is no exact counterpart.
class Converter {
  public:
    virtual ~Converter() = default;
    virtual std::optional<std::uint16_t> decode(const std::string& bytes) = 0;
    virtual std::optional<std::string> encode(std::uint16_t value) = 0;
};

class IcuConverter : public Converter {
  public:
    explicit IcuConverter(const char* name)
    {
        UErrorCode code = U_ZERO_ERROR;
        converter_ = ucnv_open(name, &code);
        ucnv_setToUCallBack(converter_, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &code);
        ucnv_setFromUCallBack(converter_, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                              &code);
        good_ = U_SUCCESS(code);
        if (good_)
            ucnv_setFallback(converter_, false);
    }
    ~IcuConverter() override { ucnv_close(converter_); }
    IcuConverter(const IcuConverter&) = delete;
    IcuConverter& operator=(const IcuConverter&) = delete;

    bool good() const { return good_; }

    std::optional<std::uint16_t> decode(const std::string& bytes) override
    {
        UErrorCode code = U_ZERO_ERROR;
        UChar units[16];
        const int32_t count = ucnv_toUChars(converter_, units, 16, bytes.data(),
                                            static_cast<int32_t>(bytes.size()), &code);
        if (U_FAILURE(code) || count != 1)
            return std::nullopt;
        return units[0];
    }

    // An empty result is a character that the converter leaves out without a word.
    std::optional<std::string> encode(std::uint16_t value) override
    {
        UErrorCode code = U_ZERO_ERROR;
        const UChar unit = value;
        char bytes[16];
        const int32_t count = ucnv_fromUChars(converter_, bytes, 16, &unit, 1, &code);
        if (U_FAILURE(code) || count <= 0)
            return std::nullopt;
        return std::string(bytes, static_cast<std::size_t>(count));
    }

  private:
    UConverter* converter_ = nullptr;
    bool good_ = false;
};

class IconvConverter : public Converter {
  public:
    explicit IconvConverter(const char* name)
        : decoder_(iconv_open("UTF-16LE", name)), encoder_(iconv_open(name, "UTF-16LE"))
    {
    }
    ~IconvConverter() override
    {
        for (const iconv_t one : {decoder_, encoder_})
            if (one != iconv_t(-1))
                iconv_close(one);
    }
    IconvConverter(const IconvConverter&) = delete;
    IconvConverter& operator=(const IconvConverter&) = delete;

    bool good() const { return decoder_ != iconv_t(-1) && encoder_ != iconv_t(-1); }

    std::optional<std::uint16_t> decode(const std::string& bytes) override
    {
        const auto units = run(decoder_, bytes);
        if (!units || units->size() != 2)
            return std::nullopt;
        const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>((*units)[i]); };
        return static_cast<std::uint16_t>(byte(0) | byte(1) << 8);
    }

    std::optional<std::string> encode(std::uint16_t value) override
    {
        const auto bytes =
            run(encoder_, {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)});
        return bytes && !bytes->empty() ? bytes : std::nullopt;
    }

  private:
    // Everything, with the return to the initial state; a count above 0 tells of inexact steps.
    static std::optional<std::string> run(iconv_t converter, std::string in)
    {
        char out[32];
        char* from = in.data();
        char* to = out;
        std::size_t left = in.size();
        std::size_t room = sizeof out;
        iconv(converter, nullptr, nullptr, nullptr, nullptr);
        if (iconv(converter, &from, &left, &to, &room) != 0 || left != 0 ||
            iconv(converter, nullptr, nullptr, &to, &room) != 0)
            return std::nullopt;
        return std::string(out, static_cast<std::size_t>(to - out));
    }

    iconv_t decoder_;
    iconv_t encoder_;
};

std::string bytesOf(std::uint32_t character, int length, bool stateful)
{
    std::string bytes;
    for (int i = length - 1; i >= 0; --i)
        bytes += static_cast<char>(character >> 8 * i);
    return stateful && length > 1 ? kShiftIn + bytes + kShiftOut : bytes;
}

std::uint32_t packed(std::string bytes, bool stateful)
{
    if (stateful && bytes.front() == kShiftIn)
        bytes = bytes.substr(1, bytes.size() - (bytes.back() == kShiftOut ? 2 : 1));
    std::uint32_t character = 0;
    for (const char byte : bytes)
        character = character << 8 | static_cast<std::uint8_t>(byte);
    return character;
}

bool holdsShiftByte(std::uint32_t character)
{
    for (; character != 0; character >>= 8)
        if ((character & 0xFF) == kShiftIn || (character & 0xFF) == kShiftOut)
            return true;
    return false;
}

void decodeAll(Converter& converter, int maxBytes, bool stateful, ConverterTables& tables)
{
    const auto take = [&](std::uint32_t character, int length) {
        if (stateful && holdsShiftByte(character))
            return;
        const auto value = converter.decode(bytesOf(character, length, stateful));
        if (value && *value != kReplacement)
            tables.decode.emplace(character, *value);
    };
    for (std::uint32_t byte = 0; byte < 0x100; ++byte)
        take(byte, 1);
    const std::uint32_t limit = maxBytes == 1 ? 0x100 : 0x10000;
    for (std::uint32_t character = 0x100; character < limit; ++character)
        if ((character & 0xFF) != 0 && (stateful || !tables.decode.contains(character >> 8)))
            take(character, 2);
}

void encodeAll(Converter& converter, bool stateful, ConverterTables& tables)
{
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
        const auto unit = static_cast<std::uint16_t>(value);
        const auto bytes = surrogate ? std::nullopt : converter.encode(unit);
        if (bytes && value != kReplacement)
            tables.encode.emplace(unit, packed(*bytes, stateful));
    }
}

template <class Kind>
bool readWith(const char* name, int maxBytes, bool stateful, ConverterTables& tables)
{
    Kind converter(name);
    if (!converter.good())
        return false;
    decodeAll(converter, maxBytes, stateful, tables);
    encodeAll(converter, stateful, tables);
    return true;
}

} // namespace

bool readIcu(const char* name, int maxBytes, bool stateful, ConverterTables& tables)
{
    return readWith<IcuConverter>(name, maxBytes, stateful, tables);
}

bool readIconv(const char* name, int maxBytes, bool stateful, ConverterTables& tables)
{
    return readWith<IconvConverter>(name, maxBytes, stateful, tables);
}

} // namespace vlx::import
