// The start of the facade: the base services run it once for the process and once for each thread.
#include "facade/facade.hpp"
#include "locale/locale.hpp"

TS_TRACE_UNIT_OF("*", "vlxnls1");

namespace vlx {

namespace {

constexpr char kDirectoryVariable[] = "NLS1_LOCALEDIR";
constexpr char kSourceName[] = "vlxnls1";
constexpr std::uint32_t kUserLocale = TS_LOCALE_USER | TS_LOCALE_FALLBACK;

std::int32_t* processWord()
{
    return static_cast<std::int32_t*>(
        SYS1_ResolveProcess(&processDescriptor, kSourceName, __LINE__));
}

} // namespace

constinit std::int32_t startState = kNotStarted;
constinit SYS1_Descriptor processDescriptor{sizeof(std::int32_t), InitProcess, TermProcess, 0,
                                            nullptr};
constinit SYS1_Descriptor threadDescriptor{sizeof(TSLocale*), InitThread, TermThread, 0, nullptr};

void InitProcess(void* data)
{
    TS_TRACE(InitProcess);
    const char* const directory = SYS1_GetEnv(kDirectoryVariable, 0);
    if (!directory)
        TS_PRINT(TRC1_START, "Unable to determine location of locale definitions\n");
    std::int32_t result = TSInit(directory, nullptr, nullptr, nullptr, nullptr, 0, 0);
    if (result == TS_ERR_NONE || result == TS_ERR_NO_CONTROL_FILE) {
        startState = kStarted;
        result = TSSetLocale(nullptr, kUserLocale);
        if (result != TS_ERR_NONE)
            TS_PRINT(TRC1_START, "Unable to set global locale, rc = %d", result);
    } else {
        startState = kStartFailed;
        TS_PRINT(TRC1_START, "Unable to initialize Tessera, rc = %d", result);
    }
    *static_cast<std::int32_t*>(data) = result;
    TS_RETURN();
}

void TermProcess(void*)
{
    TS_TRACE(TermProcess);
    if (startState == kStarted)
        TSTerm();
    TS_RETURN();
}

void InitThread(void* data)
{
    TS_TRACE(InitThread);
    TSLocale* locale = nullptr;
    const std::int32_t* const started = processWord();
    if (started && *started == TS_ERR_NONE) {
        std::int32_t code = TS_ERR_NONE;
        locale = TSGetLocale(nullptr, kUserLocale, &code);
        if (!locale)
            TS_PRINT(TRC1_ERRORS, "Unable to set thread locale, rc = %d", code);
    }
    *static_cast<TSLocale**>(data) = locale;
    TS_RETURN();
}

void TermThread(void* data)
{
    TS_TRACE(TermThread);
    if (TSLocale* const locale = *static_cast<TSLocale**>(data))
        TSReleaseLocale(locale);
    TS_RETURN();
}

bool facadeRuns()
{
    return processWord() && startState == kStarted && tsGlobals;
}

TSLocale** threadLocale()
{
    return static_cast<TSLocale**>(SYS1_ResolveThread(&threadDescriptor, kSourceName, __LINE__));
}

} // namespace vlx

int32_t NLS1_PrivateFunction_GetProcessLocale(void)
{
    TS_TRACE(NLS1_GetProcessLocale);
    vlx::facadeRuns();
    TS_RETURN(0);
}

TSLocale* NLS1_PrivateFunction_GetThreadLocale(void)
{
    TS_TRACE(NLS1_GetThreadLocale);
    TSLocale** const locale = vlx::threadLocale();
    TS_RETURN(locale ? *locale : nullptr);
}
