#include "support/test_locale.hpp"

namespace vlx::test {

TSLocale localeOn(TSObject& codePage)
{
    TSLocale locale{};
    locale.codePage = &codePage;
    locale.flags = kLocaleBinarySort;
    setCodePageFlags(locale);
    locale.lastError = kUntouchedError;
    return locale;
}

} // namespace vlx::test
