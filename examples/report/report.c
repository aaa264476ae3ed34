/* A small product: three offices keep their accounts in files of their own, and each gets a report
 * in its language. Two threads work at the same time, each in a locale of its own, then the main
 * thread in a third.
 *
 *     cc -std=c11 -Iinclude examples/report/report.c -Lbuild/dev/lib -lvlx -pthread -o report
 *     NLS1_LOCALEDIR=build/dev/locale ./report examples build/dev/examples
 *
 * The first argument is the directory with the accounts, the second one that of the catalogs, which
 * `vlx-data catalog build` makes from messages.*.toml.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "nls1.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <pthread.h>
#endif

enum { MAX_ACCOUNTS = 32, MAX_TEXT = 4096, SET_REPORT = 1 };
enum { MSG_TITLE = 1, MSG_LINE = 2, MSG_TOTAL = 3 };
enum { UTF8 = 57352 };

/* One office: what it speaks, and in what its accounts come. */
typedef struct Office {
    int32_t ids;           /* language and territory */
    int32_t codePage;      /* of the report */
    const char* sort;      /* of the names; null for that of the language */
    const char* file;      /* of accounts */
    uint32_t fileCodePage; /* of that file */
    const char* accounts;  /* directory */
    const char* catalogs;  /* directory */
    char report[MAX_TEXT]; /* in UTF-8 */
    int failed;
} Office;

typedef struct Account {
    const char* name;
    int32_t nameLength;
    int32_t amount; /* in hundredths */
    TSTimeFields due;
} Account;

/* qsort() hands no context to its comparison. */
static _Thread_local TSLocale* sortLocale;

static int byName(const void* left, const void* right)
{
    const Account* const one = left;
    const Account* const other = right;
    return TSStrcoll(sortLocale, one->name, one->nameLength, other->name, other->nameLength, 0);
}

/* 0 is Sunday. */
static int32_t dayOfWeek(int32_t year, int32_t month, int32_t day)
{
    static const int32_t shift[] = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
    if (month < 3)
        --year;
    return (year + year / 4 - year / 100 + year / 400 + shift[month - 1] + day) % 7;
}

/* Reads "NAME;HUNDREDTHS;YYYYMMDD" up to the end of the line; null at the end of the text. */
static char* readAccount(TSLocale* locale, char* line, Account* account)
{
    char* const semicolon = *line ? TSStrchr(locale, line, -1, ";", 0) : NULL;
    if (!semicolon)
        return NULL;
    account->name = line;
    account->nameLength = (int32_t)(semicolon - line);
    char* end = semicolon;
    account->amount = TSStringToLong(locale, semicolon + 1, -1, &end, 10, 0);
    const int32_t date = TSStringToLong(locale, end + 1, -1, &end, 10, 0);
    memset(&account->due, 0, sizeof account->due);
    account->due.dayOfMonth = date % 100;
    account->due.month = date / 100 % 100 - 1;
    account->due.year = date / 10000 - 1900;
    account->due.dayOfWeek =
        dayOfWeek(date / 10000, account->due.month + 1, account->due.dayOfMonth);
    return *end ? end + 1 : end;
}

/* Reads the file of accounts into text of the locale's code page. */
static int readFile(const Office* office, char* text)
{
    char path[512];
    char bytes[MAX_TEXT];
    uint32_t error = 0;
    snprintf(path, sizeof path, "%s/%s", office->accounts, office->file);
    FILE* const file = fopen(path, "rb");
    if (!file)
        return 0;
    const size_t size = fread(bytes, 1, sizeof bytes, file);
    fclose(file);
    NLS1_TranslateString((uint32_t)office->codePage, text, MAX_TEXT, office->fileCodePage, bytes,
                         (int32_t)size, NULL, TS_OPT_TERMINATE, &error);
    return error == TS_ERR_NONE;
}

/* A report under construction. */
typedef struct Page {
    char* text;
    size_t size;
} Page;

static void put(Page* page, const char* text)
{
    const size_t length = strlen(text);
    if (page->size + length < MAX_TEXT)
        memcpy(page->text + page->size, text, length);
    page->size += page->size + length < MAX_TEXT ? length : 0;
}

/* Writes a message and puts the words in the place of each "%s". A translator's text is never given
 * to printf(): it could ask for more than there is. A byte of a longer character is no percent
 * sign, since TSStrchr() steps by characters. */
static void putMessage(TSLocale* locale, Page* page, char* message, const char* const* words)
{
    for (char* sign; (sign = TSStrchr(locale, message, -1, "%", 0)) != NULL; message = sign + 2) {
        if (sign[1] != 's' || !*words)
            break;
        *sign = 0;
        put(page, message);
        put(page, *words++);
    }
    put(page, message);
    put(page, "\n");
}

/* Writes the report in the code page of the locale, and gives its length. */
static int writeReport(TSLocale* locale, TSCatalog* catalog, const Account* accounts, int count,
                       char* report)
{
    char text[256];
    char name[128];
    char amount[64];
    char date[64];
    char pattern[64];
    const char* const words[] = {name, amount, date, NULL};
    int32_t total = 0;
    Page page = {report, 0};

    TSGetMessage(catalog, SET_REPORT, MSG_TITLE, text, sizeof text, "");
    putMessage(locale, &page, text, words);
    NLS1_GetLocaleTextInfo(locale, TS_LI_LONG_DATE_FORMAT, pattern, sizeof pattern, 0);
    for (int i = 0; i < count; ++i) {
        snprintf(name, sizeof name, "%.*s", (int)accounts[i].nameLength, accounts[i].name);
        TSCurrencyToString(locale, accounts[i].amount / 100.0, amount, sizeof amount,
                           TS_OPT_TERMINATE);
        TSTimeToString(locale, &accounts[i].due, date, sizeof date, pattern, -1, TS_OPT_TERMINATE);
        TSGetMessage(catalog, SET_REPORT, MSG_LINE, text, sizeof text, "%s %s %s");
        putMessage(locale, &page, text, words);
        total += accounts[i].amount;
    }
    TSLongToString(locale, count, name, sizeof name, TS_OPT_TERMINATE);
    TSCurrencyToString(locale, total / 100.0, amount, sizeof amount, TS_OPT_TERMINATE);
    TSGetMessage(catalog, SET_REPORT, MSG_TOTAL, text, sizeof text, "%s %s");
    putMessage(locale, &page, text, words);
    return (int)page.size;
}

static int work(Office* office, TSLocale* locale, TSCatalog* catalog)
{
    char text[MAX_TEXT];
    char report[MAX_TEXT];
    Account accounts[MAX_ACCOUNTS];
    uint32_t error = 0;
    int count = 0;
    if (!readFile(office, text))
        return 0;
    for (char* line = text; line && count < MAX_ACCOUNTS;) {
        line = readAccount(locale, line, &accounts[count]);
        if (line)
            ++count;
    }
    sortLocale = locale;
    qsort(accounts, (size_t)count, sizeof *accounts, byName);
    const int size = writeReport(locale, catalog, accounts, count, report);
    NLS1_TranslateString(UTF8, office->report, MAX_TEXT, (uint32_t)office->codePage, report, size,
                         NULL, TS_OPT_TERMINATE, &error);
    return error == TS_ERR_NONE;
}

static void run(Office* office)
{
    char templates[512];
    int32_t code = TS_ERR_NONE;
    TSLocale* const locale = NLS1_GetLocale(office->ids, office->codePage, 0, &code);
    office->failed = 1;
    if (!locale)
        return;
    if (office->sort)
        NLS1_SetLocaleTextInfo(locale, TS_LI_SORT_OBJECT, office->sort, -1, 0);
    snprintf(templates, sizeof templates, "%s/%%N.%%l.cat", office->catalogs);
    TSCatalog* const catalog = TSOpenCatalog(locale, templates, "report", TS_CATALOG_PRELOAD);
    if (catalog) {
        office->failed = !work(office, locale, catalog);
        TSCloseCatalog(catalog);
    }
    TSReleaseLocale(locale);
}

#if defined(_WIN32)
typedef HANDLE Thread;
static DWORD WINAPI runThread(void* office)
{
    run(office);
    return 0;
}
static Thread start(Office* office)
{
    return CreateThread(NULL, 0, runThread, office, 0, NULL);
}
static void finish(Thread thread)
{
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}
#else
typedef pthread_t Thread;
static void* runThread(void* office)
{
    run(office);
    return NULL;
}
static Thread start(Office* office)
{
    pthread_t thread;
    if (pthread_create(&thread, NULL, runThread, office) != 0)
        abort();
    return thread;
}
static void finish(Thread thread)
{
    pthread_join(thread, NULL);
}
#endif

int main(int argc, char** argv)
{
    static Office offices[] = {
        {276 * 65536 + 2, 1252, "GermanPhonebook", "accounts.ibm273.txt", 273, NULL, NULL, "", 0},
        {392 * 65536 + 11, 932, NULL, "accounts.ibm930.txt", 930, NULL, NULL, "", 0},
        {840 * 65536 + 1, 1252, "General", "accounts.ms1252.txt", 1252, NULL, NULL, "", 0},
    };
    const int count = (int)(sizeof offices / sizeof *offices);
    for (int i = 0; i < count; ++i) {
        offices[i].accounts = argc > 1 ? argv[1] : ".";
        offices[i].catalogs = argc > 2 ? argv[2] : ".";
    }
    NLS1_PrivateFunction_GetProcessLocale();
    const Thread german = start(&offices[0]);
    const Thread japanese = start(&offices[1]);
    run(&offices[2]);
    finish(german);
    finish(japanese);

    int failed = 0;
    for (int i = 0; i < count; ++i) {
        printf("%s\n", offices[i].report);
        if (offices[i].failed)
            fprintf(stderr, "report: no report from %s\n", offices[i].file);
        failed |= offices[i].failed;
    }
    return failed;
}
