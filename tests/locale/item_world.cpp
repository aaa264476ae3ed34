#include "locale/item_world.hpp"

#include <algorithm>

namespace vlx::test {

namespace {

constexpr char kEbcdicText[] = " .<(+&!$*);-/|,%_>?`:#@'=\"~^[]{}\\";
constexpr std::uint8_t kEbcdicBytes[] = {0x40, 0x4B, 0x4C, 0x4D, 0x4E, 0x50, 0x5A, 0x5B, 0x5C,
                                         0x5D, 0x5E, 0x60, 0x61, 0x4F, 0x6B, 0x6C, 0x6D, 0x6E,
                                         0x6F, 0x79, 0x7A, 0x7B, 0x7C, 0x7D, 0x7E, 0x7F, 0xA1,
                                         0xB0, 0xBA, 0xBB, 0xC0, 0xD0, 0xE0};
static_assert(sizeof kEbcdicText - 1 == sizeof kEbcdicBytes);

std::uint8_t ebcdicByte(char character)
{
    const auto letter = [character](char first, int base) {
        const int index = character - first;
        if (index < 9)
            return static_cast<std::uint8_t>(base + 1 + index);
        if (index < 18)
            return static_cast<std::uint8_t>(base + 0x11 + index - 9);
        return static_cast<std::uint8_t>(base + 0x22 + index - 18);
    };
    if (character >= 'a' && character <= 'z')
        return letter('a', 0x80);
    if (character >= 'A' && character <= 'Z')
        return letter('A', 0xC0);
    if (character >= '0' && character <= '9')
        return static_cast<std::uint8_t>(0xF0 + character - '0');
    const std::size_t at = std::string_view(kEbcdicText).find(character);
    return at == std::string_view::npos ? std::uint8_t{0} : kEbcdicBytes[at];
}

LanguageSpec sampleLanguage(std::uint16_t id, const std::string& name)
{
    LanguageSpec language{.id = id, .name = name, .territory = 10, .codePage = 20, .sort = 1};
    for (std::size_t i = 0; i < LanguageSpec::kTexts; ++i)
        language.texts[i] = u"text " + unicodeName(std::to_string(i));
    language.texts[0] = u"EN";
    language.texts[1] = u"English";
    language.texts[2] = std::u16string(u"Sun") + char16_t{kYen};
    language.texts[28] = u""; // the thirteenth month
    language.texts[41] = u"";
    return language;
}

PageBuilder japanese(PageShape shape, std::uint16_t id, TSChar32 yen, TSChar32 blank)
{
    PageBuilder page(shape);
    page.id(id).asciiHalf().map(yen, kYen).map(blank, kWideBlank).build();
    return page;
}

} // namespace

std::string ebcdic(std::string_view text)
{
    std::string bytes;
    for (const char character : text)
        bytes += static_cast<char>(ebcdicByte(character));
    return bytes;
}

PageBuilder ebcdicPage(PageShape shape, std::uint16_t id)
{
    PageBuilder page(shape);
    page.id(id).ebcdic().substitute(0x6F);
    page.map(0, 0);
    for (int character = 0x20; character < 0x7F; ++character)
        if (const std::uint8_t byte = ebcdicByte(static_cast<char>(character)))
            page.map(byte, static_cast<TSChar16>(character));
    if (isStateful(shape))
        page.map(0x4243, kYen).map(0x4141, kWideBlank);
    return page;
}

LocaleDirectory itemDirectory(Names names)
{
    LanguageSpec german = sampleLanguage(2, "German");
    german.territory = 99;
    german.codePage = 98;
    german.sort = 97;
    TerritorySpec homeland{.id = 10, .name = "Homeland", .flags = 0x2B};
    homeland.separators = {'.', ',', ';', ':', '\''};
    homeland.texts[kCurrencySymbol] = std::u16string(1, char16_t{kYen}) + u"en";
    TerritorySpec germany{.id = 11, .name = "Germany", .separators{',', '.', ';', ',', '.'}};
    PageBuilder latin(PageShape::kSingleByte);
    latin.id(20).asciiHalf().map(0xE4, 0x00E4).map(0x80, 0x20AC).build();
    PageBuilder utf8(PageShape::kUtf8);
    utf8.build();
    PageBuilder ebcdicSingle = ebcdicPage(PageShape::kSingleByte, 25);
    ebcdicSingle.build();
    PageBuilder ebcdicShift = ebcdicPage(PageShape::kStateful2, 26);
    ebcdicShift.build();
    LocaleDirectory directory;
    directory.add(sampleLanguage(1, "English"))
        .add(german)
        .add(homeland)
        .add(germany)
        .add("Latin", latin)
        .add("Double", japanese(PageShape::kDoubleByte, 21, 0x8A42, 0x8140))
        .add("Shift", japanese(PageShape::kStateful2, 22, 0x4243, 0x4141))
        .add("Ebcdic", ebcdicSingle)
        .add("EbcdicShift", ebcdicShift)
        .add("UTF8", utf8)
        .add(SortSpec{1, "Dictionary"})
        .add(SortSpec{2, "Phonebook"});
    if (names == Names::kListed) {
        PageBuilder ascii(PageShape::kSingleByte);
        ascii.id(367).asciiHalf().build();
        directory.add("Names", ascii);
    }
    return directory;
}

std::string ItemTest::text(TSLocale* locale, std::int32_t item, std::int32_t size,
                           std::uint32_t options)
{
    std::string buffer(256, '\x55');
    result_ = TSGetLocaleTextInfo(locale, item, buffer.data(), size, options);
    error_ = TSGetError(locale);
    return buffer.substr(0, buffer.find('\x55'));
}

std::string ItemTest::textEx(TSLocale* locale, std::int32_t item, std::int32_t state,
                             std::int32_t size, std::uint32_t options)
{
    std::string buffer(256, '\x55');
    result_ = TSGetLocaleTextInfoEx(locale, item, buffer.data(), state, size, options);
    error_ = TSGetError(locale);
    return buffer.substr(0, buffer.find('\x55'));
}

std::u16string ItemTest::textU(TSLocale* locale, std::int32_t item, std::int32_t size,
                               std::uint32_t options)
{
    std::u16string buffer(256, u'\x5555');
    result_ = TSGetLocaleTextInfoU(locale, item, reinterpret_cast<TSChar16*>(buffer.data()), size,
                                   options);
    error_ = TSGetError(locale);
    return buffer.substr(0, buffer.find(u'\x5555'));
}

std::vector<TSChar32> ItemTest::textW(TSLocale* locale, std::int32_t item, std::int32_t size,
                                      std::uint32_t options)
{
    constexpr TSChar32 kFill = 0x55555555;
    std::vector<TSChar32> buffer(256, kFill);
    result_ = TSGetLocaleTextInfoW(locale, item, buffer.data(), size, options);
    error_ = TSGetError(locale);
    buffer.erase(std::find(buffer.begin(), buffer.end(), kFill), buffer.end());
    return buffer;
}

namespace {

struct Page {
    PageBuilder page;
    std::string name;
};

// Random pages of every shape, some of them EBCDIC, and pages whose tables look real.
std::vector<Page>& randomItemPages()
{
    static std::vector<Page> pages = [] {
        std::mt19937_64 random(7);
        std::vector<Page> made;
        for (const PageShape shape : kPageShapes) {
            for (int i = 0; i < 3; ++i)
                made.push_back({randomPage(random, shape), "Random"});
            if (shape == PageShape::kUtf8)
                continue;
            PageBuilder ascii(shape);
            ascii.asciiHalf().build();
            made.push_back({std::move(ascii), "Ascii"});
            PageBuilder other = ebcdicPage(shape, 900);
            other.build();
            made.push_back({std::move(other), "Other"});
        }
        return made;
    }();
    return pages;
}

constexpr std::uint16_t kOwnPage = 30;

} // namespace

void RandomItems::begin()
{
    if (tsGlobals) {
        locale_.reset();
        EXPECT_EQ(stop(), TS_ERR_NONE);
        MemoryHost::reset();
    }
    Page& own = randomItemPages()[round_++ % randomItemPages().size()];
    characters_.clear();
    encoded_.clear();
    for (const auto& [unicode, character] : own.page.encoded()) {
        characters_.push_back(unicode);
        const CharBytes bytes = bytesOf(character);
        encoded_.emplace_back(bytes.begin(), bytes.end());
    }
    directory_ = std::make_unique<LocaleDirectory>(
        itemDirectory(once(3) ? Names::kMissing : Names::kListed));
    if (own.page.shape() != PageShape::kUtf8)
        directory_->add(own.name, own.page.id(kOwnPage));
    for (std::uint16_t id = 3; id < 6; ++id) {
        LanguageSpec language{id, objectName(), static_cast<std::uint16_t>(10 + below(4)), kOwnPage,
                              static_cast<std::uint16_t>(below(4))};
        for (std::u16string& each : language.texts)
            each = anyText(7);
        directory_->add(language);
        TerritorySpec territory{.id = static_cast<std::uint16_t>(id + 10), .name = objectName()};
        for (std::u16string& each : territory.texts)
            each = anyText(7);
        for (TSChar16& separator : territory.separators)
            separator = anyText(1)[0];
        territory.flags = static_cast<std::uint16_t>(random_());
        directory_->add(territory);
    }
    ASSERT_EQ(start(*directory_), TS_ERR_NONE);
    loadAll();
    locale_ = make("English." + (own.page.shape() == PageShape::kUtf8 ? "UTF8" : own.name));
    ASSERT_NE(locale_, nullptr);
    const auto index = [](const TSObject* object) {
        return static_cast<int>(object - manager().objects);
    };
    record_.objects = &directory_->objects();
    record_.resolution = {0, index(locale_->language), index(locale_->territory),
                          index(locale_->codePage), index(locale_->sort)};
    record_.values = valuesOf(*locale_);
}

std::string RandomItems::objectName()
{
    std::string name;
    for (std::uint32_t length = 1 + below(once(5) ? 33 : 6); length > 0; --length)
        name += static_cast<char>('a' + below(26));
    return name;
}

// At least one unit; without zeros.
std::u16string RandomItems::anyText(std::uint32_t most)
{
    std::u16string text;
    for (std::uint32_t length = 1 + below(most); length > 0; --length) {
        TSChar16 unit = 0;
        if (!characters_.empty() && !once(4))
            unit = characters_[below(static_cast<std::uint32_t>(characters_.size()))];
        text.push_back(unit != 0 ? unit
                                 : static_cast<char16_t>(0x20 + below(once(2) ? 95 : 60000)));
    }
    return text;
}

std::int32_t RandomItems::anyItem()
{
    if (once(30))
        return static_cast<std::int32_t>(random_());
    return static_cast<std::int32_t>(below(91)) - 1;
}

std::uint32_t RandomItems::anyOptions(std::uint32_t accepted)
{
    if (once(40))
        return static_cast<std::uint32_t>(random_());
    return static_cast<std::uint32_t>(random_()) & accepted;
}

oracle::Bytes RandomItems::anyBytes()
{
    oracle::Bytes text;
    const oracle::Page page = record_.page();
    if (once(5)) { // an object's name, in the code page of the locale
        const auto& objects = directory_->objects();
        for (const char byte : objects[below(static_cast<std::uint32_t>(objects.size()))].name) {
            const auto made = oracle::unicodeToMb(page, static_cast<std::uint8_t>(byte));
            text.insert(text.end(), made.begin(), made.end());
        }
        if (once(2))
            text.push_back(0);
        return text;
    }
    for (std::uint32_t length = below(once(10) ? 60 : 8); length > 0; --length) {
        const auto kind = below(12);
        if (kind == 0)
            text.push_back(static_cast<unsigned char>(once(4) ? 0 : random_()));
        else if (kind <= 2 && record_.stateful())
            text.push_back(static_cast<unsigned char>(once(2) ? oracle::shiftIn(page)
                                                              : oracle::shiftOut(page)));
        else if (!encoded_.empty() && kind < 9) {
            const auto& character = encoded_[below(static_cast<std::uint32_t>(encoded_.size()))];
            text.insert(text.end(), character.begin(), character.end());
        } else
            text.push_back(static_cast<unsigned char>(0x20 + below(95)));
    }
    if (!once(3))
        text.push_back(0);
    return text;
}

std::vector<TSChar16> RandomItems::anyUnits()
{
    std::vector<TSChar16> text;
    if (once(6)) {
        const auto& objects = directory_->objects();
        for (const char byte : objects[below(static_cast<std::uint32_t>(objects.size()))].name)
            text.push_back(static_cast<std::uint8_t>(byte));
    } else if (!once(6)) {
        const std::u16string made = anyText(once(20) ? 280 : once(3) ? 1 : 12);
        text.assign(made.begin(), made.end());
        if (once(10))
            text[below(static_cast<std::uint32_t>(text.size()))] = 0;
    }
    if (!once(3))
        text.push_back(0);
    return text;
}

std::vector<TSChar32> RandomItems::anyPacked()
{
    std::vector<TSChar32> text;
    for (const TSChar16 unit : anyUnits()) {
        if (once(20))
            text.push_back(static_cast<TSChar32>(random_()));
        else
            text.push_back(unit == 0 ? 0 : oracle::unicodeToWide(record_.page(), unit));
    }
    return text;
}

} // namespace vlx::test
