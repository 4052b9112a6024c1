// The operations of GWORD as a table: the members that each uses, in their order, its result, and how it
// fails.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <word/gword.h>

#include "recording_word.h"

namespace quardele::tests {

/// An operation with fixed arguments.
using Operation = std::function<basic::Variant(word::GWORD&, const automation::ObjectPtr&)>;

struct Case {
    const char* name;
    Operation operation;
    std::vector<std::string> log;
    basic::Variant result;
    /// The member that fails in the second part of the test, the result then, and the title of the box; a
    /// null title for a silent failure.
    const char* failingPath;
    basic::Variant resultOnFailure;
    const char16_t* boxTitle;
    /// Without an application an operation within shows a box first: its title.
    const char16_t* boxBefore = nullptr;
};

inline constexpr char kPageView[] = "ActiveWindow.ActivePane.View.Type = 3";
inline constexpr char kSplitRead[] = "ActiveWindow.View.SplitSpecial";
inline constexpr char kStoryRead[] = "ActiveWindow.ActivePane.View.SeekView";

/// Those that write the letters.
[[nodiscard]] std::vector<Case> CasesOfLetters();
/// Those that only makers of macros call.
[[nodiscard]] std::vector<Case> OtherCases();

}  // namespace quardele::tests
