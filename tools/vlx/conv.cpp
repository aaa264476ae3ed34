// `vlx conv`: converts texts, slice by slice, and tells what was lost.
#include <cstring>
#include <memory>
#include <vector>

#include "codepage.hpp"
#include "commands.hpp"
#include "failure.hpp"
#include "infile.hpp"
#include "losses.hpp"
#include "outfile.hpp"
#include "progress.hpp"

namespace vlx::cli {

namespace {

constexpr std::size_t kSlice = 1 << 15; // the library takes less than 64 KiB at a time
constexpr std::size_t kLongest = 5;     // bytes that one byte of a text can become
constexpr int kShown = 5;               // losses of each kind that are told one by one

// What the conversion of all texts shares.
struct Surroundings {
    const CodePage& source;
    const CodePage& target;
    LossFinder& losses;
    OutputFile& output;
    Progress& progress;
};

// The losses of one text: the first ones are told at once, all are counted.
class LossReport {
  public:
    LossReport(const Surroundings& surroundings, const std::string& text)
        : around_(surroundings), text_(text)
    {
    }

    void add(Loss loss, std::uint64_t offset, const Character& character)
    {
        const bool undefined = loss == Loss::kUndefined;
        if (++(undefined ? undefined_ : substituted_) > kShown)
            return;
        if (undefined)
            tell(offset, character, fmt::format("is undefined in {}", around_.source.name));
        else
            tell(offset, character,
                 fmt::format("(U+{:04X}) has no form in {}", around_.losses.unicode(character),
                             around_.target.name));
    }

    void cutOff(std::uint64_t offset, const Character& rest)
    {
        isCutOff_ = true;
        tell(offset, rest, "is left out: the end cuts the character off");
    }

    // Tells the counts; true if nothing was lost.
    bool finish() const
    {
        if (substituted_ > 0)
            say(fmt::format("{} without a form in {} became {:02X}", counted(substituted_),
                            around_.target.name, *around_.losses.substitute()));
        if (undefined_ > 0)
            say(fmt::format("{} undefined in {}", counted(undefined_), around_.source.name));
        return substituted_ == 0 && undefined_ == 0 && !isCutOff_;
    }

  private:
    static std::string counted(std::uint64_t count)
    {
        return fmt::format("{} character{}", count, count == 1 ? "" : "s");
    }

    void say(const std::string& message) const
    {
        around_.progress.clear();
        fmt::print(stderr, "vlx: {}: {}\n", text_, message);
    }

    void tell(std::uint64_t offset, const Character& character, const std::string& what) const
    {
        std::string hex;
        for (int i = 0; i < character.size; ++i)
            hex += fmt::format("{:02X} ", static_cast<std::uint8_t>(character.bytes[i]));
        say(fmt::format("offset {}: {}{}", offset, hex, what));
    }

    const Surroundings& around_;
    const std::string& text_;
    std::uint64_t substituted_ = 0;
    std::uint64_t undefined_ = 0;
    bool isCutOff_ = false;
};

struct CloseConversion {
    void operator()(TSConversion* conversion) const { TSCloseConversion(conversion); }
};

// The conversion of one text. It begins in the single-byte state and ends there.
class TextConversion {
  public:
    TextConversion(const Surroundings& surroundings, const InputFile& input)
        : around_(surroundings), input_(input),
          handle_(
              TSOpenConversion(surroundings.target.locale.get(), surroundings.source.locale.get())),
          walk_(surroundings.source.locale.get()), report_(surroundings, input.shown())
    {
        if (!handle_)
            throw Failure("out of memory; close other programs and try again");
    }

    // True if nothing was lost.
    bool run()
    {
        std::size_t kept = 0;
        for (bool ended = false; !ended;) {
            const std::size_t got = input_.read(slice_.data() + kept, slice_.size() - kept);
            ended = got == 0;
            kept = convertWhole(slice_.data() + kept + got);
            around_.progress.advance(got);
        }
        tellRest(kept);
        leaveMultiByte();
        return report_.finish();
    }

  private:
    // Converts the whole characters of the slice and moves what is behind them to its start; gives
    // the number of these bytes.
    std::size_t convertWhole(const char* end)
    {
        const char* at = slice_.data();
        for (;;) {
            const int state = walk_.state();
            const char* const whole = walk_.passWhole(at, end);
            if (whole == at)
                break;
            convert(at, whole, state);
            at = whole;
        }
        const auto kept = static_cast<std::size_t>(end - at);
        std::memmove(slice_.data(), at, kept);
        return kept;
    }

    // Converts whole characters, `state` being that of the first one.
    void convert(const char* begin, const char* end, int state)
    {
        bool suspicious = walk_.malformed();
        const char* at = begin;
        auto left = static_cast<std::int32_t>(end - begin);
        for (std::int32_t code = TS_ERR_OUTPUT_FULL; code == TS_ERR_OUTPUT_FULL;) {
            const std::string_view converted = convertSome(at, left, code);
            suspicious = suspicious || around_.losses.suspects(converted);
            around_.output.write(converted);
        }
        if (suspicious)
            around_.losses.find(walk_, begin, end, state, [&](Loss loss, const Character& one) {
                report_.add(loss, offset_ + static_cast<std::uint64_t>(one.bytes - begin), one);
            });
        offset_ += static_cast<std::uint64_t>(end - begin);
    }

    // Converts what there is room for; the view is good until the next call.
    std::string_view convertSome(const char*& at, std::int32_t& left, std::int32_t& code)
    {
        char* output = converted_.data();
        auto room = static_cast<std::int32_t>(converted_.size());
        code = TSConvertBuffer(handle_.get(), &output, &room, &at, &left);
        return {converted_.data(), static_cast<std::size_t>(output - converted_.data())};
    }

    // The bytes behind the last whole character: a shift byte, a part of a character.
    void tellRest(std::size_t size)
    {
        Character rest{slice_.data(), static_cast<int>(size), 0};
        if (size > 0 && walk_.page().isShift(static_cast<std::uint8_t>(*rest.bytes))) {
            ++rest.bytes;
            --rest.size;
        }
        if (rest.size > 0)
            report_.cutOff(offset_ + static_cast<std::uint64_t>(rest.bytes - slice_.data()), rest);
    }

    // A blank leads out of the multi-byte state; of what it becomes the shift byte is kept.
    void leaveMultiByte()
    {
        if (!CharacterWalk(around_.target.locale.get()).page().stateful())
            return;
        constexpr TSChar16 blank = 0x20;
        char text[8] = {static_cast<char>(walk_.page().shiftOut())};
        std::int32_t size = walk_.page().stateful() ? 1 : 0;
        size += TSUnicodeToString(around_.source.locale.get(), text + size, 4, &blank, 1, 0);
        const char* at = text;
        std::int32_t code = TS_ERR_NONE;
        const std::string_view converted = convertSome(at, size, code);
        around_.output.write(converted.substr(0, converted.size() - 1));
    }

    const Surroundings& around_;
    const InputFile& input_;
    const std::unique_ptr<TSConversion, CloseConversion> handle_;
    CharacterWalk walk_;
    LossReport report_;
    std::uint64_t offset_ = 0;
    std::vector<char> slice_ = std::vector<char>(kSlice);
    std::vector<char> converted_ = std::vector<char>(kLongest * kSlice);
};

} // namespace

int convertTexts(const Library& library, const ConvOptions& options)
{
    const CodePage source = openCodePage(library, options.from);
    const CodePage target = openCodePage(library, options.to);
    LossFinder losses(source, target);
    OutputFile output(options.output);
    Progress progress(totalSize(options.files), !output.isTerminal());
    const Surroundings surroundings{source, target, losses, output, progress};
    bool clean = true;
    for (const std::string& file : options.files) {
        const InputFile input(file);
        clean = TextConversion(surroundings, input).run() && clean;
    }
    progress.clear();
    output.finish();
    return clean ? kExitGood : kExitText;
}

} // namespace vlx::cli
