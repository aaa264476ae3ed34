// The names of the files of a locale directory, and where to look for one.
#pragma once

#include <cstdint>

// Composes the name of the control file, of an object's file or of the alias file. They return
// `buffer`, or null if the name does not fit.
char* TSComposeControlName(const char* directory, char* buffer, std::uint32_t size);
char* TSComposeObjectName(const char* directory, unsigned type, unsigned id, char* buffer,
                          std::uint32_t size);
char* TSComposeAliasName(const char* directory, char* buffer, std::uint32_t size);

// A candidate for the locale directory: 0 the variable TS_LOCALEDIR, 1 the fixed one. The length
// with terminator, 0 if it does not fit, -1 if the variable is not set.
std::int32_t TSLocaleDirCandidate(char* buffer, std::uint32_t size, std::int32_t which);

// A configuration value: its length with terminator, 0 if it is not set. It is copied only if it
// fits, so the caller compares the result with `size`.
std::uint32_t TSGetConfigValue(const char* name, char* buffer, std::uint32_t size);
