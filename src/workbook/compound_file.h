// A compound file with one stream, as Excel's workbooks are stored ([MS-CFB] version 3, sectors of 512
// bytes).
#pragma once

#include <ostream>
#include <string_view>

#include <basic/text.h>

namespace quardele::workbook {

/// Writes a compound file whose only stream has a name and content. Streams of less than 4 096 bytes are
/// filled up with zeros to that size: smaller ones would have to be stored in another way.
void WriteCompoundFile(std::ostream& out, basic::TextView streamName, std::string_view stream);

}  // namespace quardele::workbook
