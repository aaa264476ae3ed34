/* An amount by the customs of the locale that the environment names, in the C library. */
#include "process.h"

#include <locale.h>
#include <monetary.h>

int main(int argc, char** argv)
{
    (void)argv;
    char text[32];
    const locale_t locale = newlocale(LC_ALL_MASK, "", NULL);
    if (!locale || strfmon_l(text, sizeof text, locale, "%n", 1234.56) < 0)
        return 1;
    return answer(argc, text);
}
