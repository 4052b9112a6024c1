#include "default_value.h"

#include <sql/query.h>

#include "field_value.h"

namespace quardele::dao {

Variant DefaultOf(const std::shared_ptr<jet::Database>& file, const Field& field) {
    const Text& stored = field.defaultValue;
    const std::size_t start = stored.find_first_not_of(u" =");
    if (start == Text::npos) {
        return ConvertedFor(field.type, basic::Null{});
    }
    // A default is an expression of the statements' language; it may be written with a leading "=".
    const auto query = sql::Query::Prepare(file, u"SELECT " + stored.substr(start));
    return ConvertedFor(field.type, query->Run().Value(0, 0));
}

}  // namespace quardele::dao
