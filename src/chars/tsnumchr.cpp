// TSNumChars: the number of characters of a string.
#include "chars/stepping.hpp"
#include "chars/walk.hpp"

int32_t TSNumChars(TSLocale* handle, const char* string, int32_t length, uint32_t)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    length = vlx::lengthOf(string, length);
    if (locale.flags & vlx::kLocaleSingleByte)
        return length;
    std::ptrdiff_t count = 0;
    vlx::walkRuns(vlx::pageOf(locale), vlx::PlainSet::ofBytes(locale.pageTraits), string,
                  string + length,
                  [&count](const char* begin, const char* end, int32_t lengthOfEach) {
                      count += (end - begin) / lengthOfEach;
                      return true;
                  });
    return static_cast<int32_t>(count);
}
