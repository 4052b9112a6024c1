#include "modelled_table.h"

#include <algorithm>
#include <optional>

#include <gtest/gtest.h>

#include <basic/runtime_error.h>
#include <jet/collation.h>
#include <sql/default_value.h>

#include "cell_text.h"
#include "random_design.h"

namespace quardele::jet::test {

namespace {

namespace error = basic::error;

bool IsText(const Column& column) {
    return column.type == ColumnType::Text || column.type == ColumnType::Memo;
}

bool IsLong(const Column& column) {
    return column.type == ColumnType::Memo || column.type == ColumnType::Ole;
}

/// Equal for values that are equal to an index; none for Null.
std::optional<std::string> KeyPart(const Column& column, const Variant& value) {
    return IsText(column) && value.IsText() ? SortKey(value.As<Text>()) : ExactText(column, value);
}

/// None when all parts are Null: such a key equals nothing.
using Key = std::vector<std::optional<std::string>>;
std::optional<Key> KeyOf(const std::vector<Column>& columns, const std::vector<int>& parts,
                         const std::vector<Variant>& values) {
    Key key;
    for (const int part : parts) {
        const auto place = static_cast<std::size_t>(part);
        key.push_back(KeyPart(columns[place], values[place]));
    }
    const bool isNull =
        std::none_of(key.begin(), key.end(), [](const auto& part) { return part.has_value(); });
    return isNull ? std::nullopt : std::optional(key);
}

std::vector<int> Parts(const Index& index) {
    std::vector<int> parts;
    for (const IndexColumn& part : index.columns) {
        parts.push_back(part.column);
    }
    return parts;
}

/// The most that a row with these values may take.
std::size_t LargestSize(const std::vector<Column>& columns, const std::vector<Variant>& values) {
    constexpr std::size_t kLongestInline = 76;
    constexpr std::size_t kFixed = 17;
    std::size_t size = 16;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        size += 3;
        if (IsLong(columns[i])) {
            size += kLongestInline;
        } else if (const Variant& value = values[i]; value.IsText()) {
            size += 2 * value.As<Text>().size();
        } else if (value.Is<basic::Binary>()) {
            size += value.As<basic::Binary>().size();
        } else {
            size += kFixed;
        }
    }
    return size;
}

struct Refusal {
    int number = 0;  ///< 0 when there was none
    std::string description;
};

std::ostream& operator<<(std::ostream& out, const Refusal& refusal) {
    return out << "refused with " << refusal.number << ": " << refusal.description;
}

template <class Action>
Refusal RefusalOf(const Action& action) {
    try {
        action();
    } catch (const basic::RuntimeError& error) {
        return {error.Number(), basic::ToUtf8(error.Description())};
    }
    return {};
}

std::vector<Variant> ValuesOf(const Table& table, RowId id) {
    std::vector<Variant> values;
    const auto row = table.Fetch(id);
    for (std::size_t i = 0; i < table.Columns().size(); ++i) {
        values.push_back(row->Value(static_cast<int>(i)));
    }
    return values;
}

/// Of a column that was there before, or for one that is given nothing and has no default that we know.
Variant NoValue(const Column& column) {
    return column.type == ColumnType::Boolean ? Variant(false) : Variant(basic::Null());
}

}  // namespace

ModelledTable::ModelledTable(Database& database, const Text& name)
    : name_(name), table_(database.OpenTable(name)) {
    TakeRows();
    FindLimits();
}

void ModelledTable::TakeRows() {
    rows_.clear();
    RowScan scan = table_->Scan();
    while (const auto id = scan.NextId()) {
        rows_[*id] = std::make_shared<Values>(ValuesOf(*table_, *id));
    }
}

void ModelledTable::SetFixedText(const Text& column) {
    fixedText_ = table_->FindColumn(column);
}

void ModelledTable::FindLimits() {
    constexpr std::size_t kFewColumns = 8;
    const auto& columns = table_->Columns();
    // Half of the text columns are kept fit for an index to come.
    for (std::size_t i = limits_.size(); i < columns.size(); ++i) {
        if (IsText(columns[i]) && rows_.empty() && i % 2 == 0) {
            keyColumns_.insert(static_cast<int>(i));
        }
    }
    hasOwnDefaults_ = std::all_of(columns.begin(), columns.end(), [](const Column& column) {
        return column.defaultValue.empty() || ConstantDefault(column);
    });
    limits_.assign(columns.size(), {});
    for (std::size_t i = 0; i < columns.size(); ++i) {
        limits_[i].longestText = columns.size() > kFewColumns ? 40 : 255;
        limits_[i].keyText = keyColumns_.contains(static_cast<int>(i));
        limits_[i].noNull = columns[i].required;
    }
    for (const Index& index : table_->Indexes()) {
        for (const int part : Parts(index)) {
            ValueLimits& limits = limits_[static_cast<std::size_t>(part)];
            limits.keyText = true;
            limits.noNull = limits.noNull || index.primary || index.required;
        }
    }
}

void ModelledTable::Reopen(Database& database) {
    table_ = database.OpenTable(name_);
    const auto& columns = table_->Columns();
    for (auto& [id, values] : rows_) {
        if (values->size() < columns.size()) {
            auto longer = std::make_shared<Values>(*values);
            while (longer->size() < columns.size()) {
                longer->push_back(NoValue(columns[longer->size()]));
            }
            values = std::move(longer);
        }
    }
    FindLimits();
}

TableContents ModelledTable::Expected() const {
    TableContents contents{.columns = table_->Columns(), .rows = {}};
    for (const auto& [id, values] : rows_) {
        contents.rows.push_back(*values);
    }
    return contents;
}

std::vector<int> ModelledTable::ColumnsForIndexes() const {
    std::vector<int> fit;
    const auto& columns = table_->Columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].type != ColumnType::Ole && (!IsText(columns[i]) || limits_[i].keyText)) {
            fit.push_back(static_cast<int>(i));
        }
    }
    return fit;
}

bool ModelledTable::HasDuplicates(const std::vector<int>& columns) const {
    std::set<Key> keys;
    return std::any_of(rows_.begin(), rows_.end(), [&](const auto& row) {
        const auto key = KeyOf(table_->Columns(), columns, *row.second);
        return key && !keys.insert(*key).second;
    });
}

bool ModelledTable::HasNulls(const std::vector<int>& columns) const {
    return std::any_of(rows_.begin(), rows_.end(), [&](const auto& row) {
        return std::any_of(columns.begin(), columns.end(), [&](int column) {
            return (*row.second)[static_cast<std::size_t>(column)].IsNull();
        });
    });
}

void ModelledTable::Change(Random& random) {
    const int dice = random.Between(1, 100);
    if (rows_.empty() || dice <= 45) {
        Insert(random);
    } else if (dice <= 80) {
        Update(random);
    } else {
        Delete(random);
    }
}

Variant ModelledTable::NewValue(Random& random, int column) const {
    const auto place = static_cast<std::size_t>(column);
    const Column& definition = table_->Columns()[place];
    ValueLimits limits = limits_[place];
    limits.noNull = limits.noNull && !random.Chance(2);
    Variant value = RandomValue(random, definition, limits);
    if (column == fixedText_ && value.IsText()) {
        Text text = value.As<Text>();
        text.resize(static_cast<std::size_t>(definition.size), u'x');
        value = text;
    }
    return value;
}

void ModelledTable::Insert(Random& random) {
    const auto& columns = table_->Columns();
    Values values;
    std::vector<ColumnChange> changes;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        // Now and then a value is missing that must be there.
        const bool given = !columns[i].autoNumber && random.Chance(limits_[i].noNull ? 98 : 90);
        const auto byDefault = hasOwnDefaults_ ? ConstantDefault(columns[i]) : std::nullopt;
        values.push_back(given ? NewValue(random, static_cast<int>(i))
                               : byDefault.value_or(NoValue(columns[i])));
        if (given) {
            changes.push_back({static_cast<int>(i), values.back()});
        }
    }
    if (hasOwnDefaults_) {
        sql::AddDefaults(table_->Home(), *table_, changes);
    }
    const bool mustFail = BreaksRule(values, values, nullptr);
    RowId id;
    if (const Refusal refusal = RefusalOf([&] { id = table_->Insert(changes); }); refusal.number != 0) {
        EXPECT_TRUE(IsJust(refusal.number, values, nullptr)) << "an insert was " << refusal;
        return;
    }
    EXPECT_FALSE(mustFail) << "an insert was not refused";
    TakeAutoNumbers(id, values);
    EXPECT_FALSE(rows_.contains(id));
    rows_[id] = std::make_shared<Values>(std::move(values));
}

void ModelledTable::TakeAutoNumbers(RowId id, Values& values) const {
    const auto& columns = table_->Columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!columns[i].autoNumber) {
            continue;
        }
        values[i] = table_->Fetch(id)->Value(static_cast<int>(i));
        const bool isNew = std::none_of(rows_.begin(), rows_.end(), [&](const auto& row) {
            return ExactText(columns[i], (*row.second)[i]) == ExactText(columns[i], values[i]);
        });
        EXPECT_TRUE(isNew && !values[i].IsNull()) << "an AutoNumber comes a second time";
    }
}

void ModelledTable::Update(Random& random) {
    const RowId id = PickRow(random);
    Values values = *rows_.at(id);
    std::set<int> chosen;
    for (int i = random.Between(1, 4); i > 0; --i) {
        const int column = static_cast<int>(random.Below(values.size()));
        if (!table_->Columns()[static_cast<std::size_t>(column)].autoNumber) {
            chosen.insert(column);
        }
    }
    std::vector<ColumnChange> changes;
    for (const int column : chosen) {
        Variant& value = values[static_cast<std::size_t>(column)];
        value = NewValue(random, column);
        changes.push_back({column, value});
    }
    const bool mustFail = BreaksRule(values, *rows_.at(id), &id);
    if (const Refusal refusal = RefusalOf([&] { table_->Update(id, changes); }); refusal.number != 0) {
        EXPECT_TRUE(IsJust(refusal.number, values, &id)) << "an update was " << refusal;
        return;
    }
    EXPECT_FALSE(mustFail) << "an update was not refused";
    rows_[id] = std::make_shared<Values>(std::move(values));
}

void ModelledTable::Delete(Random& random) {
    const RowId id = PickRow(random);
    if (const Refusal refusal = RefusalOf([&] { table_->Delete(id); }); refusal.number != 0) {
        EXPECT_TRUE(IsJust(refusal.number, *rows_.at(id), &id)) << "a deletion was " << refusal;
        return;
    }
    rows_.erase(id);
}

RowId ModelledTable::PickRow(Random& random) const {
    return std::next(rows_.begin(), static_cast<std::ptrdiff_t>(random.Below(rows_.size())))->first;
}

bool ModelledTable::HasEqualKey(const Values& values, const RowId* changed) const {
    const auto& columns = table_->Columns();
    return std::any_of(table_->Indexes().begin(), table_->Indexes().end(), [&](const Index& index) {
        const auto parts = Parts(index);
        const auto key = KeyOf(columns, parts, values);
        return index.unique && key && std::any_of(rows_.begin(), rows_.end(), [&](const auto& row) {
                   return (changed == nullptr || row.first != *changed) &&
                          KeyOf(columns, parts, *row.second) == key;
               });
    });
}

bool ModelledTable::HasUnknownKey(const Values& values) const {
    return std::any_of(table_->Indexes().begin(), table_->Indexes().end(), [&values](const Index& index) {
        const auto parts = Parts(index);
        return !index.seekable || std::any_of(parts.begin(), parts.end(), [&values](int part) {
            const Variant& value = values[static_cast<std::size_t>(part)];
            return value.IsText() && !HasSortKey(value.As<Text>());
        });
    });
}

bool ModelledTable::HasForbiddenNull(const Values& values) const {
    const auto& columns = table_->Columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].required && !columns[i].autoNumber && values[i].IsNull()) {
            return true;
        }
    }
    return HasNullInKey(values);
}

bool ModelledTable::HasNullInKey(const Values& values) const {
    const auto& columns = table_->Columns();
    return std::any_of(table_->Indexes().begin(), table_->Indexes().end(), [&](const Index& index) {
        const auto parts = Parts(index);
        return (index.primary || index.required) && std::any_of(parts.begin(), parts.end(), [&](int part) {
                   const auto place = static_cast<std::size_t>(part);
                   return !columns[place].autoNumber && values[place].IsNull();
               });
    });
}

bool ModelledTable::HasForbiddenEmptyText(const Values& values) const {
    const auto& columns = table_->Columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!columns[i].allowZeroLength && values[i].IsText() && values[i].As<Text>().empty()) {
            return true;
        }
    }
    return false;
}

// What is there already is not looked at again: a column that was added may have Null whatever its rules.
bool ModelledTable::BreaksRule(const Values& values, const Values& before, const RowId* changed) const {
    if (changed == nullptr) {
        return HasForbiddenNull(values) || HasForbiddenEmptyText(values) || HasEqualKey(values, nullptr);
    }
    return (HasForbiddenNull(values) && !HasForbiddenNull(before)) ||
           (HasForbiddenEmptyText(values) && !HasForbiddenEmptyText(before)) ||
           (HasEqualKey(values, changed) && !HasEqualKey(before, changed));
}

bool ModelledTable::IsJust(int error, const Values& values, const RowId* changed) const {
    constexpr std::size_t kLargestRow = 4060;
    constexpr int kParentNeedsRow = 3200;
    constexpr int kNoParentRow = 3201;
    const auto& columns = table_->Columns();
    switch (error) {
        case error::kDuplicateKey:
            return HasEqualKey(values, changed);
        case error::kRecordTooLarge:
            return LargestSize(columns, values) > kLargestRow;
        case error::kOperationNotSupported:
            return relationships_ || HasUnknownKey(values) ||
                   (changed != nullptr && HasUnknownKey(*rows_.at(*changed)));
        case error::kEmptyText:
            return HasForbiddenEmptyText(values);
        case error::kNullRequired:
        case error::kNullInPrimaryKey:
            return HasForbiddenNull(values);
        case kParentNeedsRow:
        case kNoParentRow:
            return relationships_;
        default:
            return false;
    }
}

}  // namespace quardele::jet::test
