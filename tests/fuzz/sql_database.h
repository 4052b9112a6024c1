// A small data file to run statements on, and the statements to begin with.
#pragma once

#include <memory>

#include <jet/database.h>

#include "harness.h"

namespace quardele::fuzz {

/// The tables of the workshop's file with a few rows each, and those that the page on the dialect fills.
[[nodiscard]] std::shared_ptr<jet::Database> SqlDatabase();

/// Statements that change the file: the examples of the page on the dialect, and their errors.
[[nodiscard]] std::vector<Bytes> SqlActionSeeds();

/// The statements of the tests and the examples of the page on the dialect.
[[nodiscard]] std::vector<Bytes> SqlSeeds();

}  // namespace quardele::fuzz
