#include "unicode_view.hpp"

#include <cstring>

namespace vlx::cli {

namespace {

constexpr std::uint32_t kOlderForm = 1; // the format version of an object that the library rebuilds

// A continuation byte's part of a value. The library does not look at its upper bits either.
constexpr int tail(std::uint8_t byte)
{
    return byte & 0x3F;
}

std::uint16_t utf8Value(const std::uint8_t* bytes, int size)
{
    if (bytes[0] < 0xE0)
        return static_cast<std::uint16_t>((bytes[0] & 0x1F) << 6 | tail(bytes[1]));
    if (size < 3)
        return kNoUnicode;
    return static_cast<std::uint16_t>((bytes[0] & 0x0F) << 12 | tail(bytes[1]) << 6 |
                                      tail(bytes[2]));
}

} // namespace

std::optional<UnicodeView> UnicodeView::open(const ObjectFile& file, std::uint16_t id)
{
    UnicodeView view;
    if (file.sections[0].size() < sizeof view.page_ || file.header.formatVersion() == kOlderForm)
        return std::nullopt;
    std::memcpy(&view.page_, file.sections[0].data(), sizeof view.page_);
    view.tries_ = file.sections[1];
    view.utf8_ = id == kUtf8CodePage;
    return view;
}

std::optional<std::uint16_t> UnicodeView::unicode(const std::uint8_t* bytes, int size) const
{
    if (utf8_ && size > 1) // by rule, so that a written U+FFFD is itself
        return utf8Value(bytes, size);
    const std::uint16_t value =
        size == 1 ? std::uint16_t{page_.toUnicode[bytes[0]]} : walk(bytes, size);
    return value == kNoUnicode ? std::nullopt : std::optional(value);
}

template <class Item>
std::optional<Item> UnicodeView::item(std::size_t base, std::size_t index) const
{
    const std::size_t offset = base + index * sizeof(Item);
    if (offset + sizeof(Item) > tries_.size())
        return std::nullopt;
    Item copy;
    std::memcpy(&copy, tries_.data() + offset, sizeof copy);
    return copy;
}

// Follows the nodes, one for each byte, to the leaf.
std::uint16_t UnicodeView::walk(const std::uint8_t* bytes, int size) const
{
    std::size_t index = 0;
    for (int i = 0; i < size; ++i) {
        const auto node = item<TSUnicodeNode>(0, index);
        if (!node || bytes[i] < node->low || bytes[i] > node->high)
            return kNoUnicode;
        index = static_cast<std::size_t>(node->base) + (bytes[i] & node->mask);
        if (node->isLeaf)
            return item<Le16>(page_.leafTableOffset, index).value_or(kNoUnicode);
    }
    return kNoUnicode;
}

} // namespace vlx::cli
