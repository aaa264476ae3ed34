// The slim form: the file is read for each message.
#include "catalog/catalog.hpp"

#include <algorithm>
#include <bit>

#include "frame/globals.hpp"

namespace vlx {

namespace {

class CatalogReader {
  public:
    explicit CatalogReader(TSCatalog& catalog) : catalog_(catalog) {}

    bool readHeader()
    {
        if (catalog_.catalogLocale)
            return true;
        TSCatalogHeader header;
        if (!readAt(0, &header, sizeof header) || !isCatalogHeader(header) ||
            !openCatalogLocale(catalog_, header))
            return unreadable();
        catalog_.firstSetOffset = header.firstSet;
        return true;
    }

    // A chain has no more sets than there is room for in the file. A circle comes back to a set
    // that was marked on the way; marks are set ever farther apart, so that its length and the way
    // to it do not matter.
    bool findSet(std::uint32_t number, TSCatalogSet& set)
    {
        const std::uint32_t most = catalog_.fileSize / sizeof(TSCatalogSet);
        std::uint32_t offset = catalog_.firstSetOffset;
        std::uint32_t marked = 0; // the header, which is no set
        for (std::uint32_t read = 1; read <= most && offset != marked; ++read) {
            if (!readAt(offset, &set, sizeof set))
                return unreadable();
            if (set.number == number)
                return true;
            if (set.nextSet == 0)
                return false;
            if (std::has_single_bit(read))
                marked = offset;
            offset = set.nextSet;
        }
        return unreadable();
    }

    bool findMessage(const TSCatalogSet& set, std::uint32_t number, TSCatalogMessage& message)
    {
        if (set.textSize == 0)
            return false;
        std::uint64_t offset = set.messageTable;
        for (std::uint32_t left = set.messageCount; left > 0;) {
            TSCatalogMessage entries[kEntries];
            const std::uint32_t count = std::min(left, kEntries);
            const std::uint32_t got = readSome(offset, entries, count * sizeof(TSCatalogMessage)) /
                                      sizeof(TSCatalogMessage);
            for (std::uint32_t i = 0; i < got; ++i)
                if (entries[i].number == number) {
                    message = entries[i];
                    return true;
                }
            if (got < count)
                return unreadable();
            left -= count;
            offset += count * sizeof(TSCatalogMessage);
        }
        return false;
    }

    FoundText readText(const TSCatalogSet& set, const TSCatalogMessage& message)
    {
        const std::uint64_t begin = std::uint64_t{set.textBlock} + message.textOffset;
        if (std::uint64_t{message.textOffset} + message.length > set.textSize ||
            begin + message.length > catalog_.fileSize || message.length == UINT32_MAX)
            return {};
        auto* const text = static_cast<char*>(allocate(message.length + 1));
        if (!text) {
            unreadable();
            return {};
        }
        if (readAt(begin, text, message.length))
            if (const void* const end = std::memchr(text, 0, message.length))
                return {text, static_cast<std::uint32_t>(static_cast<const char*>(end) - text)};
        release(text);
        return {};
    }

  private:
    static constexpr std::uint32_t kEntries = 64;

    bool unreadable() const
    {
        catalog_.locale->lastError = TS_ERR_NO_CATALOG;
        return false;
    }

    // Gives the bytes read; what is not in the file is not.
    std::uint32_t readSome(std::uint64_t offset, void* buffer, std::uint32_t size) const
    {
        std::int32_t code = TS_ERR_NONE;
        if (offset > INT32_MAX ||
            TSSeekFile(catalog_.file, static_cast<std::int32_t>(offset), TS_SEEK_SET) != 0)
            return 0;
        return TSReadFile(catalog_.file, buffer, size, &code);
    }

    bool readAt(std::uint64_t offset, void* buffer, std::uint32_t size)
    {
        return readSome(offset, buffer, size) == size;
    }

    TSCatalog& catalog_;
};

} // namespace

FoundText readMessage(TSCatalog& catalog, std::int32_t set, std::int32_t message)
{
    CatalogReader reader(catalog);
    TSCatalogSet in;
    TSCatalogMessage entry;
    if (set < 1 || !reader.readHeader() || !reader.findSet(static_cast<std::uint32_t>(set), in) ||
        message < 1 || !reader.findMessage(in, static_cast<std::uint32_t>(message), entry))
        return {};
    return reader.readText(in, entry);
}

} // namespace vlx
