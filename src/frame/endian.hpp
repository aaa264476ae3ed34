// Little-endian fields of the file formats: byte structs without alignment, so that a format struct
// can stand on any byte of a mapping.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace vlx {

template <class Word>
class LittleEndian {
  public:
    LittleEndian() = default;
    constexpr LittleEndian(Word value) : bytes_{}
    {
        for (std::size_t i = 0; i < sizeof(Word); ++i)
            bytes_[i] = static_cast<std::uint8_t>(value >> (8 * i));
    }

    constexpr operator Word() const
    {
        if (!std::is_constant_evaluated() && std::endian::native == std::endian::little) {
            Word value;
            std::memcpy(&value, bytes_, sizeof value);
            return value;
        }
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < sizeof(Word); ++i)
            value |= static_cast<std::uint64_t>(bytes_[i]) << (8 * i);
        return static_cast<Word>(value);
    }

  private:
    std::uint8_t bytes_[sizeof(Word)];
};

using Le16 = LittleEndian<std::uint16_t>;
using Le32 = LittleEndian<std::uint32_t>;

static_assert(sizeof(Le16) == 2 && alignof(Le16) == 1);
static_assert(sizeof(Le32) == 4 && alignof(Le32) == 1);

} // namespace vlx
