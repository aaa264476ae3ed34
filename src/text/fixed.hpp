// The text that "%f" writes for a double.
#pragma once

#include <cstdint>

namespace vlx {

// The text, in ASCII: the sign, the digits, a point and six digits. This is the only rounding, a
// tie being rounded to even. What is no number has no point: "inf", "-nan".
class FixedText {
  public:
    explicit FixedText(double value);

    const char* begin() const { return text_; }
    std::int32_t wholeLength() const { return whole_; } // with the sign
    bool hasFraction() const { return hasFraction_; }
    const char* fraction() const { return text_ + whole_ + 1; }

    static constexpr int kDigits = 6;
    static constexpr int kMostWhole = 310; // the digits of the largest double, and a sign

  private:
    void writeSmall(char* at, double magnitude);
    void writeLarge(char* at, std::uint64_t number, int shift);
    void writeFraction(char* at, std::uint32_t fraction);
    void writeName(char* at, const char* name);

    char text_[kMostWhole + 1 + kDigits];
    std::int32_t whole_;
    bool hasFraction_;
};

} // namespace vlx
