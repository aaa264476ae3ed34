// Mapping of bytes. A form tells how characters are read and how an image is laid out, an output
// where it goes, and one loop moves from image to image.
#pragma once

#include <algorithm>
#include <cstring>

#include "chars/form.hpp"
#include "mapping/mapstr.hpp"

namespace vlx {

// What becomes of a character or a pair: the bytes of one or two characters.
struct Image {
    std::uint32_t size() const { return static_cast<std::uint32_t>(length); }

    char bytes[8] = {};
    std::int32_t length = 0;
    std::int32_t second = 0; // of the length, that of the second character
};

// Text without shift bytes. The length of an image follows from its first byte, as that of every
// character does.
struct MultiMap : MultiForm {
    using Text = vlx::Text<MultiForm>;

    // Moves to the next character; false at the end, and before a character that it cuts off.
    bool next(Text& text) const { return settleWhole<MultiForm>(*this, text); }

    std::uint32_t type(const Text& text) const
    {
        if (length(text) == 1)
            return tsCodePage(object).charType[static_cast<std::uint8_t>(*text.at)];
        return TSCpCharTypeRecord(object, text.at)->type;
    }
    Image cased(const Text& text, const Mapping& mapping) const
    {
        Image image;
        if (length(text) == 1)
            image.bytes[0] = static_cast<char>(
                mapping.caseTable(tsCodePage(object))[static_cast<std::uint8_t>(*text.at)]);
        else
            TSCpMapChar(object, text.at, image.bytes, mapping.caseBits());
        image.length = length({image.bytes, nullptr});
        return image;
    }
    TSChar32 mapValue(const Text& text) const
    {
        if (length(text) == 1)
            return byteMapValue(object, static_cast<std::uint8_t>(*text.at));
        return TSCpMapValue(object, value(text));
    }
    Image laidOut(TSChar32 character) const
    {
        Image image;
        TSCpPutWide(image.bytes, character);
        image.length = length({image.bytes, nullptr});
        return image;
    }
};

// Stateful text. The length of an image is what was written, since the state and not the first byte
// decides the length of a character.
struct ShiftMap : ShiftForm {
    using Text = vlx::Text<ShiftForm>;

    bool next(Text& text) const { return settleWhole<ShiftForm>(*this, text); }

    std::uint32_t type(const Text& text) const
    {
        if (text.state)
            return TSCpCharTypeRecord(object, text.at)->type;
        return tsCodePage(object).charType[static_cast<std::uint8_t>(*text.at)];
    }
    Image cased(const Text& text, const Mapping& mapping) const
    {
        Image image{{}, 1};
        if (text.state)
            image.length = TSCpMapCharEx(object, text.at, image.bytes, mapping.caseBits());
        else
            image.bytes[0] = static_cast<char>(
                mapping.caseTable(tsCodePage(object))[static_cast<std::uint8_t>(*text.at)]);
        return image;
    }
    // Deliberate: a character of the multi-byte state is read here by the length table, and has no
    // value in a page whose table says something else.
    TSChar32 mapValue(const Text& text) const
    {
        const auto lead = static_cast<std::uint8_t>(*text.at);
        if (!text.state)
            return byteMapValue(object, lead);
        if (tsCodePage(object).charLength[lead] > text.left())
            return 0;
        return TSCpMapValue(object, TSCpGetWide(object, text.at));
    }
    Image laidOut(TSChar32 character) const
    {
        Image image;
        image.length = TSCpPutWide(image.bytes, character);
        return image;
    }
};

// Where images go as they are; one that does not fit whole is refused.
class PlainOutput {
  public:
    PlainOutput(char* output, std::int32_t size) : output_(output), size_(size) {}

    bool put(const Image& image)
    {
        if (image.length > size_ - written_)
            return false;
        std::memcpy(output_ + written_, image.bytes, image.size());
        written_ += image.length;
        return true;
    }
    std::int32_t written() const { return written_; }

    std::int32_t room() const { return size_ - written_; }

    // Maps bytes to bytes, of which there are no more than there is room for.
    void putRun(const std::uint8_t* table, const char* bytes, std::int32_t count)
    {
        std::transform(bytes, bytes + count, output_ + written_, [table](char byte) {
            return static_cast<char>(table[static_cast<std::uint8_t>(byte)]);
        });
        written_ += count;
    }

  private:
    char* const output_;
    const std::int32_t size_;
    std::int32_t written_ = 0;
};

// Where a shift byte goes before a character that needs the other state. The state that the output
// ends in is not handed back.
class ShiftOutput {
  public:
    ShiftOutput(const TSCodePageHeader& page, std::int32_t state, char* output, std::int32_t size)
        : page_(page), state_(state != 0), output_(output), size_(size)
    {
    }

    bool put(const Image& image)
    {
        const std::int32_t first = image.length - image.second;
        Shifted shifted{{}, 0, state_};
        add(shifted, image.bytes, first);
        if (image.second > 0)
            add(shifted, image.bytes + first, image.second);
        if (shifted.length > size_ - written_)
            return false;
        std::memcpy(output_ + written_, shifted.bytes, static_cast<std::size_t>(shifted.length));
        written_ += shifted.length;
        state_ = shifted.state;
        return true;
    }
    std::int32_t written() const { return written_; }

  private:
    // An image with its shift bytes, and the state behind it.
    struct Shifted {
        char bytes[10];
        std::int32_t length;
        bool state;
    };

    void add(Shifted& shifted, const char* character, std::int32_t length) const
    {
        const bool multi = length > 1;
        if (multi != shifted.state)
            shifted.bytes[shifted.length++] =
                static_cast<char>(multi ? page_.shiftIn : page_.shiftOut);
        shifted.state = multi;
        std::memcpy(shifted.bytes + shifted.length, character, static_cast<std::size_t>(length));
        shifted.length += length;
    }

    const TSCodePageHeader& page_;
    bool state_;
    char* const output_;
    const std::int32_t size_;
    std::int32_t written_ = 0;
};

// The image that is the character itself.
template <class Form>
Image sourceImage(const Form& form, const typename Form::Text& text)
{
    Image image;
    image.length = form.length(text);
    std::memcpy(image.bytes, text.at, image.size());
    return image;
}

template <class Form>
Image widthImage(const Form& form, const typename Form::Text& text, const Mapping& mapping)
{
    const TSChar32 value = mapping.value == TS_MAP_FULL_WIDTH
                               ? form.mapValue(text)
                               : TSCpUnmapValue(form.object, form.value(text));
    const Image image = form.laidOut(value);
    return image.bytes[0] != 0 ? image : sourceImage(form, text);
}

template <class Form>
Image digitImage(const Form& form, const typename Form::Text& text)
{
    const TSChar16 digit = form.type(text) & kDigitType ? uniDigit(form.unicode(text)) : 0;
    if (digit == 0)
        return sourceImage(form, text);
    Image image;
    image.length = TSCpUnicodeToMb(form.object, digit, image.bytes);
    return image;
}

// Case with the pairs of a language. `leaps`: a character that hits alone just behind a miss takes
// its own length in bytes behind it along.
template <class Form>
class PairImages {
    using Text = typename Form::Text;

  public:
    PairImages(const Form& form, const TSObject* language, const Mapping& mapping, bool leaps)
        : form_(form), language_(language), mapping_(mapping), leaps_(leaps)
    {
    }

    // Characters that no pair begins with were mapped by another.
    void passMisses() { missed_ = true; }

    // The image of the character at `text`, or of it and the next one, which moves behind them.
    Image take(Text& text)
    {
        const TSChar16 first = form_.unicode(text);
        const std::int32_t length = form_.length(text);
        TSChar16 results[2];
        std::int32_t count = find(first, 0, results);
        Text behind = text;
        behind.at += length;
        if (count > 0) {
            if (leaps_ && missed_)
                behind.at += std::min(length, behind.left());
        } else {
            Text second = behind;
            if (form_.next(second) && (count = find(first, form_.unicode(second), results)) > 0) {
                second.at += form_.length(second);
                behind = second;
            }
        }
        missed_ = count == 0;
        const Image image = count == 0 ? form_.cased(text, mapping_) : laidOut(results, count);
        text = behind;
        return image;
    }

  private:
    std::int32_t find(TSChar16 first, TSChar16 second, TSChar16* results) const
    {
        return TSLangMapPair(language_, first, second, &results[0], &results[1], mapping_.pairs());
    }

    Image laidOut(const TSChar16* results, std::int32_t count) const
    {
        Image image;
        image.length = TSCpUnicodeToMb(form_.object, results[0], image.bytes);
        if (count > 1)
            image.second = TSCpUnicodeToMb(form_.object, results[1], image.bytes + image.length);
        image.length += image.second;
        return image;
    }

    const Form& form_;
    const TSObject* const language_;
    const Mapping& mapping_;
    const bool leaps_;
    bool missed_ = false; // just before
};

// Maps until a character is cut off or an image does not fit, and gives the bytes written. `take`
// gives an image and moves behind what it is of.
template <class Form, class Output, class Take>
std::int32_t mapImages(const Form& form, typename Form::Text text, Output& output, const Take& take)
{
    while (form.next(text) && output.put(take(text)))
        continue;
    return output.written();
}

template <class Form, class Output>
std::int32_t mapText(const Form& form, const TSObject* language, const Mapping& mapping,
                     bool usesPairs, bool leaps, const typename Form::Text& source, Output output)
{
    using Text = typename Form::Text;
    const auto oneByOne = [&](const auto& imageOf) {
        return mapImages(form, source, output, [&](Text& text) {
            const Image image = imageOf(text);
            text.at += form.length(text);
            return image;
        });
    };
    if (mapping.isWidth())
        return oneByOne([&](const Text& text) { return widthImage(form, text, mapping); });
    if (mapping.value == TS_MAP_DIGITS)
        return oneByOne([&](const Text& text) { return digitImage(form, text); });
    if (!usesPairs)
        return oneByOne([&](const Text& text) { return form.cased(text, mapping); });
    PairImages<Form> images(form, language, mapping, leaps);
    return mapImages(form, source, output, [&](Text& text) { return images.take(text); });
}

// Where a call that counts characters writes first. It holds what six bytes for each character of
// the destination allow, and no more than its size.
struct CountedArea {
    static constexpr std::int64_t kSize = 512;
    static constexpr std::int64_t kBytesEach = 6;

    static std::int32_t capacityFor(std::int32_t size)
    {
        return static_cast<std::int32_t>(std::clamp<std::int64_t>(kBytesEach * size, 0, kSize));
    }

    // Copies as many whole characters as the destination takes and gives their number.
    template <class Form>
    std::int32_t handOver(const Form& form, std::int32_t state, std::int32_t written,
                          char* destination, std::int32_t size) const
    {
        vlx::Text<Form> text{bytes, bytes + written, state};
        std::int32_t count = 0;
        for (; count < size && form.settle(text) && form.length(text) <= text.left(); ++count)
            text.at += form.length(text);
        std::memcpy(destination, bytes, static_cast<std::size_t>(text.at - bytes));
        return count;
    }

    char bytes[kSize];
};

} // namespace vlx
