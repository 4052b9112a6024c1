#include "workload.h"

#include <algorithm>

#include <gtest/gtest.h>

#include <basic/runtime_error.h>

#include "random_design.h"

namespace quardele::jet::test {

namespace {

Text Numbered(basic::TextView stem, int number) {
    return Text(stem) + basic::FromUtf8(std::to_string(number));
}

}  // namespace

Workload::Workload(std::shared_ptr<Database> database, Random& random)
    : database_(std::move(database)), random_(random) {
    for (const CatalogEntry& entry : database_->Catalog()) {
        if (!entry.system && !entry.linked) {
            tables_.emplace_back(*database_, entry.name);
        }
    }
}

void Workload::Close() {
    for (ModelledTable& table : tables_) {
        table.Close();
    }
    database_.reset();
}

void Workload::Reopen(std::shared_ptr<Database> database) {
    database_ = std::move(database);
    for (ModelledTable& table : tables_) {
        table.Reopen(*database_);
    }
}

void Workload::FollowRelationships() {
    relationships_ = true;
    for (ModelledTable& table : tables_) {
        table.FollowRelationships();
    }
}

void Workload::SetFixedText(const Text& column) {
    for (ModelledTable& table : tables_) {
        table.SetFixedText(column);
    }
}

void Workload::ChangeRow() {
    tables_[random_.Below(tables_.size())].Change(random_);
    for (std::size_t i = 0; relationships_ && i < tables_.size(); ++i) {
        tables_[i].TakeRows();
    }
}

Contents Workload::Expected() const {
    Contents contents;
    for (const ModelledTable& table : tables_) {
        contents[table.Name()] = table.Expected();
    }
    return contents;
}

void Workload::ChangeRows(int count) {
    while (count > 0 && !tables_.empty()) {
        const int part = std::min(count, random_.Chance(50) ? 1 : random_.Between(2, 120));
        OneStep(part);
        count -= part;
    }
}

void Workload::OneStep(int count) {
    std::vector<ModelledTable::Rows> before;
    for (const ModelledTable& table : tables_) {
        before.push_back(table.ExpectedRows());
    }
    Step step = database_->Begin();
    for (int i = 0; i < count; ++i) {
        ChangeRow();
    }
    if (random_.Chance(80)) {
        step.Commit();
        return;
    }
    for (std::size_t i = 0; i < tables_.size(); ++i) {
        tables_[i].SetExpectedRows(std::move(before[i]));
    }
}

std::string Workload::CreateTable() {
    const Text name =
        Numbered(random_.Pick(std::array<basic::TextView, 2>{u"Table ", u"Réglages_"}), ++named_);
    database_->CreateTable(RandomDesign(random_, name));
    tables_.emplace_back(*database_, name);
    for (int indexes = random_.Between(0, 3); indexes > 0; --indexes) {
        CreateIndex(tables_.back());
    }
    return "made " + basic::ToUtf8(name);
}

std::string Workload::ChangeStructure() {
    constexpr std::size_t kManyTables = 4;
    const std::size_t place = tables_.empty() ? 0 : random_.Below(tables_.size());
    const int dice = random_.Between(1, 100);
    if (tables_.empty() || dice <= 25) {
        return CreateTable();
    }
    if (dice <= 60) {
        return AddColumn(tables_[place]);
    }
    if (dice <= 90 || tables_.size() < kManyTables) {
        return CreateIndex(tables_[place]);
    }
    return DropTable(place);
}

std::string Workload::AddColumn(ModelledTable& table) {
    database_->AddColumn(table.Name(), RandomColumn(random_, Numbered(u"Ajout_", ++named_)));
    table.Reopen(*database_);
    return "added a column to " + basic::ToUtf8(table.Name());
}

std::string Workload::CreateIndex(ModelledTable& table) {
    std::vector<Column> columns;
    for (const int column : table.ColumnsForIndexes()) {
        columns.push_back(table.Opened().Columns()[static_cast<std::size_t>(column)]);
    }
    if (columns.empty()) {
        return "made no index on " + basic::ToUtf8(table.Name());
    }
    const IndexDesign design = RandomIndex(random_, Numbered(u"Index", ++named_), columns);
    std::vector<int> parts;
    for (const IndexPart& part : design.columns) {
        parts.push_back(table.Opened().FindColumn(part.column));
    }
    try {
        database_->CreateIndex(table.Name(), design);
        EXPECT_FALSE(design.unique && table.HasDuplicates(parts)) << "a unique index over duplicates";
        EXPECT_FALSE(design.required && table.HasNulls(parts)) << "a required index over Nulls";
    } catch (const basic::RuntimeError& error) {
        const bool isJust = error.Number() == basic::error::kDuplicateKey
                                ? design.unique && table.HasDuplicates(parts)
                                : error.Number() == basic::error::kNullInPrimaryKey && design.required &&
                                      table.HasNulls(parts);
        EXPECT_TRUE(isJust) << error.what();
    }
    table.Reopen(*database_);
    return "made an index on " + basic::ToUtf8(table.Name());
}

std::string Workload::DropTable(std::size_t place) {
    const Text name = tables_[place].Name();
    tables_.erase(tables_.begin() + static_cast<std::ptrdiff_t>(place));
    database_->DropTable(name);
    return "dropped " + basic::ToUtf8(name);
}

}  // namespace quardele::jet::test
