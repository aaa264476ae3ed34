#include "messages_command.hpp"

#include "directory.hpp"
#include "sourcefile.hpp"

namespace vlx::data {

namespace {

ContextMap contextsOf(const CatalogOptions& options, Diagnostics& diagnostics)
{
    ContextMap contexts;
    for (const std::string& word : options.contexts) {
        const std::size_t equals = word.rfind('=');
        const auto number = equals == std::string::npos
                                ? std::nullopt
                                : parseDecimal(word.substr(equals + 1), 0x7FFFFFFF);
        if (!number || *number == 0)
            diagnostics.push_back({word, 0, "is not of the form CONTEXT=NUMBER"});
        else
            contexts[word.substr(0, equals)] = *number;
    }
    return contexts;
}

bool isSource(const std::string& path)
{
    return path.ends_with(".toml") || path.ends_with(".po");
}

// A source of either kind, with its locale.
std::optional<MessageCatalog> readSourceOf(const std::string& path, const CatalogOptions& options,
                                           Diagnostics& diagnostics)
{
    auto catalog = path.ends_with(".po")
                       ? readPortableObject(path, contextsOf(options, diagnostics), diagnostics)
                       : readMessageSource(path, diagnostics);
    if (!catalog)
        return std::nullopt;
    if (!options.locale.empty())
        catalog->locale = options.locale;
    if (catalog->locale.empty()) {
        diagnostics.push_back({path, 0, "has no locale; give it with --locale"});
        return std::nullopt;
    }
    return catalog;
}

std::optional<Bytes> compile(const std::string& path, const MessageCatalog& catalog,
                             const CatalogOptions& options, Diagnostics& diagnostics)
{
    const auto text = LocaleText::open(options.localeDirectory, catalog.locale, diagnostics);
    if (!text)
        return std::nullopt;
    const ByteOrder order = options.order == "big"      ? ByteOrder::kBig
                            : options.order == "little" ? ByteOrder::kLittle
                                                        : ownOrder();
    return catalogFile(catalog, *text, order, path, diagnostics);
}

} // namespace

void buildCatalog(const CatalogOptions& options, Diagnostics& diagnostics)
{
    const std::string& path = options.files.front();
    const auto catalog = readSourceOf(path, options, diagnostics);
    if (!catalog)
        return;
    const auto file = compile(path, *catalog, options, diagnostics);
    if (file && !hasErrors(diagnostics))
        writeFile(options.output, *file, diagnostics);
}

void dumpCatalog(const CatalogOptions& options, std::ostream& out, Diagnostics& diagnostics)
{
    const auto catalog = readCatalog(options.files.front(), options.localeDirectory, diagnostics);
    if (catalog)
        dumpMessages(*catalog, out);
}

void lintCatalogs(const CatalogOptions& options, Diagnostics& diagnostics)
{
    std::optional<MessageCatalog> first;
    for (const std::string& path : options.files) {
        const auto catalog = isSource(path)
                                 ? readSourceOf(path, options, diagnostics)
                                 : readCatalog(path, options.localeDirectory, diagnostics);
        if (!catalog)
            continue;
        if (isSource(path))
            compile(path, *catalog, options, diagnostics); // for what is wrong with its texts
        if (first)
            compareMessages(*first, *catalog, path, diagnostics);
        else
            first = catalog;
    }
}

} // namespace vlx::data
