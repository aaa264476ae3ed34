// Where trace goes, and which of it: told by the environment at the first question.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>

namespace zbq {

// The flags that are on: 0 without a place for trace.
std::uint32_t traceFlags();

// One line of trace. What does not fit is cut; the end of the line always fits.
class Line {
  public:
#if defined(__GNUC__)
    __attribute__((format(printf, 2, 3)))
#endif
    void
    add(const char* format, ...);
#if defined(__GNUC__)
    __attribute__((format(printf, 2, 0)))
#endif
    void
    addList(const char* format, std::va_list arguments);

    // Time, thread and a blank.
    void addOrigin();

    std::size_t mark() const
    {
        return length_;
    }

    // Drops line ends behind `mark`, and makes other control characters there visible, so that one
    // message is one line.
    void flatten(std::size_t mark);

    // Appends the line end.
    void end()
    {
        text_[length_++] = '\n';
    }

    const char* text() const
    {
        return text_;
    }
    std::size_t length() const
    {
        return length_;
    }

  private:
    char text_[4096];
    std::size_t length_ = 0;
};

// Writes lines; those of one writer stand together.
class Writer {
  public:
    Writer();
    ~Writer();
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void write(const Line& line);

  private:
    int errno_;
};

} // namespace zbq
