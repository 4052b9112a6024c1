// Writes of programs with the original engine that have not ended, as the commit slots tell of them.
#pragma once

#include <filesystem>
#include <vector>

#include "commit/change_mark.h"

namespace quardele::jet {

/// The users whose slots hold a sign of trouble instead of a count: 0 for a write that has begun, 1 for a
/// page that could not be understood. That these are the meanings is published for Access 97 files only. Each
/// list is in ascending order; number 0 is an exclusive opener.
struct UnendedWrites {
    std::vector<int> underWay;  ///< their users are in the lock file: they may end yet
    std::vector<int> left;      ///< nobody is there any more who could end them
};

/// Looks who of them is in the lock file. Nobody of ours takes the place of a slot in trouble.
[[nodiscard]] UnendedWrites UnendedWritesOf(const ChangeMark& mark, const std::filesystem::path& dataFile);

/// Makes sure that writing makes nothing worse: waits for writes that are under way. Throws 3260 when they do
/// not end in the retry time, 3343 when one was left: the file must be repaired first.
void WaitForUnendedWrites(const OsFile& file, const Format& format);

/// Whether somebody is in the middle of writing pages now, so that what is read would be of no one state.
[[nodiscard]] bool IsBeingWritten(const ChangeMark& mark, const std::filesystem::path& dataFile);

/// User numbers for messages.
[[nodiscard]] basic::Text UserList(const std::vector<int>& users);

}  // namespace quardele::jet
