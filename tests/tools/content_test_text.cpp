// Texts of sources: UTF-8 to units and back, how a text is shown, and the limit of a short one.
#include <string>

#include <gtest/gtest.h>

#include "data/content_text.hpp"

namespace {

// 31 bytes are counted in the default code page: 16 units of two bytes are too much there, and 31
// of one byte are not.
TEST(ContentText, NamesAreMeasuredInTheDefaultCodePage)
{
    const std::u16string kanji(16, u'\u6708');
    EXPECT_NE(vlx::data::shortText(932)(kanji), "");
    EXPECT_EQ(vlx::data::shortText(932)(std::u16string(15, u'\u6708')), "");
    EXPECT_EQ(vlx::data::shortText(1251)(std::u16string(31, u'\u0436')), "");
    EXPECT_NE(vlx::data::shortText(1251)(std::u16string(32, u'\u0436')), "");
    EXPECT_EQ(vlx::data::shortText(57352)(std::u16string(10, u'\u6708')), "");
    EXPECT_NE(vlx::data::shortText(57352)(std::u16string(11, u'\u6708')), "");
    EXPECT_NE(vlx::data::shortText(57352)(std::u16string(16, u'\u0436')), "");
}

TEST(ContentText, Utf8IsReadStrictlyAndWrittenBack)
{
    std::string complaint;
    const std::u16string text = u"A\u00E9\u0416\u6708\uFFE5\uFFFF";
    EXPECT_EQ(vlx::data::unitsOf(vlx::data::utf8Of(text), complaint), text);
    EXPECT_EQ(complaint, "");
    for (const char* const bad :
         {"\x80", "\xC0\x80", "\xC1\xBF", "\xC3", "\xE0\x80\x80", "\xE2\x82", "\xED\xA0\x80",
          "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xF5", "\xE2(\xA1", "\xFF"})
        EXPECT_FALSE(vlx::data::unitsOf(bad, complaint)) << complaint;
    EXPECT_FALSE(vlx::data::unitsOf("\U0001F600", complaint));
    EXPECT_NE(complaint.find("U+01F600"), std::string::npos);
}

TEST(ContentText, QuotedShowsWhatTheEyeMisses)
{
    EXPECT_EQ(vlx::data::quoted(u"a\"b\\c\u00A0\u202F\u3000\u00DF"),
              "\"a\\\"b\\\\c\\u00A0\\u202F\\u3000\u00DF\"");
}

} // namespace
