#include "lines.hpp"

#include <algorithm>
#include <cstring>
#include <limits>

#include <fmt/format.h>

#include "failure.hpp"

namespace vlx::cli {

LineEnds::LineEnds(TSLocale* locale) : locale_(locale), walk_(locale)
{
    char ends[8];
    TSPutEol(locale, ends, TS_EOL_CRLF);
    carriageReturn_ = ends[0];
    lineFeed_ = ends[1];
    lineFeedAlone_ = true;
    const char* const end = TSPutEol(locale, ends, TS_EOL_LF | TS_EOL_3 | TS_EOL_4);
    for (const char* at = ends; at != end; ++at) {
        isEnd_[static_cast<std::uint8_t>(*at)] = true;
        lineFeedAlone_ = lineFeedAlone_ && *at == lineFeed_;
    }
}

const char* LineEnds::find(const char* begin, const char* end) const
{
    if (!lineFeedAlone_)
        return std::find_if(begin, end,
                            [this](char byte) { return isEnd_[static_cast<std::uint8_t>(byte)]; });
    const void* const found = std::memchr(begin, lineFeed_, static_cast<std::size_t>(end - begin));
    return found ? static_cast<const char*>(found) : end;
}

std::size_t LineEnds::sizeAt(const char* begin, const char* last) const
{
    return *last == lineFeed_ && last != begin && last[-1] == carriageReturn_ ? 2 : 1;
}

std::string LineEnds::missingFor(std::string_view content, std::string_view before) const
{
    CharacterWalk walk = walk_;
    walk.passWhole(content.data(), content.data() + content.size());
    char end[8];
    std::int32_t state = 0;
    const char* const behind = TSPutEolEx(locale_, end, walk.state(), &state, TS_EOL_LF);
    const std::string closed(end, static_cast<std::size_t>(behind - 1 - end));
    return closed + (before.empty() ? std::string(1, lineFeed_) : std::string(before));
}

LineReader::LineReader(const InputFile& input, const LineEnds& ends, Progress& progress)
    : input_(input), ends_(ends), progress_(progress)
{
}

bool LineReader::next(Line& line)
{
    for (;;) {
        const char* const begin = buffer_.data() + begin_;
        const char* const end = buffer_.data() + filled_;
        const char* const last = ends_.find(buffer_.data() + scanned_, end);
        if (last != end) {
            line = lineOf(static_cast<std::size_t>(last + 1 - begin), ends_.sizeAt(begin, last));
            lastEnd_ = line.end;
            return true;
        }
        scanned_ = filled_;
        if (fill())
            continue;
        if (begin_ == filled_)
            return false;
        line = lineOf(filled_ - begin_, 0);
        missing_ = ends_.missingFor(line.content, lastEnd_);
        line.end = missing_;
        return true;
    }
}

// Takes the line of a size that is at the front of the buffer.
Line LineReader::lineOf(std::size_t size, std::size_t endSize)
{
    const std::string_view all(buffer_.data() + begin_, size);
    begin_ += size;
    scanned_ = begin_;
    ++number_;
    return {all.substr(0, size - endSize), all.substr(size - endSize)};
}

// Reads on behind what is there; false at the end of the text.
bool LineReader::fill()
{
    constexpr std::size_t longest = std::numeric_limits<std::int32_t>::max();
    if (ended_) // a terminal would ask again
        return false;
    std::memmove(buffer_.data(), buffer_.data() + begin_, filled_ - begin_);
    filled_ -= begin_;
    scanned_ -= begin_;
    begin_ = 0;
    if (filled_ > longest)
        throw Failure(fmt::format("{}:{}: the line is longer than {} bytes, the most that the "
                                  "library takes in one call",
                                  input_.shown(), number_ + 1, longest));
    if (filled_ == buffer_.size())
        buffer_.resize(2 * buffer_.size());
    const std::size_t got = input_.read(buffer_.data() + filled_, buffer_.size() - filled_);
    filled_ += got;
    progress_.advance(got);
    ended_ = got == 0;
    return !ended_;
}

} // namespace vlx::cli
