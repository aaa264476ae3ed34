// Message catalogs: sources, .po files, the file in both byte orders, dump and checks.
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "messages_command.hpp"
#include "source_tree.hpp"

namespace {

using namespace vlx::data;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kGerman = R"(locale = "German_Germany.MS1252"

[set.1] # files
1 = "Datei %s nicht gefunden" # %s: ihr Name
2 = "Größe: %d Bytes"

[set.7]
10 = "Ende\n"
)";

class Messages : public testing::Test {
  protected:
    CatalogOptions options(const std::vector<std::string>& names) const
    {
        CatalogOptions options;
        for (const std::string& name : names)
            options.files.push_back(tree_.path(name));
        options.localeDirectory = VLX_LOCALE;
        options.output = tree_.path("out.cat");
        return options;
    }

    // What building a source says; empty if it is good.
    std::string build(const std::string& text, const CatalogOptions& told)
    {
        Diagnostics diagnostics;
        tree_.write(told.files.front().substr(told.files.front().rfind('/') + 1), text);
        buildCatalog(told, diagnostics);
        return linesOf(diagnostics);
    }
    std::string build(const std::string& text) { return build(text, options({"a.toml"})); }

    std::string dump()
    {
        Diagnostics diagnostics;
        CatalogOptions told = options({"out.cat"});
        std::ostringstream out;
        dumpCatalog(told, out, diagnostics);
        EXPECT_EQ(linesOf(diagnostics), "");
        return out.str();
    }

    std::string lint(const std::vector<std::string>& names)
    {
        Diagnostics diagnostics;
        lintCatalogs(options(names), diagnostics);
        return linesOf(diagnostics);
    }

    SourceTree tree_;
};

TEST_F(Messages, ACatalogIsDumpedAsItsSource)
{
    EXPECT_EQ(build(kGerman), "");
    EXPECT_EQ(dump(), "locale = \"German_Germany.MS1252\"\n\n[set.1]\n"
                      "1 = \"Datei %s nicht gefunden\"\n2 = \"Größe: %d Bytes\"\n\n[set.7]\n"
                      "10 = \"Ende\\u000A\"\n");
    EXPECT_EQ(lint({"out.cat"}), "");
    const std::string first = dump();
    EXPECT_EQ(build(first), "");
    EXPECT_EQ(dump(), first);
}

TEST_F(Messages, TheFileIsOfTheByteOrderThatIsAskedFor)
{
    CatalogOptions told = options({"a.toml"});
    told.order = "big";
    EXPECT_EQ(build(kGerman, told), "");
    const std::string big = contentOf(tree_.path("out.cat"));
    EXPECT_EQ(big.substr(0, 20),
              std::string("\x5A\x3C\x9E\x18\x10\0\0\0\0\0\0\1\0\0\0\2\0\0\0\x98", 20));
    const std::string shown = dump();
    EXPECT_EQ(lint({"out.cat"}), "");
    told.order = "little";
    EXPECT_EQ(build(kGerman, told), "");
    const std::string little = contentOf(tree_.path("out.cat"));
    EXPECT_EQ(little.substr(0, 20),
              std::string("\x18\x9E\x3C\x5A\0\0\0\x10\2\0\0\0\2\0\0\0\x98\0\0\0", 20));
    EXPECT_EQ(dump(), shown);
}

TEST_F(Messages, TextsAreInTheCodePageOfTheLocale)
{
    EXPECT_EQ(build("locale = \"Japanese\"\n[set.1]\n1 = \"aア日\"\n"), "");
    EXPECT_THAT(contentOf(tree_.path("out.cat")), HasSubstr("a\x83\x41\x93\xFA"));
    EXPECT_EQ(build("locale = \"Japanese_Japan.IBM930@Binary\"\n[set.1]\n1 = \"A日本B日\"\n"), "");
    const std::string stateful = contentOf(tree_.path("out.cat"));
    EXPECT_EQ(stateful.substr(stateful.size() - 13, 2), "\xC1\x0E");
    EXPECT_EQ(stateful.substr(stateful.size() - 2), std::string("\x0F\0", 2));
    EXPECT_THAT(dump(), HasSubstr("1 = \"A日本B日\""));
}

TEST_F(Messages, WhatIsWrongWithASourceIsToldAtItsLine)
{
    EXPECT_THAT(build("locale = \"German\"\n[set.1]\n1 = \"日\"\n"),
                HasSubstr("a.toml:3: the code page has no U+65E5"));
    EXPECT_THAT(build("[set.1]\n1 = \"a\"\n"), HasSubstr("the key 'locale' is missing"));
    EXPECT_THAT(build("locale = \"German\"\n"), HasSubstr("there is no set"));
    EXPECT_THAT(build("locale = \"German\"\n[set.0]\n1 = \"a\"\n"),
                HasSubstr("a.toml:2: '0' is no number above 0"));
    EXPECT_THAT(build("locale = \"German\"\n[set.1]\n01 = \"a\"\n"),
                HasSubstr("a.toml:3: '01' is no number above 0"));
    EXPECT_THAT(build("locale = \"German\"\n[set.1]\n1 = 5\n"),
                HasSubstr("a.toml:3: a message is a text"));
    EXPECT_THAT(build("locale = \"German\"\ncolour = 1\n[set.1]\n1 = \"a\"\n"),
                HasSubstr("a.toml:2: unknown key 'colour'"));
    EXPECT_THAT(build("locale = \"Klingon\"\n[set.1]\n1 = \"a\"\n"),
                HasSubstr("has no code page for the locale Klingon"));
    EXPECT_THAT(build("locale = \"German.Nowhere\"\n[set.1]\n1 = \"a\"\n"),
                HasSubstr("has no code page for the locale German.Nowhere"));
    EXPECT_NE(build("locale = \n"), "");
}

constexpr const char* kPo = R"(# The header has no id.
msgid ""
msgstr "Content-Type: text/plain; charset=UTF-8\n"

#: main.c:1
msgid "one"
msgstr "eins"

msgctxt "errors"
msgid "no file %s"
msgstr ""
"keine "
"Datei %s\n"

msgctxt "errors"
msgid "not translated"
msgstr ""

#, fuzzy, c-format
msgctxt "errors"
msgid "doubtful"
msgstr "zweifelhaft"

msgctxt "errors"
msgid "last"
msgstr "letzte \"\\"
#~ msgid "gone"
#~ msgstr "weg"

msgctxt "9"
msgid "nine"
msgstr "neun"
)";

TEST_F(Messages, ContextsOfAPortableObjectAreSets)
{
    CatalogOptions told = options({"de.po"});
    told.locale = "German.MS1252";
    told.contexts = {"errors=4"};
    EXPECT_EQ(build(kPo, told), "");
    EXPECT_EQ(dump(), "locale = \"German.MS1252\"\n\n[set.1]\n1 = \"eins\"\n\n[set.4]\n"
                      "1 = \"keine Datei %s\\u000A\"\n4 = \"letzte \\\"\\\\\"\n\n[set.9]\n"
                      "1 = \"neun\"\n");
}

TEST_F(Messages, WhatIsWrongWithAPortableObjectIsToldAtItsLine)
{
    CatalogOptions told = options({"de.po"});
    EXPECT_THAT(build("msgid \"a\"\nmsgstr \"b\"\n", told), HasSubstr("has no locale"));
    told.locale = "German.MS1252";
    EXPECT_THAT(build(kPo, told), HasSubstr("de.po:10: no set is told for the context 'errors'"));
    EXPECT_THAT(build("msgid \"a\"\nmsgid_plural \"b\"\nmsgstr[0] \"c\"\n", told),
                HasSubstr("de.po:1: plural forms have no place in a catalog"));
    EXPECT_THAT(build("msgid \"a\nmsgstr \"b\"\n", told),
                HasSubstr("de.po:1: the closing quote is missing"));
    EXPECT_THAT(build("msgid \"\\q\"\nmsgstr \"b\"\n", told),
                HasSubstr("de.po:1: unknown escape sequence"));
    EXPECT_THAT(build("colour \"a\"\n", told), HasSubstr("de.po:1: unknown keyword 'colour'"));
    told.contexts = {"errors"};
    EXPECT_THAT(build(kPo, told), HasSubstr("is not of the form CONTEXT=NUMBER"));
}

TEST_F(Messages, DirectivesAreComparedByTypeAndOrder)
{
    EXPECT_THAT(directivesOf("100 %% %s %-5d %.2f %08lX%"), ElementsAre("%s", "%d", "%f", "%lX"));
    EXPECT_THAT(directivesOf("%2$s of %1$d"), ElementsAre("%1$d", "%2$s"));
    EXPECT_THAT(directivesOf("%*d %.*f 5 %"), ElementsAre("%*d", "%*f"));
    EXPECT_THAT(directivesOf("50 % z"), ElementsAre());
    EXPECT_THAT(directivesOf("no %w here"), ElementsAre());
}

TEST_F(Messages, LanguagesAreComparedWithTheFirst)
{
    tree_.write("en.toml", "locale = \"English.MS1252\"\n[set.1]\n1 = \"%s %d\"\n2 = \"b\"\n");
    tree_.write("de.toml", "locale = \"German.MS1252\"\n[set.1]\n1 = \"%d %s\"\n3 = \"c\"\n");
    const std::string told = lint({"en.toml", "de.toml"});
    EXPECT_THAT(told, HasSubstr("de.toml:3: set 1, message 1 has the directives %d %s instead of "
                                "%s %d"));
    EXPECT_THAT(told, HasSubstr("set 1, message 2 is missing"));
    EXPECT_THAT(told, HasSubstr("de.toml:4: set 1, message 3 is in this language alone"));
    tree_.write("de.toml", "locale = \"German.MS1252\"\n[set.1]\n1 = \"%5s, %d\"\n2 = \"x\"\n");
    EXPECT_EQ(lint({"en.toml", "de.toml"}), "");
}

TEST_F(Messages, DamageOfAFileIsTold)
{
    CatalogOptions told = options({"a.toml"});
    told.order = "little";
    ASSERT_EQ(build(kGerman, told), "");
    const std::string good = contentOf(tree_.path("out.cat"));
    const auto damaged = [&](std::size_t offset, const std::string& bytes) {
        std::string file = good;
        file.replace(offset, bytes.size(), bytes);
        tree_.write("out.cat", file);
        return lint({"out.cat"});
    };
    EXPECT_THAT(damaged(0, "x"), HasSubstr("is no message catalog"));
    EXPECT_THAT(damaged(7, "\x20"), HasSubstr("the version is 20000000"));
    EXPECT_THAT(damaged(8, "\x01"), HasSubstr("the byte order of the header"));
    EXPECT_THAT(damaged(12, "\x03"), HasSubstr("lies outside of the file"));
    EXPECT_THAT(damaged(12, "\x01"), HasSubstr("the chain has more sets"));
    EXPECT_THAT(damaged(20, std::string(132, 'a')), HasSubstr("is not terminated"));
    EXPECT_THAT(damaged(152, "\x09"), HasSubstr("set 7 is not above the one before it"));
    EXPECT_THAT(damaged(152 + 8, "\x70"), HasSubstr("set 1 lies outside of the file"));
    const std::size_t entry = 152 + 2 * 28;
    EXPECT_THAT(damaged(entry, "\x02"), HasSubstr("set 1, message 2 is not above"));
    EXPECT_THAT(damaged(entry + 4, "\x05"), HasSubstr("message 1: the text has not the length"));
    EXPECT_THAT(damaged(good.size() - 2, "\x81"),
                HasSubstr("set 7, message 10: the code page has no character at byte 5"));
    for (std::size_t size = 0; size < good.size(); ++size) {
        tree_.write("out.cat", good.substr(0, size));
        EXPECT_NE(lint({"out.cat"}), "") << size;
    }
}

} // namespace
