#include "frame/file.hpp"

#include <cstring>

#include "frame/globals.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsfile");

namespace host = vlx::host;

namespace {

constexpr char kTempExtension[] = ".tmp";

std::int32_t codeOf(host::OpenError error)
{
    switch (error) {
    case host::OpenError::kNotFound:
        return TS_ERR_FILE_NOT_FOUND;
    case host::OpenError::kAccessDenied:
        return TS_ERR_FILE_ACCESS;
    default:
        return TS_ERR_FAILED;
    }
}

// A path of two parts, terminated. `size` is enough: TSOpenFile has measured the parts.
void join(char* path, std::size_t size, const char* stem, const char* extension)
{
    const std::size_t length = std::strlen(stem);
    std::memcpy(path, stem, length);
    std::strncpy(path + length, extension, size - length - 1);
    path[size - 1] = 0;
}

using PathBuffer = char[sizeof(TSFile::targetStem) + sizeof(TSFile::targetExtension)];

// Keeps the target in the record; false if it is too long.
bool splitTarget(TSFile& file, const char* path)
{
    const std::size_t stem = host::stemLength(path);
    const std::size_t extension = std::strlen(path + stem);
    if (stem >= sizeof file.targetStem || extension >= sizeof file.targetExtension)
        return false;
    std::memcpy(file.targetStem, path, stem);
    file.targetStem[stem] = 0;
    std::memcpy(file.targetExtension, path + stem, extension + 1);
    file.usesTemp = true;
    return true;
}

} // namespace

TSFile* TSOpenFile(TSContext, const char* path, std::uint8_t mode, std::int32_t overwrite,
                   std::int32_t* code)
{
    TS_TRACE(TSOpenFile);
    *code = TS_ERR_NONE;
    TS_PRINT(TRC1_INPUTS, "Opening file %s", path);
    TSFile* const none = nullptr;
    if (mode > TS_FILE_UPDATE)
        TS_FAIL(*code, TS_ERR_ARGUMENT, none, "Unknown file mode %d", mode);
    auto* const file = static_cast<TSFile*>(vlx::allocate(sizeof(TSFile)));
    if (!file)
        TS_FAIL(*code, TS_ERR_MEMORY, none, "Unable to allocate %d bytes for file %s",
                static_cast<int>(sizeof(TSFile)), path);
    file->mapping = 0;
    file->mode = mode;
    file->usesTemp = false;
    file->atEnd = mode == TS_FILE_WRITE;

    PathBuffer temp;
    const char* opened = path;
    if (mode == TS_FILE_WRITE && overwrite == 0 && host::exists(path)) {
        if (!splitTarget(*file, path)) {
            vlx::release(file);
            TS_FAIL(*code, TS_ERR_FILE_READ, none, "Path %s is too long", path);
        }
        join(temp, sizeof temp, file->targetStem, kTempExtension);
        opened = temp;
        TS_PRINT(TRC1_INPUTS, "Using temp file %s", temp);
    }
    constexpr host::Access access[] = {host::Access::kRead, host::Access::kWrite,
                                       host::Access::kUpdate};
    host::OpenError error = host::OpenError::kNone;
    file->handle = host::open(opened, access[mode], error);
    if (file->handle == host::kNoFile) {
        vlx::release(file);
        *code = codeOf(error);
        TS_FAIL(*code, *code, none, "Open of %s failed, err = %d", opened, *code);
    }
    TS_RETURN(file);
}

std::int32_t TSCloseFile(TSFile* file, std::int32_t discard)
{
    TS_TRACE(TSCloseFile);
    if (file->mapping != 0 && !host::closeMapping(file->mapping))
        TS_RETURN(TS_ERR_FAILED);
    file->mapping = 0;
    if (!host::close(file->handle))
        TS_RETURN(TS_ERR_FAILED);
    std::int32_t result = TS_ERR_NONE;
    if (file->usesTemp) {
        PathBuffer temp;
        PathBuffer target;
        join(temp, sizeof temp, file->targetStem, kTempExtension);
        join(target, sizeof target, file->targetStem, file->targetExtension);
        if (discard == 1) {
            host::remove(temp);
        } else {
            TS_PRINT(TRC1_INPUTS, "Renaming %s to %s", temp, target);
            const std::uint32_t error = host::replace(temp, target);
            result = error == 0 ? TS_ERR_NONE : TS_ERR_FAILED;
            // Deliberate: this line comes after a good rename too.
            TS_PRINT(TRC1_ERRORS, "Close failed, rc = %d", static_cast<std::int32_t>(error));
        }
    }
    vlx::release(file);
    TS_RETURN(result);
}

std::uint32_t TSReadFile(TSFile* file, void* buffer, std::uint32_t count, std::int32_t* code)
{
    TS_TRACE(TSReadFile);
    *code = TS_ERR_NONE;
    if (file->mode == TS_FILE_WRITE)
        TS_FAIL(*code, TS_ERR_FILE_MODE, 0u, "Read of file %p, which is written",
                static_cast<void*>(file));
    std::uint32_t done = 0;
    if (!host::read(file->handle, buffer, count, done))
        TS_FAIL(*code, TS_ERR_FILE_READ, 0u, "Read of %u bytes from file %p failed", count,
                static_cast<void*>(file));
    if (done == 0)
        file->atEnd = true;
    TS_RETURN(done);
}

std::int32_t TSSeekFile(TSFile* file, std::int32_t offset, std::int32_t whence)
{
    TS_TRACE(TSSeekFile);
    constexpr host::Origin origins[] = {host::Origin::kBegin, host::Origin::kCurrent,
                                        host::Origin::kEnd};
    file->atEnd = false;
    const bool known = whence >= TS_SEEK_SET && whence <= TS_SEEK_END;
    const bool moved = known && host::seek(file->handle, offset, origins[whence - TS_SEEK_SET]);
    TS_RETURN(moved ? 0 : 1);
}

bool TSFileSize(TSFile* file, std::uint32_t* size)
{
    TS_TRACE(TSFileSize);
    std::uint64_t bytes = 0;
    if (!host::size(file->handle, bytes) || bytes > UINT32_MAX)
        TS_RETURN(false);
    *size = static_cast<std::uint32_t>(bytes);
    TS_RETURN(true);
}

const void* TSLoadFile(TSFile* file, std::uint32_t offset, std::uint32_t size, std::int32_t* code)
{
    TS_TRACE(TSLoadFile);
    const void* const none = nullptr;
    *code = TS_ERR_NONE;
    if (file->mode == TS_FILE_WRITE)
        TS_FAIL(*code, TS_ERR_FILE_MODE, none, "Map of file %p, which is written",
                static_cast<void*>(file));
    if (size == 0)
        TS_RETURN(none);
    if (file->mapping == 0) {
        file->mapping = host::createMapping(file->handle);
        if (file->mapping == 0)
            TS_FAIL(*code, TS_ERR_FAILED, none, "Mapping of file %p failed",
                    static_cast<void*>(file));
    }
    // A view begins at a multiple of the granularity; what is asked for stands `delta` behind it.
    const std::uint32_t delta = offset % host::granularity();
    const void* view = nullptr;
    if (size <= UINT32_MAX - delta)
        view = host::mapView(file->mapping, offset - delta, size + delta);
    if (!view)
        TS_FAIL(*code, TS_ERR_FILE_READ, none, "View of %u bytes at offset %u of file %p failed",
                size, offset, static_cast<void*>(file));
    const void* const bytes = static_cast<const char*>(view) + delta;
    TS_RETURN(bytes);
}

std::int32_t TSUnloadFile(const void* pointer)
{
    TS_TRACE(TSUnloadFile);
    const std::uintptr_t delta = reinterpret_cast<std::uintptr_t>(pointer) % host::granularity();
    const void* const view = static_cast<const char*>(pointer) - delta;
    TS_RETURN(host::unmapView(view) ? TS_ERR_NONE : TS_ERR_FILE_UNMAP);
}
