// The values that Edit and AddNew lay out for change.
#pragma once

#include <cstddef>
#include <vector>

#include <dao/field.h>

namespace quardele::dao {

/// One value per field of a recordset, and which of them were set since.
class CopyBuffer {
 public:
    void Fill(std::vector<Variant> values);
    void Clear() { Fill({}); }

    [[nodiscard]] const Variant& Value(std::size_t field) const { return values_[field]; }
    void Set(std::size_t field, Variant value);
    [[nodiscard]] bool IsChanged(std::size_t field) const { return changed_[field]; }

 private:
    std::vector<Variant> values_;
    std::vector<bool> changed_;
};

}  // namespace quardele::dao
