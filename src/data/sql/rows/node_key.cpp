#include "rows/node_key.h"

#include "rows/sort_key.h"

namespace quardele::sql {

void NodeKeys::Append(std::string& key, const Node& node, RowContext& row, bool descending) {
    const std::size_t start = key.size();
    if (!AppendUnlessNull(key, node, row)) {
        AppendSortKey(key, basic::Null());
    }
    if (descending) {
        InvertKey(key, start);
    }
}

bool NodeKeys::AppendUnlessNull(std::string& key, const Node& node, RowContext& row) {
    if (ClassOf(node.Type()) == TypeClass::Texts) {
        const auto text = node.Characters(row, buffer_);
        if (text) {
            AppendTextKey(key, *text);
        }
        return text.has_value();
    }
    Variant scratch;
    const Variant& value = node.Peek(row, scratch);
    if (!value.IsNull()) {
        AppendSortKey(key, value);
    }
    return !value.IsNull();
}

}  // namespace quardele::sql
