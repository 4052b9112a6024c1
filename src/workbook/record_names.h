// Identifiers of the BIFF8 records that a workbook of ours has ([MS-XLS] 2.3).
#pragma once

#include <cstdint>

namespace quardele::workbook::record {

inline constexpr std::uint16_t kEnd = 0x000A;
inline constexpr std::uint16_t kSelection = 0x001D;
inline constexpr std::uint16_t kDateSystem = 0x0022;
inline constexpr std::uint16_t kFont = 0x0031;
inline constexpr std::uint16_t kContinue = 0x003C;
inline constexpr std::uint16_t kWorkbookWindow = 0x003D;
inline constexpr std::uint16_t kPane = 0x0041;
inline constexpr std::uint16_t kCodePage = 0x0042;
inline constexpr std::uint16_t kDefaultColumnWidth = 0x0055;
inline constexpr std::uint16_t kColumns = 0x007D;
inline constexpr std::uint16_t kSheet = 0x0085;
inline constexpr std::uint16_t kCellFormat = 0x00E0;
inline constexpr std::uint16_t kSharedTexts = 0x00FC;
inline constexpr std::uint16_t kSharedText = 0x00FD;
inline constexpr std::uint16_t kSharedTextsIndex = 0x00FF;
inline constexpr std::uint16_t kDimensions = 0x0200;
inline constexpr std::uint16_t kNumber = 0x0203;
inline constexpr std::uint16_t kErrorValue = 0x0205;
inline constexpr std::uint16_t kRow = 0x0208;
inline constexpr std::uint16_t kDefaultRowHeight = 0x0225;
inline constexpr std::uint16_t kSheetWindow = 0x023E;
inline constexpr std::uint16_t kShortNumber = 0x027E;
inline constexpr std::uint16_t kStyle = 0x0293;
inline constexpr std::uint16_t kNumberFormat = 0x041E;
inline constexpr std::uint16_t kStart = 0x0809;

}  // namespace quardele::workbook::record
