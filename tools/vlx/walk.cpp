#include "commands.hpp"
#include "failure.hpp"
#include "printer.hpp"

namespace vlx::cli {

namespace {

// The Unicode values of the locale's code page, if its object file is the one that the library
// uses: a file that cannot be read leaves the library on data of its own.
std::optional<UnicodeView> openView(const Library& library, TSLocale* locale,
                                    const std::optional<ListedObject>& codePage)
{
    if (!codePage)
        return std::nullopt;
    const auto file = library.directory()->object(codePage->type, codePage->id);
    if (!file)
        return std::nullopt;
    std::optional<UnicodeView> view = UnicodeView::open(*file, codePage->id);
    for (int byte = 0; view && byte < 256; ++byte) {
        const char text[1] = {static_cast<char>(byte)};
        if (view->page().charLength[byte] != TSByteLength(locale, text))
            view.reset();
    }
    return view;
}

void tellWithoutView(const Library& library, const std::optional<ListedObject>& codePage)
{
    if (library.directory() && codePage)
        fmt::print(stderr,
                   "vlx: the object file of {} cannot be read here, so no Unicode values are "
                   "shown; check {}.\n",
                   codePage->name, library.directory()->path().string());
}

// Gives items to the printer until enough characters are shown.
class Limited {
  public:
    Limited(Printer& printer, std::optional<std::int32_t> limit) : printer_(printer), limit_(limit)
    {
    }

    bool operator()(const Item& item)
    {
        if (limit_ && shown_ >= *limit_)
            return false;
        printer_.item(item);
        shown_ += item.kind == Item::Kind::kCharacter;
        return true;
    }

    std::int32_t shown() const { return shown_; }

  private:
    Printer& printer_;
    const std::optional<std::int32_t> limit_;
    std::int32_t shown_ = 0;
};

int statusOf(const Totals& totals, const Checks& checks, const PageFacts& page)
{
    if (checks.agree())
        return totals.clean() ? kExitGood : kExitText;
    if (!totals.plain())
        return kExitText;
    throw Failure(fmt::format("{} or {} does not agree with the walk over this text, which is a "
                              "fault of the library; report it with the text",
                              countFunction(page), backFunction(page)));
}

} // namespace

int walkText(const Library& library, const WalkOptions& options, Output& output)
{
    const LocaleHandle locale = openLocale(options.locale);
    const PaddedText text(options.file);
    std::optional<ListedObject> codePage;
    if (library.directory())
        codePage = library.directory()->codePageOf(options.locale);
    const std::optional<UnicodeView> view = openView(library, locale.get(), codePage);
    if (!view)
        tellWithoutView(library, codePage);

    Walker walker(locale.get(), text, view ? &*view : nullptr);
    const Subject subject{options.file, options.locale, codePage, walker.page(), view.has_value()};
    const std::unique_ptr<Printer> printer =
        options.json ? jsonPrinter(subject, text, output) : plainPrinter(subject, text, output);
    Limited receiver(*printer, options.limit);
    const ItemReceiver receive = [&](const Item& item) { return receiver(item); };

    printer->begin();
    const Totals totals = walker.forward(options.backward ? ItemReceiver() : receive);
    if (options.backward)
        walker.backward(receive);
    const Checks checks = walker.check();
    printer->end(totals, checks, receiver.shown());
    output.finish();
    return statusOf(totals, checks, walker.page());
}

} // namespace vlx::cli
