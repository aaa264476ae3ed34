// The preloaded form: a copy of the file, an index of its sets, and the texts as the caller's
// locale shows them.
#include "catalog/catalog.hpp"
#include "frame/scratch.hpp"

namespace vlx {

namespace {

class CatalogLoader {
  public:
    explicit CatalogLoader(TSCatalog& catalog) : catalog_(catalog) {}

    std::int32_t load()
    {
        if (!copyFile())
            return code_;
        if (catalog_.fileSize < sizeof(TSCatalogHeader))
            return TS_ERR_NO_CATALOG;
        const auto header = recordAt<TSCatalogHeader>(catalog_.image);
        if (!isCatalogHeader(header) || !openCatalogLocale(catalog_, header))
            return TS_ERR_NO_CATALOG;
        return loadSets(header);
    }

  private:
    bool inFile(std::uint64_t offset, std::uint64_t size) const
    {
        return offset + size <= catalog_.fileSize;
    }

    bool fail(std::int32_t code)
    {
        code_ = code;
        return false;
    }

    // The view is needed for the copy alone: later changes of the file touch nobody.
    bool copyFile()
    {
        const void* const view = TSLoadFile(catalog_.file, 0, catalog_.fileSize, &code_);
        if (!view) // an empty file has no view and no code
            return fail(code_ == TS_ERR_NONE ? TS_ERR_NO_CATALOG : code_);
        catalog_.image = static_cast<std::uint8_t*>(allocate(catalog_.fileSize));
        if (catalog_.image)
            std::memcpy(catalog_.image, view, catalog_.fileSize);
        TSUnloadFile(view);
        return catalog_.image || fail(TS_ERR_MEMORY);
    }

    // The offset behind a set in the chain; 0 is its end.
    std::uint32_t setBehind(std::uint32_t offset) const
    {
        if (offset == 0 || !inFile(offset, sizeof(TSCatalogSet)))
            return 0;
        return recordAt<TSCatalogSet>(catalog_.image + offset).nextSet;
    }

    // Two walk the chain, one twice as fast: in a circle they meet.
    bool runsInCircle(std::uint32_t first) const
    {
        for (std::uint32_t slow = first, fast = setBehind(first); fast != 0;) {
            if (slow == fast)
                return true;
            slow = setBehind(slow);
            fast = setBehind(setBehind(fast));
        }
        return false;
    }

    std::int32_t loadSets(const TSCatalogHeader& header)
    {
        if (std::uint64_t{header.setCount} * sizeof(TSCatalogSet) > catalog_.fileSize ||
            runsInCircle(header.firstSet))
            return TS_ERR_NO_CATALOG;
        const std::uint64_t bytes = std::uint64_t{header.setCount} * sizeof(LoadedSet);
        catalog_.sets = bytes <= UINT32_MAX
                            ? static_cast<LoadedSet*>(allocate(static_cast<std::uint32_t>(bytes)))
                            : nullptr;
        if (!catalog_.sets)
            return TS_ERR_MEMORY;
        std::uint32_t offset = header.firstSet;
        for (std::uint32_t i = 0; i < header.setCount; ++i) {
            if (offset == 0 || !inFile(offset, sizeof(TSCatalogSet)))
                return TS_ERR_NO_CATALOG;
            const auto record = recordAt<TSCatalogSet>(catalog_.image + offset);
            if (!loadSet(record))
                return code_;
            offset = record.nextSet;
        }
        return makeReady();
    }

    bool loadSet(const TSCatalogSet& record)
    {
        const std::uint64_t tableSize =
            std::uint64_t{record.messageCount} * sizeof(TSCatalogMessage);
        if (!inFile(record.textBlock, record.textSize) || !inFile(record.messageTable, tableSize))
            return fail(TS_ERR_NO_CATALOG);
        catalog_.sets[catalog_.setCount++] = {
            .number = record.number,
            .messageCount = record.messageCount,
            .messages = catalog_.image + record.messageTable,
            .texts = reinterpret_cast<const char*>(catalog_.image + record.textBlock),
            .textSize = record.textSize,
            .ready = nullptr,
        };
        return true;
    }

    // Sets of a good file share nothing, so that their sizes add up to less than the file. Where
    // they add up to more the rest is converted at each call, so that a bad file costs no more.
    std::int32_t makeReady()
    {
        catalog_.readyFor = catalog_.locale->codePage;
        std::uint64_t used = 0;
        for (std::uint32_t i = 0; i < catalog_.setCount; ++i) {
            LoadedSet& set = catalog_.sets[i];
            used += set.textSize + std::uint64_t{set.messageCount} * sizeof(TSCatalogMessage);
            if (used > catalog_.fileSize)
                break;
            if (set.messageCount > 0 && !makeReady(set))
                return TS_ERR_MEMORY;
        }
        return TS_ERR_NONE;
    }

    // The text of a message as a converter may take it: well formed, and inside what is left of the
    // set's budget.
    static bool takes(const LoadedSet& set, const TSCatalogMessage& message, std::uint64_t budget)
    {
        const std::uint64_t end = std::uint64_t{message.textOffset} + message.length;
        if (message.length == 0 || message.length > budget || end > set.textSize)
            return false;
        const char* const text = set.texts + message.textOffset;
        return std::memchr(text, 0, message.length) == text + message.length - 1;
    }

    // Converts the texts of a set one behind the other, and keeps the list of them with the texts
    // in one block.
    bool makeReady(LoadedSet& set)
    {
        // A character of one byte becomes at most four and a shift byte; the end, two.
        const std::uint64_t room =
            5 * std::uint64_t{set.textSize} + 2 * std::uint64_t{set.messageCount};
        const std::uint64_t listSize = std::uint64_t{set.messageCount} * sizeof(ReadyText);
        if (listSize + room > INT32_MAX) // more than a conversion can count
            return true;
        const Scratch work(listSize + room);
        if (!work)
            return fail(TS_ERR_MEMORY);
        auto* const list = work.as<ReadyText>();
        char* const texts = work.as<char>() + listSize;
        const std::uint32_t size = convertAll(set, list, texts, room);

        auto* const block =
            static_cast<ReadyText*>(allocate(static_cast<std::uint32_t>(listSize) + size));
        if (!block)
            return fail(TS_ERR_MEMORY);
        set.ready = block;
        char* const kept = reinterpret_cast<char*>(block) + listSize;
        std::memcpy(kept, texts, size);
        for (std::uint32_t i = 0; i < set.messageCount; ++i) {
            block[i] = list[i];
            if (list[i].text)
                block[i].text = kept + (list[i].text - texts);
        }
        return true;
    }

    std::uint32_t convertAll(const LoadedSet& set, ReadyText* list, char* texts,
                             std::uint64_t room) const
    {
        std::uint32_t size = 0;
        std::uint64_t budget = set.textSize;
        for (std::uint32_t i = 0; i < set.messageCount; ++i) {
            const auto message =
                recordAt<TSCatalogMessage>(set.messages + i * sizeof(TSCatalogMessage));
            list[i] = {nullptr, 0};
            if (!takes(set, message, budget))
                continue;
            budget -= message.length;
            const std::int32_t written = TSConvertStringEx(
                catalog_.locale, texts + size, 0, static_cast<std::int32_t>(room - size),
                catalog_.catalogLocale, set.texts + message.textOffset, 0,
                static_cast<std::int32_t>(message.length - 1), TS_OPT_TERMINATE);
            if (written <= 0)
                continue;
            list[i] = {texts + size, static_cast<std::uint32_t>(written)};
            size += static_cast<std::uint32_t>(written);
        }
        return size;
    }

    TSCatalog& catalog_;
    std::int32_t code_ = TS_ERR_NONE;
};

} // namespace

std::int32_t preloadCatalog(TSCatalog& catalog)
{
    return CatalogLoader(catalog).load();
}

} // namespace vlx
