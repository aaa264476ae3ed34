// What a conversion loses: characters that the source's code page leaves undefined, and those for
// which the target's has no form. The library converts both without a word.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "charwalk.hpp"
#include "codepage.hpp"

namespace vlx::cli {

enum class Loss : std::uint8_t { kNone, kUndefined, kSubstituted };

class LossFinder {
  public:
    LossFinder(const CodePage& source, const CodePage& target);

    // The byte that the target's page has instead of characters without a form; UTF-8 needs none.
    std::optional<std::uint8_t> substitute() const { return substitute_; }

    // Whether converted text may come from a loss: every loss leaves one of two characters in it.
    bool suspects(std::string_view output) const;

    using Receiver = std::function<void(Loss, const Character&)>;

    // Gives the losses in whole characters of the source.
    void find(const CharacterWalk& walk, const char* begin, const char* end, int state,
              const Receiver& receive);

    // The Unicode value of a character.
    TSChar16 unicode(const Character& character) const;

  private:
    Loss lossOf(const Character& character);
    Loss judge(const Character& character) const;
    bool isUndefined(const Character& character, TSChar16 value) const;

    TSLocale* const source_;
    TSLocale* const target_;
    const bool sourceIsUtf8_;
    std::optional<std::uint8_t> substitute_;
    std::string unknown_; // the target's form of U+FFFD
    // What was found out, by a character's bytes; a later character may take the place of an
    // earlier one, so the memory is the same for any text.
    std::vector<std::uint64_t> known_;
};

} // namespace vlx::cli
