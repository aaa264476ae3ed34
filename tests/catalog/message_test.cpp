// Messages of a catalog in bytes.
#include "catalog/catalog_fixture.hpp"

namespace vlx::test {
namespace {

using Messages = BothForms;
INSTANTIATE_TEST_SUITE_P(Forms, Messages, testing::Values(Form::kSlim, Form::kPreloaded), formOf);

TEST_P(Messages, AreFoundBySetAndNumberAcrossGaps)
{
    const Catalog catalog = open(smallCatalog(), GetParam());
    ASSERT_TRUE(catalog);
    EXPECT_EQ(message(catalog.get(), 1, 1), "one");
    EXPECT_EQ(message(catalog.get(), 1, 2), "two");
    EXPECT_EQ(message(catalog.get(), 1, 7), "seven");
    EXPECT_EQ(message(catalog.get(), 5, 3), "five three");
    EXPECT_EQ(message(catalog.get(), 5, 900), "far");
}

TEST_P(Messages, ThatAreMissingAre72)
{
    const Catalog catalog = open(smallCatalog(), GetParam());
    const std::pair<int, int> missing[] = {{3, 1}, {2, 1},  {6, 1},         {1, 3},  {1, 8},
                                           {0, 1}, {-1, 1}, {1, 0},         {1, -1}, {5, 1},
                                           {5, 2}, {5, 4},  {INT32_MAX, 1}, {5, 901}};
    for (const auto& [set, number] : missing) {
        char output[] = "##";
        EXPECT_EQ(TSGetMessage(catalog.get(), set, number, output, 2, nullptr), 72);
        EXPECT_EQ(TSGetError(locale_.get()), 72);
        EXPECT_EQ(std::string(output, 2), std::string("\0#", 2));
        EXPECT_EQ(message(catalog.get(), set, number, "instead"), "instead");
        EXPECT_EQ(TSGetError(locale_.get()), 0);
    }
}

TEST_P(Messages, ThatAreTooLongAreCutWithoutAnError)
{
    const Catalog catalog = open(smallCatalog(), GetParam());
    EXPECT_EQ(message(catalog.get(), 1, 7, nullptr, 4), "sev");
    EXPECT_EQ(TSGetError(locale_.get()), 0);
    EXPECT_EQ(message(catalog.get(), 1, 7, nullptr, 1), "");
    EXPECT_EQ(message(catalog.get(), 1, 7, nullptr, 6), "seven");
}

TEST_P(Messages, ThatAreCutEndAtACharacter)
{
    CatalogFile file = smallCatalog();
    file.locale = "Wide_Wide";
    file.sets[0].messages[0].text = "a\x8A\x42\x8A\x42";
    const Catalog catalog = open(file, GetParam(), "Wide_Wide");
    EXPECT_EQ(message(catalog.get(), 1, 1), "a\x8A\x42\x8A\x42");
    EXPECT_EQ(message(catalog.get(), 1, 1, nullptr, 5), "a\x8A\x42");
    EXPECT_EQ(message(catalog.get(), 1, 1, nullptr, 3), "a");
}

TEST_P(Messages, AreConvertedToTheCallersCodePage)
{
    CatalogFile file = smallCatalog();
    file.sets[0].messages[0].text = "\xE4 \x80"; // U+00E4, U+20AC
    const Catalog utf8 = open(file, GetParam(), "Codes_Codes.UTF8");
    EXPECT_EQ(message(utf8.get(), 1, 1), "\xC3\xA4 \xE2\x82\xAC");
    EXPECT_EQ(message(utf8.get(), 1, 1, nullptr, 6), "\xC3\xA4 ");
}

TEST_P(Messages, InAStatefulLocaleEndInTheSingleByteState)
{
    CatalogFile file = smallCatalog();
    file.locale = "Wide_Wide";
    file.sets[0].messages[0].text = "a\x8A\x42\x8A\x42";
    const Catalog catalog = open(file, GetParam(), "Codes_Codes.Shift");
    EXPECT_EQ(message(catalog.get(), 1, 1), "a\x0E\x42\x43\x42\x43\x0F");
    EXPECT_EQ(message(catalog.get(), 1, 1, nullptr, 8), "a\x0E\x42\x43\x42\x43\x0F");
    EXPECT_EQ(message(catalog.get(), 1, 1, nullptr, 7), "a\x0E\x42\x43\x0F");
    EXPECT_EQ(message(catalog.get(), 1, 1, nullptr, 4), "a");
}

TEST_P(Messages, ASizeBelow1WritesATerminator)
{
    const Catalog catalog = open(smallCatalog(), GetParam());
    locale_->lastError = 4711;
    for (const std::int32_t size : {0, -1, INT32_MIN}) {
        char output[] = "##";
        EXPECT_EQ(TSGetMessage(catalog.get(), 9, 9, output, size, "x"), 0);
        EXPECT_EQ(std::string(output, 2), std::string("\0#", 2));
    }
    EXPECT_EQ(locale_->lastError, 4711);
}

TEST_P(Messages, ANullOutputIsRefused)
{
    const Catalog catalog = open(smallCatalog(), GetParam());
    EXPECT_EQ(TSGetMessage(catalog.get(), 1, 1, nullptr, 5, nullptr), 72);
    EXPECT_EQ(TSGetError(locale_.get()), TS_ERR_ARGUMENT);
}

TEST_P(Messages, ANullCatalogHasNoMessage)
{
    char output[] = "##";
    EXPECT_EQ(TSGetMessage(nullptr, 1, 1, output, 2, "x"), 72);
    EXPECT_STREQ(output, "");
    EXPECT_EQ(TSGetMessage(nullptr, 1, 1, nullptr, 2, nullptr), 72);
    TSChar16 unit = 5;
    EXPECT_EQ(TSGetMessageU(nullptr, 1, 1, &unit, 1, nullptr), 72);
    EXPECT_EQ(unit, 0);
    EXPECT_EQ(TSGetMessageW(nullptr, 1, 1, nullptr, 1, nullptr), 72);
}

TEST_P(Messages, ADefaultTextThatIsCutHasNoTerminator)
{
    const Catalog catalog = open(smallCatalog(), GetParam());
    char output[] = "######";
    EXPECT_EQ(TSGetMessage(catalog.get(), 9, 9, output, 3, "abcdef"), 0);
    EXPECT_STREQ(output, "abc###");
    EXPECT_EQ(TSGetError(locale_.get()), 0);
}

TEST_P(Messages, AnEmptyTextIsAMessage)
{
    CatalogFile file = smallCatalog();
    file.sets[0].messages[0].text = "";
    const Catalog catalog = open(file, GetParam());
    EXPECT_EQ(message(catalog.get(), 1, 1, "default"), "");
    EXPECT_EQ(message(catalog.get(), 1, 1, "default", 1), "");
}

TEST_P(Messages, OfASetWithoutTextsAreMissing)
{
    CatalogFile file = smallCatalog();
    file.sets[0].messages.clear();
    const Catalog catalog = open(file, GetParam());
    ASSERT_TRUE(catalog);
    EXPECT_EQ(message(catalog.get(), 1, 1), std::nullopt);
    EXPECT_EQ(message(catalog.get(), 5, 900), "far");
}

TEST_P(Messages, TheLocaleOfTheCallerMayChangeItsCodePage)
{
    CatalogFile file = smallCatalog();
    file.sets[0].messages[0].text = "\xE4";
    const Catalog catalog = open(file, GetParam());
    EXPECT_EQ(message(catalog.get(), 1, 1), "\xE4");
    ASSERT_EQ(TSChangeCodePage(locale_.get(), object(TS_OBJ_CODEPAGE, "UTF8")), 0);
    EXPECT_EQ(message(catalog.get(), 1, 1), "\xC3\xA4");
}

TEST_P(Messages, ATextWithoutItsTerminatorIsNone)
{
    std::vector<std::uint8_t> bytes = smallCatalog().bytes();
    bytes.back() = 'x'; // of "far", the last text of the file
    const Catalog catalog = openBytes(bytes, GetParam(), locale_.get());
    EXPECT_EQ(message(catalog.get(), 5, 900), std::nullopt);
    EXPECT_EQ(message(catalog.get(), 5, 3), "five three");
}

TEST_P(Messages, ATextOutsideItsBlockIsNone)
{
    std::vector<std::uint8_t> bytes = smallCatalog().bytes();
    const std::size_t entry = numberAt(bytes, 152 + 12);
    putNumber(bytes, entry + 8, numberAt(bytes, 152 + 20));
    putNumber(bytes, entry + kCatalogMessageSize + 8, 0xFFFFFFFF);
    const Catalog catalog = openBytes(bytes, GetParam(), locale_.get());
    EXPECT_EQ(message(catalog.get(), 1, 1), std::nullopt);
    EXPECT_EQ(message(catalog.get(), 1, 2), std::nullopt);
    EXPECT_EQ(message(catalog.get(), 1, 7), "seven");
}

using SlimMessages = CatalogTest;

TEST_F(SlimMessages, TheHeaderIsReadOnce)
{
    const Catalog catalog = open(smallCatalog(), Form::kSlim);
    EXPECT_EQ(catalog->catalogLocale, nullptr);
    message(catalog.get(), 1, 1);
    const TSLocale* const read = catalog->catalogLocale;
    EXPECT_NE(read, nullptr);
    message(catalog.get(), 5, 900);
    EXPECT_EQ(catalog->catalogLocale, read);
}

TEST_F(SlimMessages, ManyMessagesOfASetAreReadInOrder)
{
    CatalogFile file = smallCatalog();
    for (std::uint32_t number = 10; number < 400; number += 2)
        file.sets[0].messages.push_back({number, "text " + std::to_string(number)});
    const Catalog catalog = open(file, Form::kSlim);
    for (int number = 10; number < 400; number += 2)
        EXPECT_EQ(message(catalog.get(), 1, number), "text " + std::to_string(number));
    EXPECT_EQ(message(catalog.get(), 1, 399), std::nullopt);
}

TEST_F(SlimMessages, AShortTableIsAMissingMessage)
{
    std::vector<std::uint8_t> bytes = smallCatalog().bytes();
    putNumber(bytes, 152 + 8, 1000); // messages of the first set
    const Catalog catalog = openBytes(bytes, Form::kSlim, locale_.get());
    EXPECT_EQ(message(catalog.get(), 1, 2), "two");
    EXPECT_EQ(message(catalog.get(), 1, 500), std::nullopt);
    EXPECT_EQ(message(catalog.get(), 1, 500, "default"), "default");
    EXPECT_EQ(TSGetError(locale_.get()), 0);
}

TEST_F(SlimMessages, AChainInACircleIsLeftAfterAFewReadsHoweverLongTheFile)
{
    CatalogFile file = smallCatalog();
    for (std::uint32_t set = 6; set < 9; ++set)
        file.sets.push_back({set, {{1, "text"}}});
    std::vector<std::uint8_t> bytes = file.bytes();
    bytes.resize(1000000);
    for (const std::size_t back : {4u, 3u, 0u}) { // the last set leads to this one
        putNumber(bytes, 152 + 4 * 28 + 4, static_cast<std::uint32_t>(152 + back * 28));
        const Catalog catalog = openBytes(bytes, Form::kSlim, locale_.get());
        EXPECT_EQ(message(catalog.get(), 8, 1), "text");
        const std::uint32_t calls = MemoryHost::calls();
        EXPECT_EQ(message(catalog.get(), 9, 1), std::nullopt);
        EXPECT_LT(MemoryHost::calls() - calls, 40u);
        EXPECT_EQ(TSGetError(locale_.get()), 72);
    }
}

TEST_F(SlimMessages, ACatalogThatCannotBeReadIs71BeforeTheMessageIsMissing)
{
    MemoryHost::put("msgs", "no catalog");
    const Catalog catalog(TSOpenCatalog(locale_.get(), nullptr, "msgs", TS_CATALOG_SEARCH_ONCE));
    Trace::setMask(TRC1_ERRORS);
    for (const char* const text : {static_cast<const char*>(nullptr), "default"}) {
        Trace::clear();
        message(catalog.get(), 1, 1, text);
        EXPECT_TRUE(Trace::printed("Catalog not readable, err = 71"));
        EXPECT_EQ(TSGetError(locale_.get()), text ? 0 : 72);
    }
}

TEST_F(SlimMessages, ATextOfAWrongLengthNeedsItsTerminatorWithinIt)
{
    std::vector<std::uint8_t> bytes = smallCatalog().bytes();
    const std::size_t entry = numberAt(bytes, 152 + 12);
    putNumber(bytes, entry + 4, 3);                           // "one"
    putNumber(bytes, entry + kCatalogMessageSize + 4, 4 + 3); // "two", and some of the next
    const Catalog catalog = openBytes(bytes, Form::kSlim, locale_.get());
    EXPECT_EQ(message(catalog.get(), 1, 1), std::nullopt);
    EXPECT_EQ(message(catalog.get(), 1, 2), "two");
}

using PreloadedMessages = CatalogTest;

TEST_F(PreloadedMessages, LengthsAreNotLookedAt)
{
    std::vector<std::uint8_t> bytes = smallCatalog().bytes();
    const std::size_t entry = numberAt(bytes, 152 + 12);
    putNumber(bytes, entry + 4, 3);
    putNumber(bytes, entry + kCatalogMessageSize + 4, 4 + 3);
    putNumber(bytes, entry + 2 * kCatalogMessageSize + 4, 0xFFFFFFFF);
    const Catalog catalog = openBytes(bytes, Form::kPreloaded, locale_.get());
    EXPECT_EQ(message(catalog.get(), 1, 1), "one");
    EXPECT_EQ(message(catalog.get(), 1, 2), "two");
    EXPECT_EQ(message(catalog.get(), 1, 7), "seven");
}

TEST_F(PreloadedMessages, TakeNoMemoryAndNoFile)
{
    const Catalog catalog = open(smallCatalog(), Form::kPreloaded);
    const std::uint32_t calls = MemoryHost::calls();
    const std::uint32_t allocations = Allocator::calls(Slot::kAllocate);
    EXPECT_EQ(message(catalog.get(), 5, 900), "far");
    EXPECT_EQ(message(catalog.get(), 1, 7, nullptr, 3), "se");
    EXPECT_EQ(message(catalog.get(), 3, 7), std::nullopt);
    EXPECT_EQ(MemoryHost::calls(), calls);
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), allocations);
}

TEST_F(PreloadedMessages, NumbersOutOfOrderEndTheSearch)
{
    CatalogFile file = smallCatalog();
    file.sets = {{900, {{7, "a"}, {3, "b"}}}, {4, {{1, "c"}}}, {2, {{2, "d"}, {2, "e"}}}};
    const Catalog catalog = open(file, Form::kPreloaded);
    ASSERT_TRUE(catalog);
    for (int set = 1; set < 1000; ++set)
        for (int number = 1; number < 9; ++number)
            message(catalog.get(), set, number);
}

} // namespace
} // namespace vlx::test
