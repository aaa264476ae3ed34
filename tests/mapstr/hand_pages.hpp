// Pages made by hand for the tests of mapping and comparison, and locales on them.
#pragma once

#include <string>

#include "mapstr/language.hpp"
#include "support/page_builder.hpp"
#include "support/test_locale.hpp"
#include "tessera.h"

namespace vlx::test {

// Latin letters, single-byte: 0xC4 and 0xE4 are a pair of letters, 0xDF has no upper form, and 0xB2
// is a digit.
PageBuilder latinPage();

// A double-byte page: 0x8140 is a wide blank, 0x8260 a wide A, 0x8281 a wide a, 0x8250 a wide 1,
// and 0x81 the lead byte of nothing else.
PageBuilder widePage();

// The same characters with the lead bytes 0x41 and 0x42, in a stateful page: 0x4140, 0x4260, 0x4281
// and 0x4250, between 0x0E and 0x0F.
PageBuilder shiftPage();

// A locale of a page and a language.
struct HandLocale {
    explicit HandLocale(PageBuilder built, const Pairs& upper = {}, const Pairs& lower = {})
        : page(std::move(built)), language(upper, lower), record(localeOn(page.object()))
    {
        record.language = &language.object();
    }
    HandLocale(const HandLocale&) = delete;
    HandLocale& operator=(const HandLocale&) = delete;

    TSLocale* handle() { return &record; }

    PageBuilder page;
    TestLanguage language;
    TSLocale record;
};

} // namespace vlx::test
