// A facade that can be started more than once in a process: what the base services do once, the
// fixture does for each test, on a locale directory in memory.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "facade/facade.hpp"
#include "locale/locale.hpp"
#include "locale/locale_builder.hpp"
#include "support/memory_host.hpp"
#include "support/recording_services.hpp"

namespace vlx::test {

class FacadeTest : public testing::Test {
  protected:
    static constexpr const char* kDirectory = "/loc";

    FacadeTest();
    ~FacadeTest() override;

    // Starts the process and this thread, on the directory that NLS1_LOCALEDIR then names.
    void start(const LocaleDirectory& directory);
    void start(); // on what is there
    void stop();

    static std::int32_t processWord() { return *word(); }
    static std::string nameOf(const TSLocale* locale);

    std::int32_t code_ = 4711;

  private:
    static std::int32_t* word();

    bool started_ = false;
};

// German_Germany (2, 20) is in Latin1 (30) and has the sort Book (2); English_America (1, 10) in
// US (31) has Plain (1); Japanese_Nippon (3, 30) is in Double (32), and Shift (33) is stateful.
LocaleDirectory facadeDirectory();

class Facade : public FacadeTest {
  protected:
    Facade() { start(facadeDirectory()); }
};

} // namespace vlx::test
