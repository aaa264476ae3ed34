// Buffer conversion, step by step as it is told.
#include <algorithm>

#include "support/oracle_convert.hpp"
#include "support/oracle_strings_walk.hpp"

namespace vlx::oracle {

namespace {

constexpr std::int32_t kOutputFull = 52;
constexpr std::int32_t kPartialChar = 53;

// A character's length is compared with the low half of a count.
std::ptrdiff_t lowHalf(std::int32_t count)
{
    return count & 0xFFFF;
}

} // namespace

// A call in progress.
struct Conversion::Call {
    Span input;
    Progress progress;

    unsigned byte() const { return input.at(progress.consumed); }
    Span here() const { return input.from(progress.consumed); }
    void moveInput(std::ptrdiff_t bytes)
    {
        progress.consumed += bytes;
        progress.inputCount -= static_cast<std::int32_t>(bytes);
    }
    void put(unsigned byte)
    {
        progress.written.push_back(static_cast<unsigned char>(byte));
        progress.outputCount -= 1;
    }
    bool stop(std::int32_t result)
    {
        progress.result = result;
        return false;
    }
    // Keeps what is left of the input as the beginning of a character.
    bool keepRest(Bytes& partial)
    {
        const std::ptrdiff_t kept = lowHalf(progress.inputCount);
        for (std::ptrdiff_t i = 0; i < kept; ++i)
            partial.push_back(static_cast<unsigned char>(here().at(i)));
        progress.consumed += progress.inputCount;
        progress.inputCount = 0;
        return stop(kPartialChar);
    }
};

std::ptrdiff_t Conversion::lengthAt(unsigned byte) const
{
    return source_.stateful ? stepOf(source_, sourceState_)
                            : static_cast<std::ptrdiff_t>(charLength(source_.page, byte));
}

bool Conversion::isSourceShift(unsigned byte) const
{
    return source_.stateful && isShift(source_, byte);
}

std::uint16_t Conversion::valueOf(Span character, std::ptrdiff_t length) const
{
    return unicodeOf(source_.page, character, source_.stateful && sourceState_ == 0 ? 1 : length);
}

bool Conversion::drain(Call& call)
{
    if (pendingCount_ == 0)
        return true;
    if (call.progress.outputCount <= 0)
        return call.stop(kOutputFull);
    const std::int32_t copied = std::min(call.progress.outputCount, pendingCount_);
    for (std::int32_t i = 0; i < copied; ++i)
        call.put(pending_[i]);
    pendingCount_ -= copied;
    if (pendingCount_ == 0)
        return true;
    // Deliberate: fewer bytes than are pending are moved down, so that some come again.
    for (std::int32_t i = 0; i < pendingCount_ - copied; ++i)
        pending_[i] = pending_[i + copied];
    return call.stop(kOutputFull);
}

bool Conversion::finishPartial(Call& call, std::uint16_t& value)
{
    const std::ptrdiff_t length = lengthAt(partial_[0]);
    const std::ptrdiff_t missing = length - std::ssize(partial_);
    if (missing > lowHalf(call.progress.inputCount))
        return call.keepRest(partial_);
    for (std::ptrdiff_t i = 0; i < missing; ++i)
        partial_.push_back(static_cast<unsigned char>(call.here().at(i)));
    call.moveInput(missing);
    value = valueOf(Span(partial_), length);
    partial_.clear();
    return true;
}

bool Conversion::readCharacter(Call& call, std::uint16_t& value)
{
    if (call.progress.inputCount <= 0)
        return call.stop(0);
    if (isSourceShift(call.byte())) {
        sourceState_ = stateBehind(source_, call.byte());
        call.moveInput(1);
        if (call.progress.inputCount == 0)
            return call.stop(0);
    }
    const std::ptrdiff_t length = lengthAt(call.byte());
    if (length > lowHalf(call.progress.inputCount))
        return call.keepRest(partial_);
    value = valueOf(call.here(), length);
    call.moveInput(length);
    return true;
}

void Conversion::putOrKeep(Call& call, std::optional<unsigned> shift, const Bytes& character)
{
    const auto keep = [&](unsigned byte) {
        pending_[pendingCount_++] = static_cast<unsigned char>(byte);
    };
    if (shift && call.progress.outputCount == 0) {
        keep(*shift);
        for (const unsigned char byte : character)
            keep(byte);
        return;
    }
    if (shift)
        call.put(*shift);
    for (const unsigned char byte : character) {
        if (call.progress.outputCount > 0)
            call.put(byte);
        else
            keep(byte);
    }
}

bool Conversion::write(Call& call, std::uint16_t value)
{
    const Bytes bytes = unicodeToMb(target_.page, value);
    std::optional<unsigned> shift;
    if (target_.stateful && bytes.size() == 1 && targetState_ == 1) {
        shift = shiftOut(target_.page);
        targetState_ = 0;
    } else if (target_.stateful && bytes.size() > 1 && targetState_ == 0) {
        shift = shiftIn(target_.page);
        targetState_ = 1;
    }
    if (std::ssize(bytes) + (shift ? 1 : 0) > call.progress.outputCount) {
        putOrKeep(call, shift, bytes);
        return call.stop(kOutputFull);
    }
    if (shift)
        call.put(*shift);
    for (const unsigned char byte : bytes)
        call.put(byte);
    return true;
}

Progress Conversion::convert(Span input, std::int32_t inputCount, std::int32_t outputCount)
{
    Call call{input, {0, 0, inputCount, outputCount, {}}};
    std::uint16_t value = 0;
    if (!drain(call))
        return call.progress;
    bool goesOn = partial_.empty() ? readCharacter(call, value) : finishPartial(call, value);
    while (goesOn)
        goesOn = write(call, value) && readCharacter(call, value);
    return call.progress;
}

std::int32_t conversionRatio(const Locale& target, const Locale& source)
{
    if (target.page.id == source.page.id)
        return 1;
    return static_cast<std::int32_t>(maxCharBytes(target.page)) + (target.stateful ? 1 : 0);
}

} // namespace vlx::oracle
