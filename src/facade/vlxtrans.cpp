// NLS1_TranslateString: text between code pages that are named by their numbers, one of which may
// be raw 16-bit Unicode.
#include <algorithm>

#include "facade/facade.hpp"
#include "facade/translate.hpp"

TS_TRACE_UNIT_OF("*", "vlxnls1");

namespace {

using vlx::Byte;

constexpr std::uint32_t kRawUnicode = 1200; // a code page of this call alone

enum class Kind : std::uint8_t { kRaw, kSingle, kMulti };

// One side of the call.
struct Side {
    Kind kind = Kind::kRaw;
    const TSObject* object = nullptr; // of a side that is not raw
    bool shifts = false;

    const TSCodePageHeader& page() const { return tsCodePage(object); }
    bool found() const { return kind == Kind::kRaw || object; }
};

// Finds the code page of a side; the code of a failure goes to `code`.
Side sideOf(const char* name, std::uint32_t codePage, std::uint32_t& code, vlx::TraceGuard& tsTrace)
{
    const auto id = static_cast<std::uint16_t>(codePage);
    Side side;
    if (id == kRawUnicode)
        return side;
    side.kind = Kind::kSingle;
    std::int32_t found = TS_ERR_NO_OBJECTS;
    if (vlx::objectManager()) {
        side.object = TSGetObjFromID(vlx::objectManager(), TS_OBJ_CODEPAGE, id, 0, &found);
        if (side.object && side.object->type != TS_OBJ_CODEPAGE) {
            side.object = nullptr;
            found = TS_ERR_NOT_FOUND;
        }
    }
    if (!side.object) {
        code = static_cast<std::uint32_t>(found == TS_ERR_FILE_NOT_FOUND ? TS_ERR_CODEPAGE : found);
        TS_PRINT(TRC1_ERRORS, "Unable to locate codepage %d", id);
    } else if (side.page().maxCharBytes == 1) {
        TS_PRINT(TRC1_DETAIL, "%s codepage %d is single byte", name, id);
    } else {
        side.kind = Kind::kMulti;
        side.shifts = (side.page().cpFlags & vlx::kStateful) != 0;
        if (side.shifts)
            TS_PRINT(TRC1_DETAIL,
                     "%s codepage %d is shift sensitive, Shift-In=%02X, Shift-Out=%02x", name, id,
                     side.page().shiftIn, side.page().shiftOut);
        else
            TS_PRINT(TRC1_DETAIL, "%s codepage %d is not shift sensitive", name, id);
    }
    return side;
}

// The blank of a side, its first byte.
Byte blankOf(const Side& side)
{
    char bytes[4] = {' '};
    if (side.object)
        TSCpUnicodeToMb(side.object, vlx::kUnicodeBlank, bytes);
    return static_cast<Byte>(bytes[0]);
}

class Translation {
  public:
    Translation(const Side& target, void* output, std::int32_t size, const Side& source,
                const void* input, std::int32_t length, std::uint32_t options,
                vlx::TraceGuard& trace)
        : target_(target), source_(source), input_(static_cast<const Byte*>(input)),
          length_(length), blanksMayGo_((options & NLS1_OPT_BLANKS_MAY_GO) != 0),
          pads_((options & NLS1_OPT_PAD_BLANKS) != 0),
          terminates_((options & TS_OPT_TERMINATE) != 0),
          tsTrace(trace), to_{.output = static_cast<Byte*>(output),
                              .size = size,
                              .counted = (options & TS_OPT_CHAR_COUNT) != 0}
    {
    }

    bool counted() const { return to_.counted; }
    std::int32_t count() const { return static_cast<std::int32_t>(to_.count); }
    std::int32_t bytes() const { return static_cast<std::int32_t>(to_.bytes); }
    std::int32_t consumed() const { return static_cast<std::int32_t>(consumed_); }

    // A positive input length in characters becomes bytes.
    void measureCharacters()
    {
        if (!to_.counted || length_ <= 0 || !input_)
            return;
        if (source_.kind == Kind::kRaw)
            length_ *= 2;
        else
            length_ = TSCpCharsToBytes(source_.object, reinterpret_cast<const char*>(input_), 0,
                                       static_cast<std::int32_t>(length_));
    }

    // False if a text that is needed is not there.
    bool hasTexts() const
    {
        return (to_.output || to_.size <= 0) && (input_ || length_ == 0 || to_.size == 0);
    }

    // No input or no room: true if that is all there is to do.
    bool isEmpty()
    {
        if (length_ != 0 && to_.size != 0)
            return false;
        // Deliberate: one byte, whatever the target.
        if (terminates_ && to_.size > 0) {
            to_.output[0] = 0;
            to_.bytes = to_.count = 1;
        }
        return true;
    }

    // False if the target has no room for a single element.
    bool hasRoom() const { return target_.kind != Kind::kRaw || to_.size >= 2; }

    // Gives 0 or the code of a truncation.
    std::int32_t run()
    {
        endsWithInput_ = length_ < 0;
        if (endsWithInput_)
            measureTerminated();
        if (source_.kind == Kind::kRaw)
            length_ -= length_ % 2; // half an element is none
        if (to_.size < 0)           // there is no room, not even for an end
            return TS_ERR_BUFFER;
        if (terminates_)
            to_.size -= to_.counted || target_.kind != Kind::kRaw ? 1 : 2;
        const std::int32_t code = translate();
        finish();
        return code;
    }

  private:
    void measureTerminated()
    {
        length_ = 0;
        if (source_.kind == Kind::kRaw)
            while (vlx::unitAt(input_ + length_) != 0)
                length_ += 2;
        else
            length_ = static_cast<std::int64_t>(std::strlen(reinterpret_cast<const char*>(input_)));
        TS_PRINT(TRC1_DETAIL, "Source length = %d", static_cast<int>(length_));
    }

    const Byte* end() const { return input_ + length_; }
    Byte sourceBlank() const { return blanksMayGo_ ? blankOf(source_) : Byte{' '}; }

    std::int32_t translate()
    {
        switch (source_.kind) {
        case Kind::kRaw:
            return fromRaw({input_, end()});
        case Kind::kSingle:
            return fromSingle({&source_.page(), input_, end(), sourceBlank()});
        default:
            break;
        }
        traceMulti("Multi-Byte");
        const vlx::MultiBytes bytes{source_.object, input_, end(), sourceBlank()};
        return source_.shifts ? fromMulti(vlx::ShiftedBytes{bytes}) : fromMulti(bytes);
    }

    // What the truncation test says of the text that a source still has.
    template <class Source>
    std::int32_t truncated(const Source& source) const
    {
        return blanksMayGo_ && source.restIsBlank() ? TS_ERR_NONE : TS_ERR_BUFFER;
    }

    static const Byte* positionOf(const vlx::ShiftedBytes& source) { return source.bytes.at; }
    template <class Source>
    static const Byte* positionOf(const Source& source)
    {
        return source.at;
    }

    template <class Source, class Target>
    std::int32_t walk(Source source, Target target)
    {
        const bool full = translateWhile(source, target);
        consumed_ = positionOf(source) - input_;
        return full ? truncated(source) : TS_ERR_NONE;
    }

    vlx::CharacterTarget characters() { return {to_, target_.object, target_.shifts}; }

    std::int32_t fromRaw(vlx::RawUnits source)
    {
        if (target_.kind == Kind::kMulti)
            return walk(source, characters());
        if (target_.kind == Kind::kRaw) {
            // Deliberate: the size is not looked at; callers give the room.
            std::memmove(to_.output, input_, static_cast<std::size_t>(length_));
            consumed_ = to_.bytes = length_;
            to_.count = length_ / 2;
            return TS_ERR_NONE;
        }
        // Deliberate: the size in bytes is compared with the bytes of the input, so that half of
        // the room stays empty where they are more.
        const std::int64_t count = std::min(to_.size, length_) / 2;
        for (std::int64_t i = 0; i < count; ++i, source.take())
            to_.output[i] = byteOf(vlx::unitAt(source.at));
        to_.bytes = to_.count = count;
        consumed_ = 2 * count;
        return to_.size < length_ ? truncated(source) : TS_ERR_NONE;
    }

    std::int32_t fromSingle(vlx::SingleBytes source)
    {
        if (target_.kind == Kind::kMulti) {
            traceMulti("SingleByte");
            return walk(source, characters());
        }
        const bool raw = target_.kind == Kind::kRaw;
        const std::int64_t room = raw && !to_.counted ? to_.size / 2 : to_.size;
        const std::int64_t count = std::min(room, length_);
        if (raw)
            for (std::int64_t i = widenAtOnce(count); i < count; ++i)
                vlx::putUnit(to_.output + 2 * i, source.page->toUnicode[input_[i]]);
        else
            for (std::int64_t i = 0; i < count; ++i)
                to_.output[i] = byteOf(source.page->toUnicode[input_[i]]);
        source.at += count;
        to_.bytes = raw ? 2 * count : count;
        to_.count = consumed_ = count;
        return count < length_ ? truncated(source) : TS_ERR_NONE;
    }

    // Reads single bytes into 16-bit values, if that goes at once; gives their number.
    std::int64_t widenAtOnce(std::int64_t count)
    {
        if (reinterpret_cast<std::uintptr_t>(to_.output) % sizeof(TSChar16) != 0 ||
            count < vlx::kBulkText)
            return 0;
        // Here a byte is a character whatever the page tells of its length.
        const unsigned traits = vlx::pageTraitsOf(source_.object) | vlx::kAllSingle;
        const char* from = reinterpret_cast<const char*>(input_);
        return vlx::decodeSingle(source_.object, traits, from, from + count,
                                 reinterpret_cast<TSChar16*>(to_.output),
                                 static_cast<std::int32_t>(count));
    }

    template <class Source>
    std::int32_t fromMulti(Source source)
    {
        if (target_.kind == Kind::kRaw) {
            vlx::UnitsTarget target{to_};
            target.take(source);
            return walk(source, target);
        }
        if (target_.kind == Kind::kSingle)
            return walk(source, vlx::FirstByteTarget{to_, target_.object});
        return walk(source, characters());
    }

    // The byte of a value in a single-byte target.
    Byte byteOf(TSChar16 value) const
    {
        char bytes[4];
        TSCpUnicodeToMb(target_.object, value, bytes);
        return static_cast<Byte>(bytes[0]);
    }

    void traceMulti(const char* input)
    {
        if (target_.kind != Kind::kMulti)
            return;
        const bool fromSingle = source_.kind == Kind::kSingle;
        // Deliberate: the two texts of a multi-byte source differ in their capitals.
        if (target_.shifts)
            TS_PRINT(TRC1_DETAIL, "Process %s Input, Extended Multi-byte output ",
                     fromSingle ? input : "multi-byte");
        else
            TS_PRINT(TRC1_DETAIL, "Process %s Input, Multi-byte output ", input);
    }

    void finish()
    {
        if (target_.shifts && to_.state == 1)
            leaveMultiState();
        if (pads_ && to_.count < to_.size)
            pad();
        std::int64_t size = to_.size;
        if (to_.counted) {
            if (to_.count > to_.size)
                --to_.count;
            size = target_.kind == Kind::kRaw
                       ? 2 * size
                       : TSCpCharsToBytesWithin(target_.object,
                                                reinterpret_cast<const char*>(to_.output), 0,
                                                static_cast<std::int32_t>(to_.size), bytes());
        }
        const std::int64_t end = target_.kind == Kind::kRaw ? 2 : 1;
        const bool automatic = endsWithInput_ && consumed_ == length_ && to_.bytes + end <= size;
        if (terminates_ || automatic) {
            std::memset(to_.output + to_.bytes, 0, static_cast<std::size_t>(end));
            to_.bytes += end;
            ++to_.count;
        }
    }

    void leaveMultiState()
    {
        const TSCodePageHeader& page = target_.page();
        // Deliberate: a shift byte written before the character that is taken back stays.
        if (to_.bytes >= to_.size) {
            to_.bytes = std::max<std::int64_t>(to_.bytes - page.maxCharBytes, 0);
            --to_.count;
        }
        to_.output[to_.bytes++] = page.shiftOut;
    }

    void pad()
    {
        if (target_.kind == Kind::kRaw) {
            // Deliberate: the size counts elements here, so that the padded area can be twice as
            // large.
            for (; to_.count < to_.size; ++to_.count)
                vlx::putUnit(to_.output + 2 * to_.count, vlx::kUnicodeBlank);
            to_.bytes = to_.size;
            return;
        }
        const Byte blank = blankOf(target_);
        for (; to_.bytes < to_.size; ++to_.bytes, ++to_.count)
            to_.output[to_.bytes] = blank;
    }

    const Side target_;
    const Side source_;
    const Byte* const input_;
    std::int64_t length_;
    const bool blanksMayGo_;
    const bool pads_;
    const bool terminates_;
    vlx::TraceGuard& tsTrace; // of the function
    vlx::Written to_;
    std::int64_t consumed_ = 0;
    bool endsWithInput_ = false; // the input is terminated, and so may the output be
};

} // namespace

int32_t NLS1_TranslateString(uint32_t targetCodePage, void* output, int32_t size,
                             uint32_t sourceCodePage, const void* input, int32_t length,
                             uint32_t* consumed, uint32_t options, uint32_t* error)
{
    TS_TRACE(NLS1_TranslateString);
    constexpr uint32_t kOptions =
        NLS1_OPT_BLANKS_MAY_GO | NLS1_OPT_PAD_BLANKS | TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE;
    uint32_t unusedError = 0;
    uint32_t unusedCount = 0;
    uint32_t& code = error ? *error : unusedError;
    uint32_t& used = consumed ? *consumed : unusedCount;
    code = TS_ERR_NONE;
    NLS1_PrivateFunction_GetThreadLocale(); // so that the data of the thread is there

    const Side source = sideOf("Source", sourceCodePage, code, tsTrace);
    const Side target = sideOf("Target", targetCodePage, code, tsTrace);
    if (!source.found() || !target.found())
        TS_RETURN(-1);

    Translation text(target, output, size, source, input, length, options, tsTrace);
    const auto leave = [&](int32_t result) {
        used = static_cast<uint32_t>(text.counted() ? text.count() : text.consumed());
        return text.counted() ? text.count() : result;
    };
    if (!text.hasTexts())
        TS_FAIL(code, TS_ERR_ARGUMENT, -1, "No text");
    text.measureCharacters();
    if (options & ~kOptions)
        TS_FAIL(code, TS_ERR_ARGUMENT, leave(-1), "Invalid options %#x", options);
    if (text.isEmpty())
        TS_RETURN(leave(text.bytes()));
    if (!text.hasRoom())
        TS_FAIL(code, TS_ERR_BUFFER, -1, "No room in %d bytes", size);
    code = static_cast<uint32_t>(text.run());
    TS_RETURN(leave(text.bytes()));
}
