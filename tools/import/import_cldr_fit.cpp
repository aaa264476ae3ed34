#include "import_cldr_fit.hpp"

#include <array>

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>
#include <unicode/unistr.h>

namespace vlx::import {

namespace {

constexpr const char* kNarrowNoBreakSpace = "\u202F";
constexpr const char* kNoBreakSpace = "\u00A0";

// ICU's name of a code page: its tables are the source of the code page objects too.
std::string converterName(const std::string& codePage)
{
    return codePage.starts_with("MS") ? "windows-" + codePage.substr(2) : codePage;
}

void replaceAll(std::string& text, const std::string& what, const std::string& instead)
{
    for (std::size_t at = text.find(what); at != std::string::npos;
         at = text.find(what, at + instead.size()))
        text.replace(at, what.size(), instead);
}

std::string nameOf(const std::string& character)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    const icu::UnicodeString units = icu::UnicodeString::fromUTF8(character);
    std::string name;
    for (int32_t i = 0; i < units.length(); ++i) {
        name += i == 0 ? "U+" : " U+";
        for (int shift = 12; shift >= 0; shift -= 4)
            name += kDigits[units[i] >> shift & 0xF];
    }
    return name;
}

// The bytes of one character; 0 if the page lacks it.
int byteCount(UConverter* converter, UChar unit)
{
    std::array<char, 16> bytes{};
    UErrorCode status = U_ZERO_ERROR;
    const int32_t count = ucnv_fromUChars(converter, bytes.data(),
                                          static_cast<int32_t>(bytes.size()), &unit, 1, &status);
    return U_SUCCESS(status) ? count : 0;
}

} // namespace

std::string withoutMarks(std::string text)
{
    for (const char* const mark : {"\u200E", "\u200F", "\u061C"})
        replaceAll(text, mark, "");
    return text;
}

CodePageFit::CodePageFit(const std::string& codePage) : name_(codePage)
{
    UErrorCode status = U_ZERO_ERROR;
    converter_ = ucnv_open(converterName(codePage).c_str(), &status);
    if (U_FAILURE(status))
        return;
    ucnv_setFromUCallBack(converter_, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                          &status);
    ucnv_setFallback(converter_, false);
}

CodePageFit::~CodePageFit()
{
    ucnv_close(converter_);
}

bool CodePageFit::holds(const std::string& text) const
{
    const icu::UnicodeString units = icu::UnicodeString::fromUTF8(text);
    for (int32_t i = 0; i < units.length(); ++i)
        if (byteCount(converter_, units[i]) == 0)
            return false;
    return true;
}

bool CodePageFit::isOneByte(const std::string& character) const
{
    const icu::UnicodeString units = icu::UnicodeString::fromUTF8(character);
    return units.length() == 1 && byteCount(converter_, units[0]) == 1;
}

std::optional<std::string> CodePageFit::fitted(const std::string& text,
                                               const std::vector<Substitute>& substitutes,
                                               Notes& notes) const
{
    std::string result = text;
    for (const auto& [character, instead] : substitutes) {
        if (result.find(character) == std::string::npos || holds(character))
            continue;
        replaceAll(result, character, instead);
        notes.push_back(
            nameOf(character) + " is not in " + name_ +
            (instead.empty() ? " and is dropped" : ", " + nameOf(instead) + " stands for it"));
    }
    return holds(result) ? std::optional(result) : std::nullopt;
}

std::optional<std::string> CodePageFit::separator(const std::string& character,
                                                  const std::string& name, Notes& notes) const
{
    std::string result = character;
    const auto replace = [&](const std::string& from, const std::string& to) {
        notes.push_back(name + ": " + nameOf(to) + " stands for " + nameOf(from) +
                        ", since a separator is one byte in the code page");
        result = to;
    };
    if (result == kNarrowNoBreakSpace)
        replace(kNarrowNoBreakSpace, kNoBreakSpace);
    if (result == kNoBreakSpace && !isOneByte(kNoBreakSpace))
        replace(kNoBreakSpace, " ");
    return isOneByte(result) ? std::optional(result) : std::nullopt;
}

} // namespace vlx::import
