// The place of trace and its lines.
#include "host/zbq/sink.hpp"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "host/services.hpp"
#include "host/zbq/lock.hpp"

namespace zbq {

namespace {

constexpr std::uint32_t kAllFlags =
    TRC1_RESULTS | TRC1_INPUTS | TRC1_DETAIL | TRC1_FLOW | TRC1_ERRORS | TRC1_START;

// Before the settings are read; no mask has this bit.
constexpr std::uint32_t kUnread = 0x80000000;

constinit Mutex sinkLock;
constinit std::FILE* sinkFile = nullptr;
constinit std::atomic<std::uint32_t> sinkFlags = kUnread;

constinit std::atomic<std::uint32_t> threadCount = 0;
constinit thread_local std::uint32_t threadNumber = 0;

std::uint32_t maskSetting()
{
    const char* const text = SYS1_GetEnv("ZBQ_TRACE_MASK", 0);
    if (!text || !*text)
        return kAllFlags;
    // A leading 0 is no octal number here.
    const bool hexadecimal = text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const unsigned long mask = std::strtoul(text, nullptr, hexadecimal ? 16 : 10);
    return static_cast<std::uint32_t>(mask) & kAllFlags;
}

// Unbuffered, so that one write of the program is one write to the system.
std::FILE* openSink()
{
    const char* const name = SYS1_GetEnv("ZBQ_TRACE", 0);
    if (!name || !*name)
        return nullptr;
    std::FILE* const file = std::strcmp(name, "stderr") == 0 ? stderr : std::fopen(name, "ab");
    if (file)
        std::setvbuf(file, nullptr, _IONBF, 0);
    return file;
}

std::uint32_t readSettings()
{
    const std::lock_guard guard(sinkLock);
    std::uint32_t flags = sinkFlags.load(std::memory_order_relaxed);
    if (flags == kUnread) {
        sinkFile = openSink();
        flags = sinkFile ? maskSetting() : 0;
        sinkFlags.store(flags, std::memory_order_release);
    }
    return flags;
}

} // namespace

std::uint32_t traceFlags()
{
    const std::uint32_t flags = sinkFlags.load(std::memory_order_acquire);
    return flags == kUnread ? readSettings() : flags;
}

void Line::add(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    addList(format, arguments);
    va_end(arguments);
}

void Line::addList(const char* format, std::va_list arguments)
{
    const std::size_t room = sizeof text_ - 1 - length_; // without the line end
    const int length = std::vsnprintf(text_ + length_, room, format, arguments);
    if (length > 0 && room > 0) {
        const auto wanted = static_cast<std::size_t>(length);
        length_ += wanted < room ? wanted : room - 1;
    }
}

void Line::addOrigin()
{
    using namespace std::chrono;
    const auto now = floor<microseconds>(system_clock::now());
    const auto today = floor<days>(now);
    const year_month_day date(today);
    const hh_mm_ss time(now - today);
    if (threadNumber == 0)
        threadNumber = threadCount.fetch_add(1, std::memory_order_relaxed) + 1;
    add("%04d-%02u-%02uT%02d:%02d:%02d.%06dZ %u ", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
        static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
        static_cast<int>(time.seconds().count()), static_cast<int>(time.subseconds().count()),
        threadNumber);
}

void Line::flatten(std::size_t mark)
{
    while (length_ > mark && (text_[length_ - 1] == '\n' || text_[length_ - 1] == '\r'))
        --length_;
    for (std::size_t at = mark; at != length_; ++at)
        if (const auto byte = static_cast<unsigned char>(text_[at]); byte < 0x20 || byte == 0x7F)
            text_[at] = '.';
}

// A caller may look at errno after a traced failure.
Writer::Writer() : errno_(errno)
{
    sinkLock.lock();
}

Writer::~Writer()
{
    sinkLock.unlock();
    errno = errno_;
}

void Writer::write(const Line& line)
{
    if (sinkFile)
        std::fwrite(line.text(), 1, line.length(), sinkFile);
}

} // namespace zbq
