// The bytes of an item's text.
#include "locale/itemwalk.hpp"

namespace vlx {
namespace {

// The bytes of a character and, before it, the shift byte that it needs.
class ByteText {
  public:
    ByteText(const TSObject* object, char* buffer, std::int32_t state)
        : object_(object), begin_(buffer), at_(buffer), state_(state)
    {
    }

    // Makes a character ready.
    void take(const ItemChar& character)
    {
        length_ = character.length;
        bytes_ = character.bytes;
        if (length_ == 0) {
            length_ = TSCpUnicodeToMb(object_, character.unicode, made_);
            bytes_ = made_;
        }
        shifts_ = state_ >= 0 && (length_ > 1) != (state_ != 0);
    }

    // The bytes of the character that was taken.
    std::int32_t size() const { return length_ + (shifts_ ? 1 : 0); }

    // What has to be left for the end behind it, a terminator aside.
    std::int32_t closing() const { return state_ >= 0 && length_ > 1 ? 1 : 0; }

    void put()
    {
        if (shifts_) {
            state_ = length_ > 1;
            putShift(state_ != 0);
        }
        for (std::int32_t i = 0; i < length_; ++i)
            *at_++ = bytes_[i];
    }

    // Leaves the multi-byte state and terminates; gives the bytes written.
    std::int32_t finish()
    {
        // Deliberate: no matter what is left of the size, so that a text which begins in the
        // multi-byte state has two bytes at least.
        if (state_ > 0)
            putShift(false);
        *at_++ = 0;
        return static_cast<std::int32_t>(at_ - begin_);
    }

  private:
    void putShift(bool in)
    {
        const TSCodePageHeader& page = tsCodePage(object_);
        *at_++ = static_cast<char>(in ? page.shiftIn : page.shiftOut);
    }

    const TSObject* const object_;
    const char* const begin_;
    char* at_;
    std::int32_t state_;
    char made_[4];
    const char* bytes_ = nullptr;
    std::int32_t length_ = 0;
    bool shifts_ = false;
};

} // namespace

std::int32_t writeItemBytes(const TSLocale& locale, ItemWalk walk, char* buffer, std::int32_t state,
                            std::int32_t size, bool counted)
{
    ByteText text(locale.codePage, buffer, state);
    std::int32_t left = size;
    for (ItemChar character; left >= 2 && walk.next(character);) {
        text.take(character);
        if (!counted && text.size() + text.closing() >= left)
            break;
        left -= counted ? 1 : text.size();
        text.put();
    }
    const std::int32_t written = text.finish();
    return counted ? size - left + 1 : written;
}

} // namespace vlx
