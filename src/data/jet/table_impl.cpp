#include "table_impl.h"

#include <basic/runtime_error.h>

#include "data_page.h"
#include "row_delete.h"
#include "row_insert.h"
#include "row_lock_held.h"
#include "row_update.h"
#include "usage_map.h"
#include "write_step.h"

namespace quardele::jet {

TableImpl::TableImpl(Engine& engine, std::shared_ptr<Database> database, Text name, TableDef def)
    : engine_(engine), database_(std::move(database)), name_(std::move(name)), def_(std::move(def)) {}

PageList TableImpl::DataPages() const {
    if (!dataPages_ || dataPagesGeneration_ != engine_.Pages().Generation()) {
        dataPagesGeneration_ = engine_.Pages().Generation();
        dataPages_ = std::make_shared<std::vector<std::uint32_t>>(ReadUsageMap(Pages(), def_.ownedMap));
    }
    return dataPages_;
}

std::size_t TableImpl::RowCount() const {
    return Pages().Read(def_.page)->View().U32(Layout().def.rowCount);
}

RowScan TableImpl::Scan() const {
    return RowScan(this);
}

std::optional<Row> TableImpl::Fetch(RowId id) const {
    const PagePtr page = Pages().Read(id.page);
    const DataPage slots(*page, Layout());
    if (slots.Owner() != def_.page || id.slot >= slots.SlotCount()) {
        ThrowDamaged(id.page, u"ligne inexistante");
    }
    return RowAt(page, id.slot);
}

std::optional<Row> TableImpl::RowAt(const PagePtr& page, int slotNumber) const {
    const DataPage slots(*page, Layout());
    const std::uint16_t flags = slots.Flags(slotNumber);
    if ((flags & slot::kHidden) != 0) {
        return std::nullopt;
    }
    const RowId id{page->number, static_cast<std::uint8_t>(slotNumber)};
    const ByteView bytes = slots.Row(slotNumber);
    return flags == slot::kMoved ? Moved(id, bytes) : Row(this, id, page, bytes.Span());
}

Row TableImpl::Moved(RowId id, const ByteView& pointer) const {
    RowBytes target = ReadRow(Pages(), LoadRowPointer(pointer, 0));
    if (DataPage(*target.page, Layout()).Owner() != def_.page) {
        ThrowDamaged(id.page, u"ligne déplacée hors de sa table");
    }
    return {this, id, std::move(target.page), target.bytes.Span()};
}

void TableImpl::Update(RowId id, std::span<const ColumnChange> changes) {
    const RowLock lock = LockToChange(engine_, id);
    WriteStep step(engine_);
    CheckStructure(step.Pages());
    RowUpdate(step.Pages(), def_).Run(id, changes);
    step.Commit();
}

RowId TableImpl::Insert(std::span<const ColumnChange> values) {
    WriteStep step(engine_);
    CheckStructure(step.Pages());
    const RowId id = RowInsert(step.Pages(), def_).Run(values);
    step.Commit();
    return id;
}

void TableImpl::Delete(RowId id) {
    const RowLock lock = LockToChange(engine_, id);
    WriteStep step(engine_);
    CheckStructure(step.Pages());
    RowDelete(step.Pages(), def_).Run(id);
    step.Commit();
}

void TableImpl::CheckStructure(const PageSource& pages) const {
    if (!TableDef::Read(pages, def_.page).HasSameStructure(def_, Layout())) {
        throw basic::RuntimeError(basic::error::kRecordChanged,
                                  u"La structure de la table a été modifiée par un autre utilisateur.");
    }
}

RowScan::RowScan(const TableImpl* table) : table_(table), pages_(table->DataPages()) {}

bool RowScan::Advance() {
    if (nextPage_ == pages_->size()) {
        return false;
    }
    page_ = table_->Pages().Read((*pages_)[nextPage_++]);
    const DataPage slots(*page_, table_->Layout());
    if (slots.Owner() != table_->Def().page) {
        ThrowDamaged(page_->number, u"page d'une autre table");
    }
    slot_ = 0;
    slotCount_ = slots.SlotCount();
    return true;
}

std::optional<Row> RowScan::Next() {
    do {
        while (slot_ < slotCount_) {
            if (auto row = table_->RowAt(page_, slot_++)) {
                return row;
            }
        }
    } while (Advance());
    return std::nullopt;
}

std::optional<RowId> RowScan::NextId() {
    do {
        while (slot_ < slotCount_) {
            const int slotNumber = slot_++;
            if ((DataPage(*page_, table_->Layout()).Flags(slotNumber) & slot::kHidden) == 0) {
                return RowId{page_->number, static_cast<std::uint8_t>(slotNumber)};
            }
        }
    } while (Advance());
    return std::nullopt;
}

}  // namespace quardele::jet
