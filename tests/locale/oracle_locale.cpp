#include "locale/oracle_locale.hpp"

#include <iomanip>
#include <string>

namespace vlx::oracle {

namespace {

constexpr int kNotFound = 37;
constexpr std::uint32_t kFallback = 4;

unsigned wordAt(Span bytes, unsigned word)
{
    const auto offset = static_cast<std::ptrdiff_t>(2 * word);
    return bytes.at(offset) | bytes.at(offset + 1) << 8;
}

Span section1(const test::ListedObject& object)
{
    return Span(object.sections[0].data(), object.sections[0].size());
}

unsigned lowerCase(unsigned byte)
{
    return byte >= 'A' && byte <= 'Z' ? byte + 32 : byte;
}

// Where a type begins in the table; type 4 begins behind the last object.
int firstOf(const Objects& objects, int type)
{
    int index = 0;
    while (index < static_cast<int>(objects.size()) &&
           objects[static_cast<std::size_t>(index)].type < type)
        ++index;
    return index;
}

// Compares the first `length` values of a name by their low bytes with an object's name, which has
// a terminator.
bool sameName(const std::string& own, const Values32& part)
{
    if (own.size() != part.size() && own.size() + 1 != part.size())
        return false;
    for (std::size_t i = 0; i < part.size(); ++i) {
        const unsigned left = i < own.size() ? static_cast<unsigned char>(own[i]) : 0;
        if (lowerCase(left) != lowerCase(part[i] & 0xFF))
            return false;
    }
    return true;
}

// The index of an object, or kNone with a code; kNone without a code is the binary sort.
struct Found {
    int index;
    int code;
};

Found byName(const Objects& objects, int type, const Values32& part)
{
    if (type == 3 && sameName("BINARY", part))
        return {Resolution::kNone, 0};
    for (int i = firstOf(objects, type); i < firstOf(objects, type + 1); ++i)
        if (sameName(objects[static_cast<std::size_t>(i)].name, part))
            return {i, 0};
    return {Resolution::kNone, kNotFound};
}

Found byId(const Objects& objects, int type, unsigned id)
{
    if (type == 3 && id == 0)
        return {Resolution::kNone, 0};
    int low = firstOf(objects, type);
    int high = firstOf(objects, type + 1) == 0 ? 0 : firstOf(objects, type + 1) - 1;
    while (low < high) {
        const int middle = (low + high) / 2;
        if (objects[static_cast<std::size_t>(middle)].id < id)
            low = middle + 1;
        else
            high = middle;
    }
    if (objects.empty() || objects[static_cast<std::size_t>(high)].id != id)
        return {Resolution::kNone, kNotFound};
    // An empty range answers with another type: only a sort takes it.
    if (type != 3 && objects[static_cast<std::size_t>(high)].type != type)
        return {Resolution::kNone, kNotFound};
    return {high, 0};
}

Values32 spanUpTo(const Values32& name, std::size_t begin, const std::string& delimiters)
{
    Values32 part;
    for (std::size_t i = begin; i < name.size(); ++i) {
        for (const char delimiter : delimiters)
            if (name[i] == static_cast<unsigned char>(delimiter))
                return part;
        part.push_back(name[i]);
    }
    return part;
}

bool standsAt(const Values32& name, std::size_t at, char delimiter)
{
    return at < name.size() && name[at] == static_cast<unsigned char>(delimiter);
}

} // namespace

std::ostream& operator<<(std::ostream& out, const Resolution& resolution)
{
    return out << "code " << resolution.code << ", objects " << resolution.language << ' '
               << resolution.territory << ' ' << resolution.codePage << ' ' << resolution.sort;
}

Resolution resolve(const Objects& objects, const Values32& name, std::uint32_t options)
{
    const bool fallback = (options & kFallback) != 0;
    const Values32 english = {'E', 'n', 'g', 'l', 'i', 's', 'h'};
    std::size_t at = 0;

    Values32 part = spanUpTo(name, at, "_.@");
    Found language{Resolution::kNone, 0};
    if (!part.empty())
        language = byName(objects, 0, part);
    if (part.empty() || (language.code == kNotFound && fallback))
        language = byName(objects, 0, english);
    if (language.code != 0)
        return {31};
    const Span content = section1(objects[static_cast<std::size_t>(language.index)]);
    at += part.size();

    part.clear();
    Found territory{Resolution::kNone, 0};
    if (standsAt(name, at, '_')) {
        part = spanUpTo(name, ++at, ".@");
        if (!part.empty())
            territory = byName(objects, 1, part);
    }
    if (part.empty() || (territory.code == kNotFound && fallback))
        territory = byId(objects, 1, wordAt(content, 0));
    if (territory.code != 0)
        return {34};
    at += part.size();

    part.clear();
    Found codePage{Resolution::kNone, 0};
    if (standsAt(name, at, '.')) {
        part = spanUpTo(name, ++at, "@");
        if (!part.empty())
            codePage = byName(objects, 2, part);
    }
    if (part.empty() || (codePage.code == kNotFound && fallback))
        codePage = byId(objects, 2, wordAt(content, 1));
    if (codePage.code != 0)
        return {30};
    at += part.size();

    part.clear();
    Found sort{Resolution::kNone, 0};
    if (standsAt(name, at, '@')) {
        part = spanUpTo(name, ++at, "");
        if (!part.empty())
            sort = byName(objects, 3, part);
    }
    if (part.empty() || (sort.code == kNotFound && fallback))
        sort = byId(objects, 3, wordAt(content, 2));
    if (sort.code != 0)
        return {33};
    return {0, language.index, territory.index, codePage.index, sort.index};
}

Resolution resolveUnicode(const Objects& objects, const std::u16string& name, std::uint32_t options)
{
    if (name.empty())
        return resolve(objects, {}, options);
    const Found ascii = byId(objects, 2, 367);
    if (ascii.code != 0)
        return {11};
    const Page page = pageOf(objects[static_cast<std::size_t>(ascii.index)]);
    Values32 bytes;
    for (const char16_t unit : name) {
        const unsigned byte = unicodeToMb(page, unit).front();
        if (byte == 0)
            break;
        bytes.push_back(byte);
    }
    return resolve(objects, bytes, options);
}

Page pageOf(const test::ListedObject& object)
{
    Page page;
    page.id = object.id;
    for (std::size_t i = 0; i < object.sections.size(); ++i)
        page.sections[i] = Span(object.sections[i].data(), object.sections[i].size());
    return page;
}

namespace {

// A text in a page, each character from Unicode; a stateful page has shift bytes where the size of
// characters changes.
class Output {
  public:
    explicit Output(const Page& page) : page_(page) {}

    void put(unsigned unicode)
    {
        const Bytes bytes = unicodeToMb(page_, static_cast<std::uint16_t>(unicode));
        if (isStateful(page_) && bytes.size() != lastSize_)
            text_.push_back(
                static_cast<unsigned char>(bytes.size() == 1 ? shiftOut(page_) : shiftIn(page_)));
        lastSize_ = bytes.size();
        text_.insert(text_.end(), bytes.begin(), bytes.end());
    }

    // Up to the first zero byte, which a reader takes for the terminator.
    Bytes text() const
    {
        Bytes read;
        for (const unsigned char byte : text_) {
            if (byte == 0)
                break;
            read.push_back(byte);
        }
        return read;
    }

  private:
    const Page& page_;
    std::size_t lastSize_ = 1;
    Bytes text_;
};

struct TextRow {
    unsigned bit;
    unsigned word;
    unsigned nextWord;
};
constexpr TextRow kTextRows[8] = {
    {0x010000, 13, 14}, {0x020000, 15, 16}, {0x040000, 14, 15}, {0x080000, 17, 18},
    {0x100000, 18, 19}, {0x200000, 19, 20}, {0x400000, 20, 21}, {0x800000, 21, 22},
};

struct FlagRow {
    unsigned bit;
    unsigned flag;
    unsigned territoryMask;
};
constexpr FlagRow kFlagRows[6] = {
    {0x000008, 0x01, 0x0002}, {0x000010, 0x02, 0x0004}, {0x000020, 0x04, 0x0008},
    {0x000040, 0x08, 0x0010}, {0x000080, 0x10, 0x0020}, {0x000100, 0x20, 0x0040},
};

void setFlag(Values& values, unsigned flag, bool on)
{
    values.flags = static_cast<std::uint16_t>(on ? values.flags | flag : values.flags & ~flag);
}

void setPageFlags(Values& values, const Page& page)
{
    setFlag(values, 0x40, maxCharBytes(page) == 1);
    setFlag(values, 0x100, isStateful(page));
}

} // namespace

void setModifiable(Values& values, const Page& page, Span territory)
{
    const auto follows = [&values](unsigned bit) { return (values.modifiedMask & bit) == 0; };
    for (unsigned i = 0; i < 3; ++i)
        if (follows(0x000001U << i))
            values.digits[i] = static_cast<std::uint16_t>(wordAt(territory, 5 + i));
    for (const FlagRow& row : kFlagRows)
        if (follows(row.bit))
            setFlag(values, row.flag, (wordAt(territory, 10) & row.territoryMask) != 0);
    for (unsigned i = 0; i < 2; ++i)
        if (follows(0x000200U << i))
            values.positions[i] = static_cast<std::uint8_t>(territory.at(16 + static_cast<int>(i)));
    for (unsigned i = 0; i < 5; ++i) {
        if (!follows(0x000800U << i))
            continue;
        const auto character = static_cast<std::uint16_t>(wordAt(territory, i));
        const std::uint32_t wide = unicodeToWide(page, character);
        if (wide < 0x100)
            values.separators[i] = static_cast<std::uint8_t>(wide);
        values.separatorsU[i] = character;
    }
    for (std::size_t i = 0; i < 8; ++i) {
        const TextRow& row = kTextRows[i];
        if (!follows(row.bit))
            continue;
        const unsigned begin = wordAt(territory, row.word);
        const unsigned length = (wordAt(territory, row.nextWord) - begin) / 2;
        Output output(page);
        values.textsU[i].clear();
        for (unsigned unit = 0; unit + 1 < length; ++unit) {
            const auto at = static_cast<std::ptrdiff_t>(begin + 2 * unit);
            const unsigned character = territory.at(at) | territory.at(at + 1) << 8;
            output.put(character);
            values.textsU[i].push_back(static_cast<std::uint16_t>(character));
        }
        values.texts[i] = output.text();
    }
}

Values freshValues(const Page& page, Span territory, bool binarySort)
{
    Values values;
    setPageFlags(values, page);
    setFlag(values, 0x80, binarySort);
    setModifiable(values, page, territory);
    return values;
}

std::int32_t changeCodePage(Values& values, const Page& from, const Page& to)
{
    Values changed = values;
    setPageFlags(changed, to);
    for (std::uint8_t& separator : changed.separators) {
        const auto unicode = static_cast<std::uint16_t>(toUnicode(from, separator));
        const std::uint32_t wide = unicodeToWide(to, unicode);
        if (wide >= 0x100)
            return 36;
        separator = static_cast<std::uint8_t>(wide);
    }
    for (Bytes& text : changed.texts)
        text = recodeString(from, to, text);
    values = changed;
    return 0;
}

// A character that the terminator cuts off is left out.
Bytes recodeString(const Page& from, const Page& to, const Bytes& text)
{
    Output output(to);
    bool multi = false;
    std::size_t at = 0;
    while (at < text.size()) {
        if (isStateful(from) && text[at] == shiftIn(from)) {
            multi = true;
            ++at;
            continue;
        }
        if (isStateful(from) && text[at] == shiftOut(from)) {
            multi = false;
            ++at;
            continue;
        }
        std::size_t length = charLength(from, text[at]);
        if (isStateful(from))
            length = multi ? maxCharBytes(from) : 1;
        if (at + length > text.size())
            break;
        if (length == 1)
            output.put(toUnicode(from, text[at]));
        else
            output.put(mbToUnicode(from, Span(text).from(static_cast<std::ptrdiff_t>(at))));
        at += length;
    }
    return output.text();
}

std::ostream& operator<<(std::ostream& out, const Values& values)
{
    out << std::hex << "masks " << values.modifiedMask << ' ' << values.modifiedMaskU << ", flags "
        << values.flags << ", digits";
    for (const unsigned digits : values.digits)
        out << ' ' << digits;
    out << ", positions";
    for (const unsigned position : values.positions)
        out << ' ' << position;
    out << ", separators";
    for (std::size_t i = 0; i < 5; ++i)
        out << ' ' << unsigned{values.separators[i]} << '/' << values.separatorsU[i];
    for (std::size_t i = 0; i < 8; ++i) {
        out << "\n  text " << i << ':';
        for (const unsigned byte : values.texts[i])
            out << ' ' << byte;
        out << " /";
        for (const unsigned unit : values.textsU[i])
            out << ' ' << unit;
    }
    return out << std::dec;
}

} // namespace vlx::oracle
