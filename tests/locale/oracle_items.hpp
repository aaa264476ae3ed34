// The values of a locale by item number once more, slow and literal: queries and updates over the
// bytes of the object files and the values of a record.
#pragma once

#include <string>

#include "locale/oracle_locale.hpp"

namespace vlx::oracle {

// A locale: its objects by their indices in the table, and its own values.
struct Record {
    const Objects* objects;
    Resolution resolution;
    Values values;

    const test::ListedObject& language() const { return at(resolution.language); }
    const test::ListedObject& territory() const { return at(resolution.territory); }
    const test::ListedObject& codePage() const { return at(resolution.codePage); }
    Page page() const { return pageOf(codePage()); }
    bool stateful() const { return (values.flags & 0x100) != 0; }

  private:
    const test::ListedObject& at(int index) const
    {
        return objects->at(static_cast<std::size_t>(index));
    }
};

// What a call gives. A failed one writes nothing.
struct Answer {
    std::int32_t result = 0;
    std::int32_t error = 0;
    std::vector<std::uint32_t> written; // bytes, units or words

    bool operator==(const Answer&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Answer& answer);

// The text of an item in place. A one-character item has its single element alone.
struct Item {
    std::uint32_t kind = 0; // 0 is none
    std::vector<std::uint32_t> elements;
    bool single = false;
};
Item textItem(const Record& record, std::int32_t item, bool useRecord);
Item textItemU(const Record& record, std::int32_t item, bool useRecord);

Answer numInfo(const Record& record, std::int32_t item, std::uint32_t options);
Answer textInfo(const Record& record, std::int32_t item, std::int32_t size, std::uint32_t options);
Answer textInfoEx(const Record& record, std::int32_t item, std::int32_t state, std::int32_t size,
                  std::uint32_t options);
Answer textInfoU(const Record& record, std::int32_t item, std::int32_t size, std::uint32_t options);
Answer textInfoW(const Record& record, std::int32_t item, std::int32_t size, std::uint32_t options);

// The updates change the record. `text` is all that may be read.
Answer setNumInfo(Record& record, std::int32_t item, std::int32_t value);
Answer setTextInfo(Record& record, std::int32_t item, const Bytes& text, std::int32_t length,
                   std::uint32_t options);
Answer setTextInfoEx(Record& record, std::int32_t item, const Bytes& text, std::int32_t state,
                     std::int32_t length, std::uint32_t options);
Answer setTextInfoU(Record& record, std::int32_t item, const std::vector<std::uint16_t>& text,
                    std::int32_t length, std::uint32_t options);
Answer setTextInfoW(Record& record, std::int32_t item, const std::vector<std::uint32_t>& text,
                    std::int32_t length, std::uint32_t options);

// Whether digits and signs of a page are those of ASCII.
bool isAsciiBased(const Page& page);

// The code page of object names; null if it is not listed.
const test::ListedObject* namePage(const Objects& objects);

} // namespace vlx::oracle
