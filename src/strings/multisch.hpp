// Search in multi-byte text without shift bytes, where a place is the beginning of a character.
#pragma once

#include "mapping/mapbytes.hpp"
#include "strings/search.hpp"

namespace vlx {

// Where characters begin. It is asked for places in ascending order.
class Boundaries {
  public:
    Boundaries(const TSCodePageHeader& page, const char* string)
        : page_(page), longest_(*std::max_element(page.charLength, page.charLength + 256)),
          known_(string)
    {
    }

    bool isBoundary(const char* place)
    {
        for (known_ = nearBefore(place); known_ < place;)
            known_ += lengthAt(known_);
        return known_ == place;
    }

  private:
    std::int32_t lengthAt(const char* at) const
    {
        return page_.charLength[static_cast<std::uint8_t>(*at)];
    }

    // A character begins at the place that is known, and behind bytes that are each a character or
    // the end of one: a longest character, less a byte, of bytes of length 1.
    const char* nearBefore(const char* place) const
    {
        std::int32_t singles = 0;
        for (const char* at = place; at > known_; --at) {
            singles = lengthAt(at - 1) == 1 ? singles + 1 : 0;
            if (singles >= longest_ - 1)
                return at + singles - 1;
        }
        return known_;
    }

    const TSCodePageHeader& page_;
    const std::int32_t longest_;
    const char* known_;
};

// The first character of the same `count` bytes as `sought`, at places up to `last`.
inline const char* findCharacters(const TSCodePageHeader& page, const char* string,
                                  const char* last, const char* sought, std::int32_t count)
{
    if (count == 0)
        return string;
    Boundaries boundaries(page, string);
    for (const char* at = string; at <= last; ++at) {
        at = findSame(at, last, sought, count);
        if (!at || boundaries.isBoundary(at))
            return at;
    }
    return nullptr;
}

// What a character is told by before it is collated.
inline Image searchImage(TSLocale* locale, const SearchOptions& options, const char* at,
                         std::int32_t length)
{
    Image image;
    const MultiMap form{{locale->codePage}};
    if (options.ignoresWidth() && form.length({at, nullptr}) <= length) {
        image = form.laidOut(TSCpUnmapValue(locale->codePage, form.value({at, nullptr})));
        if (image.bytes[0] != 0)
            return image;
    } else if (options.hasCaseBits() && !options.ignoresWidth()) {
        image.length =
            TSMapString(locale, image.bytes, sizeof image.bytes, at, length, TS_MAP_UPPER);
        return image;
    }
    image = {{}, length};
    std::memcpy(image.bytes, at, image.size());
    return image;
}

inline bool areSame(const Image& first, const Image& second)
{
    return first.length == second.length &&
           (first.length <= 0 || std::memcmp(first.bytes, second.bytes, first.size()) == 0);
}

// A search by collation. Places are tried only where the first character has the same image as that
// of the sought string.
inline const char* findCollated(TSLocale* locale, const SearchText<char>& text,
                                const SearchText<char>& sought, const SearchOptions& options)
{
    const TSCodePageHeader& page = tsCodePage(locale->codePage);
    const auto lengthAt = [&](const char* at, const char* end) {
        const std::int32_t length = page.charLength[static_cast<std::uint8_t>(*at)];
        return std::min<std::int32_t>(length, static_cast<std::int32_t>(end - at));
    };
    if (sought.string == sought.end || text.string == text.end)
        return nullptr;
    const std::int32_t firstLength = lengthAt(text.string, text.end);
    const Image wanted =
        searchImage(locale, options, sought.string, lengthAt(sought.string, sought.end));
    Image here = searchImage(locale, options, text.string, firstLength);
    // Deliberate: lengths count characters here, whatever they counted before.
    const std::int32_t soughtBytes =
        bytesWithin(*locale, sought.string, 0, sought.length, sought.left(sought.string));
    const char* at = text.string;
    for (std::int32_t turn = 0; turn <= text.length - sought.length && at < text.end; ++turn) {
        // Deliberate: where case is ignored it is the first character of the text that is looked
        // at, at every place.
        if (options.ignoresWidth())
            here = searchImage(locale, options, at, lengthAt(at, text.end));
        else if (!options.hasCaseBits())
            here = searchImage(locale, options, at, std::min(firstLength, text.left(at)));
        if (areSame(here, wanted)) {
            const std::int32_t bytes = bytesWithin(*locale, at, 0, sought.length, text.left(at));
            if (TSStrcoll(locale, at, bytes, sought.string, soughtBytes, options.all) == 0)
                return at;
        }
        at += page.charLength[static_cast<std::uint8_t>(*at)];
    }
    return nullptr;
}

} // namespace vlx
