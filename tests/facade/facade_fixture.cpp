#include "facade/facade_fixture.hpp"

#include "support/page_builder.hpp"

namespace vlx::test {

FacadeTest::FacadeTest()
{
    // The base services start both once in the process; from then on the tests do.
    MemoryHost::reset();
    clearConfig();
    if (startState == kNotStarted && !processDescriptor.resolved) {
        NLS1_PrivateFunction_GetThreadLocale();
        started_ = true;
        stop();
        MemoryHost::reset();
    }
    Trace::setMask(0);
    Trace::clear();
}

FacadeTest::~FacadeTest()
{
    if (started_)
        stop();
    Trace::setMask(0);
    EXPECT_EQ(MemoryHost::liveBlocks(), 0);
    EXPECT_EQ(MemoryHost::openFiles(), 0);
    EXPECT_EQ(MemoryHost::openViews(), 0);
}

std::int32_t* FacadeTest::word()
{
    return static_cast<std::int32_t*>(processDescriptor.resolved);
}

void FacadeTest::start(const LocaleDirectory& directory)
{
    directory.put(kDirectory);
    setConfig("NLS1_LOCALEDIR", kDirectory);
    start();
}

void FacadeTest::start()
{
    InitProcess(word());
    InitThread(threadLocale());
    started_ = true;
}

void FacadeTest::stop()
{
    TermThread(threadLocale());
    *threadLocale() = nullptr;
    TermProcess(word());
    startState = kNotStarted;
    started_ = false;
}

std::string FacadeTest::nameOf(const TSLocale* locale)
{
    if (!locale)
        return "none";
    return std::string(locale->language->name) + "_" + locale->territory->name + "." +
           locale->codePage->name + "@" + (locale->sort ? locale->sort->name : "Binary");
}

LocaleDirectory facadeDirectory()
{
    PageBuilder latin(PageShape::kSingleByte);
    PageBuilder us(PageShape::kSingleByte);
    PageBuilder doubleByte(PageShape::kDoubleByte);
    PageBuilder shifting(PageShape::kStateful2);
    latin.id(30).asciiHalf().map(0xE4, 0x00E4).map(0x80, 0x20AC).build();
    us.id(31).asciiHalf().build();
    doubleByte.id(32).asciiHalf().map(0x8A42, 0x5186).map(0x8140, 0x3000).build();
    shifting.id(33).asciiHalf().map(0x4243, 0x5186).map(0x4141, 0x3000).build();
    LocaleDirectory directory;
    directory.add(LanguageSpec{1, "English", 10, 31, 1})
        .add(LanguageSpec{2, "German", 20, 30, 2})
        .add(LanguageSpec{3, "Japanese", 30, 32, 0})
        .add(TerritorySpec{.id = 10, .name = "America"})
        .add(TerritorySpec{.id = 20, .name = "Germany"})
        .add(TerritorySpec{.id = 30, .name = "Nippon"})
        .add("Latin1", latin)
        .add("US", us)
        .add("Double", doubleByte)
        .add("Shift", shifting)
        .add(SortSpec{1, "Plain"})
        .add(SortSpec{2, "Book"});
    return directory;
}

} // namespace vlx::test
