// What the tests of locales share: a library that runs on a directory in memory and on allocators
// that watch their blocks, and a directory with one of everything.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "frame/globals.hpp"
#include "frame/objman.hpp"
#include "locale/locale.hpp"
#include "locale/locale_builder.hpp"
#include "locale/oracle_locale.hpp"
#include "support/allocator.hpp"
#include "support/memory_host.hpp"
#include "support/recording_services.hpp"
#include "tessera.h"

namespace vlx::test {

struct ReleaseLocale {
    void operator()(TSLocale* locale) const { TSReleaseLocale(locale); }
};
using Handle = std::unique_ptr<TSLocale, ReleaseLocale>;

enum class NameForm { kBytes, kUnicode, kPacked };
inline constexpr NameForm kNameForms[] = {NameForm::kBytes, NameForm::kUnicode, NameForm::kPacked};
const char* nameOf(NameForm form);
std::string formName(const ::testing::TestParamInfo<NameForm>& info);

// A name in the other forms: each byte is a unit.
std::u16string unicodeName(const std::string& name);
std::u32string packedName(const std::string& name);

// TSGetLocale and TSSetLocale by the form of the name.
Handle getLocale(NameForm form, const std::string& name, std::uint32_t options, std::int32_t* code);
std::int32_t setLocale(NameForm form, const std::string& name, std::uint32_t options);

inline const TSChar16* units(const std::u16string& text)
{
    return reinterpret_cast<const TSChar16*>(text.c_str());
}
inline const TSChar32* units(const std::u32string& text)
{
    return reinterpret_cast<const TSChar32*>(text.c_str());
}

// The values of a record as they stand there.
oracle::Values valuesOf(const TSLocale& locale);

// The bytes of a record, its pointers among them.
std::string imageOf(const TSLocale& locale);

class LocaleTest : public ::testing::Test {
  protected:
    static constexpr const char* kDirectory = "/loc";
    static constexpr TSContext kContext = 77;

    LocaleTest();

    // Stops the library and looks for anything that is left.
    ~LocaleTest() override;

    std::int32_t start(const LocaleDirectory& directory, std::uint32_t options = 0);
    std::int32_t start(std::uint32_t options = 0); // on what is in memory
    std::int32_t stop();

    static const TSObjManager& manager() { return *tsGlobals->objectManager; }
    static TSObject* object(unsigned type, const std::string& name);

    // Loads all objects, so that only locales take memory from here on.
    static void loadAll();

    Handle make(const std::string& name, std::uint32_t options = 0)
    {
        return getLocale(NameForm::kBytes, name, options, &code_);
    }

    std::int32_t code_ = kUntouched;
    static constexpr std::int32_t kUntouched = 4711;

  private:
    bool started_ = false;
};

// The pages of the directory with one of everything. Each has ASCII; yen is U+5186.
struct WorldPages {
    WorldPages();

    PageBuilder latin;       // id 20: U+00E4 and U+20AC, no yen
    PageBuilder doubleByte;  // id 21: yen is 0x8A42, U+3000 is 0x8140
    PageBuilder shifting;    // id 22: stateful, yen is 0x4243, U+3000 is 0x4141
    PageBuilder dotted;      // id 23
    PageBuilder underscored; // id 24
    PageBuilder ascii;       // id 367
    PageBuilder utf8;        // id 57352
};
inline constexpr char16_t kYen = 0x5186;
inline constexpr char16_t kWideBlank = 0x3000;

LocaleDirectory worldDirectory();

// Runs on the directory with one of everything.
class WorldTest : public LocaleTest {
  protected:
    WorldTest() { EXPECT_EQ(start(worldDirectory()), TS_ERR_NONE); }
};

} // namespace vlx::test
