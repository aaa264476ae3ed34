// A locale directory in the memory host, the library on it with watched allocators, and the check
// that nothing is left when both end.
#pragma once

#include <map>
#include <string>

#include <gtest/gtest.h>

#include "frame/globals.hpp"
#include "frame/objman.hpp"
#include "support/allocator.hpp"
#include "support/memory_host.hpp"
#include "support/object_builder.hpp"
#include "support/page_builder.hpp"
#include "support/recording_services.hpp"
#include "tessera.h"

namespace vlx::test {

// The objects of the directory, apart from the built-in names.
inline constexpr std::uint16_t kEnglish = 1;
inline constexpr std::uint16_t kNorthern = 2; // its defaults: Northland, Double, Plain
inline constexpr std::uint16_t kHomeland = 1;
inline constexpr std::uint16_t kNorthland = 2;
inline constexpr std::uint16_t kAscii = 367;
inline constexpr std::uint16_t kDouble = 932;
inline constexpr std::uint16_t kShifted = 1399;
inline constexpr std::uint16_t kPlainSort = 7;

inline constexpr char kDirectory[] = "/locales";
inline constexpr char kDefaultDirectory[] = "/Vernique/locale";

// A page of two-byte characters with types, pairs and every kind of Unicode page that it can have.
PageBuilder doublePage();
PageBuilder shiftedPage();
PageBuilder asciiPage();

// The files of the directory by their names, the control file among them.
std::map<std::string, Bytes> goodFiles();
std::vector<Listing> goodListings();

void putDirectory(const std::string& directory = kDirectory);
void putFile(const std::string& name, const Bytes& bytes);
void eraseFile(const std::string& name);

// TSInit with the watched allocators.
std::int32_t start(const char* directory = kDirectory, std::uint32_t options = 0);

// Stops the library, however often and however far it was started.
void stopAll();

TSObjManager& manager();

// An entry of the table without its data.
TSObject* listed(std::uint8_t type, std::uint16_t id);
// TSLoadObject of an entry.
TSObject* load(std::uint8_t type, std::uint16_t id, std::int32_t& code);

// A locale by its name, with code 0 or a failed test.
TSLocale* goodLocale(const std::string& name);

// True if the table is the one of the three built-in objects.
bool hasBuiltinTable();
bool isBuiltin(const TSObject* object);

class StoreTest : public testing::Test {
  protected:
    StoreTest();
    ~StoreTest() override;

    // A test that makes a give-back fail tells how much stays out.
    struct Left {
        int blocks = 0;
        int files = 0;
        int mappings = 0;
        int views = 0;
    };
    Left left_;

    void expectNothingLeft() const;
};

} // namespace vlx::test
