// The two ways in which a walk is told: a table for a reader, or one JSON document.
#pragma once

#include <memory>
#include <string>

#include "localedir.hpp"
#include "terminal.hpp"
#include "walker.hpp"

namespace vlx::cli {

// What is walked through.
struct Subject {
    std::string file;
    std::string locale;
    std::optional<ListedObject> codePage; // nothing on the built-in objects
    PageFacts page;
    bool hasUnicode;
};

class Printer {
  public:
    virtual ~Printer() = default;
    virtual void begin() = 0;
    virtual void item(const Item& item) = 0;
    // `shown` counts the characters that were given to item().
    virtual void end(const Totals& totals, const Checks& checks, std::int32_t shown) = 0;
};

std::unique_ptr<Printer> plainPrinter(const Subject& subject, const PaddedText& text,
                                      Output& output);
std::unique_ptr<Printer> jsonPrinter(const Subject& subject, const PaddedText& text,
                                     Output& output);

// The bytes of an item in hex, with `gap` between them.
std::string hexBytes(const PaddedText& text, const Item& item, const char* gap);

// The class of a character in words, those of the C library, with `gap` between them.
std::string classWords(const Item& item, const char* gap);

// The functions that a page's checks call.
inline const char* countFunction(const PageFacts& page)
{
    return page.stateful() ? "TSNumCharsEx" : "TSNumChars";
}
inline const char* backFunction(const PageFacts& page)
{
    return page.stateful() ? "TSPrevCharEx" : "TSPrevChar";
}

} // namespace vlx::cli
