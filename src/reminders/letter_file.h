// The file of a letter.
#pragma once

#include <basic/text.h>

#include "letter.h"

namespace quardele::reminders {

class LetterFile {
 public:
    /// The Windows path: folder + customer code + date as "yymmdd" + ".RVE". `referenceDate` is the text of a
    /// date. Throws RuntimeError 52 when the name holds a character that no file name can hold.
    void Name(const basic::Text& folder, const basic::Text& customer, const basic::Text& referenceDate);
    /// Deletes the file of an earlier run and saves the letter under its name. Throws what the deletion
    /// throws (70, 75); a letter that cannot be saved gives no sign.
    void SaveFirst(Letter& letter) const;
    void SaveAgain(Letter& letter) const { letter.Save(path_); }

 private:
    basic::Text path_;
};

}  // namespace quardele::reminders
