#include <jet/table.h>

#include <algorithm>

#include "table_impl.h"

namespace quardele::jet {

namespace {

constexpr TextView kPrimaryKeyName = u"PrimaryKey";

}  // namespace

Table::Table(std::unique_ptr<TableImpl> impl) : impl_(std::move(impl)) {}

Table::~Table() = default;

const Text& Table::Name() const {
    return impl_->Name();
}

Database& Table::Home() const {
    return impl_->Home();
}

const std::vector<Column>& Table::Columns() const {
    return impl_->Def().columns;
}

const std::vector<Index>& Table::Indexes() const {
    return impl_->Def().indexes;
}

int Table::FindColumn(TextView name) const {
    return impl_->Def().FindColumn(name);
}

int Table::FindIndex(TextView name) const {
    const std::vector<Index>& indexes = Indexes();
    auto found = std::find_if(indexes.begin(), indexes.end(),
                              [name](const Index& index) { return basic::EqualNoCase(index.name, name); });
    if (found == indexes.end() && basic::EqualNoCase(name, kPrimaryKeyName)) {
        found =
            std::find_if(indexes.begin(), indexes.end(), [](const Index& index) { return index.primary; });
    }
    return found == indexes.end() ? -1 : static_cast<int>(found - indexes.begin());
}

std::size_t Table::RowCount() const {
    return impl_->RowCount();
}

RowScan Table::Scan() const {
    return impl_->Scan();
}

std::optional<Row> Table::Fetch(RowId id) const {
    return impl_->Fetch(id);
}

void Table::Update(RowId id, std::span<const ColumnChange> changes) {
    impl_->Update(id, changes);
}

RowId Table::Insert(std::span<const ColumnChange> values) {
    return impl_->Insert(values);
}

Variant Table::TakeAutoValue(int column) {
    return impl_->TakeAutoValue(column);
}

void Table::Delete(RowId id) {
    impl_->Delete(id);
}

}  // namespace quardele::jet
