// The images of one packed value, by the tables of its code page.
#pragma once

#include "mapping/mapstr.hpp"

namespace vlx {

class PackedMap {
  public:
    PackedMap(const TSLocale& locale, const Mapping& mapping)
        : object_(locale.codePage), page_(tsCodePage(object_)), mapping_(mapping)
    {
    }

    TSChar16 unicode(TSChar32 value) const
    {
        return value < 256 ? TSChar16{page_.toUnicode[value]} : TSCpWideToUnicode(object_, value);
    }
    TSChar32 value(TSChar16 unicode) const { return TSCpUnicodeToWide(object_, unicode); }

    TSChar32 cased(TSChar32 value) const
    {
        if (value < 256)
            return mapping_.caseTable(page_)[value];
        return TSCpMapCharW(object_, value, mapping_.caseBits());
    }
    TSChar32 wide(TSChar32 value) const
    {
        const TSChar32 image = value < 256 ? byteMapValue(object_, static_cast<std::uint8_t>(value))
                                           : TSCpMapValue(object_, value);
        return image != 0 ? image : value;
    }
    TSChar32 narrow(TSChar32 value) const
    {
        const TSChar32 image = TSCpUnmapValue(object_, value);
        return image != 0 ? image : value;
    }
    TSChar32 digit(TSChar32 character) const
    {
        const TSChar16 image = type(character) & kDigitType ? uniDigit(unicode(character)) : 0;
        return image != 0 ? value(image) : character;
    }

  private:
    std::uint32_t type(TSChar32 value) const
    {
        if (value < 256)
            return page_.charType[value];
        return TSCpCharTypeRecordW(object_, value)->type;
    }

    const TSObject* const object_;
    const TSCodePageHeader& page_;
    const Mapping& mapping_;
};

} // namespace vlx
