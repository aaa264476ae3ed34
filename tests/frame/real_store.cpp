#include "frame/real_store.hpp"

#include "support/page_builder.hpp"

namespace vlx::test {

RealStoreTest::RealStoreTest()
{
    clearConfig();
    Trace::setMask(~std::uint32_t{TRC1_FLOW});
    Trace::clear();
    PageBuilder page(PageShape::kSingleByte);
    page.asciiHalf();
    for (TSChar32 byte = 0x20; byte < 0x7F; ++byte)
        page.encodeOnly(static_cast<TSChar16>(byte), byte);
    page.build();
    ObjectFile sort;
    sort.sections = {Bytes(16, 1)};
    workshop_.make("control.nls", controlFile({{TS_OBJ_LANGUAGE, 1, "North"},
                                               {TS_OBJ_TERRITORY, 1, "Northland"},
                                               {TS_OBJ_CODEPAGE, 1, "Page"},
                                               {TS_OBJ_SORT, 1, "Sort"}}));
    workshop_.make("la_00001.nls", LanguageContent::sample().file());
    workshop_.make("te_00001.nls", TerritoryContent::sample().file());
    workshop_.make("cp_00001.nls", codePageFile(page));
    workshop_.make("so_00001.nls", sort.bytes());
}

RealStoreTest::~RealStoreTest()
{
    while (tsGlobals)
        TSTerm();
    Trace::setMask(0);
    EXPECT_EQ(lockDepth(), 0);
}

std::int32_t RealStoreTest::start(std::uint32_t options)
{
    return TSInit(directory().c_str(), nullptr, nullptr, nullptr, nullptr, 0, options);
}

void RealStoreTest::alias(std::string_view text) const
{
    workshop_.make("alias.txt", Bytes(text.begin(), text.end()));
}

} // namespace vlx::test
