/* Starts the library, makes a locale, walks a Japanese text and stops.
 *
 *     cc -std=c11 -Iinclude examples/hello.c -Lbuild/dev/lib -lvlx -o hello
 *     LD_LIBRARY_PATH=build/dev/lib TS_LOCALEDIR=build/dev/locale ./hello
 */
#include <stdio.h>

#include "tessera.h"

/* Prints each character of a terminated text with its bytes and its packed value. */
static void walk(TSLocale* locale, const char* text)
{
    for (const char* at = text; *at;) {
        const char* const next = TSNextChar(locale, at);
        printf("%2d ", (int)(at - text));
        for (const char* byte = at; byte < next; ++byte)
            printf(" %02X", (unsigned)(unsigned char)*byte);
        printf("%s  packed %lX\n", next - at == 1 ? "   " : "",
               (unsigned long)TSGetChar(locale, at));
        at = next;
    }
    printf("%d characters\n", (int)TSNumChars(locale, text, -1, 0));
}

int main(void)
{
    /* TS_ERR_NO_CONTROL_FILE is no failure: the library runs on the objects that it brings. */
    const int32_t started = TSInit(NULL, NULL, NULL, NULL, NULL, 0, 0);
    if (started != TS_ERR_NONE && started != TS_ERR_NO_CONTROL_FILE) {
        fprintf(stderr, "hello: the library did not start, error %d\n", (int)started);
        return 1;
    }
    int32_t code = TS_ERR_NONE;
    TSLocale* const locale = TSGetLocale("Japanese_Japan.MS932", 0, &code);
    if (locale) {
        /* Two characters and ASCII; the second character ends with the byte of a brace. */
        walk(locale, "\x93\xFA\x96{ and hello");
        TSReleaseLocale(locale);
    } else {
        fprintf(stderr, "hello: no locale, error %d; does TS_LOCALEDIR name a locale directory?\n",
                (int)code);
    }
    TSTerm();
    return locale ? 0 : 1;
}
