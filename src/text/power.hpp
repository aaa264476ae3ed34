// Powers of ten.
#pragma once

#include <cstdint>
#include <limits>

namespace vlx {

inline constexpr std::int32_t kLeastPower = -323; // the others are 0 and infinite as a double
inline constexpr std::int32_t kMostPower = 308;
extern const double kPowers[kMostPower - kLeastPower + 1];

// 10 to a power, with the bits that pow() gives it. They come from a table, because one pow()
// differs from another in the last bit, and results rest on it.
inline double powerOfTen(std::int32_t exponent)
{
    if (exponent < kLeastPower)
        return 0;
    if (exponent > kMostPower)
        return std::numeric_limits<double>::infinity();
    return kPowers[exponent - kLeastPower];
}

} // namespace vlx
