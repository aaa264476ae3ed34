// What the benchmark units share. A row is named Work/Case/Who, and the rows of one work and case
// are compared with each other: `vlx` is this library, the others are its peers.
#pragma once

#include <string>

#include <benchmark/benchmark.h>

#include "tessera.h"

namespace vlx::bench {

// The locale directory of the run: null for TS_LOCALEDIR where that is set, else the one of the
// build.
const char* localeDirectory();

// A running library and a locale, for the time of one row. Without them the row is skipped with a
// message.
class RowLocale {
  public:
    RowLocale(benchmark::State& state, const char* name);
    ~RowLocale();
    RowLocale(const RowLocale&) = delete;
    RowLocale& operator=(const RowLocale&) = delete;

    explicit operator bool() const { return locale_ != nullptr; }
    TSLocale* get() const { return locale_; }

  private:
    TSLocale* locale_ = nullptr;
    bool started_ = false;
};

// The rows of each unit.
void addStartRows();
void addSteppingRows();
void addConversionRows();
void addStringRows();
void addCollationRows();
void addMessageRows();
void addSearchRows();

} // namespace vlx::bench
