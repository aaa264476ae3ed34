// What the library takes for granted in a code page object, proved.
#include <set>

#include "codepage_compile.hpp"
#include "codepage_view.hpp"
#include "sourcefile.hpp"

namespace vlx::data {

namespace {

// Damage tends to come in thousands; after this many lines the page is known to be bad.
constexpr int kMaxErrors = 50;

std::string characterText(Packed character)
{
    return hexText(character, packedLength(character) * 2);
}

class PageLinter {
  public:
    PageLinter(const CodePageView& view, const std::string& file, const LintExceptions& exceptions,
               Diagnostics& diagnostics)
        : view_(view), header_(view.header()), file_(file), exceptions_(exceptions),
          report_(file, diagnostics)
    {
    }
    void lint();

  private:
    void lintLengths();
    void lintBytes();
    void lintShift();
    void lintPage(unsigned high, const TSUnicodePage& page);
    void lintSections();
    void lintUnicodeTrie();
    void lintUnicodeNode(std::size_t index, int left, Packed path);
    void lintTypeTrie();
    void lintTypeNode(std::size_t index, int left, Packed path);
    void lintMaps();
    void lintEncode(std::uint16_t value);
    void lintDecode(Packed character);
    bool fits(Packed character) const;
    bool listed(std::uint16_t value, Packed character) const;
    void error(const std::string& message)
    {
        if (++errors_ <= kMaxErrors)
            report_.error(0, message);
        else if (errors_ == kMaxErrors + 1)
            report_.error(0, "and more");
    }

    const CodePageView& view_;
    const TSCodePageHeader& header_;
    const std::string& file_;
    const LintExceptions& exceptions_;
    Reporter report_;
    int errors_ = 0;
    std::set<std::pair<std::size_t, int>> seen_;
};

void PageLinter::lintLengths()
{
    if (header_.maxCharBytes < 1 || header_.maxCharBytes > 4)
        error("maxCharBytes is not 1 to 4");
    for (unsigned byte = 0; byte < 256; ++byte) {
        const int length = header_.charLength[byte];
        if (length < 1 || length > header_.maxCharBytes)
            error("charLength of " + hexText(byte, 2) + " is " + std::to_string(length));
        if (length > 1 && header_.toUnicode[byte] != kNoUnicode)
            error(hexText(byte, 2) + " begins longer characters and is one by itself");
        if (view_.stateful() && length != 1)
            error("charLength of " + hexText(byte, 2) + " is not 1 in a page with shift bytes");
    }
}

// The bytes that the library writes of itself.
void PageLinter::lintBytes()
{
    const std::pair<const char*, std::uint8_t> bytes[] = {
        {"substChar", header_.substChar},
        {"lineFeedChar", header_.lineFeedChar},
        {"carriageReturnChar", header_.carriageReturnChar},
        {"lineEnd3Char", header_.lineEnd3Char},
        {"lineEnd4Char", header_.lineEnd4Char},
    };
    for (const auto& [name, byte] : bytes)
        if (header_.toUnicode[byte] == kNoUnicode || header_.charLength[byte] != 1)
            error(std::string(name) + " is no character of one byte");
    if (view_.encode(header_.toUnicode[header_.substChar]) != header_.substChar)
        error("substChar does not map back");
    for (unsigned byte = 0; byte < 256; ++byte)
        for (const std::uint8_t image : {header_.toUpper[byte], header_.toLower[byte]})
            if (image != byte && header_.toUnicode[image] == kNoUnicode)
                error("the other case of " + hexText(byte, 2) + " is no character of one byte");
}

void PageLinter::lintShift()
{
    if (!view_.stateful()) {
        if (header_.shiftIn != 0 || header_.shiftOut != 0)
            error("has shift bytes, and cpFlags says that it has no states");
        return;
    }
    if (header_.maxCharBytes < 2)
        error("has shift bytes, and no characters of several bytes");
    if (header_.shiftIn == 0 || header_.shiftOut == 0 || header_.shiftIn == header_.shiftOut)
        error("cpFlags says that it has states, and shiftIn and shiftOut are no pair");
    for (const std::uint8_t shift : {header_.shiftIn, header_.shiftOut})
        if (shift >= 0x80 || header_.toUnicode[shift] != kNoUnicode)
            error("the shift byte " + hexText(shift, 2) + " is a character, or above 7F");
}

void PageLinter::lintPage(unsigned high, const TSUnicodePage& page)
{
    if (page.kind >= kPageKinds)
        return error("page " + hexText(high, 2) + " is of kind " + std::to_string(page.kind));
    for (unsigned low = page.low; low <= page.high; ++low)
        if (!view_.encode(static_cast<std::uint16_t>(high << 8 | low)))
            return error("page " + hexText(high, 2) + " reaches outside its sections");
}

// In what order the parts of the sections follow each other.
void PageLinter::lintSections()
{
    if (header_.maxCharBytes <= 1)
        return;
    const std::size_t size = view_.section(1).size();
    if (header_.mapValuesOffset < sizeof header_ || !view_.mapValue(0xFF))
        error("the map values are outside section 1");
    if (header_.mapPairCount > 0 &&
        (header_.mapPairsOffset < sizeof header_ || !view_.mapPair(header_.mapPairCount - 1u)))
        error("the map pairs are outside section 1");
    if (header_.typeTrieOffset < sizeof header_ || header_.typeRecordsOffset > size)
        error("the type trie is outside section 1");
    if (!view_.utf8() && (header_.leafTableOffset > view_.section(2).size() ||
                          header_.leafTableOffset % sizeof(TSUnicodeNode) != 0))
        error("the leaf table is outside section 2 or not behind whole nodes");
}

void PageLinter::lintUnicodeNode(std::size_t index, int left, Packed path)
{
    if (!seen_.emplace(index, left).second)
        return;
    const auto node = view_.unicodeNode(index);
    if (!node)
        return error("section 2: " + characterText(path) + " leads to no node");
    if (node->isLeaf == 0 && left == 1 && node->low <= node->high)
        return error("section 2: no leaf at the last byte behind " + characterText(path));
    for (unsigned byte = node->low; byte <= node->high; ++byte) {
        const std::size_t next = node->base + (byte & node->mask);
        if (node->isLeaf == 0)
            lintUnicodeNode(next, left - 1, path << 8 | byte);
        else if (!view_.unicodeValue(next))
            return error("section 2: " + characterText(path << 8 | byte) + " leads to no value");
    }
}

void PageLinter::lintUnicodeTrie()
{
    seen_.clear();
    const auto root = view_.unicodeNode(0);
    if (!root)
        return error("section 2 has no root");
    if (root->isLeaf != 0)
        return error("section 2: the root is a leaf");
    for (unsigned byte = root->low; byte <= root->high; ++byte) {
        const int length = view_.lengthAt(static_cast<std::uint8_t>(byte));
        if (length > 1)
            lintUnicodeNode(root->base + (byte & root->mask), length - 1, byte);
    }
}

// No range guards this trie, so every byte has to stay inside, assigned or not.
void PageLinter::lintTypeNode(std::size_t index, int left, Packed path)
{
    if (!seen_.emplace(index, left).second)
        return;
    const auto node = view_.typeNode(index);
    if (!node)
        return error("type trie: " + characterText(path) + " leads to no node");
    if (node->isLeaf != 0) {
        if (!view_.typeRecord(std::size_t{node->base} + node->mask))
            error("type trie: the leaf behind " + characterText(path) + " is not complete");
        return;
    }
    if (left == 0)
        return error("type trie: no leaf at the last byte behind " + characterText(path));
    for (unsigned byte = 0; byte < 256; ++byte)
        lintTypeNode(node->base + (byte & node->mask), left - 1, path << 8 | byte);
}

void PageLinter::lintTypeTrie()
{
    seen_.clear();
    const auto root = view_.typeNode(0);
    if (!root)
        return error("the type trie has no root");
    for (unsigned byte = 0; byte < 256; ++byte) {
        const int length = view_.lengthAt(static_cast<std::uint8_t>(byte));
        if (length < 2)
            continue;
        if (root->isLeaf != 0)
            return lintTypeNode(0, 0, byte);
        // The child takes the second byte, and its own children one byte each.
        lintTypeNode(root->base + (byte & root->mask), length - 2, byte);
    }
}

// A character or value that the page can write: not too long, and as long as its first byte says.
bool PageLinter::fits(Packed character) const
{
    const int length = packedLength(character);
    if (view_.stateful())
        return length == 1 || length == header_.maxCharBytes;
    return header_.charLength[character >> 8 * (length - 1)] == length;
}

void PageLinter::lintMaps()
{
    for (unsigned byte = 0; byte < 256; ++byte)
        if (const auto wide = view_.mapValue(static_cast<std::uint8_t>(byte)); wide && !fits(*wide))
            error("the map value of " + hexText(byte, 2) + " is no character");
    for (std::size_t i = 0; i < header_.mapPairCount; ++i) {
        const auto pair = view_.mapPair(i);
        if (!pair)
            return;
        if (i > 0 && view_.mapPair(i - 1)->key >= pair->key)
            error("the map pairs are not ascending at " + characterText(pair->key));
        if (pair->key <= 0xFF || !fits(pair->key) || !fits(pair->value))
            error("the map pair of " + characterText(pair->key) + " is not one of characters");
    }
}

bool PageLinter::listed(std::uint16_t value, Packed character) const
{
    const std::string name = file_.substr(file_.find_last_of("/\\") + 1);
    return exceptions_.contains(name + " " + hexText(value, 4) + " " + characterText(character));
}

void PageLinter::lintEncode(std::uint16_t value)
{
    const auto character = view_.encode(value);
    if (!character)
        return; // told by its page
    const auto back = view_.decode(*character);
    if (back == value || *character == header_.substChar)
        return;
    if (!fits(*character))
        error(hexText(value, 4) + " becomes " + characterText(*character) +
              ", which is not as long as its first byte says");
    else if (!listed(value, *character))
        error(hexText(value, 4) + " becomes " + characterText(*character) +
              ", which does not become it again");
}

void PageLinter::lintDecode(Packed character)
{
    const auto value = view_.decode(character);
    if (!value)
        return error(characterText(character) + " cannot be decoded");
    const auto back = view_.encode(*value);
    if (back && !fits(*back))
        error(characterText(character) + " comes back as " + characterText(*back) +
              ", which is not as long as its first byte says");
    else if ((!back || view_.decode(*back) != value) && !listed(*value, character))
        error(characterText(character) + " becomes " + hexText(*value, 4) +
              ", which does not come back");
    if (character <= 0xFF)
        return;
    const auto record = view_.typeOf(character);
    if (!record)
        return error(characterText(character) + " has no type record");
    const Packed other = character + record->delta;
    if (packedLength(other) != packedLength(character) ||
        (record->delta != 0 && view_.decode(other).value_or(kNoUnicode) == kNoUnicode))
        error("the other case of " + characterText(character) + " is no character");
}

void PageLinter::lint()
{
    lintLengths();
    lintBytes();
    lintShift();
    for (unsigned high = 0; high < 256; ++high)
        lintPage(high, header_.unicodePages[high]);
    lintSections();
    // Each step takes for granted what the one ahead of it has proved.
    if (errors_ > 0)
        return;
    if (header_.maxCharBytes > 1) {
        lintTypeTrie();
        if (!view_.utf8())
            lintUnicodeTrie();
        lintMaps();
    }
    if (errors_ > 0)
        return;
    for (std::uint32_t value = 0; value < 0x10000; ++value)
        lintEncode(static_cast<std::uint16_t>(value));
    for (const Packed character : view_.characters())
        if (view_.decode(character) != kNoUnicode)
            lintDecode(character);
}

} // namespace

void lintCodePage(const std::vector<Bytes>& sections, std::uint16_t id, const std::string& file,
                  const LintExceptions& exceptions, Diagnostics& diagnostics)
{
    const auto view = CodePageView::open(sections, id);
    if (!view)
        diagnostics.push_back({file, 0, "section 1 is shorter than a code page header"});
    else
        PageLinter(*view, file, exceptions, diagnostics).lint();
}

} // namespace vlx::data
