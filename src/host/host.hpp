// The contract with the host: everything that the library asks of an operating system. `posix/` and
// `windows/` fulfil it, and the tests have a host that keeps its files in memory. One of them is
// linked; nothing else in the library knows a platform.
#pragma once

#include <cstddef>
#include <cstdint>

#include "tessera.h"

namespace vlx::host {

// An open file. The value belongs to the host; kNoFile is none.
using File = std::intptr_t;
inline constexpr File kNoFile = -1;

// A file prepared for mapping. 0 is none.
using Mapping = std::intptr_t;

enum class Access : std::uint8_t {
    kRead,   // an existing file, for reading, shared with other readers; read here and there
    kWrite,  // a new file, or an existing one emptied, for writing, not shared
    kUpdate, // an existing file, for reading and writing, not shared
};

// Why a file did not open.
enum class OpenError : std::uint8_t { kNone, kNotFound, kAccessDenied, kOther };

enum class Origin : std::uint8_t { kBegin, kCurrent, kEnd };

// Separators and fixed paths of this host. The control name carries its own separator.
extern const char* const kPathSeparator;
extern const char* const kControlName;      // "/control.nls"
extern const char* const kDefaultDirectory; // the locale directory when nothing else is told

// Opens a file; kNoFile and `error` on failure.
File open(const char* path, Access access, OpenError& error);

// False leaves the file open.
bool close(File file);

bool exists(const char* path);

// Reads at the file's position, which moves. False on failure; 0 bytes at the end of the file.
bool read(File file, void* buffer, std::uint32_t count, std::uint32_t& done);

// Moves the file's position.
bool seek(File file, std::int32_t offset, Origin origin);

// The size of a file in bytes.
bool size(File file, std::uint64_t& bytes);

// Removes a file.
bool remove(const char* path);

// Replaces `target` by `source` in one step: others see the old file or the new one. Gives 0, or
// the host's own number for the error.
std::uint32_t replace(const char* source, const char* target);

// Splits a path before the dot of its extension: `stemLength` counts what stands before it. A path
// without an extension has an empty one.
std::size_t stemLength(const char* path);

// Prepares the whole file for read-only views; 0 on failure, which an empty file is.
Mapping createMapping(File file);
bool closeMapping(Mapping mapping);

// A view begins at a multiple of this.
std::uint32_t granularity();

// Maps `length` bytes, read-only; null on failure, which a range outside the file is. `offset` is a
// multiple of the granularity, and so is the address.
const void* mapView(Mapping mapping, std::uint32_t offset, std::uint32_t length);

// Ends the view that begins at `view`; false if there is none.
bool unmapView(const void* view);

// The defaults of the allocator slots; the context is ignored. A free gives non-zero on success.
void* allocate(TSContext context, std::uint32_t bytes);
std::int32_t free(TSContext context, void* memory);

// Copies the value of an environment variable, terminated, if it fits `size`. Returns its length,
// the size needed with terminator if it does not fit, or -1 if it is not set.
std::int32_t environment(const char* name, char* buffer, std::uint32_t size);

// The id of the user's locale in the numbering of the native locale table; 0 if the host has none.
std::uint32_t userLocaleId();

// Makes a locale of the native table the host's own locale of the calling thread; false if the host
// does not know it, or has none of threads.
bool setThreadLocale(std::uint32_t id);

// What a locale of the host tells, in the numbering of Windows.
enum class Setting : std::uint32_t {
    kListSeparator = 0x0C,
    kDecimalPoint = 0x0E,
    kThousandsSeparator = 0x0F,
    kGrouping = 0x10, // as the library's own: sizes parted by ';', a final 0 repeats the last one
    kFractionDigits = 0x11,
    kCurrencySymbol = 0x14,
    kMonetaryDecimalPoint = 0x16,
    kMonetaryThousandsSeparator = 0x17,
    kMonetaryGrouping = 0x18,
    kCurrencyDigits = 0x19,
    kIntlCurrencyDigits = 0x1A,
    kDate = 0x1F, // pictures: runs of d, M, y, g, h, H, m, s, t, and text in single quotes
    kLongDate = 0x20,
    kPositiveSign = 0x50,
    kNegativeSign = 0x51,
    kPositiveSignPosition = 0x52,
    kNegativeSignPosition = 0x53,
    kPositiveSymbolPrecedes = 0x54,
    kPositiveSymbolSpaced = 0x55,
    kNegativeSymbolPrecedes = 0x56,
    kNegativeSymbolSpaced = 0x57,
    kTime = 0x1003,
    kAnsiCodePage = 0x1004, // of the narrow form
};

// The settings of a locale, opened for reading: as the user has changed them, or as the locale
// comes.
struct Settings {
    std::uint32_t locale;
    bool changedByUser;
    void* data; // the host's own; a locale that it does not have opens too, and tells nothing
};
Settings openSettings(std::uint32_t locale, bool changedByUser);
void closeSettings(const Settings& settings);

// Reads a setting, terminated. False if the host has none, or none that fits `size` elements; the
// buffer's content is then open. Numbers are decimal ASCII.
bool readSetting(const Settings& settings, Setting setting, char* text, std::uint32_t size);
bool readSetting16(const Settings& settings, Setting setting, TSChar16* text, std::uint32_t size);

// True if settings can be read as 16-bit text; if not, only in a code page of the host.
bool hasSettings16();

// Converts terminated text from a code page of the host; false if that fails or it does not fit.
bool toUnicode(std::uint32_t codePage, const char* text, TSChar16* unicode, std::uint32_t size);

// Compares bytes without regard to the case of ASCII letters.
bool equalIgnoringCase(const char* left, const char* right, std::size_t length);

} // namespace vlx::host
