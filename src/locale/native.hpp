// The tables of native locale ids: names, ascending by id, and the ids of objects, in which equal
// values stand together at each level.
#pragma once

#include <cstdint>

struct TSNativeLocaleRow {
    std::uint16_t nativeId;
    const char* name;
};

struct TSLocaleMapRow {
    std::uint16_t language;
    std::uint16_t territory;
    std::uint16_t codePage;
    std::uint16_t sort;
    std::uint16_t nativeId;
};

namespace vlx {

inline constexpr int kNativeLocaleCount = 114;
extern const TSNativeLocaleRow kNativeLocales[kNativeLocaleCount];

inline constexpr int kLocaleMapCount = 57;
extern const TSLocaleMapRow kLocaleMap[kLocaleMapCount];

} // namespace vlx
