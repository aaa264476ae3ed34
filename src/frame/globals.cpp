// The process-wide words.
#include "frame/globals.hpp"

constinit TSGlobals* tsGlobals = nullptr;
constinit TSLocale* tsDefaultLocale = nullptr;
constinit TSSlots tsSlots{};
