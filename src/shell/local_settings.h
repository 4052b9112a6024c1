// What the suite's file of local parameters says, line by line.
#pragma once

#include <cstdint>
#include <istream>

#include <basic/text.h>

namespace quardele::shell {

/// The settings that this module knows. Those of its siblings are lines like any other.
struct LocalSettings {
    bool MIRE_ACTIVE = true;
    basic::Text MIRE_VEH;
    basic::Text PARAM_DEVCAL;
    basic::Text PARAM_SITE;
    std::int16_t PARAM_CALENDRIER = 0;
};

/// Reads lines up to the first blank one, or to the end. The file is in the Western code page; a line ends
/// with CR, LF or both. Throws what the conversion of the calendar's number throws (13 no number, 6 beyond 16
/// bits), and 57 where the file cannot be read further; the lines before that one, and the other settings of
/// a line with a bad number, have been read then.
void ReadLocalSettings(std::istream& file, LocalSettings& settings);

}  // namespace quardele::shell
