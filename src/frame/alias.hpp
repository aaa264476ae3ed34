// Further names of code pages, from alias.txt in the locale directory: a list in file order.
#pragma once

#include <cstdint>

struct TSObjManager;

struct TSAliasNode {
    static constexpr int kMaxName = 32;
    static constexpr int kMaxAlias = 64;

    TSAliasNode* next;
    char codePageName[kMaxName + 1];
    char aliasName[kMaxAlias + 1]; // in upper case
};

// Reads alias.txt; 1 on any failure, with the aliases before it in place.
std::int32_t TSBuildAliasList(TSObjManager* manager);

// Frees the list; returns 0.
std::int32_t TSDestroyAliasList(TSObjManager* manager);

// The code page that an alias names, in any case, or null. The first match wins.
const char* TSGetCodepageFromAlias(TSObjManager* manager, const char* alias);
