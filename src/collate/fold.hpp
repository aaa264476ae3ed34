// The Unicode values of a text, folded on the way where an option asks for it.
#pragma once

#include "collate/next.hpp"
#include "mapping/mapstr.hpp"

namespace vlx {

enum class Fold : std::uint8_t { kNone, kCase, kWidth };

// A form with the folds of a character, as Unicode. `plain` is its value without a fold.
struct SingleFold : SingleForm {
    using Base = SingleForm;
    using Text = vlx::Text<SingleForm>;

    TSChar16 plain(const Text& text) const { return unicode(text); }
    TSChar16 upper(const Text& text) const
    {
        const TSCodePageHeader& page = tsCodePage(object);
        return page.toUnicode[page.toUpper[static_cast<std::uint8_t>(*text.at)]];
    }
    TSChar16 narrow(const Text& text) const { return unicode(text); } // has no other width
};

struct MultiFold : MultiForm {
    using Base = MultiForm;
    using Text = vlx::Text<MultiForm>;

    TSChar16 plain(const Text& text) const { return unicode(text); }
    TSChar16 upper(const Text& text) const
    {
        char image[4] = {};
        if (length(text) == 1)
            image[0] =
                static_cast<char>(tsCodePage(object).toUpper[static_cast<std::uint8_t>(*text.at)]);
        else
            TSCpMapChar(object, text.at, image, kMapsToUpper);
        return unicode({image, image + sizeof image});
    }
    TSChar16 narrow(const Text& text) const
    {
        char image[4] = {};
        TSCpPutWide(image, TSCpUnmapValue(object, value(text)));
        return image[0] != 0 ? unicode({image, image + sizeof image}) : unicode(text);
    }
};

// Stateful text. The length of an image is what was written.
struct ShiftFold : ShiftForm {
    using Base = ShiftForm;
    using Text = vlx::Text<ShiftForm>;

    TSChar16 plain(const Text& text) const { return unicode(text); }
    TSChar16 upper(const Text& text) const
    {
        char image[4] = {};
        std::int32_t written = 1;
        if (text.state)
            written = TSCpMapCharEx(object, text.at, image, kMapsToUpper);
        else
            image[0] =
                static_cast<char>(tsCodePage(object).toUpper[static_cast<std::uint8_t>(*text.at)]);
        return imageValue(image, written);
    }
    TSChar16 narrow(const Text& text) const
    {
        char image[4] = {};
        const std::int32_t written = TSCpPutWide(image, TSCpUnmapValue(object, value(text)));
        return image[0] != 0 ? imageValue(image, written) : unicode(text);
    }

  private:
    TSChar16 imageValue(const char* image, std::int32_t length) const
    {
        return length == 1
                   ? TSChar16{tsCodePage(object).toUnicode[static_cast<std::uint8_t>(*image)]}
                   : TSCpMbToUnicode(object, image);
    }
};

struct UnicodeFold : UnicodeForm {
    using Base = UnicodeForm;
    using Text = vlx::Text<UnicodeForm>;

    TSChar16 plain(const Text& text) const { return unicode(text); }
    TSChar16 upper(const Text& text) const { return uniToUpper(*text.at); }
    TSChar16 narrow(const Text& text) const { return uniToHalfWidth(*text.at); }
};

struct PackedFold : PackedForm {
    using Base = PackedForm;
    using Text = vlx::Text<PackedForm>;

    // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.UninitializedObject): the page is in its base
    PackedFold(const TSObject* page, bool single) : PackedForm{page}, isSingle(single) {}

    // Deliberate: of a single-byte page the low byte counts, but not where case is ignored.
    TSChar16 plain(const Text& text) const
    {
        return isSingle ? TSChar16{tsCodePage(object).toUnicode[*text.at & 0xFF]} : unicode(text);
    }
    TSChar16 upper(const Text& text) const
    {
        const TSChar32 image = *text.at < 256 ? TSChar32{tsCodePage(object).toUpper[*text.at]}
                                              : TSCpMapCharW(object, *text.at, kMapsToUpper);
        return unicodeOf(image);
    }
    TSChar16 narrow(const Text& text) const
    {
        if (isSingle)
            return plain(text);
        const TSChar32 image = TSCpUnmapValue(object, *text.at);
        return unicodeOf(image != 0 ? image : *text.at);
    }

    bool isSingle;

  private:
    TSChar16 unicodeOf(TSChar32 character) const { return unicode({&character, nullptr}); }
};

template <class Form, class ValueOf>
std::int32_t foldEach(const Form& form, typename Form::Text text, TSChar16* values,
                      const ValueOf& valueOf)
{
    TSChar16* at = values;
    while (settleWhole<typename Form::Base>(form, text)) {
        *at++ = valueOf(text);
        text.at += form.length(text);
    }
    return static_cast<std::int32_t>(at - values);
}

// Upper case with the pairs of a language. They are looked up by the values of the text as it is,
// which stand in the array in front of what has been done, and case is for what no pair replaces.
template <class Form>
class PairFold {
  public:
    PairFold(const Form& form, const TSObject* language, typename Form::Text text, TSChar16* values)
        : form_(form), language_(language), text_(text), values_(values), at_(values)
    {
    }

    // Deliberate: without `looksAtFirst` the first character takes no part in the lookups.
    std::int32_t run(bool looksAtFirst)
    {
        TSChar16 held;
        if (!read(held, at_[0]))
            return 0;
        if (!looksAtFirst)
            at_[0] = 0;
        do {
            while (!replace(at_[0], 0)) {
                TSChar16 next;
                if (!read(next, at_[1])) {
                    *at_++ = held;
                    return count();
                }
                if (replace(at_[0], at_[1]))
                    break;
                *at_++ = held;
                held = next;
            }
        } while (read(held, at_[0]));
        return count();
    }

  private:
    // Reads a character: its upper case, and its value as it is.
    bool read(TSChar16& upper, TSChar16& value)
    {
        if (!settleWhole<typename Form::Base>(form_, text_))
            return false;
        upper = form_.upper(text_);
        value = form_.unicode(text_);
        text_.at += form_.length(text_);
        return true;
    }

    // Puts the results of a pair in its place.
    bool replace(TSChar16 first, TSChar16 second)
    {
        const std::int32_t results =
            TSLangMapPair(language_, first, second, &at_[0], &at_[1], PairTable::kUpper);
        at_ += results;
        return results != 0;
    }

    std::int32_t count() const { return static_cast<std::int32_t>(at_ - values_); }

    const Form& form_;
    const TSObject* const language_;
    typename Form::Text text_;
    TSChar16* const values_; // room for two of each character
    TSChar16* at_;
};

// Writes the values of a text, at most two for each unit, and returns their number.
template <class Form>
std::int32_t foldText(const TSLocale& locale, const Form& form, typename Form::Text text, Fold fold,
                      TSChar16* values, bool looksAtFirst = true)
{
    using Text = typename Form::Text;
    switch (fold) {
    case Fold::kNone:
        return foldEach(form, text, values, [&](const Text& at) { return form.plain(at); });
    case Fold::kWidth:
        return foldEach(form, text, values, [&](const Text& at) { return form.narrow(at); });
    default:
        if (!hasUpperPairs(locale))
            return foldEach(form, text, values, [&](const Text& at) { return form.upper(at); });
        return PairFold<Form>(form, locale.language, text, values).run(looksAtFirst);
    }
}

} // namespace vlx
