// Locale directories by chance, with small ids and short names, so that much of what a name asks
// for is there and much is not.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "locale/locale_builder.hpp"

namespace vlx::test {

class RandomWorld {
  public:
    // With `everything` no range is empty and English and the code page of names are there.
    RandomWorld(std::mt19937_64& random, bool everything);

    const LocaleDirectory& directory() const { return directory_; }

    // A name of random parts and delimiters, listed ones and others.
    std::string name();

    // A number below a limit; true once in so many times.
    std::uint32_t below(std::uint32_t limit)
    {
        return static_cast<std::uint32_t>(random_() % limit);
    }
    bool once(std::uint32_t outOf) { return below(outOf) == 0; }

  private:
    std::string freshName();
    std::string part(int type);
    void addLanguages(bool everything);
    void addTerritories(bool everything);
    void addPages(bool everything);
    void addSorts();
    std::u16string text(const std::vector<TSChar16>& characters);

    std::mt19937_64& random_;
    LocaleDirectory directory_;
};

} // namespace vlx::test
