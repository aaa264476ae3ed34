#include "support/test_locale.hpp"

#include "chars/cpfile.hpp"

namespace vlx::test {

TSLocale localeOn(TSObject& codePage)
{
    const auto& header = *reinterpret_cast<const TSCodePageHeader*>(codePage.sections[0]);
    TSLocale locale{};
    locale.codePage = &codePage;
    unsigned flags = kLocaleBinarySort;
    if (header.maxCharBytes == 1)
        flags |= kLocaleSingleByte;
    if ((header.cpFlags & kStateful) != 0)
        flags |= kLocaleStateful;
    locale.flags = static_cast<std::uint16_t>(flags);
    locale.lastError = kUntouchedError;
    return locale;
}

} // namespace vlx::test
