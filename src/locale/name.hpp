// The parts of a locale name, `Language[_Territory][.Codepage][@Sort]`, and the objects they name.
#pragma once

#include <cstdint>

#include "frame/objman.hpp"

namespace vlx {

// How the two forms of a locale name end and how their objects are found.
struct ByteName {
    using Unit = char;
    static TSObject* find(TSObjManager* manager, std::uint16_t type, const char* name,
                          std::int32_t length, std::int32_t* code)
    {
        return TSGetObjFromName(manager, type, name, length, 0, code);
    }
};
struct PackedName {
    using Unit = TSChar32;
    static TSObject* find(TSObjManager* manager, std::uint16_t type, const TSChar32* name,
                          std::int32_t length, std::int32_t* code)
    {
        return TSGetObjFromNameW(manager, type, name, length, 0, code);
    }
};

// Steps through a locale name part by part.
template <class Unit>
class NameParts {
  public:
    explicit NameParts(const Unit* name) : at_(name) {}

    // Begins a part: at its delimiter, which is stepped over. A name without it has an empty part.
    bool begins(char delimiter)
    {
        if (*at_ != static_cast<Unit>(delimiter))
            return false;
        ++at_;
        return true;
    }

    // The part up to any of `delimiters`; the next part begins behind it.
    struct Part {
        const Unit* text;
        std::int32_t length;
    };
    Part upTo(const char* delimiters)
    {
        const Unit* const begin = at_;
        while (*at_ != 0 && !isOneOf(*at_, delimiters))
            ++at_;
        return {begin, static_cast<std::int32_t>(at_ - begin)};
    }

  private:
    static bool isOneOf(Unit unit, const char* delimiters)
    {
        for (; *delimiters; ++delimiters)
            if (unit == static_cast<Unit>(*delimiters))
                return true;
        return false;
    }

    const Unit* at_;
};

} // namespace vlx
