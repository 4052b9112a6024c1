#include "globals.h"

#include "record_names.h"

namespace quardele::workbook {

namespace {

constexpr std::uint16_t kVersion = 0x0600;
constexpr std::uint16_t kUtf16 = 1200;
constexpr std::uint16_t kNormalWeight = 400;
constexpr std::uint16_t kBoldWeight = 700;
constexpr int kStyleFormats = 15;
/// Fonts are counted without number 4, so that the fifth one has number 5.
constexpr std::uint16_t kPlainFont = 0;
constexpr std::uint16_t kHeadingFont = 5;
/// Numbers below 164 belong to formats that every Excel has.
constexpr std::uint16_t kGeneral = 0;
constexpr std::uint16_t kDayFormat = 164;
constexpr std::uint16_t kDayAndTimeFormat = 165;

void PutFont(Records& out, std::uint16_t weight) {
    out.Begin(record::kFont);
    out.PutShort(200);     // height in twips
    out.PutShort(0);       // neither italic nor struck out
    out.PutShort(0x7FFF);  // the window's text colour
    out.PutShort(weight);
    out.PutShort(0);  // neither raised nor lowered
    out.PutByte(0);   // not underlined
    out.PutByte(2);   // family: without serifs
    out.PutByte(0);
    out.PutByte(0);
    constexpr basic::TextView kName = u"Arial";
    out.PutByte(static_cast<std::uint8_t>(kName.size()));
    out.PutUnits(kName);
}

void PutNumberFormat(Records& out, std::uint16_t number, basic::TextView pattern) {
    out.Begin(record::kNumberFormat);
    out.PutShort(number);
    out.PutShort(static_cast<std::uint16_t>(pattern.size()));
    out.PutUnits(pattern);
}

struct Format {
    std::uint16_t font = kPlainFont;
    std::uint16_t number = kGeneral;
    bool style = false;
    /// Attributes that differ from the style's: 4 number format, 8 font, 32 border.
    std::uint8_t own = 0;
    /// A thin line below.
    bool line = false;
};

void PutCellFormat(Records& out, const Format& format) {
    constexpr std::uint16_t kStyleWithoutParent = 0xFFF5;
    constexpr std::uint16_t kLockedCell = 0x0001;
    constexpr std::uint16_t kSystemColours = 0x20C0;
    out.Begin(record::kCellFormat);
    out.PutShort(format.font);
    out.PutShort(format.number);
    out.PutShort(format.style ? kStyleWithoutParent : kLockedCell);
    out.PutByte(0x20);  // at the bottom of the cell
    out.PutByte(0);
    out.PutByte(0);
    out.PutByte(format.own);
    out.PutLong(format.line ? 0x1000 : 0);
    out.PutLong(format.line ? 0x40 << 7 : 0);
    out.PutShort(kSystemColours);
}

void PutCellFormats(Records& out) {
    PutCellFormat(out, {.style = true});
    for (int style = 1; style < kStyleFormats; ++style) {
        PutCellFormat(out, {.style = true, .own = 0xF4});
    }
    // In the order of CellLook.
    PutCellFormat(out, {});
    PutCellFormat(out, {.font = kHeadingFont, .own = 8 | 32, .line = true});
    PutCellFormat(out, {.number = kDayFormat, .own = 4});
    PutCellFormat(out, {.number = kDayAndTimeFormat, .own = 4});
    out.Begin(record::kStyle);
    out.PutShort(0x8000);  // format 0 is a style of Excel's own,
    out.PutByte(0);        // the one called Normal
    out.PutByte(0xFF);
}

void PutWindow(Records& out) {
    out.Begin(record::kWorkbookWindow);
    out.PutShort(0);  // place and size in twips
    out.PutShort(0);
    out.PutShort(0x4000);
    out.PutShort(0x2000);
    out.PutShort(0x0038);  // scroll bars and the names of the sheets
    out.PutShort(0);       // the sheet in view, the first name shown, one sheet selected
    out.PutShort(0);
    out.PutShort(1);
    out.PutShort(600);
}

/// Returns where the place of the sheet is to be filled in.
std::size_t PutSheetName(Records& out, basic::TextView name) {
    out.Begin(record::kSheet);
    const std::size_t place = out.Size();
    out.PutLong(0);
    out.PutShort(0);  // a visible work sheet
    out.PutByte(static_cast<std::uint8_t>(name.size()));
    out.PutUnits(name);
    return place;
}

}  // namespace

void PutStart(Records& out, Part part) {
    out.Begin(record::kStart);
    out.PutShort(kVersion);
    out.PutShort(static_cast<std::uint16_t>(part));
    out.PutShort(0x0DBB);  // build and year of the first Excel that reads this
    out.PutShort(1996);
    out.PutLong(0);
    out.PutLong(6);
}

void PutGlobals(Records& out, basic::TextView sheetName, const SharedTexts& texts) {
    PutStart(out, Part::Globals);
    out.Begin(record::kCodePage);
    out.PutShort(kUtf16);
    PutWindow(out);
    out.Begin(record::kDateSystem);
    out.PutShort(0);  // days count from 1900
    for (int font = 0; font < 4; ++font) {
        PutFont(out, kNormalWeight);
    }
    PutFont(out, kBoldWeight);
    PutNumberFormat(out, kDayFormat, u"dd/mm/yyyy");
    PutNumberFormat(out, kDayAndTimeFormat, u"dd/mm/yyyy hh:mm:ss");
    PutCellFormats(out);
    const std::size_t place = PutSheetName(out, sheetName);
    texts.Put(out);
    out.Begin(record::kEnd);
    out.End();
    out.PatchLong(place, static_cast<std::uint32_t>(out.Size()));
}

}  // namespace quardele::workbook
