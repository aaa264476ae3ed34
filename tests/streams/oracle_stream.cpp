// Single characters: reading, pushing back, writing.
#include "streams/oracle_stream.hpp"

#include <algorithm>
#include <bit>

namespace vlx::oracle {

namespace {

// A 16-bit value as the machine keeps it.
Bytes twoBytes(std::uint16_t value)
{
    const auto low = static_cast<unsigned char>(value & 0xFF);
    const auto high = static_cast<unsigned char>(value >> 8);
    return std::endian::native == std::endian::little ? Bytes{low, high} : Bytes{high, low};
}

std::uint16_t fromTwoBytes(unsigned first, unsigned second)
{
    return static_cast<std::uint16_t>(
        std::endian::native == std::endian::little ? first | second << 8 : first << 8 | second);
}

Bytes bytesAt(Span text, std::size_t count)
{
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes.push_back(static_cast<unsigned char>(text.at(static_cast<std::ptrdiff_t>(i))));
    return bytes;
}

} // namespace

std::int32_t Stream::fail(std::int32_t code, std::int32_t result)
{
    error = code;
    return result;
}

bool Stream::isShiftByte(unsigned byte) const
{
    return byte == shiftIn(locale_.page) || byte == shiftOut(locale_.page);
}

std::int32_t Stream::readCharW()
{
    error = 0;
    if (isWriter_)
        return fail(60, -1);
    return held.empty() ? readNew() : readHeld();
}

std::int32_t Stream::readNew()
{
    unsigned char byte = 0;
    const std::int32_t result = device_.give(&byte, 1);
    if (result == -1)
        return -1;
    if (result != 1)
        return fail(64, -1);
    Bytes character{byte};
    std::size_t wanted = 1;
    if (locale_.stateful && byte == shiftOut(locale_.page)) {
        shiftState = 0;
        character.clear();
    } else if (locale_.stateful && byte == shiftIn(locale_.page)) {
        shiftState = 1;
        character.clear();
        wanted = maxCharBytes(locale_.page);
    } else if (locale_.stateful) {
        wanted = shiftState == 1 ? maxCharBytes(locale_.page) : 1;
    } else {
        wanted = charLength(locale_.page, byte);
    }
    while (character.size() < wanted) {
        unsigned char more[4];
        const auto rest = static_cast<std::int32_t>(wanted - character.size());
        const std::int32_t done = device_.give(more, rest);
        if (done < 0 || done > rest)
            return stopInside(character, done);
        character.insert(character.end(), more, more + done);
    }
    return static_cast<std::int32_t>(locale_.stateful
                                         ? getWideEx(locale_.page, Span(character), shiftState)
                                         : getWide(locale_.page, Span(character)));
}

// The read ended or failed before the character was whole. A shift byte that the character's first
// byte was to overwrite stands at the stop if no byte of the character came.
std::int32_t Stream::stopInside(const Bytes& character, std::int32_t result)
{
    const bool behindShift = locale_.stateful && character.empty();
    held = character;
    bufferState = character.empty() ? 0 : shiftState;
    if (result > 0)
        return fail(64, -1);
    if (result != -1)
        return fail(behindShift ? 64 : 63, -1);
    if (behindShift && shiftState == 0)
        return -1;
    return fail(61, -1);
}

std::int32_t Stream::readHeld()
{
    std::size_t length = charLength(locale_.page, held[0]);
    if (locale_.stateful)
        length = bufferState == 1 ? maxCharBytes(locale_.page) : 1;
    while (held.size() < length) {
        unsigned char more[4];
        const auto rest = static_cast<std::int32_t>(length - held.size());
        const std::int32_t done = device_.give(more, rest);
        if (done > rest)
            return fail(64, -1);
        if (done < 0)
            return fail(done == -1 ? 61 : 63, -1);
        held.insert(held.end(), more, more + done);
    }
    const std::uint32_t value = locale_.stateful ? getWideEx(locale_.page, Span(held), bufferState)
                                                 : getWide(locale_.page, Span(held));
    held.erase(held.begin(), held.begin() + static_cast<std::ptrdiff_t>(length));
    if (locale_.stateful && !held.empty() && isShiftByte(held[0])) {
        bufferState = held[0] == shiftOut(locale_.page) ? 0 : 1;
        held.erase(held.begin());
    }
    return static_cast<std::int32_t>(value);
}

std::uint16_t Stream::readCharU()
{
    error = 0;
    const auto none = [this](std::int32_t code) {
        error = code;
        return std::uint16_t{0xFFFF};
    };
    if (isWriter_)
        return none(60);
    unsigned char bytes[2];
    if (held.size() == 1) {
        const std::int32_t done = device_.give(bytes, 1);
        if (done != 1)
            return none(done > 1 ? 64 : done == -1 ? 61 : 63);
        held.push_back(bytes[0]);
    }
    if (!held.empty()) {
        const std::uint16_t value = fromTwoBytes(held[0], held[1]);
        held.erase(held.begin(), held.begin() + 2);
        return value;
    }
    switch (device_.give(bytes, 2)) {
    case -1:
        return 0xFFFF;
    case 1:
        held.push_back(bytes[0]);
        return none(63);
    case 2:
        return fromTwoBytes(bytes[0], bytes[1]);
    default:
        return none(64);
    }
}

std::int32_t Stream::pushBack(const Bytes& bytes)
{
    if (held.size() + bytes.size() >= 81)
        return fail(40, 0);
    held.insert(held.begin(), bytes.begin(), bytes.end());
    error = 0;
    return 1;
}

std::int32_t Stream::pushBackInState(const Bytes& character)
{
    Bytes bytes = character;
    if (!held.empty() && character.size() == 1 && bufferState == 1)
        bytes.push_back(static_cast<unsigned char>(shiftIn(locale_.page)));
    else if (!held.empty() && character.size() > 1 && bufferState == 0)
        bytes.push_back(static_cast<unsigned char>(shiftOut(locale_.page)));
    const std::int32_t result = pushBack(bytes);
    if (result == 1)
        bufferState = character.size() > 1 ? 1 : 0;
    return result;
}

std::int32_t Stream::ungetChar(Span character)
{
    if (isWriter_)
        return fail(60, 0);
    return pushBack(bytesAt(character, charLength(locale_.page, character.at(0))));
}

std::int32_t Stream::ungetCharEx(Span character, std::int32_t state)
{
    if (!locale_.stateful)
        return ungetChar(character);
    if (isWriter_)
        return fail(60, 0);
    if (character.at(0) == shiftOut(locale_.page)) {
        state = 0;
        character = character.from(1);
    } else if (character.at(0) == shiftIn(locale_.page)) {
        state = 1;
        character = character.from(1);
    }
    return pushBackInState(bytesAt(character, state == 1 ? maxCharBytes(locale_.page) : 1));
}

std::int32_t Stream::ungetCharU(std::uint16_t value)
{
    return isWriter_ ? fail(60, 0) : pushBack(twoBytes(value));
}

std::int32_t Stream::ungetCharW(std::uint32_t value)
{
    if (isWriter_)
        return fail(60, 0);
    return locale_.stateful ? pushBackInState(putWide(value)) : pushBack(putWide(value));
}

// While bytes are held, offers them; false if the write failed.
bool Stream::writeHeld()
{
    while (!held.empty()) {
        const auto size = static_cast<std::int32_t>(held.size());
        const std::int32_t done = device_.take(held.data(), size);
        if (done < 0)
            return false;
        held.erase(held.begin(), held.begin() + std::min(done, size));
    }
    return true;
}

std::int32_t Stream::keep(const Bytes& bytes)
{
    if (held.size() + bytes.size() >= 81)
        return fail(40, 0);
    held.insert(held.end(), bytes.begin(), bytes.end());
    return fail(65, 0);
}

std::int32_t Stream::writePlain(const Bytes& character)
{
    Bytes left = character;
    if (!writeHeld())
        return keep(left);
    while (!left.empty()) {
        const auto size = static_cast<std::int32_t>(left.size());
        const std::int32_t done = device_.take(left.data(), size);
        if (done < 0)
            return keep(left);
        left.erase(left.begin(), left.begin() + std::min(done, size));
    }
    error = 0;
    return 1;
}

std::int32_t Stream::writeChar(Span character)
{
    if (!isWriter_)
        return fail(60, 0);
    return writePlain(bytesAt(character, charLength(locale_.page, character.at(0))));
}

std::int32_t Stream::writeCharEx(Span character, std::int32_t state)
{
    if (!locale_.stateful)
        return writeChar(character);
    if (!isWriter_)
        return fail(60, 0);
    const Bytes bytes = bytesAt(character, state == 1 ? maxCharBytes(locale_.page) : 1);
    Bytes due;
    if (shiftState != state)
        due.push_back(static_cast<unsigned char>(state == 1 ? shiftIn(locale_.page)
                                                            : shiftOut(locale_.page)));
    const bool drained = writeHeld();
    while (drained && !due.empty()) {
        const std::int32_t done = device_.take(due.data(), 1);
        if (done < 0)
            break;
        if (done > 0) {
            due.clear();
            shiftState = state;
        }
    }
    if (drained && due.empty())
        return writePlain(bytes);
    due.insert(due.end(), bytes.begin(), bytes.end());
    keep(due);
    if (error == 65) // nothing moves where nothing is held
        shiftState = state;
    return 0;
}

std::int32_t Stream::writeCharU(std::uint16_t value)
{
    return isWriter_ ? writePlain(twoBytes(value)) : fail(60, 0);
}

std::int32_t Stream::writeCharW(std::uint32_t value)
{
    Bytes bytes = putWide(value);
    const std::int32_t state = bytes.size() > 1 ? 1 : 0;
    bytes.resize(4); // what a state or a first byte asks for more are zeros
    return locale_.stateful ? writeCharEx(Span(bytes), state) : writeChar(Span(bytes));
}

std::int32_t Stream::flush()
{
    error = 0;
    const bool worked = !isWriter_ || writeHeld();
    held.clear();
    return worked ? 1 : fail(62, 0);
}

std::int32_t Stream::close()
{
    error = 0;
    if (isWriter_ && (held.empty() || flush() == 1) && locale_.stateful && shiftState == 1) {
        const auto shift = static_cast<unsigned char>(shiftOut(locale_.page));
        device_.take(&shift, 1);
    }
    return error == 0 ? 1 : 0;
}

} // namespace vlx::oracle
