// The names that IANA and MIME have for the shipped code pages, as ICU lists them, through the
// library.
#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include "shipped.hpp"

#include "nls1.h"
#include "tessera.h"
#include "tsconst.h"

namespace {

// US-ASCII is left out: it has the table of ASCII, to which the names lead.
std::vector<ShippedPage> pagesWithNames()
{
    std::vector<ShippedPage> pages = shippedPages(&ShippedPage::icu);
    std::erase_if(pages, [](const ShippedPage& page) { return page.id == 1; });
    return pages;
}

// Names that several pages could have, and another one has than ICU gives them to.
constexpr struct {
    const char* alias;
    const char* page;
} kElsewhere[] = {
    {"TIS-620", "ISO8859-11"},   // the national standard that became this part of ISO 8859
    {"KS_C_5601-1987", "MS949"}, // as most texts under this name are
};

int idOf(const std::string& name)
{
    std::int32_t code = 0;
    const int id = NLS1_GetCodepageId(name.c_str(), &code);
    return code == 0 ? id : -code;
}

// The names of a converter by one standard.
std::vector<std::string> namesOf(const std::string& converter, const char* standard)
{
    std::vector<std::string> names;
    UErrorCode error = U_ZERO_ERROR;
    UEnumeration* const list = ucnv_openStandardNames(converter.c_str(), standard, &error);
    for (const char* name = uenum_next(list, nullptr, &error); name != nullptr;
         name = uenum_next(list, nullptr, &error))
        names.emplace_back(name);
    uenum_close(list);
    EXPECT_TRUE(U_SUCCESS(error)) << converter;
    return names;
}

class AliasNames : public testing::TestWithParam<ShippedPage> {
  protected:
    static void SetUpTestSuite()
    {
        ASSERT_EQ(TSInit(VLX_LOCALE, nullptr, nullptr, nullptr, nullptr, 0, TS_STRICT_OBJECTS), 0);
    }
    static void TearDownTestSuite() { TSTerm(); }
};

TEST_P(AliasNames, LeadToThePage)
{
    const ShippedPage& page = GetParam();
    EXPECT_EQ(idOf(page.name), page.id);
    if (page.icu.find(',') != std::string::npos)
        return; // a converter with an option has no names of its own
    for (const char* const standard : {"IANA", "MIME"})
        for (const std::string& name : namesOf(page.icu, standard)) {
            if (name == "US-ASCII")
                continue;
            std::string wanted = page.name;
            for (const auto& row : kElsewhere)
                if (name == row.alias)
                    wanted = row.page;
            EXPECT_EQ(idOf(name), idOf(wanted)) << name;
        }
}

std::string titleOf(const testing::TestParamInfo<ShippedPage>& page)
{
    return pageName(page.param);
}

// Two names of one table: the built-in object's own, and the one that aliases lead to.
TEST(OtherNames, OfTablesThatHaveSeveral)
{
    ASSERT_EQ(TSInit(VLX_LOCALE, nullptr, nullptr, nullptr, nullptr, 0, TS_STRICT_OBJECTS), 0);
    EXPECT_EQ(idOf("us-ascii"), 1);
    for (const char* const name : {"ASCII", "ANSI_X3.4-1968", "ISO646-US", "us", "cp367"})
        EXPECT_EQ(idOf(name), 367) << name;
    for (const char* const name : {"GBK", "windows-936"})
        EXPECT_EQ(idOf(name), 936) << name;
    for (const char* const name : {"Big5", "windows-950"})
        EXPECT_EQ(idOf(name), 950) << name;
    EXPECT_EQ(idOf("latin9"), 923);
    EXPECT_EQ(idOf("ibm-1047-s390"), idOf("IBM1047-NL"));
    TSTerm();
}

INSTANTIATE_TEST_SUITE_P(Page, AliasNames, testing::ValuesIn(pagesWithNames()), titleOf);

} // namespace
