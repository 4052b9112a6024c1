// Brings the table of vehicles up to date with the program.
#pragma once

namespace quardele::shell {

/// Adds the columns that the table TVEH of the data database lacks, and tells the operator. True when there
/// was one to add, whether or not that worked: the process ends then, so that the program never runs on a
/// structure that it changed itself.
bool PATCH_VEH();

}  // namespace quardele::shell
