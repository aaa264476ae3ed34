// A language object that has pairs and nothing else to tell.
#pragma once

#include "frame/objman.hpp"
#include "support/object_builder.hpp"

namespace vlx::test {

using Pairs = std::vector<LanguageContent::Pair>;

class TestLanguage {
  public:
    explicit TestLanguage(const Pairs& upper = {}, const Pairs& lower = {})
    {
        LanguageContent content = LanguageContent::sample();
        content.upperPairs = upper;
        content.lowerPairs = lower;
        bytes_ = content.bytes();
        object_.type = TS_OBJ_LANGUAGE;
        object_.sections[0] = bytes_.data();
    }
    TestLanguage(TestLanguage&&) = default;
    TestLanguage& operator=(TestLanguage&&) = default;

    TSObject& object() { return object_; }

  private:
    Bytes bytes_; // stays where it is when it moves
    TSObject object_{};
};

} // namespace vlx::test
