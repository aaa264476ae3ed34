// The sections of an object while it is loaded, before anybody reads their content, and the checks
// that let the rest of the library trust it.
//
// Table content never rejects a file. An object is checked once: one that passes is used in place;
// one that fails is copied into blocks of its own, where the copy is mended or given so much room
// that nothing can lead outside. So the readers need no tests, and a good file needs no copy.
#pragma once

#include <cstdint>

#include "frame/objman.hpp"

namespace vlx {

struct Section {
    const std::uint8_t* data = nullptr;
    std::uint32_t size = 0;
    bool onHeap = false;
};

struct LoadedSections {
    Section sections[TSObjHeader::kMaxSections];

    const Section& operator[](int index) const { return sections[index]; }
    Section& operator[](int index) { return sections[index]; }
};

// Allocates a zeroed block and copies the section to its start; null without memory.
std::uint8_t* copyPadded(const Section& section, std::uint32_t blockSize);

// True if no offset, index or text of the content leads outside its sections.
bool languageIsSound(const Section& section);
bool territoryIsSound(const Section& section);
bool codePageIsSound(std::uint16_t id, const LoadedSections& sections);
bool sortIsSound(const Section& section); // also one of size 0, which nobody reads

// Copies that are safe to read, made from content that is not sound. The blocks come from
// `allocate` and are marked as heap blocks in `copy`; false without memory, and then `copy` holds
// what was allocated so far.
bool rebuildLanguage(const Section& section, Section& copy);
bool rebuildTerritory(const Section& section, Section& copy);
bool padCodePage(std::uint16_t id, const LoadedSections& sections, LoadedSections& copy);
bool padSort(const Section& section, Section& copy);

// What is true of a sort that is sound.
TSSortTraits sortTraitsOf(const std::uint8_t* section);

} // namespace vlx
