// One file in the eyes of all its readers.
#pragma once

#include <filesystem>

#include "contents.h"

namespace quardele::jet::test {

/// A test failure for each difference between `expected` and the tables of the file as we, mdb-export and
/// mdb-reader read them, cell by cell, and as mdb-schema shows their columns. Readers that are missing are
/// left out; SkipWithoutOtherReaders says so.
void ExpectAllReadersAgree(const std::filesystem::path& file, const Contents& expected);

/// A test failure for each fault that the check of the whole file finds; notes too when nobody else has
/// written the file.
void ExpectSound(const std::filesystem::path& file, bool ours);

}  // namespace quardele::jet::test

/// For the end of a test: it is reported as skipped when one of the readers was not there.
#define SKIP_WITHOUT_OTHER_READERS()                                                          \
    if (!::quardele::jet::test::HasMdbTools() || !::quardele::jet::test::HasMdbReader()) {    \
        GTEST_SKIP() << "compared without "                                                   \
                     << (::quardele::jet::test::HasMdbTools() ? "mdb-reader" : "mdb-export"); \
    }                                                                                         \
    static_assert(true)
