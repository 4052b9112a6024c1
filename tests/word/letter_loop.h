// A letter written with GWORD's operations in the order in which the reminders use them.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <word/gword.h>

namespace quardele::tests {

/// What a letter says: texts by bookmark, UTF-8.
struct LetterText {
    std::vector<std::pair<std::string, std::string>> header;
    std::vector<std::map<std::string, std::string>> visits;
};

/// A customer with an address of four lines and that many visits.
[[nodiscard]] LetterText SampleLetter(int visits);

/// Creates an application into `Word`, fills a new document from the template (Windows path without
/// extension) and saves it after each visit. `Word` keeps the document open.
void WriteLetter(word::GWORD& gword, automation::ObjectPtr& Word, const basic::Text& templatePath,
                 const LetterText& letter, const basic::Text& file);

}  // namespace quardele::tests
