#include "facade/oracle_translate.hpp"

#include <algorithm>
#include <cstring>

#include "support/oracle_strings.hpp"

namespace vlx::oracle {

namespace {

// 0: 16-bit; 1: single-byte; 2: more bytes.
int kindOf(Side side)
{
    if (!side)
        return 0;
    return maxCharBytes(*side) == 1 ? 1 : 2;
}

unsigned unit(Span input, std::ptrdiff_t at)
{
    unsigned char bytes[2] = {static_cast<unsigned char>(input.at(at)),
                              static_cast<unsigned char>(input.at(at + 1))};
    std::uint16_t value;
    std::memcpy(&value, bytes, 2);
    return value;
}

void store(Bytes& output, std::ptrdiff_t at, unsigned byte)
{
    output.at(static_cast<std::size_t>(at)) = static_cast<unsigned char>(byte);
}

void storeUnit(Bytes& output, std::ptrdiff_t at, unsigned value)
{
    const auto narrow = static_cast<std::uint16_t>(value);
    unsigned char bytes[2];
    std::memcpy(bytes, &narrow, 2);
    store(output, at, bytes[0]);
    store(output, at + 1, bytes[1]);
}

// The call after its options are known.
struct Call {
    Side target;
    Bytes& output;
    std::int32_t size; // falls by the room of a terminator
    Side source;
    Span input;
    std::int32_t length; // in bytes
    bool characters;
    bool blanksMayGo;

    std::int32_t written = 0;
    std::int32_t count = 0;
    std::int32_t consumed = 0;
    int sourceState = 0;
    int targetState = 0;
    std::uint32_t error = 0;

    bool sourceShifts() const { return source && kindOf(source) == 2 && isStateful(*source); }
    bool targetShifts() const { return target && kindOf(target) == 2 && isStateful(*target); }

    void truncationTest()
    {
        if (!blanksMayGo) {
            error = 40;
            return;
        }
        std::int32_t at = consumed;
        if (!source) {
            while (at < length && unit(input, at) == 0x20)
                at += 2;
        } else {
            const unsigned blank = unicodeToMb(*source, 0x20)[0];
            while (at < length && input.at(at) == blank &&
                   (kindOf(source) == 1 || charLength(*source, input.at(at)) == 1) &&
                   (!sourceShifts() || sourceState == 0))
                ++at;
        }
        if (at < length)
            error = 40;
    }

    // The next character of the input: its value, and its step in bytes; 0 at the end.
    std::int32_t read(unsigned& value)
    {
        if (!source) {
            if (consumed + 2 > length)
                return 0;
            value = unit(input, consumed);
            return 2;
        }
        if (sourceShifts())
            for (; consumed < length; ++consumed) {
                if (input.at(consumed) == shiftIn(*source))
                    sourceState = 1;
                else if (input.at(consumed) == shiftOut(*source))
                    sourceState = 0;
                else
                    break;
            }
        if (consumed >= length)
            return 0;
        std::int32_t step = 1;
        if (sourceShifts())
            step = sourceState == 1 ? static_cast<std::int32_t>(maxCharBytes(*source)) : 1;
        else if (kindOf(source) == 2)
            step = static_cast<std::int32_t>(charLength(*source, input.at(consumed)));
        if (consumed + step > length)
            return 0;
        value = step == 1 ? toUnicode(*source, input.at(consumed))
                          : mbToUnicode(*source, input.from(consumed));
        return step;
    }

    void byCharacters()
    {
        unsigned value = 0;
        while (const std::int32_t step = read(value)) {
            const Bytes bytes = unicodeToMb(*target, static_cast<std::uint16_t>(value));
            const auto result = static_cast<std::int32_t>(bytes.size());
            ++count;
            const bool shiftDue = targetShifts() && ((result == 1 && targetState == 1) ||
                                                     (result >= 2 && targetState == 0));
            const bool fits =
                characters ? count <= size : written + result + (shiftDue ? 1 : 0) <= size;
            if (!fits) {
                truncationTest();
                return;
            }
            if (shiftDue) {
                store(output, written++, result == 1 ? shiftOut(*target) : shiftIn(*target));
                targetState = result == 1 ? 0 : 1;
            }
            for (const unsigned char byte : bytes)
                store(output, written++, byte);
            consumed += step;
        }
    }

    // From more bytes to elements or single bytes: the test comes after the store.
    void byElements()
    {
        unsigned value = 0;
        while (const std::int32_t step = read(value)) {
            if (!target)
                storeUnit(output, 2 * count, value);
            else
                store(output, count, unicodeToMb(*target, static_cast<std::uint16_t>(value))[0]);
            ++count;
            if (count > size) {
                truncationTest();
                return;
            }
            written += target ? 1 : 2;
            consumed += step;
        }
    }

    void copyRaw()
    {
        for (; consumed < length; ++consumed)
            store(output, consumed, input.at(consumed));
        written = length;
        count = length / 2;
    }

    void rawToSingle()
    {
        count = std::min(size, length) / 2;
        for (std::int32_t i = 0; i < count; ++i)
            store(output, i,
                  unicodeToMb(*target, static_cast<std::uint16_t>(unit(input, 2 * i)))[0]);
        written = count;
        consumed = 2 * count;
        if (size < length)
            truncationTest();
    }

    void singleToRaw()
    {
        count = characters ? std::min(size, length) : std::min(size / 2, length);
        for (std::int32_t i = 0; i < count; ++i)
            storeUnit(output, 2 * i, toUnicode(*source, input.at(i)));
        written = 2 * count;
        consumed = count;
        if (count < length)
            truncationTest();
    }

    void singleToSingle()
    {
        count = std::min(size, length);
        for (std::int32_t i = 0; i < count; ++i)
            store(output, i,
                  unicodeToMb(*target,
                              static_cast<std::uint16_t>(toUnicode(*source, input.at(i))))[0]);
        written = consumed = count;
        if (count < length)
            truncationTest();
    }

    void run()
    {
        switch (10 * kindOf(source) + kindOf(target)) {
        case 0:
            return copyRaw();
        case 1:
            return rawToSingle();
        case 10:
            return singleToRaw();
        case 11:
            return singleToSingle();
        case 20:
        case 21:
            return byElements();
        default:
            return byCharacters();
        }
    }

    void close(bool pad, bool terminate, bool automatic)
    {
        if (targetShifts() && targetState == 1) {
            if (written >= size) {
                written -= static_cast<std::int32_t>(maxCharBytes(*target));
                --count;
            }
            store(output, written++, shiftOut(*target));
        }
        if (pad && count < size) {
            if (!target) {
                for (; count < size; ++count)
                    storeUnit(output, 2 * count, 0x20);
                written = size;
            } else {
                const unsigned blank = unicodeToMb(*target, 0x20)[0];
                for (; written < size; ++count)
                    store(output, written++, blank);
            }
        }
        std::int32_t bytes = size;
        if (characters) {
            if (count > size)
                --count;
            // Characters that were never written count as one byte each.
            bytes = target ? static_cast<std::int32_t>(
                                 charsToBytesWithin(*target, Span(output), 0, size, written))
                           : 2 * size;
        }
        const std::int32_t end = target ? 1 : 2;
        if (terminate || (automatic && consumed == length && written + end <= bytes)) {
            for (std::int32_t i = 0; i < end; ++i)
                store(output, written++, 0);
            ++count;
        }
    }
};

std::int32_t terminatedLength(Side source, Span input)
{
    std::int32_t length = 0;
    if (source)
        while (input.at(length) != 0)
            ++length;
    else
        while (unit(input, length) != 0)
            length += 2;
    return length;
}

} // namespace

Translated translate(Side target, Bytes& output, std::int32_t size, Side source, Span input,
                     std::int32_t length, std::uint32_t options)
{
    const bool blanksMayGo = (options & 0x800000) != 0;
    const bool pad = (options & 0x400000) != 0;
    options &= ~0xC00000u;
    const bool characters = (options & 0x4000) != 0;
    if (characters && length > 0)
        length = source ? charsToBytes(*source, input, 0, length) : 2 * length;
    options &= ~0x4000u;
    if (options != 0 && options != 8)
        return {characters ? 0 : -1, 0, 2};
    const bool terminate = options == 8;
    if (length == 0 || size == 0) {
        const bool writes = terminate && size != 0;
        if (writes)
            store(output, 0, 0);
        return {writes ? 1 : 0, writes && characters ? 1 : 0, 0};
    }
    if (!target && size < 2)
        return {-1, -1, 40}; // the second is not stored
    const bool automatic = length < 0;
    if (automatic)
        length = terminatedLength(source, input);
    if (!source)
        length -= length % 2;
    if (terminate)
        size -= characters || target ? 1 : 2;
    Call call{target, output, size, source, input, length, characters, blanksMayGo};
    call.run();
    call.close(pad, terminate, automatic);
    return {characters ? call.count : call.written, characters ? call.count : call.consumed,
            call.error};
}

} // namespace vlx::oracle
