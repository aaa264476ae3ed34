// The word of a thread, on a Windows host: a fiber's word, since only that one has an end.
#include "host/zbq/slot.hpp"

#include <windows.h>

namespace zbq {

namespace {

INIT_ONCE keyOnce = INIT_ONCE_STATIC_INIT;
DWORD key = FLS_OUT_OF_INDEXES;

void WINAPI end(void* word)
{
    if (!word)
        return;
    FlsSetValue(key, nullptr);
    endThreadWord(word);
}

// The system would call an end that is unloaded: so this module stays.
BOOL WINAPI makeKey(INIT_ONCE*, void*, void**)
{
    HMODULE module;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const char*>(&end), &module);
    key = FlsAlloc(end);
    return TRUE;
}

bool haveKey()
{
    InitOnceExecuteOnce(&keyOnce, makeKey, nullptr, nullptr);
    return key != FLS_OUT_OF_INDEXES;
}

} // namespace

void* threadWord()
{
    return haveKey() ? FlsGetValue(key) : nullptr;
}

bool setThreadWord(void* word)
{
    return haveKey() && FlsSetValue(key, word) != 0;
}

} // namespace zbq
