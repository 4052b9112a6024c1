// The first part of a workbook: fonts, formats, the names of the sheets, the texts of all cells.
#pragma once

#include <cstdint>

#include <basic/text.h>

#include "records.h"
#include "shared_texts.h"

namespace quardele::workbook {

/// The formats of cells by their numbers in the file.
enum class CellLook : std::uint16_t { Plain = 15, Heading, Day, DayAndTime };

/// Which part of a workbook starts.
enum class Part : std::uint16_t { Globals = 0x0005, Sheet = 0x0010 };

void PutStart(Records& out, Part part);
/// The whole part of a workbook with one sheet, which comes right behind it.
void PutGlobals(Records& out, basic::TextView sheetName, const SharedTexts& texts);

}  // namespace quardele::workbook
