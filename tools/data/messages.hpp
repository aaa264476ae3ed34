// Message catalogs: their readable sources, gettext's .po files, and the file that the library
// opens. docs/format-catalog.md describes all three.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "codepage_view.hpp"
#include "object.hpp"

namespace vlx::data {

struct Message {
    std::string text; // UTF-8
    int line = 0;     // in its source; 0 in a compiled file
};

// Sets of messages by their numbers, which are above 0.
using MessageSets = std::map<std::uint32_t, std::map<std::uint32_t, Message>>;

struct MessageCatalog {
    std::string locale; // a locale name, of which the code page matters here
    MessageSets sets;
};

// How the entries of a .po file find their sets: by their context. A context that is a number is
// that set; entries without one are set 1.
using ContextMap = std::map<std::string, std::uint32_t>;

// Nothing, with the reasons in the diagnostics, if there is an error.
std::optional<MessageCatalog> readMessageSource(const std::string& path, Diagnostics& diagnostics);
std::optional<MessageCatalog>
readPortableObject(const std::string& path, const ContextMap& contexts, Diagnostics& diagnostics);

// Text in the code page of a locale, as bytes and back.
class LocaleText {
  public:
    // Finds the code page of a locale name in a compiled locale directory. Nothing, with a
    // diagnostic, if the name or its code page is not there.
    static std::optional<LocaleText> open(const std::string& localeDirectory,
                                          const std::string& localeName, Diagnostics& diagnostics);

    // The bytes of a text, which begins and ends in the single-byte state. Nothing, with the reason
    // in `complaint`, if the page lacks a character.
    std::optional<std::string> encode(const std::string& utf8, std::string& complaint) const;
    std::optional<std::string> decode(const std::string& bytes, std::string& complaint) const;

  private:
    explicit LocaleText(CodePageView page) : page_(std::move(page)) {}

    CodePageView page_;
};

enum class ByteOrder : std::uint8_t { kLittle, kBig };
ByteOrder ownOrder();

// The catalog file. Nothing if a text cannot be written in the code page, or the file would be too
// large for its offsets.
std::optional<Bytes> catalogFile(const MessageCatalog& catalog, const LocaleText& text,
                                 ByteOrder order, const std::string& source,
                                 Diagnostics& diagnostics);

// The messages of a catalog file of either order, with everything that the library takes for
// granted checked. The texts are bytes as they stand there.
std::optional<MessageCatalog> readCatalogFile(const std::string& path, Diagnostics& diagnostics);

// readCatalogFile() with the texts in UTF-8.
std::optional<MessageCatalog>
readCatalog(const std::string& path, const std::string& localeDirectory, Diagnostics& diagnostics);

// Prints a catalog as a source that compiles to the same file.
void dumpMessages(const MessageCatalog& catalog, std::ostream& out);

// The printf directives of a text, in an order that does not depend on theirs.
std::vector<std::string> directivesOf(const std::string& text);

// Reports messages of two languages whose format directives differ, and those that one alone has.
void compareMessages(const MessageCatalog& one, const MessageCatalog& other,
                     const std::string& file, Diagnostics& diagnostics);

} // namespace vlx::data
