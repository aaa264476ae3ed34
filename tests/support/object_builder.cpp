#include "support/object_builder.hpp"

#include <cstdio>
#include <stdexcept>

#include "support/page_builder.hpp"

namespace vlx::test {

namespace {

constexpr std::size_t kSectionLimit = 0xFFFF;
constexpr std::uint32_t kCurrentVersion = 0x20000000;
constexpr std::uint32_t kOldVersion = 0x10000000;

// Texts behind a header, each with its terminator.
class TextArea {
  public:
    explicit TextArea(Bytes& bytes) : bytes_(bytes) {}

    // Appends a text and stores its offset in a word of the header.
    void text(std::size_t word, const std::u16string& text)
    {
        mark(word);
        for (const char16_t unit : text)
            append16(unit);
        append16(0);
    }
    void mark(std::size_t word)
    {
        put16(bytes_, word * 2, static_cast<std::uint32_t>(bytes_.size()));
    }
    void append16(std::uint32_t value)
    {
        bytes_.resize(bytes_.size() + 2);
        put16(bytes_, bytes_.size() - 2, value);
    }

  private:
    Bytes& bytes_;
};

Bytes oneSection(Bytes content)
{
    ObjectFile file;
    file.sections.push_back(std::move(content));
    return file.bytes();
}

// The offsets of the header fields of the older code page form.
enum OldOffset : std::size_t {
    kOldMaxCharBytes = 5,
    kOldPairCount = 6,
    kOldCharLength = 8,
    kOldToUpper = 0x108,
    kOldToLower = 0x208,
    kOldToUnicode = 0x308,
    kOldCharType = 0x508,
    kOldPages = 0x908,
    kOldFlags = 0x1108,
    kOldOffsets = 0x110A,
};

} // namespace

void put16(Bytes& bytes, std::size_t offset, std::uint32_t value)
{
    bytes.at(offset) = static_cast<std::uint8_t>(value);
    bytes.at(offset + 1) = static_cast<std::uint8_t>(value >> 8);
}

void put32(Bytes& bytes, std::size_t offset, std::uint32_t value)
{
    put16(bytes, offset, value);
    put16(bytes, offset + 2, value >> 16);
}

std::uint16_t get16(const std::uint8_t* bytes, std::size_t offset)
{
    return static_cast<std::uint16_t>(bytes[offset] | bytes[offset + 1] << 8);
}

std::uint32_t get32(const std::uint8_t* bytes, std::size_t offset)
{
    return get16(bytes, offset) | std::uint32_t{get16(bytes, offset + 2)} << 16;
}

void append(Bytes& bytes, const Bytes& more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

Bytes ObjectFile::bytes() const
{
    Bytes file(kFileHeaderSize, 0);
    put32(file, 0, magic);
    put32(file, 4, version);
    put16(file, 8,
          static_cast<std::uint32_t>(sectionCount < 0 ? std::ssize(sections) : sectionCount));
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (sections[i].size() > kSectionLimit)
            throw std::length_error("a section is too large for its header");
        file.resize(file.size() + gap, 0xEE);
        // The size of the first section stands behind the count, that of others on a word of eight.
        put16(file, i == 0 ? 10 : 8 + 8 * i, static_cast<std::uint32_t>(sections[i].size()));
        put32(file, 12 + 8 * i, static_cast<std::uint32_t>(file.size()));
        append(file, sections[i]);
    }
    return file;
}

Bytes Listing::bytes() const
{
    Bytes entry(kListingSize, 0);
    put16(entry, 0, id);
    entry[2] = type;
    entry[3] = flags;
    if (name.size() > kListingSize - 4)
        throw std::length_error("an object name is too long for its entry");
    std::copy(name.begin(), name.end(), entry.begin() + 4);
    return entry;
}

Bytes controlFile(const std::vector<Listing>& listings)
{
    Bytes table;
    for (const Listing& listing : listings)
        append(table, listing.bytes());
    return oneSection(std::move(table));
}

std::string objectFileName(std::uint8_t type, std::uint16_t id)
{
    constexpr const char* codes[] = {"la", "te", "cp", "so"};
    char name[16];
    std::snprintf(name, sizeof name, "%s_%05u.nls", codes[type], unsigned{id});
    return name;
}

LanguageContent LanguageContent::sample()
{
    constexpr const char16_t* days[] = {u"Firstday", u"Secondday", u"Thirdday",  u"Fourthday",
                                        u"Fifthday", u"Sixthday",  u"Seventhday"};
    constexpr const char16_t* months[] = {u"Onemonth",  u"Twomonth", u"Threemonth",  u"Fourmonth",
                                          u"Fivemonth", u"Sixmonth", u"Sevenmonth",  u"Eightmonth",
                                          u"Ninemonth", u"Tenmonth", u"Elevenmonth", u"Twelvemonth",
                                          u""};
    LanguageContent content;
    std::size_t next = 0;
    content.texts[next++] = u"NO";
    content.texts[next++] = u"Northern";
    for (const char16_t* day : days)
        content.texts[next++] = day;
    for (const char16_t* day : days)
        content.texts[next++] = std::u16string(day).substr(0, 3);
    for (const char16_t* month : months)
        content.texts[next++] = month;
    for (const char16_t* month : months)
        content.texts[next++] = std::u16string(month).substr(0, 3);
    content.texts[next++] = u"early";
    content.texts[next++] = u"late";
    content.upperPairs = {{0x00DF, 0, u'S', u'S'}};
    content.lowerPairs = {{0x0130, 0, u'i', 0x0307}, {u'I', 0x0307, u'i', 0}};
    return content;
}

Bytes LanguageContent::bytes() const
{
    Bytes content(kHeaderSize, 0);
    put16(content, 0, territory);
    put16(content, 2, codePage);
    put16(content, 4, sort);
    put16(content, 6, static_cast<std::uint32_t>(upperPairs.size()));
    put16(content, 8, static_cast<std::uint32_t>(lowerPairs.size()));
    TextArea area(content);
    for (std::size_t i = 0; i < kTexts; ++i)
        area.text(kFirstTextWord + i, texts[i]);
    std::size_t word = kFirstTextWord + kTexts;
    for (const std::vector<Pair>* const pairs : {&upperPairs, &lowerPairs}) {
        area.mark(word++);
        for (const Pair& pair : *pairs)
            for (const std::uint16_t unit : pair)
                area.append16(unit);
    }
    return content;
}

Bytes LanguageContent::file() const
{
    return oneSection(bytes());
}

TerritoryContent TerritoryContent::sample()
{
    TerritoryContent content;
    content.words = {u',', u'.', u';', u':', u'\'', 3, 4, 5, 0x0102, 0x1234, 0x0055};
    content.texts = {u"NOR", u"Northland", u"3;2;0",    u"4;0",      u"kr",       u"NOK",
                     u"+",   u"--",        u"%H.%M.%S", u"%d.%m.%y", u"%d. %B %Y"};
    return content;
}

Bytes TerritoryContent::bytes() const
{
    Bytes content(kHeaderSize, 0);
    for (std::size_t i = 0; i < words.size(); ++i)
        put16(content, 2 * i, words[i]);
    TextArea area(content);
    for (std::size_t i = 0; i < kTexts; ++i)
        area.text(kFirstTextWord + i, texts[i]);
    area.mark(kFirstTextWord + kTexts);
    return content;
}

Bytes TerritoryContent::file() const
{
    return oneSection(bytes());
}

Bytes codePageFile(const PageBuilder& page)
{
    ObjectFile file;
    file.version = kCurrentVersion;
    file.sections.assign(page.sections().begin(), page.sections().end());
    while (file.sections.size() > 1 && file.sections.back().empty())
        file.sections.pop_back();
    return file.bytes();
}

OldCodePage OldCodePage::singleByte()
{
    OldCodePage page;
    for (std::size_t i = 0; i < kOldMaxCharBytes; ++i)
        page.header[i] = static_cast<std::uint8_t>('?' + i);
    page.header[kOldMaxCharBytes] = 1;
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        page.header[kOldCharLength + byte] = 1;
        page.header[kOldToUpper + byte] = static_cast<std::uint8_t>(byte + 1);
        page.header[kOldToLower + byte] = static_cast<std::uint8_t>(byte + 2);
        put16(page.header, kOldToUnicode + 2 * byte, 0x2000 + byte);
        put32(page.header, kOldCharType + 4 * byte, 0x40000000 + byte);
        page.header[kOldPages + 8 * byte + 2] = 1; // an empty run: low 1, high 0
        put16(page.header, kOldPages + 8 * byte + 4, byte);
    }
    put16(page.header, kOldFlags, 1);
    return page;
}

OldCodePage OldCodePage::doubleByte()
{
    OldCodePage page = singleByte();
    page.header[kOldMaxCharBytes] = 2;
    page.header[kOldCharLength + 0x81] = 2;
    put16(page.header, kOldPairCount, 1);

    // The extension: 256 map values, a pair, a trie of one leaf and its record.
    page.extension.resize(1024 + 8 + 4 + 8);
    for (std::uint32_t byte = 0; byte < 256; ++byte)
        put32(page.extension, 4 * byte, 0x77000000 + byte);
    put32(page.extension, 1024, 0x8140);
    put32(page.extension, 1028, 0x55);
    page.extension[1032] = 1;
    put32(page.extension, 1036, 0x00080801);
    put32(page.extension, 1040, 0x100);
    const std::uint32_t begin = kHeaderSize;
    page.setOffset(0, begin);
    page.setOffset(1, begin + 1024);
    page.setOffset(2, begin + 1032);
    page.setOffset(3, begin + 1036);

    // Section 2: a root that leads every byte to the one leaf, which takes four trail bytes.
    page.section2 = {0, 0x00, 1, 0, 1, 0x03, 0, 0};
    page.setOffset(4, static_cast<std::uint32_t>(page.section2.size()));
    append(page.section2, {0x00, 0x30, 0x01, 0x30, 0x02, 0x30, 0x03, 0x30});
    return page;
}

void OldCodePage::setOffset(int index, std::uint32_t value)
{
    put16(header, kOldOffsets + 2 * static_cast<std::size_t>(index), value);
}

Bytes OldCodePage::section1() const
{
    Bytes section = header;
    append(section, extension);
    return section;
}

Bytes OldCodePage::file() const
{
    ObjectFile file;
    file.version = kOldVersion;
    file.sections = {section1()};
    if (!section2.empty() || !section3.empty())
        file.sections.push_back(section2);
    if (!section3.empty())
        file.sections.push_back(section3);
    return file.bytes();
}

} // namespace vlx::test
