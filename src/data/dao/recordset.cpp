#include <dao/recordset.h>

#include <algorithm>

#include <basic/runtime_error.h>

namespace quardele::dao {

Recordset::~Recordset() = default;

int Recordset::FieldIndex(TextView name) const {
    const int index = FindField(name);
    if (index < 0) {
        throw basic::RuntimeError(basic::error::kNoSuchField,
                                  basic::Describe(basic::error::kNoSuchField, name));
    }
    return index;
}

const Field& Recordset::FieldNamed(TextView name) const {
    return Fields()[static_cast<std::size_t>(FieldIndex(name))];
}

int Recordset::FindField(TextView name) const {
    const auto& fields = Fields();
    const auto found = std::find_if(fields.begin(), fields.end(), [name](const Field& field) {
        return basic::EqualNoCase(field.name, name);
    });
    return found == fields.end() ? -1 : static_cast<int>(found - fields.begin());
}

}  // namespace quardele::dao
