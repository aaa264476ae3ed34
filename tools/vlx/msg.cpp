// `vlx msg`: a message of a catalog, as a program in some locale gets it.
#include <memory>
#include <vector>

#include "commands.hpp"
#include "failure.hpp"

namespace vlx::cli {

namespace {

constexpr std::int32_t kLargestMessage = 65536; // elements

struct CloseCatalog {
    void operator()(TSCatalog* catalog) const { TSCloseCatalog(catalog); }
};

std::string openFailure(std::int32_t code)
{
    switch (code) {
    case TS_ERR_NO_CATALOG:
        return "no such catalog was found, or the file is none; the search goes through "
               "TS_NLSPATH, then takes the name as a path";
    case TS_ERR_ARGUMENT:
        return "a catalog needs a name";
    default:
        return fmt::format("error {}", code);
    }
}

} // namespace

int printMessage(const Library&, const MessageOptions& options, Output& output)
{
    const LocaleHandle locale = openLocale(options.locale);
    const std::unique_ptr<TSCatalog, CloseCatalog> catalog(
        TSOpenCatalog(locale.get(), nullptr, options.catalog.c_str(), TS_CATALOG_PRELOAD));
    if (!catalog)
        throw Failure(
            fmt::format("{}: {}", options.catalog, openFailure(TSGetError(locale.get()))));
    if (options.raw) {
        std::vector<char> bytes(4 * kLargestMessage);
        if (TSGetMessage(catalog.get(), options.set, options.message, bytes.data(),
                         static_cast<std::int32_t>(bytes.size()), nullptr) == TS_ERR_NONE) {
            output.print("{}", bytes.data());
            output.finish();
            return kExitGood;
        }
    } else {
        std::vector<TSChar16> units(kLargestMessage);
        if (TSGetMessageU(catalog.get(), options.set, options.message, units.data(),
                          kLargestMessage, nullptr) == TS_ERR_NONE) {
            std::string text;
            for (const TSChar16* unit = units.data(); *unit != 0; ++unit)
                text += utf8(*unit);
            output.print("{}\n", text);
            output.finish();
            return kExitGood;
        }
    }
    fmt::print(stderr, "vlx: {} has no message {} in set {}.\n", options.catalog, options.message,
               options.set);
    return kExitText;
}

} // namespace vlx::cli
