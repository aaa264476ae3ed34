// TRC1_Sync, TRC1_Event, TRC1_Printf, TRC1_Dump: trace as lines of text.
#include <cstdarg>

#include "host/services.hpp"
#include "host/zbq/sink.hpp"

namespace {

using zbq::Line;
using zbq::Writer;

constexpr std::uint32_t kBytesInLine = 16;

// Who speaks: time, thread, unit, function and its line.
void begin(Line& line, const TRC1_FunctionRecord& record, std::int32_t sourceLine)
{
    line.addOrigin();
    line.add("%s/%s %.*s:%d ", record.file->component, record.file->source,
             static_cast<int>(record.nameLength), record.name, static_cast<int>(sourceLine));
}

void finish(Line& line)
{
    line.end();
    Writer().write(line);
}

void addBytes(Line& line, const unsigned char* bytes, std::uint32_t count)
{
    for (std::uint32_t at = 0; at != kBytesInLine; ++at)
        if (at < count)
            line.add(" %02x", static_cast<unsigned>(bytes[at]));
        else
            line.add("   ");
    line.add("  |");
    for (std::uint32_t at = 0; at != count; ++at)
        line.add("%c", bytes[at] >= 0x20 && bytes[at] < 0x7F ? bytes[at] : '.');
    line.add("|");
}

} // namespace

// The settings of this service stand from the first question on, so that no cell is ever raised.
std::uint32_t TRC1_Sync(TRC1_FunctionRecord* record)
{
    const std::uint32_t flags = zbq::traceFlags();
    record->flags.store(flags, std::memory_order_relaxed);
    record->generation.store(record->cell->load(std::memory_order_relaxed),
                             std::memory_order_release);
    return flags;
}

void TRC1_Event(TRC1_FunctionRecord* record, std::int32_t line, std::int32_t kind, ...)
{
    if (!zbq::traceFlags())
        return;
    Line text;
    begin(text, *record, line);
    if (kind == TRC1_ENTRY) {
        text.add("enter");
    } else if (kind == TRC1_EXIT_RESULT) {
        std::va_list arguments;
        va_start(arguments, kind);
        text.add("leave = %lld", static_cast<long long>(va_arg(arguments, std::int64_t)));
        va_end(arguments);
    } else {
        text.add("leave");
    }
    finish(text);
}

void TRC1_Printf(TRC1_FunctionRecord* record, std::int32_t line, const char* format, ...)
{
    if (!zbq::traceFlags())
        return;
    Line text;
    begin(text, *record, line);
    const std::size_t mark = text.mark();
    std::va_list arguments;
    va_start(arguments, format);
    text.addList(format, arguments);
    va_end(arguments);
    text.flatten(mark);
    finish(text);
}

void TRC1_Dump(TRC1_FunctionRecord* record, std::int32_t line, const void* address,
               std::uint32_t length, const char* label)
{
    if (!zbq::traceFlags())
        return;
    const auto* const bytes = static_cast<const unsigned char*>(address);
    const std::uint32_t count = bytes ? length : 0;
    Writer writer;
    Line head;
    begin(head, *record, line);
    head.add("%s: %u bytes", label, static_cast<unsigned>(count));
    head.end();
    writer.write(head);
    for (std::uint32_t at = 0; at < count; at += kBytesInLine) {
        Line row;
        begin(row, *record, line);
        row.add("%s %04x:", label, static_cast<unsigned>(at));
        addBytes(row, bytes + at, count - at < kBytesInLine ? count - at : kBytesInLine);
        row.end();
        writer.write(row);
    }
}
