#include "strings/forms.hpp"

#include <cctype>
#include <gtest/gtest.h>
#include <memory>

#include "support/page_builder.hpp"
#include "support/test_locale.hpp"

namespace vlx::test {

namespace {

constexpr unsigned char kFill = 0xCD;
constexpr std::size_t kOffsets = 4;
constexpr int kMostTokens = 20;

// A text in memory of its own, with a terminator, behind `offset` units that belong to nobody.
template <class Unit>
class Placed {
  public:
    Placed(const Units& text, std::size_t offset) : offset_(offset), memory_(offset, kFillUnit)
    {
        for (const std::uint32_t unit : text)
            memory_.push_back(static_cast<Unit>(unit));
        memory_.push_back(0);
    }
    Unit* at() { return memory_.data() + offset_; }

    // The text again, without the terminator that was added.
    Units text() const
    {
        Units units;
        for (std::size_t i = offset_; i + 1 < memory_.size(); ++i)
            units.push_back(static_cast<std::make_unsigned_t<Unit>>(memory_[i]));
        return units;
    }

  private:
    static constexpr Unit kFillUnit = static_cast<Unit>(kFill);

    std::size_t offset_;
    std::vector<Unit> memory_;
};

template <class Unit>
Units terminatedText(const Unit* text)
{
    Units units;
    for (; *text != 0; ++text)
        units.push_back(static_cast<std::make_unsigned_t<Unit>>(*text));
    return units;
}

template <class Unit>
std::int32_t distance(const Unit* from, const Unit* to)
{
    return to == nullptr ? -1 : static_cast<std::int32_t>(to - from);
}

bool isLong(char letter)
{
    return std::isupper(static_cast<unsigned char>(letter)) != 0;
}

// What the byte forms share: a page, and characters of two bytes if it has them. The trail byte is
// a short character by itself, so that a walk in bytes goes wrong.
class ByteForm : public Form {
  public:
    ByteForm(const char* name, PageShape shape) : name_(name), page_(shape)
    {
        if (shape == PageShape::kDoubleByte)
            page_.lead(kLead, 2);
        locale_ = localeOn(page_.asciiHalf().build());
    }
    const char* name() const override { return name_; }

    Units encode(std::string_view text) const override
    {
        Units units;
        bool open = false;
        for (const char letter : text)
            add(units, letter, open);
        if (open)
            units.push_back(page_.shiftOut());
        return units;
    }

    std::int32_t positionOf(std::string_view text, std::size_t index) const override
    {
        Units units;
        bool open = false;
        for (const char letter : text.substr(0, index))
            add(units, letter, open);
        if (index < text.size() && isStateful(page_.shape()) && open != isLong(text[index]))
            units.push_back(0);
        return static_cast<std::int32_t>(units.size());
    }

  protected:
    static constexpr std::uint8_t kLead = 0x81;

    void add(Units& units, char letter, bool& open) const
    {
        const bool hasStates = isStateful(page_.shape());
        if (hasStates && open != isLong(letter)) {
            open = !open;
            units.push_back(open ? page_.shiftIn() : page_.shiftOut());
        }
        if (isLong(letter) && page_.shape() != PageShape::kSingleByte)
            units.push_back(hasStates ? 0x42 : kLead);
        units.push_back(static_cast<unsigned char>(isLong(letter) ? std::tolower(letter) : letter) |
                        (isLong(letter) && page_.shape() == PageShape::kSingleByte ? 0x80 : 0));
    }

    const char* name_;
    PageBuilder page_;
    TSLocale locale_{};
};

class PlainForm : public ByteForm {
  public:
    using ByteForm::ByteForm;

    std::int32_t copy(Units& destination, std::int32_t size, const Units& source,
                      std::int32_t length) override
    {
        Placed<char> to(destination, offset);
        Placed<char> from(source, offset);
        const std::int32_t result = TSStrcpy(&locale_, to.at(), size, from.at(), length, 0);
        destination = to.text();
        return result;
    }
    std::int32_t append(Units& destination, const Units& source, std::int32_t length,
                        std::uint32_t options) override
    {
        Placed<char> to(destination, offset);
        Placed<char> from(source, offset);
        const std::int32_t result = TSStrcat(&locale_, to.at(), from.at(), length, options);
        destination = to.text();
        return result;
    }
    std::int32_t find(const Units& string, std::int32_t length, char character,
                      std::uint32_t options) override
    {
        Placed<char> text(string, offset);
        Placed<char> sought(encode({&character, 1}), offset);
        return distance<char>(text.at(),
                              TSStrchr(&locale_, text.at(), length, sought.at(), options));
    }
    std::int32_t span(const Units& string, std::int32_t length, const Units& set,
                      std::int32_t setLength) override
    {
        Placed<char> text(string, offset);
        Placed<char> members(set, offset);
        return TSStrspn(&locale_, text.at(), length, members.at(), setLength, 0);
    }
    std::int32_t spanNot(const Units& string, std::int32_t length, const Units& set,
                         std::int32_t setLength) override
    {
        Placed<char> text(string, offset);
        Placed<char> members(set, offset);
        return TSStrcspn(&locale_, text.at(), length, members.at(), setLength, 0);
    }
    std::vector<Units> tokens(const Units& string, std::int32_t length, const Units& delimiters,
                              std::int32_t delimiterLength) override
    {
        Placed<char> text(string, offset);
        Placed<char> set(delimiters, offset);
        std::vector<Units> found;
        char* next = text.at();
        for (int i = 0; next != nullptr && i < kMostTokens; ++i)
            if (const char* token =
                    TSStrtok(&locale_, next, &length, set.at(), delimiterLength, &next, 0))
                found.push_back(terminatedText(token));
        return found;
    }
};

class ExForm : public ByteForm {
  public:
    using ByteForm::ByteForm;

    std::int32_t copy(Units& destination, std::int32_t size, const Units& source,
                      std::int32_t length) override
    {
        Placed<char> to(destination, offset);
        Placed<char> from(source, offset);
        const std::int32_t result = TSStrcpyEx(&locale_, to.at(), 0, size, from.at(), 0, length, 0);
        destination = to.text();
        return result;
    }
    std::int32_t append(Units& destination, const Units& source, std::int32_t length,
                        std::uint32_t options) override
    {
        Placed<char> to(destination, offset);
        Placed<char> from(source, offset);
        const std::int32_t result = TSStrcatEx(&locale_, to.at(), 0, from.at(), 0, length, options);
        destination = to.text();
        return result;
    }
    std::int32_t find(const Units& string, std::int32_t length, char character,
                      std::uint32_t options) override
    {
        Placed<char> text(string, offset);
        Placed<char> sought(encode({&character, 1}), offset);
        std::int32_t state = 0;
        return distance<char>(
            text.at(), TSStrchrEx(&locale_, text.at(), 0, length, sought.at(), 0, &state, options));
    }
    std::int32_t span(const Units& string, std::int32_t length, const Units& set,
                      std::int32_t setLength) override
    {
        Placed<char> text(string, offset);
        Placed<char> members(set, offset);
        return TSStrspnEx(&locale_, text.at(), 0, length, members.at(), 0, setLength, 0);
    }
    std::int32_t spanNot(const Units& string, std::int32_t length, const Units& set,
                         std::int32_t setLength) override
    {
        Placed<char> text(string, offset);
        Placed<char> members(set, offset);
        return TSStrcspnEx(&locale_, text.at(), 0, length, members.at(), 0, setLength, 0);
    }
    std::vector<Units> tokens(const Units& string, std::int32_t length, const Units& delimiters,
                              std::int32_t delimiterLength) override
    {
        Placed<char> text(string, offset);
        Placed<char> set(delimiters, offset);
        std::vector<Units> found;
        char* next = text.at();
        std::int32_t state = 0;
        for (int i = 0; next != nullptr && i < kMostTokens; ++i) {
            std::vector<char> token(string.size() + 3);
            if (TSStrtokEx(&locale_, token.data(), 0, static_cast<std::int32_t>(token.size()), next,
                           state, &length, set.at(), 0, delimiterLength, &next, &state, 0) > 0)
                found.push_back(terminatedText(token.data()));
        }
        return found;
    }
};

// The members for units, as functions of one type.
template <class Unit>
struct UnitMembers {
    const char* name;
    Unit highest; // long characters lie below it
    std::int32_t (*copy)(TSLocale*, Unit*, std::int32_t, const Unit*, std::int32_t);
    std::int32_t (*append)(TSLocale*, Unit*, const Unit*, std::int32_t, std::uint32_t);
    Unit* (*find)(TSLocale*, const Unit*, std::int32_t, Unit, std::uint32_t);
    std::int32_t (*span)(TSLocale*, const Unit*, std::int32_t, const Unit*, std::int32_t);
    std::int32_t (*spanNot)(TSLocale*, const Unit*, std::int32_t, const Unit*, std::int32_t);
    Unit* (*token)(TSLocale*, Unit*, std::int32_t*, const Unit*, std::int32_t, Unit**);
};

template <class Unit>
class UnitForm : public Form {
  public:
    explicit UnitForm(const UnitMembers<Unit>& members) : members_(members)
    {
        locale_ = localeOn(page_.asciiHalf().build());
    }
    const char* name() const override { return members_.name; }

    Units encode(std::string_view text) const override
    {
        Units units;
        for (const char letter : text)
            units.push_back(valueOf(letter));
        return units;
    }
    std::int32_t positionOf(std::string_view, std::size_t index) const override
    {
        return static_cast<std::int32_t>(index);
    }
    std::int32_t copy(Units& destination, std::int32_t size, const Units& source,
                      std::int32_t length) override
    {
        Placed<Unit> to(destination, offset);
        Placed<Unit> from(source, offset);
        const std::int32_t result = members_.copy(&locale_, to.at(), size, from.at(), length);
        destination = to.text();
        return result;
    }
    std::int32_t append(Units& destination, const Units& source, std::int32_t length,
                        std::uint32_t options) override
    {
        Placed<Unit> to(destination, offset);
        Placed<Unit> from(source, offset);
        const std::int32_t result = members_.append(&locale_, to.at(), from.at(), length, options);
        destination = to.text();
        return result;
    }
    std::int32_t find(const Units& string, std::int32_t length, char character,
                      std::uint32_t options) override
    {
        Placed<Unit> text(string, offset);
        return distance<Unit>(
            text.at(), members_.find(&locale_, text.at(), length, valueOf(character), options));
    }
    std::int32_t span(const Units& string, std::int32_t length, const Units& set,
                      std::int32_t setLength) override
    {
        Placed<Unit> text(string, offset);
        Placed<Unit> members(set, offset);
        return members_.span(&locale_, text.at(), length, members.at(), setLength);
    }
    std::int32_t spanNot(const Units& string, std::int32_t length, const Units& set,
                         std::int32_t setLength) override
    {
        Placed<Unit> text(string, offset);
        Placed<Unit> members(set, offset);
        return members_.spanNot(&locale_, text.at(), length, members.at(), setLength);
    }
    std::vector<Units> tokens(const Units& string, std::int32_t length, const Units& delimiters,
                              std::int32_t delimiterLength) override
    {
        Placed<Unit> text(string, offset);
        Placed<Unit> set(delimiters, offset);
        std::vector<Units> found;
        Unit* next = text.at();
        for (int i = 0; next != nullptr && i < kMostTokens; ++i)
            if (const Unit* token =
                    members_.token(&locale_, next, &length, set.at(), delimiterLength, &next))
                found.push_back(terminatedText(token));
        return found;
    }

  private:
    Unit valueOf(char letter) const
    {
        const auto value = static_cast<unsigned char>(letter);
        return static_cast<Unit>(isLong(letter) ? members_.highest - value : value);
    }

    const UnitMembers<Unit>& members_;
    PageBuilder page_{PageShape::kDoubleByte};
    TSLocale locale_{};
};

constexpr UnitMembers<TSChar16> kUnicode = {"Unicode", 0xFFFF,    TSStrcpyU,  TSStrcatU,
                                            TSStrchrU, TSStrspnU, TSStrcspnU, TSStrtokU};
constexpr UnitMembers<TSChar32> kPacked = {"packed", 0xFFFFFFFF, TSWcscpy,  TSWcscat,
                                           TSWcschr, TSWcsspn,   TSWcscspn, TSWcstok};

} // namespace

std::int32_t Form::lengthOf(const Units& text, Length length)
{
    const auto exact = static_cast<std::int32_t>(text.size());
    switch (length) {
    case Length::kExact:
        return exact;
    case Length::kLonger:
        return exact + 1;
    case Length::kTerminated:
        break;
    }
    return -1;
}

void inEveryForm(const std::function<void(Form& form)>& check)
{
    std::vector<std::unique_ptr<Form>> forms;
    forms.push_back(std::make_unique<PlainForm>("single-byte", PageShape::kSingleByte));
    forms.push_back(std::make_unique<PlainForm>("multi-byte", PageShape::kDoubleByte));
    forms.push_back(std::make_unique<ExForm>("single-byte Ex", PageShape::kSingleByte));
    forms.push_back(std::make_unique<ExForm>("multi-byte Ex", PageShape::kDoubleByte));
    forms.push_back(std::make_unique<ExForm>("stateful Ex", PageShape::kStateful2));
    forms.push_back(std::make_unique<UnitForm<TSChar16>>(kUnicode));
    forms.push_back(std::make_unique<UnitForm<TSChar32>>(kPacked));
    for (const auto& form : forms) {
        for (form->offset = 0; form->offset < kOffsets; ++form->offset) {
            check(*form);
            ASSERT_FALSE(testing::Test::HasFailure())
                << "in the form " << form->name() << " at offset " << form->offset;
        }
    }
}

} // namespace vlx::test
