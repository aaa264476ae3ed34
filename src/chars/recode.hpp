// Text from one form into a code page, character by character through Unicode, with the shift bytes
// that a stateful target needs.
#pragma once

#include <cstdint>

#include "chars/form.hpp"

namespace vlx {

// Appends characters to a text in a code page, or only counts its bytes where `output` is null. A
// shift byte comes before a character of another size than the last; no closing one is written.
class CodePageWriter {
  public:
    CodePageWriter(const TSObject* object, char* output)
        : object_(object), output_(output), stateful_((tsCodePage(object).cpFlags & kStateful) != 0)
    {
    }

    void put(TSChar16 unicode)
    {
        char bytes[4];
        const std::int32_t size = TSCpUnicodeToMb(object_, unicode, bytes);
        if (stateful_ && size != size_) {
            const TSCodePageHeader& page = tsCodePage(object_);
            putByte(static_cast<char>(size == 1 ? page.shiftOut : page.shiftIn));
        }
        size_ = size;
        for (std::int32_t i = 0; i < size; ++i)
            putByte(bytes[i]);
    }

    // Ends the text with its terminator and gives the bytes written with it.
    std::uint32_t terminate()
    {
        putByte(0);
        return written_;
    }

  private:
    void putByte(char byte)
    {
        if (output_)
            output_[written_] = byte;
        ++written_;
    }

    const TSObject* object_;
    char* output_;
    const bool stateful_;
    std::int32_t size_ = 1; // of the last character; a text begins in the single-byte state
    std::uint32_t written_ = 0;
};

// Writes the characters of a text, to its end or its terminator, and a terminator. A character that
// is cut off by the end is left out.
template <class Form>
std::uint32_t recode(const Form& form, Text<Form> text, CodePageWriter writer)
{
    while (form.settle(text) && *text.at) {
        const std::int32_t length = form.length(text);
        if (length > text.end - text.at)
            break;
        writer.put(form.unicode(text));
        text.at += length;
    }
    return writer.terminate();
}

} // namespace vlx
