#include "check/check_long_values.h"

#include <algorithm>

#include "check/check_maps.h"
#include "check/check_rows.h"
#include "pages/data_page.h"
#include "rows/long_value.h"
#include "rows/text_codec.h"

namespace quardele::jet {

LongValuesCheck::LongValuesCheck(CheckContext& context, CheckPlace place, const StoredColumn& column)
    : context_(context),
      place_(std::move(place)),
      column_(column),
      ownedPages_(CheckMap(context, column.ownedMap, place_)),
      taken_(std::make_unique<SlotMarks>(ownedPages_)) {
    CheckPages();
    for (const std::uint32_t page : CheckMap(context, column.freeMap, place_)) {
        if (!taken_->Contains(page)) {
            context.report.Add(FaultCode::RoomForeign, place_, page);
        }
    }
}

void LongValuesCheck::CheckPages() {
    const std::uint32_t owner = context_.ledger.AddOwner(place_);
    for (const std::uint32_t number : ownedPages_) {
        context_.ledger.Claim(number, owner);
        context_.report.Guard(FaultCode::Damaged, place_, number, [&] {
            const PagePtr page = context_.pages.Read(number);
            if (page->Type() != PageType::Data ||
                page->View().U32(context_.pages.Layout().data.owner) != long_value::kOwner) {
                context_.report.Add(FaultCode::PageForeign, place_, number);
            } else {
                CheckSlots(context_, place_, *page);
            }
        });
        context_.pageDone();
    }
}

void LongValuesCheck::Check(const ByteView& field) {
    if (field.IsEmpty()) {
        return;
    }
    try {
        CheckPieces(field);
        const ByteString data = ReadLongValue(context_.pages, field);
        if (column_.IsText() && !IsWholeText({data, field.Page()}, context_.pages.Layout())) {
            context_.report.Add(FaultCode::Value, place_, field.Page());
        }
    } catch (const basic::RuntimeError& error) {
        const bool isGone = error.Number() == basic::error::kRecordChanged;
        context_.report.Add(FaultCode::LongValue, place_, field.Page(),
                            isGone ? u"un morceau est supprimé" : error.Description());
    }
}

void LongValuesCheck::CheckPieces(const ByteView& field) {
    for (const RowPointer piece : PiecesOf(context_.pages, LongValueDescriptor::Load(field))) {
        if (!taken_->Contains(piece.page)) {
            context_.report.Add(FaultCode::LongValuePlace, place_, piece.page, NumberText(piece.slot));
        } else if (!taken_->Mark(piece)) {
            context_.report.Add(FaultCode::LongValueTwice, place_, piece.page, NumberText(piece.slot));
        }
    }
}

void LongValuesCheck::ReportOrphans() {
    CheckReport unheard;
    std::uint64_t orphans = 0;
    std::uint32_t firstPage = 0;
    for (const std::uint32_t number : ownedPages_) {
        unheard.Guard(FaultCode::Damaged, place_, number, [&] {
            const PagePtr page = context_.pages.Read(number);
            const DataPage slots(*page, context_.pages.Layout());
            for (int i = 0; i < slots.SlotCount(); ++i) {
                if (slots.Flags(i) != slot::kDeleted &&
                    !taken_->IsMarked({number, static_cast<std::uint8_t>(i)})) {
                    firstPage = orphans++ == 0 ? number : firstPage;
                }
            }
        });
    }
    if (orphans > 0) {
        context_.report.Add(FaultCode::LongValueOrphan, place_, firstPage, NumberText(orphans));
    }
}

}  // namespace quardele::jet
