// The file layer: all file access of the library but that of alias.txt. Object files are mapped; an
// existing file that is written is replaced only when it is closed, so that a half-written one
// never takes its place.
#pragma once

#include <cstdint>

#include "host/host.hpp"
#include "tessera.h"

struct TSFile {
    vlx::host::File handle;
    vlx::host::Mapping mapping; // 0 until the first TSLoadFile
    std::uint8_t mode;          // TS_FILE_READ and so on
    bool usesTemp;              // writing through a temporary file
    bool atEnd;                 // the last read returned nothing
    char targetStem[261];       // the target's path without its extension, when `usesTemp`
    char targetExtension[260];  // the extension with its dot, when `usesTemp`
};

// Opens a file. In write mode an existing file is written under a temporary name, unless
// `overwrite` is not 0. Null with a code: 1, 20, 1000 not found, 1001 access denied, 1003 path too
// long, 2 an unknown mode.
TSFile* TSOpenFile(TSContext context, const char* path, std::uint8_t mode, std::int32_t overwrite,
                   std::int32_t* code);

// Closes a file; a temporary one takes its target's place, or is dropped if `discard` is 1. 0, or 1
// for a failure, after which the record may still be allocated.
std::int32_t TSCloseFile(TSFile* file, std::int32_t discard);

// Reads and returns the number of bytes; codes 1002, 1003.
std::uint32_t TSReadFile(TSFile* file, void* buffer, std::uint32_t count, std::int32_t* code);

// Moves the position; 0, or 1 for a failure. `whence` is TS_SEEK_SET and so on.
std::int32_t TSSeekFile(TSFile* file, std::int32_t offset, std::int32_t whence);

// The size of a file in bytes; false if it cannot be told or has no 32 bits.
bool TSFileSize(TSFile* file, std::uint32_t* size);

// The bytes of a file at `offset`, read-only, valid until TSUnloadFile; null with a code, or with
// code 0 for a size of 0.
const void* TSLoadFile(TSFile* file, std::uint32_t offset, std::uint32_t size, std::int32_t* code);

// Gives the bytes back, the file not being needed; 0 or 1005.
std::int32_t TSUnloadFile(const void* pointer);
