// A finished content of a language or territory, read without trust in its offsets: for the dump,
// and with complaints for the lint.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "content_text.hpp"
#include "frame/endian.hpp"
#include "object.hpp"

namespace vlx::data {

class ContentView {
  public:
    explicit ContentView(const Bytes& content) : content_(content) {}

    std::size_t size() const { return content_.size(); }

    // The structure at an offset; nothing if it does not lie inside.
    template <class Record>
    std::optional<Record> at(std::size_t offset) const
    {
        if (offset > content_.size() || content_.size() - offset < sizeof(Record))
            return std::nullopt;
        Record record;
        std::memcpy(&record, content_.data() + offset, sizeof record);
        return record;
    }

    // Nothing if the text lies outside or has no terminator inside.
    std::optional<std::u16string> textAt(std::size_t offset) const
    {
        std::u16string text;
        for (; const std::optional<Le16> unit = at<Le16>(offset); offset += sizeof(Le16)) {
            if (*unit == 0)
                return text;
            text += static_cast<char16_t>(*unit);
        }
        return std::nullopt;
    }

    // The text in quotes, for a dump.
    std::string shown(std::size_t offset) const
    {
        const std::optional<std::u16string> text = textAt(offset);
        return text ? data::quoted(*text) : "?";
    }

  private:
    const Bytes& content_;
};

class ContentLint : public ContentView {
  public:
    ContentLint(const Bytes& content, const std::string& file, Diagnostics& out)
        : ContentView(content), file_(file), out_(out)
    {
    }

    void complain(const std::string& message, bool warning = false) const
    {
        out_.push_back({file_, 0, message, warning});
    }

    // False, with a complaint, if the section is too short for its header or too large.
    bool checkSize(std::size_t headerSize) const
    {
        const bool good = size() >= headerSize && size() <= kLargestSection;
        if (!good)
            complain("section of " + std::to_string(size()) + " bytes, outside " +
                     std::to_string(headerSize) + " to " + std::to_string(kLargestSection));
        return good;
    }

    // The texts of the header words from `firstWord` on. They have to stand behind `floor` in order
    // and under their rules; a gap is a complaint, or a warning where `gapsAllowed`. Gives the
    // first byte behind them.
    std::size_t checkTexts(const std::vector<TextField>& fields, int firstWord, std::size_t floor,
                           bool gapsAllowed) const
    {
        std::size_t word = static_cast<std::size_t>(firstWord) * sizeof(Le16);
        for (const TextField& field : fields) {
            const std::size_t offset = *at<Le16>(word);
            word += sizeof(Le16);
            if (offset < floor || offset >= size()) {
                complain(field.key + ": offset " + std::to_string(offset) + " is outside " +
                         std::to_string(floor) + " to " + std::to_string(size()));
                continue;
            }
            if (offset > floor)
                complain(field.key + ": gap of " + std::to_string(offset - floor) + " bytes",
                         gapsAllowed);
            floor = checkText(field, offset);
        }
        return floor;
    }

  private:
    std::size_t checkText(const TextField& field, std::size_t offset) const
    {
        const std::optional<std::u16string> text = textAt(offset);
        if (!text) {
            complain(field.key + ": text without a terminator");
            return offset;
        }
        if (const std::string complaint = field.rule(*text); !complaint.empty())
            complain(field.key + ": " + complaint);
        return offset + (text->size() + 1) * sizeof(Le16);
    }

    const std::string& file_;
    Diagnostics& out_;
};

} // namespace vlx::data
