// What the tests of catalogs share: a locale directory with codes of languages and territories, and
// catalogs that are given back whole.
#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "catalog/catalog.hpp"
#include "catalog/catalog_builder.hpp"
#include "locale/locale_fixture.hpp"

namespace vlx::test {

// Closes a catalog, and releases the locale of its texts, which the library leaves.
struct CloseCatalog {
    void operator()(TSCatalog* catalog) const;
};
using Catalog = std::unique_ptr<TSCatalog, CloseCatalog>;

enum class Form { kSlim, kPreloaded };
std::ostream& operator<<(std::ostream& out, Form form);

class CatalogTest : public LocaleTest {
  protected:
    // The codes of Codes_Codes are EN and USA, of Bare_Bare empty; Wide_Wide is in the double-byte
    // page and has the codes U+5186 and W.
    CatalogTest();
    ~CatalogTest() override;

    static std::uint32_t flagsOf(Form form)
    {
        return form == Form::kPreloaded ? TS_CATALOG_PRELOAD : TS_CATALOG_SEARCH_ONCE;
    }

    Catalog open(const CatalogFile& file, Form form, const std::string& locale = "Codes_Codes");
    Catalog openBytes(const std::vector<std::uint8_t>& bytes, Form form, TSLocale* locale);

    // A message as a string, nothing if the result is not 0.
    static std::optional<std::string> message(TSCatalog* catalog, std::int32_t set,
                                              std::int32_t number,
                                              const char* defaultText = nullptr,
                                              std::int32_t size = 100);

    // The paths that the searches have tried since the last call.
    static std::vector<std::string> triedPaths();

    // The second pass leaves its locale behind: what is out from here on is not counted.
    static void forgetLocaleOfSecondPass();

    Handle locale_; // Codes_Codes in the Latin page
};

class BothForms : public CatalogTest, public testing::WithParamInterface<Form> {};
inline std::string formOf(const testing::TestParamInfo<Form>& info)
{
    return info.param == Form::kSlim ? "Slim" : "Preloaded";
}

CatalogFile smallCatalog();

} // namespace vlx::test
