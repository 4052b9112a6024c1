#include "rows/table_steps.h"

#include <utility>

namespace quardele::sql {
namespace {

/// Rows that are read in the order of an index, each from a page of its own, before a scan of the table and a
/// sort of what it finds are the shorter way.
constexpr std::size_t kMostLooked = 1000;

}  // namespace

IndexSteps::IndexSteps(const jet::Table& table, IndexWalk walk, const TableProducer* conditions,
                       const Tables& tables)
    : cursor_(table.OpenIndex(walk.index)),
      index_(walk.index),
      backwards_(walk.backwards),
      conditions_(conditions),
      row_(tables) {}

bool IndexSteps::Advance() {
    if (std::exchange(started_, true)) {
        return backwards_ ? cursor_.Previous() : cursor_.Next();
    }
    return backwards_ ? cursor_.Last() : cursor_.First();
}

std::optional<jet::RowId> IndexSteps::Next() {
    while (!IsLongWay() && Advance()) {
        if (conditions_ == nullptr) {
            return cursor_.Current();
        }
        ++looked_;
        if (conditions_->Accepts(cursor_.Current(), row_)) {
            return cursor_.Current();
        }
    }
    return std::nullopt;
}

std::uint32_t IndexSteps::MarkOf(const jet::KeyMarks& marks) const {
    const jet::Row* read = row_.ReadRow(0);
    return marks.Index() == index_ || read == nullptr ? marks.Of(cursor_, index_) : marks.Of(*read);
}

bool IndexSteps::IsLongWay() const {
    return looked_ >= kMostLooked;
}

ScanSteps::ScanSteps(const jet::Table& table, const TableProducer& conditions, const Tables& tables)
    : scan_(table.Scan()), conditions_(conditions), row_(tables) {}

std::optional<jet::RowId> ScanSteps::Next() {
    while (auto stored = scan_.Next()) {
        const jet::RowId id = stored->Id();
        if (conditions_.Accepts(std::move(*stored), row_)) {
            return id;
        }
    }
    return std::nullopt;
}

std::uint32_t ScanSteps::MarkOf(const jet::KeyMarks& marks) const {
    return marks.Of(*row_.ReadRow(0));
}

}  // namespace quardele::sql
