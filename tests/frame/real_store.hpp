// A locale directory of real files below the working directory, for what only a real host shows.
#pragma once

#include <string>

#include <gtest/gtest.h>

#include "frame/globals.hpp"
#include "frame/objman.hpp"
#include "host/host.hpp"
#include "host/workshop.hpp"
#include "support/object_builder.hpp"
#include "support/recording_services.hpp"
#include "tessera.h"

namespace vlx::test {

// A language, a territory, a page of ASCII and a sort, all of id 1, and the control file.
class RealStoreTest : public testing::Test {
  protected:
    RealStoreTest();
    ~RealStoreTest() override;

    // Starts the library on the directory, with trace on.
    std::int32_t start(std::uint32_t options = 0);
    void alias(std::string_view text) const;
    std::string directory() const { return workshop_.path("."); }

    static TSObjManager& manager() { return *tsGlobals->objectManager; }
    static TSLocale* locale(std::int32_t& code) { return TSGetLocale("North", 0, &code); }

    Workshop workshop_;
};

} // namespace vlx::test
