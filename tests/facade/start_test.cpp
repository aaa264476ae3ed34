// The start of the process and of threads.
#include "facade/facade_fixture.hpp"
#include "host/host.hpp"

namespace vlx::test {
namespace {

using FacadeStart = FacadeTest;

TEST_F(FacadeStart, TheUsersLocaleIsTheDefaultAndThatOfTheThread)
{
    MemoryHost::setEnvironment("TS_LANG", "German");
    start(facadeDirectory());
    EXPECT_EQ(NLS1_PrivateFunction_GetProcessLocale(), 0);
    EXPECT_EQ(startState, kStarted);
    EXPECT_EQ(processWord(), 0);
    EXPECT_EQ(nameOf(tsDefaultLocale), "German_Germany.Latin1@Book");
    TSLocale* const own = NLS1_PrivateFunction_GetThreadLocale();
    EXPECT_EQ(nameOf(own), "German_Germany.Latin1@Book");
    EXPECT_NE(own, tsDefaultLocale);
    EXPECT_EQ(NLS1_PrivateFunction_GetThreadLocale(), own);
}

TEST_F(FacadeStart, WithoutItsVariableTheLibrarySearchesAsEver)
{
    facadeDirectory().put("/other");
    setConfig("TS_LOCALEDIR", "/other");
    MemoryHost::setEnvironment("TS_LANG", "Japanese");
    Trace::setMask(TRC1_START);
    start();
    EXPECT_TRUE(Trace::printed("Unable to determine location of locale definitions\n"));
    EXPECT_EQ(nameOf(NLS1_PrivateFunction_GetThreadLocale()), "Japanese_Nippon.Double@Binary");
}

TEST_F(FacadeStart, WithoutAnyVariableTheDefaultPathIsTaken)
{
    facadeDirectory().put(host::kDefaultDirectory);
    MemoryHost::setEnvironment("TS_LANG", "Japanese");
    start();
    EXPECT_EQ(nameOf(NLS1_PrivateFunction_GetThreadLocale()), "Japanese_Nippon.Double@Binary");
}

TEST_F(FacadeStart, WithoutAnyDataItRunsOnTheBuiltinObjects)
{
    MemoryHost::setEnvironment("TS_LANG", "German_Germany.Latin1@Book");
    start();
    EXPECT_EQ(startState, kStarted);
    EXPECT_EQ(processWord(), 0);
    EXPECT_EQ(nameOf(NLS1_PrivateFunction_GetThreadLocale()),
              "English_UnitedStates.US-ASCII@Binary");
}

TEST_F(FacadeStart, AStartThatFailsLeavesNoThreadALocale)
{
    Trace::setMask(TRC1_START);
    MemoryHost::failCall(1);
    start();
    EXPECT_TRUE(Trace::printed("Unable to initialize Tessera, rc = 20"));
    EXPECT_EQ(startState, kStartFailed);
    EXPECT_EQ(processWord(), 20);
    EXPECT_EQ(NLS1_PrivateFunction_GetThreadLocale(), nullptr);
    EXPECT_EQ(NLS1_PrivateFunction_GetProcessLocale(), 0);

    EXPECT_EQ(NLS1_GetLocale(0, 0, 0, &code_), nullptr);
    EXPECT_EQ(code_, 1);
    EXPECT_EQ(NLS1_SetLocale(0, 0, 0), 11);
    const std::uint32_t native = 0x0407;
    EXPECT_EQ(NLS1_SetLocaleFromNative(&native, NLS1_PROCESS), 11);
    EXPECT_EQ(NLS1_ConvertNativeLocale(&native, 0, &code_), nullptr);
    EXPECT_EQ(code_, 11);
    EXPECT_EQ(NLS1_GetLanguageId("English", &code_), 0);
    EXPECT_EQ(code_, 11);
    char buffer[40] = "#";
    EXPECT_EQ(NLS1_GetSortName(1, buffer, sizeof buffer), 11);
    EXPECT_STREQ(buffer, "#");
    std::uint32_t error = 0;
    EXPECT_EQ(NLS1_TranslateString(1200, buffer, 40, 30, "a", 1, nullptr, 0, &error), -1);
    EXPECT_EQ(error, 11u);
}

TEST_F(FacadeStart, ADefaultLocaleThatFailsIsTracedAndLeavesTheStateStarted)
{
    LocaleDirectory directory; // no object that a fallback could take
    directory.add(SortSpec{1, "Plain"});
    Trace::setMask(TRC1_START);
    start(directory);
    EXPECT_TRUE(Trace::printed("Unable to set global locale, rc = "));
    EXPECT_EQ(startState, kStarted);
    EXPECT_NE(processWord(), 0);
    EXPECT_EQ(NLS1_PrivateFunction_GetThreadLocale(), nullptr);
}

TEST_F(FacadeStart, AThreadWithoutMemoryHasNoLocale)
{
    start(facadeDirectory());
    TermThread(threadLocale());
    Trace::setMask(TRC1_ERRORS);
    MemoryHost::failCall(1);
    InitThread(threadLocale());
    EXPECT_TRUE(Trace::printed("Unable to set thread locale, rc = 20"));
    EXPECT_EQ(NLS1_PrivateFunction_GetThreadLocale(), nullptr);
}

TEST_F(FacadeStart, TracesUnderShorterNames)
{
    start(facadeDirectory());
    Trace::setMask(TRC1_FLOW);
    Trace::clear();
    NLS1_PrivateFunction_GetProcessLocale();
    NLS1_PrivateFunction_GetThreadLocale();
    EXPECT_EQ(Trace::count("NLS1_GetProcessLocale", TraceKind::kExitResult), 1);
    EXPECT_EQ(Trace::count("NLS1_GetThreadLocale", TraceKind::kExitResult), 1);
    EXPECT_EQ(Trace::records().front().source, "vlxnls1");
    EXPECT_EQ(Trace::records().front().component, "*");
}

} // namespace
} // namespace vlx::test
