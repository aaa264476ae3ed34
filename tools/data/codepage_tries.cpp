#include "codepage_tries.hpp"

#include <algorithm>
#include <optional>

namespace vlx::data {

namespace {

constexpr std::size_t kFanOut = 256;

// The cells whose bytes begin in one way, by the byte that follows.
template <class Value>
std::map<std::uint8_t, std::map<Packed, Value>> byLead(const std::map<Packed, Value>& cells,
                                                       int depth)
{
    std::map<std::uint8_t, std::map<Packed, Value>> leads;
    for (const auto& [character, value] : cells) {
        const int shift = 8 * (packedLength(character) - 1 - depth);
        leads[static_cast<std::uint8_t>(character >> shift)].emplace(character, value);
    }
    return leads;
}

// True if `depth` is the last byte of these characters.
template <class Value>
bool lastByte(const std::map<Packed, Value>& cells, int depth)
{
    return packedLength(cells.begin()->first) == depth + 1;
}

class UnicodeTrieBuilder {
  public:
    UnicodeTrie build(const std::map<Packed, std::uint16_t>& cells)
    {
        trie_.nodes.resize(kFanOut, unused());
        // Ahead of the values, so that the index of a leaf's element 0 is never negative.
        trie_.values.resize(kFanOut, kNoUnicode);
        // The root's children are numbered by their byte from 0 on, the root itself among them: it
        // is the child of byte 0, which begins no character.
        fill(0, 0, cells, 0);
        return std::move(trie_);
    }

  private:
    using Cells = std::map<Packed, std::uint16_t>;

    static TSUnicodeNode unused()
    {
        return {.isLeaf = 1, .mask = 0xFF, .low = 1, .high = 0, .base = 0};
    }

    void fill(std::size_t node, std::size_t block, const Cells& cells, int depth)
    {
        const auto leads = byLead(cells, depth);
        TSUnicodeNode filled{.isLeaf = 0,
                             .mask = 0xFF,
                             .low = leads.begin()->first,
                             .high = leads.rbegin()->first,
                             .base = static_cast<std::uint16_t>(block)};
        if (lastByte(cells, depth)) {
            filled.isLeaf = 1;
            filled.base = static_cast<std::uint16_t>(trie_.values.size() - filled.low);
            appendValues(cells, filled.low, filled.high);
        }
        trie_.nodes[node] = filled;
        if (filled.isLeaf)
            return;
        for (const auto& [lead, below] : leads) {
            std::size_t children = 0;
            if (!lastByte(below, depth + 1)) {
                children = trie_.nodes.size();
                trie_.nodes.resize(children + kFanOut, unused());
            }
            fill(block + lead, children, below, depth + 1);
        }
    }

    void appendValues(const Cells& cells, std::uint8_t low, std::uint8_t high)
    {
        const std::size_t start = trie_.values.size();
        trie_.values.resize(start + high - low + 1u, kNoUnicode);
        for (const auto& [character, value] : cells)
            trie_.values[start + (character & 0xFF) - low] = value;
    }

    UnicodeTrie trie_;
};

class TypeTrieBuilder {
  public:
    TypeTrie build(const std::map<Packed, TypeRecord>& cells)
    {
        pool_.emplace_back();
        trie_.nodes.resize(1 + kFanOut, leaf(0));
        trie_.nodes[0] = {.isLeaf = 0, .mask = 0xFF, .base = std::uint16_t{1}};
        for (const auto& [lead, below] : byLead(cells, 0))
            fill(1u + lead, below, 1);
        placeRows();
        for (const Slot& slot : pool_)
            trie_.records.push_back(slot.value_or(TypeRecord{}));
        return std::move(trie_);
    }

  private:
    using Cells = std::map<Packed, TypeRecord>;
    using Slot = std::optional<TypeRecord>;
    using Row = std::vector<Slot>;

    static TSTypeNode leaf(std::size_t mask)
    {
        return {.isLeaf = 1, .mask = static_cast<std::uint8_t>(mask), .base = {}};
    }

    void fill(std::size_t node, const Cells& cells, int depth)
    {
        if (allEqual(cells) || lastByte(cells, depth)) {
            const Row row = smallestRow(cells);
            trie_.nodes[node] = leaf(row.size() - 1);
            rows_[row].push_back(node);
            return;
        }
        const auto leads = byLead(cells, depth);
        const std::size_t mask = separatingMask(leads);
        const std::size_t children = trie_.nodes.size();
        trie_.nodes.resize(children + mask + 1, leaf(0));
        trie_.nodes[node] = {.isLeaf = 0,
                             .mask = static_cast<std::uint8_t>(mask),
                             .base = static_cast<std::uint16_t>(children)};
        for (const auto& [lead, below] : leads)
            fill(children + (lead & mask), below, depth + 1);
    }

    static bool allEqual(const Cells& cells)
    {
        return std::all_of(cells.begin(), cells.end(), [&cells](const auto& cell) {
            return cell.second == cells.begin()->second;
        });
    }

    // The smallest mask that gives each of the bytes a child of its own.
    static std::size_t separatingMask(const std::map<std::uint8_t, Cells>& leads)
    {
        for (std::size_t mask = 0;; ++mask) {
            std::vector<bool> taken(mask + 1);
            const bool separate = std::all_of(leads.begin(), leads.end(), [&](const auto& lead) {
                const std::size_t index = lead.first & mask;
                const bool free = !taken[index];
                taken[index] = true;
                return free;
            });
            if (separate)
                return mask;
        }
    }

    // The shortest row from which every cell takes its record by its last byte under a mask, which
    // is the row's length less one. Cells that are not assigned do not count.
    static Row smallestRow(const Cells& cells)
    {
        for (std::size_t mask = 0;; ++mask) {
            Row row(mask + 1);
            const bool fits = std::all_of(cells.begin(), cells.end(), [&](const auto& cell) {
                auto& slot = row[cell.first & mask];
                if (!slot)
                    slot = cell.second;
                return *slot == cell.second;
            });
            if (fits)
                return row;
        }
    }

    // Where a row lies among the records, and how many of its cells are not there anew.
    struct Place {
        std::size_t at;
        std::size_t saved;
    };
    using NodesOfRow = std::pair<const Row, std::vector<std::size_t>>;

    // Rows have gaps, where no character is assigned, and other rows may lie there; they also share
    // what their ends have in common. Next comes the row that saves most, or else the fullest.
    void placeRows()
    {
        std::vector<const NodesOfRow*> rows;
        for (const auto& row : rows_)
            rows.push_back(&row);
        std::stable_sort(rows.begin(), rows.end(), [](const auto* one, const auto* other) {
            return fullness(one->first) > fullness(other->first);
        });
        while (!rows.empty()) {
            auto best = rows.begin();
            Place place = placeOf((*best)->first);
            for (auto row = rows.begin() + 1; row != rows.end(); ++row)
                if (const Place other = placeOf((*row)->first); other.saved > place.saved) {
                    best = row;
                    place = other;
                }
            lay((*best)->first, place.at);
            for (const std::size_t node : (*best)->second)
                trie_.nodes[node].base = static_cast<std::uint16_t>(place.at);
            rows.erase(best);
        }
    }

    static std::size_t fullness(const Row& row)
    {
        return static_cast<std::size_t>(std::count_if(
            row.begin(), row.end(), [](const Slot& slot) { return slot.has_value(); }));
    }

    // Where it makes the records longer by least.
    Place placeOf(const Row& row) const
    {
        const auto agree = [](const Slot& slot, const Slot& wanted) {
            return !slot || !wanted || *slot == *wanted;
        };
        std::size_t at = 0;
        for (; at < pool_.size(); ++at) {
            const std::size_t shared = std::min(row.size(), pool_.size() - at);
            const auto from = pool_.begin() + static_cast<std::ptrdiff_t>(at);
            if (std::equal(from, from + static_cast<std::ptrdiff_t>(shared), row.begin(), agree))
                break;
        }
        const std::size_t growth = std::max(pool_.size(), at + row.size()) - pool_.size();
        return {at, row.size() - growth};
    }

    void lay(const Row& row, std::size_t at)
    {
        pool_.resize(std::max(pool_.size(), at + row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            if (row[i])
                pool_[at + i] = row[i];
    }

    std::map<Row, std::vector<std::size_t>> rows_; // with the nodes that take them
    std::vector<Slot> pool_;                       // the records; an empty one is free
    TypeTrie trie_;
};

} // namespace

UnicodeTrie buildUnicodeTrie(const std::map<Packed, std::uint16_t>& cells)
{
    return UnicodeTrieBuilder().build(cells);
}

TypeTrie buildTypeTrie(const std::map<Packed, TypeRecord>& cells)
{
    return TypeTrieBuilder().build(cells);
}

} // namespace vlx::data
