// The file layer on the memory host, with all trace on.
#pragma once

#include <cstring>

#include "frame/file.hpp"
#include "frame/store.hpp"

namespace vlx::test {

inline Bytes text(const char* string)
{
    return Bytes(string, string + std::strlen(string));
}

class File : public StoreTest {
  protected:
    File()
    {
        start("/nowhere");
        Trace::setMask(~0u);
        Trace::clear();
    }

    TSFile* open(const char* path, std::uint8_t mode, std::int32_t overwrite = 0)
    {
        code_ = 4711;
        return TSOpenFile(0, path, mode, overwrite, &code_);
    }
    // What a caller of write mode writes, which the layer itself has no function for.
    static void write(const std::string& path, const char* string)
    {
        MemoryHost::put(path, string);
    }

    std::int32_t code_ = 0;
};

} // namespace vlx::test
