#include <engine/sort_fields.h>

namespace quardele::engine {

const SortField& SortFields::Item(int index) const {
    if (index < 1 || index > Count()) {
        throw basic::RuntimeError(basic::error::kSubscript);
    }
    return fields_[static_cast<std::size_t>(index) - 1];
}

void SortFields::Add(const DatabaseField& field, SortDirection direction) {
    fields_.push_back({field.TableName(), field.Name(), direction});
}

}  // namespace quardele::engine
