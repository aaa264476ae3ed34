#include "chars/cptext.hpp"

#include <cstring>

#include "chars/form.hpp"

namespace {

template <class Form>
std::int32_t toUnicode(const Form& form, vlx::Text<Form> text, TSChar16* target)
{
    std::int32_t done = 0;
    while (form.settle(text) && *text.at && form.length(text) <= text.left()) {
        if (target)
            target[done] = form.unicode(text);
        ++done;
        text.at += form.length(text);
    }
    return done;
}

// Bytes that are written, or only counted.
class ByteSink {
  public:
    explicit ByteSink(char* target) : target_(target) {}
    void put(char byte)
    {
        if (target_)
            target_[count_] = byte;
        ++count_;
    }
    std::int32_t count() const { return count_; }

  private:
    char* const target_;
    std::int32_t count_ = 0;
};

} // namespace

std::int32_t TSCpTextToUnicode(const TSObject* object, const char* text, std::int32_t length,
                               TSChar16* target)
{
    if (length < 0) {
        length = static_cast<std::int32_t>(std::strlen(text));
        if (length < 1)
            return -1;
    }
    return vlx::withByteForm(object, [&](const auto& form) {
        return toUnicode(form, {text, text + length}, target);
    });
}

std::int32_t TSCpTextFromUnicode(const TSObject* object, const TSChar16* text, std::int32_t state,
                                 std::int32_t length, char* target)
{
    const TSCodePageHeader& page = tsCodePage(object);
    const bool stateful = (page.cpFlags & vlx::kStateful) != 0;
    ByteSink sink(target);
    for (std::int32_t i = 0; (length < 0 || i < length) && text[i] != 0; ++i) {
        char bytes[4];
        const std::int32_t size = TSCpUnicodeToMb(object, text[i], bytes);
        if (stateful && (size > 1) != (state != 0)) {
            state = size > 1;
            sink.put(static_cast<char>(state ? page.shiftIn : page.shiftOut));
        }
        for (std::int32_t at = 0; at < size; ++at)
            sink.put(bytes[at]);
    }
    if (stateful) {
        if (state)
            sink.put(static_cast<char>(page.shiftOut));
        return sink.count();
    }
    const std::int32_t count = sink.count();
    sink.put(0);
    return count;
}
