#include "detail_table.h"

#include <algorithm>
#include <array>
#include <span>

#include <basic/runtime_error.h>

namespace quardele::reminders {

using basic::Text;
using basic::TextView;

namespace {

/// Names of detail bookmarks; the room behind the six in use is empty, and asked for like them.
constexpr std::array<TextView, 17> T_SIGNETS = {u"IMMAT",   u"MARQUE", u"DATEPREV",
                                                u"DERNVIS", u"PERIOD", u"TYPTRAV"};
/// Without the last one, which was never looked at.
constexpr std::span<const TextView> kAskedFor(T_SIGNETS.data(), T_SIGNETS.size() - 1);

/// An element of a list; throws RuntimeError 9 outside.
Text& Element(std::vector<Text>& list, int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= list.size()) {
        throw basic::RuntimeError(basic::error::kSubscript);
    }
    return list[static_cast<std::size_t>(index)];
}

}  // namespace

bool DetailTable::Find(Letter& letter) {
    letter.LeaveHeader();
    if (!GoToAnyBookmark(letter)) {
        return false;
    }
    ReadColumns(letter);
    letter.Select(Element(T_COLONNES, 0));
    return true;
}

bool DetailTable::GoToAnyBookmark(Letter& letter) {
    return std::any_of(kAskedFor.begin(), kAskedFor.end(),
                       [&letter](TextView bookmark) { return letter.GoTo(bookmark); });
}

/// Of two bookmarks in one column the later name wins.
void DetailTable::ReadColumns(Letter& letter) {
    T_COLONNES.assign(static_cast<std::size_t>(std::max(letter.TableColumns(), 0)), Text());
    for (const TextView bookmark : kAskedFor) {
        if (letter.GoTo(bookmark)) {
            Element(T_COLONNES, letter.CurrentColumn() - 1) = bookmark;
        }
    }
}

}  // namespace quardele::reminders
