// What the tests of locale values run on: directories whose languages and territories have texts,
// in code pages of every shape and both families.
#pragma once

#include <memory>
#include <random>

#include "locale/locale_fixture.hpp"
#include "locale/oracle_items.hpp"
#include "strings/guarded_area.hpp"

namespace vlx::test {

// The bytes of a text in a page of the EBCDIC family: letters, digits and what names and patterns
// need beside them.
std::string ebcdic(std::string_view text);
PageBuilder ebcdicPage(PageShape shape, std::uint16_t id);

// A language "English" and a territory "Homeland" with texts of their own, "German" and "Germany";
// pages "Latin", "Double", "Shift", "Ebcdic", "EbcdicShift", "UTF8" and, unless it is left out, the
// page of names; sorts "Dictionary" and "Phonebook". Defaults of English are all there; German has
// no default territory, code page or sort that is listed.
enum class Names { kListed, kMissing };
LocaleDirectory itemDirectory(Names names = Names::kListed);

class ItemTest : public LocaleTest {
  protected:
    ItemTest() { EXPECT_EQ(start(itemDirectory()), TS_ERR_NONE); }

    // A locale with one of the pages.
    Handle on(const std::string& page) { return make("English." + page); }

    // The text of an item, up to `size`; the result and the error stand in `result_` and `error_`.
    std::string text(TSLocale* locale, std::int32_t item, std::int32_t size = 100,
                     std::uint32_t options = 0);
    std::string textEx(TSLocale* locale, std::int32_t item, std::int32_t state,
                       std::int32_t size = 100, std::uint32_t options = 0);
    std::u16string textU(TSLocale* locale, std::int32_t item, std::int32_t size = 100,
                         std::uint32_t options = 0);
    std::vector<TSChar32> textW(TSLocale* locale, std::int32_t item, std::int32_t size = 100,
                                std::uint32_t options = 0);

    std::int32_t result_ = 0;
    std::int32_t error_ = 0;
};

// A directory by chance around one page. Everything that it holds is loaded.
class RandomItems : public LocaleTest {
  protected:
    // Begins anew on the next page and gives a locale of it.
    void begin();

    std::uint32_t below(std::uint32_t limit)
    {
        return static_cast<std::uint32_t>(random_() % limit);
    }
    bool once(std::uint32_t outOf) { return below(outOf) == 0; }

    // An item, listed or not; options that are accepted, most often.
    std::int32_t anyItem();
    std::uint32_t anyOptions(std::uint32_t accepted);

    // Texts for updates: characters of the page, shift bytes, names of objects, anything.
    oracle::Bytes anyBytes();
    std::vector<TSChar16> anyUnits();
    std::vector<TSChar32> anyPacked();

    // A length of a text that was given, exact most often.
    template <class Unit>
    std::int32_t anyLength(const std::vector<Unit>& text)
    {
        const bool terminated = std::find(text.begin(), text.end(), 0) != text.end();
        if (terminated && once(3))
            return once(8) ? -7 : -1;
        const auto size = static_cast<std::uint32_t>(text.size());
        return static_cast<std::int32_t>(once(3) ? below(size + 1) : size);
    }

    std::mt19937_64 random_{20261121};
    std::unique_ptr<LocaleDirectory> directory_;
    Handle locale_;
    oracle::Record record_;
    GuardedArea area_;

  private:
    std::u16string anyText(std::uint32_t most);
    std::string objectName();

    std::vector<TSChar16> characters_;
    std::vector<oracle::Bytes> encoded_;
    std::size_t round_ = 0;
};

} // namespace vlx::test
