#include "locale/locale_fixture.hpp"

#include <cstring>

namespace vlx::test {

const char* nameOf(NameForm form)
{
    switch (form) {
    case NameForm::kBytes:
        return "Bytes";
    case NameForm::kUnicode:
        return "Unicode";
    case NameForm::kPacked:
        break;
    }
    return "Packed";
}

std::string formName(const ::testing::TestParamInfo<NameForm>& info)
{
    return nameOf(info.param);
}

std::u16string unicodeName(const std::string& name)
{
    std::u16string units;
    for (const char byte : name)
        units.push_back(static_cast<std::uint8_t>(byte));
    return units;
}

std::u32string packedName(const std::string& name)
{
    std::u32string units;
    for (const char byte : name)
        units.push_back(static_cast<std::uint8_t>(byte));
    return units;
}

Handle getLocale(NameForm form, const std::string& name, std::uint32_t options, std::int32_t* code)
{
    switch (form) {
    case NameForm::kBytes:
        return Handle(TSGetLocale(name.c_str(), options, code));
    case NameForm::kUnicode:
        return Handle(TSGetLocaleU(units(unicodeName(name)), options, code));
    case NameForm::kPacked:
        break;
    }
    return Handle(TSGetLocaleW(units(packedName(name)), options, code));
}

std::int32_t setLocale(NameForm form, const std::string& name, std::uint32_t options)
{
    switch (form) {
    case NameForm::kBytes:
        return TSSetLocale(name.c_str(), options);
    case NameForm::kUnicode:
        return TSSetLocaleU(units(unicodeName(name)), options);
    case NameForm::kPacked:
        break;
    }
    return TSSetLocaleW(units(packedName(name)), options);
}

oracle::Values valuesOf(const TSLocale& locale)
{
    oracle::Values values;
    values.modifiedMask = locale.modifiedMask;
    values.modifiedMaskU = locale.modifiedMaskU;
    values.digits = {locale.fractionDigits, locale.currencyDigits, locale.intlCurrencyDigits};
    values.flags = locale.flags;
    values.positions = {locale.positiveSignPosition, locale.negativeSignPosition};
    values.separators = {locale.decimalPoint, locale.thousandsSeparator, locale.listSeparator,
                         locale.monetaryDecimalPoint, locale.monetaryThousandsSeparator};
    values.separatorsU = {locale.decimalPointU, locale.thousandsSeparatorU, locale.listSeparatorU,
                          locale.monetaryDecimalPointU, locale.monetaryThousandsSeparatorU};
    const char* const texts[] = {
        locale.grouping,     locale.currencySymbol, locale.monetaryGrouping, locale.positiveSign,
        locale.negativeSign, locale.timeFormat,     locale.dateFormat,       locale.longDateFormat};
    const TSChar16* const textsU[] = {locale.groupingU,         locale.currencySymbolU,
                                      locale.monetaryGroupingU, locale.positiveSignU,
                                      locale.negativeSignU,     locale.timeFormatU,
                                      locale.dateFormatU,       locale.longDateFormatU};
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        values.texts[i].assign(texts[i], texts[i] + std::strlen(texts[i]));
        const TSChar16* end = textsU[i];
        while (*end != 0)
            ++end;
        values.textsU[i].assign(textsU[i], end);
    }
    return values;
}

std::string imageOf(const TSLocale& locale)
{
    return std::string(reinterpret_cast<const char*>(&locale), sizeof locale);
}

LocaleTest::LocaleTest()
{
    MemoryHost::reset();
    Allocator::reset();
    clearConfig();
    Trace::setMask(0);
    Trace::clear();
}

LocaleTest::~LocaleTest()
{
    Allocator::failAllocation(0);
    Allocator::failFree(0);
    if (started_) {
        EXPECT_EQ(stop(), TS_ERR_NONE);
    }
    Trace::setMask(0);
    EXPECT_EQ(Allocator::liveBlocks(), 0);
    EXPECT_TRUE(Allocator::sound()) << Allocator::complaints().front();
    EXPECT_EQ(MemoryHost::openFiles(), 0);
    EXPECT_EQ(MemoryHost::openViews(), 0);
    EXPECT_EQ(MemoryHost::openSettings(), 0);
    EXPECT_EQ(lockDepth(), 0);
}

std::int32_t LocaleTest::start(const LocaleDirectory& directory, std::uint32_t options)
{
    directory.put(kDirectory);
    return start(options);
}

std::int32_t LocaleTest::start(std::uint32_t options)
{
    const std::int32_t code =
        TSInit(kDirectory, Allocator::allocate, Allocator::free, Allocator::allocateObject,
               Allocator::freeObject, kContext, options);
    started_ = code == TS_ERR_NONE || code == TS_ERR_NO_CONTROL_FILE;
    return code;
}

std::int32_t LocaleTest::stop()
{
    started_ = false;
    return TSTerm();
}

TSObject* LocaleTest::object(unsigned type, const std::string& name)
{
    std::int32_t code = kUntouched;
    TSObject* const found =
        TSGetObjFromName(tsGlobals->objectManager, static_cast<std::uint16_t>(type), name.c_str(),
                         static_cast<std::int32_t>(name.size()), 0, &code);
    EXPECT_EQ(code, TS_ERR_NONE) << name;
    return found;
}

void LocaleTest::loadAll()
{
    for (int i = 0; i < manager().objectCount; ++i)
        object(manager().objects[i].type, manager().objects[i].name);
}

WorldPages::WorldPages()
    : latin(PageShape::kSingleByte), doubleByte(PageShape::kDoubleByte),
      shifting(PageShape::kStateful2), dotted(PageShape::kSingleByte),
      underscored(PageShape::kSingleByte), ascii(PageShape::kSingleByte), utf8(PageShape::kUtf8)
{
    latin.id(20).asciiHalf().map(0xE4, 0x00E4).map(0x80, 0x20AC).build();
    doubleByte.id(21).asciiHalf().map(0x8A42, kYen).map(0x8140, kWideBlank).build();
    shifting.id(22).asciiHalf().map(0x4243, kYen).map(0x4141, kWideBlank).build();
    dotted.id(23).asciiHalf().build();
    underscored.id(24).asciiHalf().build();
    ascii.id(367).asciiHalf().build();
    utf8.build();
}

LocaleDirectory worldDirectory()
{
    const WorldPages pages;
    TerritorySpec homeland{.id = 10, .name = "Homeland", .flags = 0x7F};
    TerritorySpec germany{.id = 11, .name = "Germany", .separators{',', '.', ';', ',', '.'}};
    germany.digits = {5, 6, 7};
    germany.texts[kCurrencySymbol] = u"DM";
    const TerritorySpec east{.id = 12, .name = "East_Land"};
    LocaleDirectory directory;
    directory.add(LanguageSpec{1, "English", 10, 20, 1})
        .add(LanguageSpec{2, "German", 11, 21, 2})
        .add(LanguageSpec{3, "Plain", 10, 20, 0})
        .add(homeland)
        .add(germany)
        .add(east)
        .add("Latin", pages.latin)
        .add("Double", pages.doubleByte)
        .add("Shift", pages.shifting)
        .add("Page.One", pages.dotted)
        .add("Page_Two", pages.underscored)
        .add("Ascii7", pages.ascii)
        .add("UTF8", pages.utf8)
        .add(SortSpec{1, "Dictionary"})
        .add(SortSpec{2, "Phonebook"})
        .add(SortSpec{3, "Sort_a.b@c"})
        .add(SortSpec{4, "BinaryTree"});
    return directory;
}

} // namespace vlx::test
