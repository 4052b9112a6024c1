#include "row_writer.h"

#include <utility>

namespace quardele::workshop {

namespace {

constexpr int kRowsOfAStep = 40'000;

}  // namespace

RowWriter::RowWriter(std::shared_ptr<jet::Database> database, jet::TextView table)
    : database_(std::move(database)), table_(database_->OpenTable(table)) {}

void RowWriter::Add(std::vector<jet::Variant> values) {
    if (!step_) {
        step_ = database_->Begin();
    }
    row_.clear();
    int column = 0;
    for (jet::Variant& value : values) {
        if (!value.IsEmpty()) {
            row_.push_back({column, std::move(value)});
        }
        ++column;
    }
    table_->Insert(row_);
    if (++inStep_ == kRowsOfAStep) {
        Finish();
    }
}

void RowWriter::Finish() {
    if (step_) {
        step_->Commit();
        step_.reset();
    }
    inStep_ = 0;
}

}  // namespace quardele::workshop
