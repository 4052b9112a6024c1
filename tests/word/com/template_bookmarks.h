// The bookmarks of the letter's template, for Word's double.
#pragma once

#include "recording_word.h"

namespace quardele::tests {

inline void FillLikeTheTemplate(RecordingWord& word) {
    word.bookmarks = {"CODCLI", "RS", "ADR1", "ADR2", "ADR3", "ADR4", "CONTACT", "TEL", "DATIMPR"};
    word.columnOf = {{"IMMAT", 1},   {"MARQUE", 2}, {"TYPTRAV", 3},
                     {"DERNVIS", 4}, {"PERIOD", 5}, {"DATEPREV", 6}};
    word.columns = 6;
}

}  // namespace quardele::tests
