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

// What bytes are: the 16-bit units of a character, nothing, or the beginning of something longer.
struct Decoded {
    std::u16string units;
    bool cutOff = false;
};

// One character at a time, in both directions; nothing where there is no exact counterpart.
class Converter {
  public:
    virtual ~Converter() = default;
    virtual Decoded decode(const std::string& bytes) = 0;
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

    Decoded decode(const std::string& bytes) override
    {
        UErrorCode code = U_ZERO_ERROR;
        UChar units[16];
        const int32_t count = ucnv_toUChars(converter_, units, 16, bytes.data(),
                                            static_cast<int32_t>(bytes.size()), &code);
        if (U_FAILURE(code))
            return {{}, code == U_TRUNCATED_CHAR_FOUND};
        return {std::u16string(units, static_cast<std::size_t>(count))};
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

    Decoded decode(const std::string& bytes) override
    {
        const auto units = run(decoder_, bytes);
        if (!units)
            return {{}, errno == EINVAL};
        Decoded decoded;
        for (std::size_t i = 0; i + 1 < units->size(); i += 2)
            decoded.units += static_cast<char16_t>(static_cast<std::uint8_t>((*units)[i]) |
                                                   static_cast<std::uint8_t>((*units)[i + 1]) << 8);
        return decoded;
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
        errno = 0;
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

// Every byte sequence of a converter; what is cut off is followed by one byte more.
class Decoder {
  public:
    Decoder(Converter& converter, ConverterTables& tables) : converter_(converter), tables_(tables)
    {
    }

    void follow(std::uint32_t prefix, int length, int maxBytes)
    {
        for (std::uint32_t byte = length == 1 ? 0 : 1; byte < 0x100; ++byte) {
            const std::uint32_t character = prefix << 8 | byte;
            if (take(character, length, false) && length < maxBytes)
                follow(character, length + 1, maxBytes);
        }
    }

    void tryBothStates()
    {
        for (std::uint32_t character = 0; character < 0x10000; ++character)
            if (!holdsShiftByte(character) && (character < 0x100 || (character & 0xFF) != 0))
                take(character, character < 0x100 ? 1 : 2, true);
    }

  private:
    // True if the character is cut off.
    bool take(std::uint32_t character, int length, bool stateful)
    {
        const Decoded decoded = converter_.decode(bytesOf(character, length, stateful));
        if (decoded.units.size() == 1 && decoded.units[0] != kReplacement)
            tables_.decode.emplace(character, static_cast<std::uint16_t>(decoded.units[0]));
        else if (decoded.units.size() > 1)
            tables_.impossible.emplace(character, decoded.units);
        return decoded.cutOff;
    }

    Converter& converter_;
    ConverterTables& tables_;
};

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
    Decoder decoder(converter, tables);
    if (stateful)
        decoder.tryBothStates();
    else
        decoder.follow(0, 1, maxBytes);
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
