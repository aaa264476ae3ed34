#include "sort.hpp"

#include "environment.hpp"
#include "failure.hpp"
#include "keyedlines.hpp"
#include "outfile.hpp"
#include "sorter.hpp"

namespace vlx::cli {

namespace {

// Lines go to the output in large pieces.
class LineWriter {
  public:
    explicit LineWriter(OutputFile& output) : output_(output) {}

    void write(std::string_view line)
    {
        if (pending_.size() + line.size() > kPiece)
            flush();
        if (line.size() > kPiece)
            output_.write(line);
        else
            pending_ += line;
    }
    void flush()
    {
        output_.write(pending_);
        pending_.clear();
    }

  private:
    static constexpr std::size_t kPiece = 1 << 16;

    OutputFile& output_;
    std::string pending_;
};

std::string temporaryDirectory(const SortOptions& options)
{
    if (!options.directory.empty())
        return options.directory;
    const std::string chosen = environment("TMPDIR").value_or("");
    return chosen.empty() ? "/tmp" : chosen;
}

} // namespace

int sortTexts(TSLocale* locale, const SortOptions& options)
{
    KeyBuilder keys = keyBuilderOf(locale, options);
    const LineEnds ends(locale);
    const std::size_t memory = bytesOfSize(options.memory);
    OutputFile output(options.output);
    const bool showsProgress = !output.isTerminal();
    Sorter sorter({memory, temporaryDirectory(options), options.unique, showsProgress});
    {
        Progress progress(totalSize(options.files), showsProgress);
        for (const std::string& file : options.files) {
            KeyedLines lines(file, ends, keys, progress);
            while (lines.next())
                sorter.add(lines.key(), lines.line());
        }
    }
    LineWriter writer(output);
    sorter.finish([&](std::string_view line) { writer.write(line); });
    writer.flush();
    output.finish();
    return kExitGood;
}

} // namespace vlx::cli
