// Which of the others are here. ctest shows this as skipped when one is missing: what the other tests of the
// folder compare with is then less.

#include <gtest/gtest.h>

#include "other_readers.h"

namespace quardele::jet::test {
namespace {

TEST(OtherReaders, MdbToolsAreHere) {
    if (!HasMdbTools()) {
        GTEST_SKIP() << "mdbtools are not installed";
    }
}

TEST(OtherReaders, MdbReaderIsHere) {
    if (!HasMdbReader()) {
        GTEST_SKIP() << "node or the package mdb-reader is missing; ./test installs both";
    }
}

}  // namespace
}  // namespace quardele::jet::test
