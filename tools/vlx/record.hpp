// A line with its key, as it is kept in memory and in runs on disk: two sizes, the key, the line
// with its end.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "lines.hpp"

namespace vlx::cli {

struct RecordSizes {
    std::uint32_t key;
    std::uint32_t line;

    std::size_t total() const { return sizeof *this + key + line; }
};

struct Record {
    std::string_view key;
    std::string_view line;
};

// The room that a line takes with its key.
inline std::size_t recordSize(const Record& record)
{
    return sizeof(RecordSizes) + record.key.size() + record.line.size();
}
inline std::size_t recordSize(std::string_view key, const Line& line)
{
    return sizeof(RecordSizes) + key.size() + line.content.size() + line.end.size();
}

inline void storeRecord(char* to, std::string_view key, const Line& line)
{
    const RecordSizes sizes{static_cast<std::uint32_t>(key.size()),
                            static_cast<std::uint32_t>(line.content.size() + line.end.size())};
    std::memcpy(to, &sizes, sizeof sizes);
    to += sizeof sizes;
    for (const std::string_view piece : {key, line.content, line.end}) {
        if (!piece.empty())
            std::memcpy(to, piece.data(), piece.size());
        to += piece.size();
    }
}

inline RecordSizes sizesAt(const char* stored)
{
    RecordSizes sizes;
    std::memcpy(&sizes, stored, sizeof sizes);
    return sizes;
}

inline Record recordAt(const char* stored)
{
    const RecordSizes sizes = sizesAt(stored);
    const char* const key = stored + sizeof sizes;
    return {{key, sizes.key}, {key + sizes.key, sizes.line}};
}

// The first bytes of a key as a number of the same order. Where two are equal, the keys decide.
inline std::uint64_t headOf(std::string_view key)
{
    std::uint64_t head = 0;
    for (std::size_t i = 0; i < sizeof head; ++i)
        head = head << 8 | (i < key.size() ? static_cast<std::uint8_t>(key[i]) : 0U);
    return head;
}

} // namespace vlx::cli
