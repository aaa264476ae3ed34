#include "streams/device.hpp"

#include <algorithm>

namespace vlx::test {

std::int32_t Device::answer(std::int32_t count)
{
    asked.push_back(count);
    unsigned roll = static_cast<unsigned>(random_() % 64);
    const auto falls = [&roll](unsigned often) {
        if (roll < often)
            return true;
        roll -= often;
        return false;
    };
    if (falls(mood_.brief))
        return 1 + static_cast<std::int32_t>(random_() % static_cast<std::uint64_t>(count));
    if (falls(mood_.nothing))
        return 0;
    if (falls(mood_.ended))
        return -1;
    if (falls(mood_.failed))
        return -2 - static_cast<std::int32_t>(random_() % 3);
    if (falls(mood_.tooMany))
        return count + 1 + static_cast<std::int32_t>(random_() % 100);
    return count;
}

std::int32_t Device::give(unsigned char* buffer, std::int32_t count)
{
    const std::int32_t result = answer(count);
    if (result <= 0)
        return result;
    if (data.empty())
        return -1;
    const auto moved = std::min<std::ptrdiff_t>({result, count, std::ssize(data)});
    std::copy_n(data.begin(), moved, buffer);
    data.erase(data.begin(), data.begin() + moved);
    return result > count ? result : static_cast<std::int32_t>(moved);
}

std::int32_t Device::take(const unsigned char* buffer, std::int32_t count)
{
    const std::int32_t result = answer(count);
    if (result > 0)
        written.insert(written.end(), buffer, buffer + std::min(result, count));
    return result;
}

std::int32_t Device::read(TSContext context, void* buffer, std::int32_t count)
{
    return reinterpret_cast<Device*>(context)->give(static_cast<unsigned char*>(buffer), count);
}

std::int32_t Device::write(TSContext context, void* buffer, std::int32_t count)
{
    return reinterpret_cast<Device*>(context)->take(static_cast<unsigned char*>(buffer), count);
}

} // namespace vlx::test
