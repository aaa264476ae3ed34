/* An amount by the customs of the user's locale, which the first call of the facade makes. */
#include "process.h"

#include "nls1.h"

int main(int argc, char** argv)
{
    (void)argv;
    char text[32];
    TSLocale* const locale = NLS1_PrivateFunction_GetThreadLocale();
    if (!locale || TSCurrencyToString(locale, 1234.56, text, sizeof text, TS_OPT_TERMINATE) < 0)
        return 1;
    return answer(argc, text);
}
