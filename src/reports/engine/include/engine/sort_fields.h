// The order of a report's records.
#pragma once

#include <vector>

#include <engine/database.h>

namespace quardele::engine {

enum class SortDirection { Ascending = 0, Descending = 1 };

struct SortField {
    QString table;
    QString field;
    SortDirection direction = SortDirection::Ascending;
};

/// Inside the groups, which sort the records first.
class SortFields {
 public:
    [[nodiscard]] int Count() const { return static_cast<int>(fields_.size()); }
    /// Counted from 1; throws RuntimeError 9.
    [[nodiscard]] const SortField& Item(int index) const;
    /// Sorts what is equal so far.
    void Add(const DatabaseField& field, SortDirection direction);
    void Add(SortField field) { fields_.push_back(std::move(field)); }
    [[nodiscard]] const std::vector<SortField>& All() const { return fields_; }

 private:
    std::vector<SortField> fields_;
};

}  // namespace quardele::engine
