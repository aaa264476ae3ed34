#include "keys.hpp"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <utility>

#include <fmt/format.h>

#include "failure.hpp"

namespace vlx::cli {

namespace {

// A part between others: no part begins another one, so that what follows cannot decide before it,
// and turned round, bit by bit, it gives the opposite order. A zero byte gets a one behind it, and
// two zero bytes end the part.
void appendPart(std::string& key, std::string_view part, bool isReversed)
{
    const std::size_t begin = key.size();
    for (std::size_t zero; (zero = part.find('\0')) != std::string_view::npos;
         part.remove_prefix(zero + 1)) {
        key += part.substr(0, zero);
        key.append("\0\1", 2);
    }
    key += part;
    key.append("\0\0", 2);
    if (isReversed)
        std::transform(key.begin() + static_cast<std::ptrdiff_t>(begin), key.end(),
                       key.begin() + static_cast<std::ptrdiff_t>(begin),
                       [](char byte) { return static_cast<char>(~byte); });
}

} // namespace

KeyBuilder::KeyBuilder(TSLocale* locale, std::vector<KeyPart> parts,
                       std::optional<std::string> separator)
    : locale_(locale), page_(locale, nullptr), parts_(std::move(parts)),
      isBinary_(TSGetLocaleNumInfo(locale, TS_LI_SORT_ID, 0) == 0)
{
    if (std::any_of(parts_.begin(), parts_.end(), [](const KeyPart& part) { return part.range; }))
        cutter_.emplace(locale, std::move(separator));
}

// Of shift bytes side by side, as where fixed records follow each other, the last one counts; the
// library would take it for a character. In the order of codes all bytes do.
std::string_view KeyBuilder::settled(std::string_view line)
{
    const auto bothShift = [this](char one, char other) {
        return page_.isShift(static_cast<std::uint8_t>(one)) &&
               page_.isShift(static_cast<std::uint8_t>(other));
    };
    if (!page_.stateful() || isBinary_ ||
        std::adjacent_find(line.begin(), line.end(), bothShift) == line.end())
        return line;
    settled_.clear();
    for (std::size_t i = 0; i < line.size(); ++i)
        if (i + 1 == line.size() || !bothShift(line[i], line[i + 1]))
            settled_ += line[i];
    return settled_;
}

std::string_view KeyBuilder::keyOf(std::string_view whole)
{
    const std::string_view line = settled(whole);
    if (cutter_)
        cutter_->split(line);
    if (parts_.size() == 1 && !parts_.front().isReversed)
        return partKey(parts_.front(), line);
    key_.clear();
    for (const KeyPart& part : parts_)
        appendPart(key_, partKey(part, line), part.isReversed);
    if (key_.size() > std::numeric_limits<std::uint32_t>::max())
        throw Failure(fmt::format("a line of {} bytes is too long for a key of {} parts",
                                  line.size(), parts_.size()));
    return key_;
}

std::vector<MadeKey> KeyBuilder::partsOf(std::string_view whole)
{
    const std::string_view line = settled(whole);
    if (cutter_)
        cutter_->split(line);
    std::vector<MadeKey> keys;
    for (const KeyPart& part : parts_)
        keys.push_back(
            {std::string(partKey(part, line)), part.kind == KeyPart::Kind::kText && !isBinary_});
    return keys;
}

std::string_view KeyBuilder::partKey(const KeyPart& part, std::string_view line)
{
    const Slice text = part.range ? cutter_->cut(*part.range) : Slice{line.data(), line.size(), 0};
    return part.kind == KeyPart::Kind::kNumber ? numberKey(text) : textKey(text, part.options);
}

// In the order of codes the shift bytes count, so that a piece gets the one before it back.
Slice KeyBuilder::withState(const Slice& text)
{
    if (!isBinary_ || text.state == 0)
        return text;
    shifted_.assign(1, static_cast<char>(page_.shiftIn()));
    shifted_.append(text.bytes, text.size);
    return {shifted_.data(), shifted_.size(), 0};
}

std::string_view KeyBuilder::textKey(const Slice& piece, std::uint32_t options)
{
    // The library works in the buffer where it has 16 bytes for each byte of text and 4 more. A
    // long text is rare and may take memory of the library's.
    constexpr std::size_t inBuffer = 1 << 16;
    const Slice text = withState(piece);
    std::size_t room = std::min(16 * text.size + 8, inBuffer);
    for (;;) {
        if (made_.size() < room)
            made_.resize(room);
        const std::int32_t size =
            TSStrxfrmEx(locale_, made_.data(), static_cast<std::int32_t>(room), text.bytes,
                        text.state, static_cast<std::int32_t>(text.size), options);
        if (size < 0)
            throw Failure(fmt::format("no key can be made of {} bytes of text (error {}): {}",
                                      text.size, TSGetError(locale_),
                                      "there is not memory enough, or it is too long"));
        if (static_cast<std::size_t>(size) <= room)
            return {made_.data(), static_cast<std::size_t>(size)};
        room = std::min<std::size_t>(static_cast<std::size_t>(size) + 4,
                                     std::numeric_limits<std::int32_t>::max());
    }
}

// A number as eight bytes of the same order; what is none is 0.
std::string_view KeyBuilder::numberKey(const Slice& text)
{
    constexpr std::uint64_t sign = std::uint64_t{1} << 63;
    char* end = nullptr;
    std::int32_t state = 0;
    const double number =
        TSStringToDoubleEx(locale_, text.bytes, text.state, static_cast<std::int32_t>(text.size),
                           &end, &state, 0) +
        0.0; // of the two zeros the positive one
    const auto bits = std::bit_cast<std::uint64_t>(number);
    const std::uint64_t ordered = bits & sign ? ~bits : bits | sign;
    made_.resize(std::max<std::size_t>(made_.size(), sizeof ordered));
    for (std::size_t i = 0; i < sizeof ordered; ++i)
        made_[i] = static_cast<char>(ordered >> (8 * (sizeof ordered - 1 - i)));
    return {made_.data(), sizeof ordered};
}

} // namespace vlx::cli
