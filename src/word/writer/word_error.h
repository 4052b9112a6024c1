// The failures that Word's own automation reports, with its numbers.
#pragma once

#include <basic/runtime_error.h>

namespace quardele::word::writer {

enum class WordError {
    ReadOnlyProperty = 383,
    MissingArgument = 449,
    BadParameter = 4120,
    CommandFailed = 4198,
    NoDocument = 4248,
    NotInTable = 4605,
    OutOfRange = 4608,
    BadFileName = 5152,
    FileNotFound = 5174,
    ObjectDeleted = 5825,
    NoSuchElement = 5941,
};

/// The error with its French description.
[[nodiscard]] basic::RuntimeError Failure(WordError error);

}  // namespace quardele::word::writer
