// TSNativeTimeFormat: pictures of the host as formats of this library.
#include <cstdint>

#include "locale/locale.hpp"

namespace {

constexpr int kMaxRun = 4;

// What a letter says by the length of its run; null where no run is so long.
struct PictureRow {
    char letter;
    const char* runs[kMaxRun];
};
constexpr PictureRow kPictures[] = {
    {'d', {"%#d", "%d", "%a", "%A"}},       {'M', {"%#m", "%m", "%b", "%B"}},
    {'y', {"%#y", "%y", nullptr, "%Y"}},    {'g', {"g", "", nullptr, nullptr}},
    {'h', {"%#I", "%I", nullptr, nullptr}}, {'H', {"%#H", "%H", nullptr, nullptr}},
    {'m', {"%#M", "%M", nullptr, nullptr}}, {'s', {"%#S", "%S", nullptr, nullptr}},
    {'t', {"%p", "%p", nullptr, nullptr}},
};

const PictureRow* rowOf(TSChar16 letter)
{
    for (const PictureRow& row : kPictures)
        if (static_cast<TSChar16>(row.letter) == letter)
            return &row;
    return nullptr;
}

// The longest run of the letter that says something; a longer one goes on as a new run.
int runLength(const TSChar16* picture, const PictureRow& row)
{
    int longest = 0;
    for (int length = 1; length <= kMaxRun && picture[length - 1] == picture[0]; ++length)
        if (row.runs[length - 1])
            longest = length;
    return longest;
}

} // namespace

void TSNativeTimeFormat(const TSChar16* picture, TSChar16* target)
{
    while (*picture != 0) {
        if (*picture == '\'') { // up to the next one, or the end
            for (++picture; *picture != 0 && *picture != '\'';)
                *target++ = *picture++;
            if (*picture != 0)
                ++picture;
        } else if (const PictureRow* const row = rowOf(*picture)) {
            const int length = runLength(picture, *row);
            for (const char* at = row->runs[length - 1]; *at; ++at)
                *target++ = static_cast<std::uint8_t>(*at);
            picture += length;
        } else {
            *target++ = *picture++;
        }
    }
    *target = 0;
}
