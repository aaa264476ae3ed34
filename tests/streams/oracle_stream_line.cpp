// Reading lines: each of the four members written out.
#include "streams/oracle_stream.hpp"

namespace vlx::oracle {

namespace {

constexpr std::uint32_t kTerminate = 8;
constexpr std::uint32_t kLf = 0x100;
constexpr std::uint32_t kCrLf = 0x200;
constexpr std::uint32_t kThird = 0x400;
constexpr std::uint32_t kFourth = 0x800;
constexpr std::uint32_t kCharCount = 0x4000;
constexpr std::uint32_t kStrip = 0x8000;
constexpr std::uint32_t kKnown = kTerminate | kLf | kCrLf | kThird | kFourth | kCharCount | kStrip;

template <class Unit>
void put(Line<Unit>& line, std::uint32_t unit)
{
    if (line.written == line.area.size())
        line.area.push_back(0);
    line.area[line.written++] = static_cast<Unit>(unit);
}

// The characters that end lines: those of the page, or the Unicode ones.
struct EndTest {
    explicit EndTest(std::uint32_t wanted) : options(wanted) {}
    EndTest(std::uint32_t wanted, const Page& page)
        : options(wanted), lineFeed(page.sections[0].at(1)), carriageReturn(page.sections[0].at(2)),
          third(page.sections[0].at(3)), fourth(page.sections[0].at(4))
    {
    }

    // How many characters end the line here; a character longer than a byte never does.
    int ending(std::uint32_t value)
    {
        const bool behindReturn = afterReturn;
        afterReturn = value == carriageReturn;
        if ((options & kCrLf) != 0 && value == lineFeed && behindReturn)
            return 2;
        if ((options & kLf) != 0 && value == lineFeed)
            return 1;
        if ((options & kThird) != 0 && value == third)
            return 1;
        if ((options & kFourth) != 0 && value == fourth)
            return 1;
        return 0;
    }

    std::uint32_t options;
    unsigned lineFeed = 0x000A;
    unsigned carriageReturn = 0x000D;
    unsigned third = 0x2028;
    unsigned fourth = 0x2029;
    bool afterReturn = false;
};

} // namespace

bool Stream::refuses(std::uint32_t options, std::int32_t& result)
{
    result = -2;
    error = 0;
    if (isWriter_)
        error = 60;
    else if ((options & ~kKnown) != 0)
        error = 2;
    return error != 0;
}

Line<unsigned char> Stream::readString(std::int32_t size, std::uint32_t options)
{
    Line<unsigned char> line;
    if (refuses(options, line.result) || size <= 0) {
        line.result = error != 0 ? -2 : 0;
        return line;
    }
    const bool counted = (options & kCharCount) != 0;
    EndTest ends(options, locale_.page);
    std::int32_t room = (options & kTerminate) != 0 ? size - 1 : size;
    std::int32_t characters = 0;
    const auto count = [&] {
        return counted ? characters : static_cast<std::int32_t>(line.written);
    };
    for (bool over = false; room > 0 && !over;) {
        const std::int32_t read = readCharW();
        if (read == -1) {
            if (line.written == 0) {
                line.result = error != 0 ? -2 : -1;
                return line;
            }
            if (error == 0)
                break;
            line.result = count();
            return line;
        }
        const Bytes bytes = putWide(static_cast<std::uint32_t>(read));
        const auto length = static_cast<std::int32_t>(bytes.size());
        if (!counted && length > room) {
            ungetCharW(static_cast<std::uint32_t>(read));
            break;
        }
        for (const unsigned char byte : bytes)
            put(line, byte);
        characters += 1;
        room -= counted ? 1 : length;
        const int taken = ends.ending(static_cast<std::uint32_t>(read));
        over = taken > 0;
        if ((options & kStrip) != 0) {
            line.written -= static_cast<std::size_t>(taken);
            characters -= taken;
        }
    }
    if ((options & kTerminate) != 0) {
        put(line, 0);
        characters += 1;
    }
    line.result = count();
    return line;
}

Line<unsigned char> Stream::readStringEx(std::int32_t state, std::int32_t size,
                                         std::uint32_t options)
{
    if (!locale_.stateful)
        return readString(size, options);
    Line<unsigned char> line;
    if (refuses(options, line.result) || size <= 0) {
        line.result = error != 0 ? -2 : 0;
        return line;
    }
    const bool counted = (options & kCharCount) != 0;
    EndTest ends(options, locale_.page);
    const auto longest = static_cast<std::int32_t>(maxCharBytes(locale_.page));
    std::int32_t room = (options & kTerminate) != 0 ? size - 1 : size;
    std::int32_t characters = 0;
    std::uint32_t last = 0;
    const auto count = [&] {
        return counted ? characters : static_cast<std::int32_t>(line.written);
    };
    for (bool over = false; room > 0 && !over;) {
        const std::int32_t read = readCharW();
        if (read == -1) {
            if (line.written == 0) {
                line.result = error != 0 ? -2 : -1;
                return line;
            }
            if (error == 0)
                break;
            line.result = count();
            return line;
        }
        const Bytes bytes = putWide(static_cast<std::uint32_t>(read));
        std::optional<unsigned> shift;
        if (bytes.size() == 1 && state == 1)
            shift = shiftOut(locale_.page);
        if (bytes.size() > 1 && state == 0)
            shift = shiftIn(locale_.page);
        const std::int32_t length = static_cast<std::int32_t>(bytes.size()) + (shift ? 1 : 0);
        if (!counted && length > room) {
            ungetCharW(static_cast<std::uint32_t>(read));
            break;
        }
        if (shift) {
            put(line, *shift);
            state = bytes.size() > 1 ? 1 : 0;
        }
        for (const unsigned char byte : bytes)
            put(line, byte);
        last = static_cast<std::uint32_t>(read);
        characters += 1;
        room -= counted ? 1 : length;
        const int taken = ends.ending(static_cast<std::uint32_t>(read));
        over = taken > 0;
        if ((options & kStrip) != 0) {
            line.written -= static_cast<std::size_t>(taken);
            characters -= taken;
        }
    }
    if ((options & kTerminate) != 0) {
        if (state == 1) {
            if (!counted && room == 0) {
                if (static_cast<std::int32_t>(line.written) < longest) {
                    line.result = count();
                    return line;
                }
                line.written -= putWide(last).size();
                ungetCharW(last);
            }
            if (line.written > 0 && line.area[line.written - 1] == shiftIn(locale_.page))
                line.written -= 1;
            else
                put(line, shiftOut(locale_.page));
        }
        put(line, 0);
        characters += 1;
    }
    line.result = count();
    return line;
}

Line<std::uint16_t> Stream::readStringU(std::int32_t size, std::uint32_t options)
{
    Line<std::uint16_t> line;
    if (refuses(options, line.result) || size <= 0) {
        line.result = error != 0 ? -2 : 0;
        return line;
    }
    EndTest ends(options);
    std::int32_t room = (options & kTerminate) != 0 ? size - 1 : size;
    for (bool over = false; room > 0 && !over; --room) {
        const std::uint16_t value = readCharU();
        if (value == 0xFFFF) {
            line.result = static_cast<std::int32_t>(line.written);
            if (line.written == 0)
                line.result = error != 0 ? -2 : -1;
            if (line.written == 0 || error != 0)
                return line;
            break;
        }
        put(line, value);
        const int taken = ends.ending(value);
        over = taken > 0;
        if ((options & kStrip) != 0)
            line.written -= static_cast<std::size_t>(taken);
    }
    if ((options & kTerminate) != 0)
        put(line, 0);
    line.result = static_cast<std::int32_t>(line.written);
    return line;
}

Line<std::uint32_t> Stream::readStringW(std::int32_t size, std::uint32_t options)
{
    Line<std::uint32_t> line;
    if (refuses(options, line.result) || size <= 0) {
        line.result = error != 0 ? -2 : 0;
        return line;
    }
    // Deliberate: carriage return and line feed end a line only where they are taken away.
    EndTest ends((options & kStrip) != 0 ? options : options & ~kCrLf, locale_.page);
    std::int32_t room = (options & kTerminate) != 0 ? size - 1 : size;
    for (bool over = false; room > 0 && !over; --room) {
        const std::int32_t read = readCharW();
        if (read == -1) {
            line.result = static_cast<std::int32_t>(line.written);
            if (line.written == 0)
                line.result = error != 0 ? -2 : -1;
            if (line.written == 0 || error != 0)
                return line;
            break;
        }
        const auto value = static_cast<std::uint32_t>(read);
        put(line, value);
        const int taken = ends.ending(value);
        over = taken > 0;
        if ((options & kStrip) != 0)
            line.written -= static_cast<std::size_t>(taken);
    }
    if ((options & kTerminate) != 0)
        put(line, 0);
    line.result = static_cast<std::int32_t>(line.written);
    return line;
}

} // namespace vlx::oracle
