#include "table_impl.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "commit/write_step.h"
#include "definitions/auto_value.h"
#include "locks/row_lock_held.h"
#include "pages/data_page.h"
#include "pages/usage_map.h"
#include "rows/row_delete.h"
#include "rows/row_insert.h"
#include "rows/row_update.h"
#include "rows/value_codec.h"

namespace quardele::jet {

TableImpl::TableImpl(Engine& engine, std::shared_ptr<Database> database, Text name, TableDef def)
    : engine_(engine), database_(std::move(database)), name_(std::move(name)), def_(std::move(def)) {
    if (database_ != nullptr) {
        use_.emplace(engine_, def_.page);
    }
}

PageList TableImpl::DataPages() const {
    if (!dataPages_ || dataPagesGeneration_ != engine_.Pages().Generation()) {
        dataPages_ = engine_.Reading([this] {
            return std::make_shared<std::vector<std::uint32_t>>(ReadUsageMap(Pages(), def_.ownedMap));
        });
        dataPagesGeneration_ = engine_.Pages().Generation();
    }
    return dataPages_;
}

std::size_t TableImpl::RowCount() const {
    return engine_.Reading([this] { return Pages().Read(def_.page)->View().U32(Layout().def.rowCount); });
}

RowScan TableImpl::Scan() const {
    return RowScan(this);
}

std::optional<Row> TableImpl::Fetch(RowId id) const {
    return engine_.Reading([&]() -> std::optional<Row> {
        const PagePtr page = Pages().Read(id.page);
        return HasSlot(*page, id.slot) ? RowAt(page, id.slot) : std::nullopt;
    });
}

bool TableImpl::HasSlot(const Page& page, int slotNumber) const {
    if (page.Type() != PageType::Data) {
        return false;
    }
    const DataPage slots(page, Layout());
    return slots.Owner() == def_.page && slotNumber < slots.SlotCount();
}

std::optional<Row> TableImpl::RowAt(const PagePtr& page, int slotNumber) const {
    Row row(this, {}, nullptr, {});
    return RowAt(page, slotNumber, row) ? std::optional(std::move(row)) : std::nullopt;
}

bool TableImpl::RowAt(const PagePtr& page, int slotNumber, Row& row) const {
    const DataPage slots(*page, Layout());
    const std::uint16_t flags = slots.Flags(slotNumber);
    if ((flags & slot::kHidden) != 0) {
        return false;
    }
    const RowId id{page->number, static_cast<std::uint8_t>(slotNumber)};
    const ByteView bytes = slots.Row(slotNumber);
    if (flags == slot::kMoved) {
        row = Moved(id, bytes);
        return true;
    }
    if (row.page_ != page) {
        row.page_ = page;
    }
    row.id_ = id;
    row.bytes_ = bytes.Span();
    row.shape_ = {};
    return true;
}

Row TableImpl::Moved(RowId id, const ByteView& pointer) const {
    RowBytes target = ReadRow(Pages(), LoadRowPointer(pointer, 0));
    if (DataPage(*target.page, Layout()).Owner() != def_.page) {
        ThrowDamaged(id.page, u"ligne déplacée hors de sa table");
    }
    return {this, id, std::move(target.page), target.bytes.Span()};
}

// Within an open step a change is no part of its own: that would cost a copy of every page it touches, to
// undo what it never does unless something breaks.
template <class Change>
RowId TableImpl::Changed(const Change& change) {
    if (engine_.openStep != nullptr) {
        Transaction& pages = engine_.openStep->Pages();
        CheckStructure(pages);
        return pages.AsOne([&] { return change(pages); });
    }
    WriteStep step(engine_);
    CheckStructure(step.Pages());
    const RowId id = change(step.Pages());
    step.Commit();
    return id;
}

void TableImpl::Update(RowId id, std::span<const ColumnChange> changes) {
    const RowLock lock = LockToChange(engine_, id);
    Changed([&](Transaction& pages) {
        RowUpdate(pages, def_).Run(id, changes);
        return id;
    });
}

RowId TableImpl::Insert(std::span<const ColumnChange> values) {
    return Changed([&](Transaction& pages) { return RowInsert(pages, def_).Run(values); });
}

Variant TableImpl::TakeAutoValue(int column) {
    const auto ordinal = static_cast<std::size_t>(column);
    Variant taken;
    Changed([&](Transaction& pages) {
        TableCounters counters(pages, def_.page);
        const ByteString bytes = NextAutoValue(def_.columns.at(ordinal), counters);
        NoteAutoValue(def_.columns[ordinal], bytes, counters);
        taken = DecodeValue(def_.stored[ordinal], ByteView(bytes, def_.page), Layout());
        return RowId{};
    });
    return taken;
}

void TableImpl::Delete(RowId id) {
    const RowLock lock = LockToChange(engine_, id);
    Changed([&](Transaction& pages) {
        RowDelete(pages, def_).Run(id);
        return id;
    });
}

void TableImpl::CheckStructure(const PageSource& pages) const {
    if (!def_.IsCurrent(pages)) {
        throw basic::RuntimeError(basic::error::kRecordChanged,
                                  u"La structure de la table a été modifiée par un autre utilisateur.");
    }
}

RowScan::RowScan(const TableImpl* table)
    : table_(table), pages_(table->DataPages()), listed_(table->Pages().Generation()) {}

// Looks at the first of some pages of the list. It may have left the table since the list was made, with all
// its rows; in a list that is of now, it would have no business there.
void RowScan::Look(std::span<const std::uint32_t> pages) {
    PagePtr page = table_->Pages().ReadFirst(pages);
    const bool ofTable = table_->HasSlot(*page, 0);
    if (!ofTable && listed_ == table_->Pages().Generation() &&
        DataPage(*page, table_->Layout()).Owner() != table_->Def().page) {
        ThrowDamaged(page->number, u"page d'une autre table");
    }
    slotCount_ = ofTable ? DataPage(*page, table_->Layout()).SlotCount() : 0;
    page_ = std::move(page);
    picture_ = table_->Owner().Cache().PictureNumber();
}

// Rows that have moved are found through the page as it is now: what others have written since counts.
void RowScan::LookAgain() {
    if (page_ != nullptr && picture_ != table_->Owner().Cache().PictureNumber()) {
        Look({&page_->number, 1});
    }
}

// A scan that goes on reads further and further ahead; one that wants a few rows only reads little.
bool RowScan::Advance() {
    if (nextPage_ == pages_->size()) {
        return false;
    }
    const auto rest = std::span(*pages_).subspan(nextPage_);
    Look(rest.first(std::min(ahead_, rest.size())));
    ahead_ = std::min(ahead_ * 2, pages_->size());
    ++nextPage_;
    slot_ = 0;
    return true;
}

std::optional<Row> RowScan::Next() {
    return table_->Owner().Reading([this]() -> std::optional<Row> {
        LookAgain();
        do {
            for (; slot_ < slotCount_; ++slot_) {
                if (auto row = table_->RowAt(page_, slot_)) {
                    ++slot_;
                    return row;
                }
            }
        } while (Advance());
        return std::nullopt;
    });
}

bool RowScan::Next(Row& row) {
    return table_->Owner().Reading([&] {
        LookAgain();
        do {
            for (; slot_ < slotCount_; ++slot_) {
                if (table_->RowAt(page_, slot_, row)) {
                    ++slot_;
                    return true;
                }
            }
        } while (Advance());
        return false;
    });
}

std::optional<RowId> RowScan::NextId() {
    return table_->Owner().Reading([this]() -> std::optional<RowId> {
        LookAgain();
        do {
            while (slot_ < slotCount_) {
                const int slotNumber = slot_++;
                if ((DataPage(*page_, table_->Layout()).Flags(slotNumber) & slot::kHidden) == 0) {
                    return RowId{page_->number, static_cast<std::uint8_t>(slotNumber)};
                }
            }
        } while (Advance());
        return std::nullopt;
    });
}

}  // namespace quardele::jet
