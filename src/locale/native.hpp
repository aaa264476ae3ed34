// The table of native locale ids, ascending by id.
#pragma once

#include <cstdint>

struct TSNativeLocaleRow {
    std::uint16_t nativeId;
    const char* name;
};

namespace vlx {

inline constexpr int kNativeLocaleCount = 114;
extern const TSNativeLocaleRow kNativeLocales[kNativeLocaleCount];

} // namespace vlx
