// Catalog files, in the byte order that is asked for.
#include "messages.hpp"

#include <bit>
#include <cstring>
#include <limits>

#include "catalog/catfile.hpp"
#include "sourcefile.hpp"

namespace vlx::data {

namespace {

std::uint32_t swapped(std::uint32_t value)
{
    return value >> 24 | (value >> 8 & 0xFF00) | (value << 8 & 0xFF0000) | value << 24;
}

// Numbers of a file that may be in the other order.
class Numbers {
  public:
    explicit Numbers(ByteOrder order) : swaps_(order != ownOrder()) {}

    // All numbers of a record that is nothing else.
    template <class Record>
    Record operator()(Record record) const
    {
        std::uint32_t words[sizeof(Record) / 4];
        std::memcpy(words, &record, sizeof record);
        for (std::uint32_t& word : words)
            word = swaps_ ? swapped(word) : word;
        std::memcpy(&record, words, sizeof record);
        return record;
    }

    TSCatalogHeader operator()(TSCatalogHeader header) const
    {
        for (std::uint32_t* const field : {&header.magic, &header.version, &header.byteOrder,
                                           &header.setCount, &header.firstSet})
            *field = swaps_ ? swapped(*field) : *field;
        return header;
    }

  private:
    bool swaps_;
};

template <class Record>
void append(Bytes& bytes, const Record& record)
{
    const auto* const begin = reinterpret_cast<const std::uint8_t*>(&record);
    bytes.insert(bytes.end(), begin, begin + sizeof record);
}

// Reads a catalog file and holds it to its format.
class CatalogReader {
  public:
    CatalogReader(const std::string& path, const Bytes& file, Diagnostics& diagnostics)
        : file_(file), report_(path, diagnostics)
    {
    }

    std::optional<MessageCatalog> read()
    {
        const auto header = readHeader();
        if (!header)
            return std::nullopt;
        catalog_.locale.assign(header->localeName,
                               strnlen(header->localeName, sizeof header->localeName));
        if (catalog_.locale.size() == sizeof header->localeName)
            report_.error(0, "the locale name is not terminated");
        std::uint32_t offset = header->firstSet;
        std::uint32_t previous = 0;
        for (std::uint32_t i = 0; i < header->setCount; ++i) {
            const auto set = recordAt<TSCatalogSet>(offset);
            if (!set) {
                report_.error(0, "set " + std::to_string(i + 1) + " lies outside of the file");
                return std::nullopt;
            }
            checkNumber("set", set->number, previous);
            readSet(*set);
            offset = set->nextSet;
        }
        if (offset != 0)
            report_.error(0, "the chain has more sets than the header tells");
        return catalog_;
    }

  private:
    std::optional<TSCatalogHeader> readHeader()
    {
        auto raw = recordAt<TSCatalogHeader>(0);
        const bool own = raw && raw->magic == TSCatalogHeader::kMagic;
        if (!own && (!raw || swapped(raw->magic) != TSCatalogHeader::kMagic)) {
            report_.error(0, "is no message catalog");
            return std::nullopt;
        }
        const ByteOrder other =
            ownOrder() == ByteOrder::kLittle ? ByteOrder::kBig : ByteOrder::kLittle;
        order_ = own ? ownOrder() : other;
        numbers_ = Numbers(order_);
        raw = recordAt<TSCatalogHeader>(0);
        if (raw->version != TSCatalogHeader::kVersion)
            report_.error(0, "the version is " + hexText(raw->version, 8));
        if (raw->byteOrder !=
            (order_ == ByteOrder::kBig ? kBigEndianCatalog : kLittleEndianCatalog))
            report_.error(0, "the byte order of the header is not that of its numbers");
        if (raw->setCount == 0)
            report_.error(0, "there is no set");
        return raw;
    }

    bool inFile(std::uint64_t offset, std::uint64_t size) const
    {
        return offset + size <= file_.size();
    }

    template <class Record>
    std::optional<Record> recordAt(std::uint64_t offset) const
    {
        if (!inFile(offset, sizeof(Record)))
            return std::nullopt;
        Record record;
        std::memcpy(&record, file_.data() + offset, sizeof record);
        return numbers_(record);
    }

    void checkNumber(const std::string& what, std::uint32_t number, std::uint32_t& previous)
    {
        if (number <= previous)
            report_.error(0,
                          what + " " + std::to_string(number) + " is not above the one before it");
        previous = number;
    }

    void readSet(const TSCatalogSet& set)
    {
        const std::string which = "set " + std::to_string(set.number);
        if (!inFile(set.textBlock, set.textSize) ||
            !inFile(set.messageTable, std::uint64_t{set.messageCount} * sizeof(TSCatalogMessage))) {
            report_.error(0, which + " lies outside of the file");
            return;
        }
        auto& messages = catalog_.sets[set.number];
        std::uint32_t previous = 0;
        for (std::uint32_t i = 0; i < set.messageCount; ++i) {
            const auto entry = recordAt<TSCatalogMessage>(
                set.messageTable + std::uint64_t{i} * sizeof(TSCatalogMessage));
            checkNumber(which + ", message", entry->number, previous);
            const std::uint64_t end = std::uint64_t{entry->textOffset} + entry->length;
            const auto* const text =
                reinterpret_cast<const char*>(file_.data()) + set.textBlock + entry->textOffset;
            if (entry->length == 0 || end > set.textSize ||
                strnlen(text, entry->length) != entry->length - 1) {
                report_.error(0, which + ", message " + std::to_string(entry->number) +
                                     ": the text has not the length that is told");
                continue;
            }
            messages[entry->number] = {text, 0};
        }
    }

    const Bytes& file_;
    Reporter report_;
    ByteOrder order_ = ownOrder();
    Numbers numbers_{ownOrder()};
    MessageCatalog catalog_;
};

} // namespace

ByteOrder ownOrder()
{
    return std::endian::native == std::endian::big ? ByteOrder::kBig : ByteOrder::kLittle;
}

std::optional<Bytes> catalogFile(const MessageCatalog& catalog, const LocaleText& text,
                                 ByteOrder order, const std::string& source,
                                 Diagnostics& diagnostics)
{
    Reporter report(source, diagnostics);
    if (catalog.locale.size() >= TSCatalogHeader::kLocaleNameSize)
        report.error(0, "the name of the locale has more than 131 bytes");
    const Numbers numbers(order);
    TSCatalogHeader header{};
    header.magic = TSCatalogHeader::kMagic;
    header.version = TSCatalogHeader::kVersion;
    header.byteOrder = order == ByteOrder::kBig ? kBigEndianCatalog : kLittleEndianCatalog;
    header.setCount = static_cast<std::uint32_t>(catalog.sets.size());
    header.firstSet = sizeof header;
    catalog.locale.copy(header.localeName, sizeof header.localeName - 1);
    Bytes file;
    append(file, numbers(header));

    // The records of all sets come first, each followed by the next; their tables and texts follow.
    const std::size_t records = file.size();
    file.resize(records + catalog.sets.size() * sizeof(TSCatalogSet));
    std::size_t index = 0;
    for (const auto& [setNumber, messages] : catalog.sets) {
        const auto table = static_cast<std::uint32_t>(file.size());
        std::string texts;
        for (const auto& [number, message] : messages) {
            std::string complaint;
            const auto bytes = text.encode(message.text, complaint);
            if (!bytes)
                report.error(message.line, complaint);
            append(file, numbers(TSCatalogMessage{
                             number, static_cast<std::uint32_t>(bytes.value_or("").size() + 1),
                             static_cast<std::uint32_t>(texts.size())}));
            texts += bytes.value_or("") + '\0';
        }
        const std::size_t at = records + index * sizeof(TSCatalogSet);
        const bool last = ++index == catalog.sets.size();
        const TSCatalogSet set{
            .number = setNumber,
            .nextSet = last ? 0 : static_cast<std::uint32_t>(at + sizeof(TSCatalogSet)),
            .messageCount = static_cast<std::uint32_t>(messages.size()),
            .messageTable = table,
            .textBlock = static_cast<std::uint32_t>(file.size()),
            .textSize = static_cast<std::uint32_t>(texts.size()),
            .reserved = 0,
        };
        const TSCatalogSet written = numbers(set);
        std::memcpy(file.data() + at, &written, sizeof written);
        file.insert(file.end(), texts.begin(), texts.end());
        if (file.size() > std::numeric_limits<std::int32_t>::max())
            report.error(0, "the file would pass two gibibytes");
    }
    if (!report.clean())
        return std::nullopt;
    return file;
}

std::optional<MessageCatalog> readCatalogFile(const std::string& path, Diagnostics& diagnostics)
{
    const auto bytes = readBytes(path, diagnostics);
    if (!bytes)
        return std::nullopt;
    return CatalogReader(path, *bytes, diagnostics).read();
}

std::optional<MessageCatalog>
readCatalog(const std::string& path, const std::string& localeDirectory, Diagnostics& diagnostics)
{
    auto catalog = readCatalogFile(path, diagnostics);
    if (!catalog)
        return std::nullopt;
    const auto text = LocaleText::open(localeDirectory, catalog->locale, diagnostics);
    if (!text)
        return std::nullopt;
    Reporter report(path, diagnostics);
    for (auto& [set, messages] : catalog->sets)
        for (auto& [number, message] : messages) {
            std::string complaint;
            const auto utf8 = text->decode(message.text, complaint);
            if (!utf8)
                report.error(0, "set " + std::to_string(set) + ", message " +
                                    std::to_string(number) + ": " + complaint);
            message.text = utf8.value_or("");
        }
    return catalog;
}

} // namespace vlx::data
