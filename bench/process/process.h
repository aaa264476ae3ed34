/*
 * What the small programs share whose start bench/process.py measures. Each writes one line, its
 * first answer; with an argument it goes on with the memory that it took.
 */
#include <fcntl.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

/* Copies the line of a file of /proc that begins with `key` to the standard output. */
static void tell(const char* path, const char* key)
{
    char text[4096];
    const int file = open(path, O_RDONLY);
    const ssize_t size = file < 0 ? -1 : read(file, text, sizeof text - 1);
    if (size < 0)
        return;
    close(file);
    text[size] = 0;
    const char* const line = strstr(text, key);
    if (line && write(STDOUT_FILENO, line, strcspn(line, "\n") + 1) < 0)
        _exit(2);
}

/* Ends the program with its answer, an amount in CP1252. */
static int answer(int argc, const char* text)
{
    char line[64];
    const int size = snprintf(line, sizeof line, "%s\n", text);
    if (size < 2 || write(STDOUT_FILENO, line, (size_t)size) != size)
        return 1;
    if (argc > 1) {
        tell("/proc/self/status", "VmHWM:");
        tell("/proc/self/smaps_rollup", "Rss:");
    }
    return 0;
}
