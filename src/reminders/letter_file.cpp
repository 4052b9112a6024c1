#include "letter_file.h"

#include <algorithm>

#include <basic/date.h>
#include <basic/paths.h>
#include <basic/runtime_error.h>

namespace quardele::reminders {

using basic::Text;

namespace {

bool IsFileName(const Text& name) {
    constexpr char16_t kFirstPrintable = u' ';
    return std::none_of(name.begin(), name.end(), [](char16_t unit) {
        return unit < kFirstPrintable || basic::TextView(u"\\/:*?\"<>|").find(unit) != Text::npos;
    });
}

}  // namespace

void LetterFile::Name(const Text& folder, const Text& customer, const Text& referenceDate) {
    const Text name = customer + basic::Format(referenceDate, u"yymmdd") + u".RVE";
    if (!IsFileName(name)) {
        throw basic::RuntimeError(basic::error::kBadFileName);
    }
    path_ = folder + name;
}

void LetterFile::SaveFirst(Letter& letter) const {
    if (!basic::Dir(path_).empty()) {
        basic::Kill(path_);
    }
    letter.SaveAs(path_);
}

}  // namespace quardele::reminders
