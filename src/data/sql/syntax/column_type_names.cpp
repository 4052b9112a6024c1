#include "syntax/column_type_names.h"

#include <algorithm>
#include <iterator>

namespace quardele::sql {
namespace {

using jet::ColumnType;

constexpr ColumnTypeName kNames[] = {
    {u"TEXT", ColumnType::Text, TypeSize::Length},
    {u"CHAR", ColumnType::Text, TypeSize::Length},
    {u"CHARACTER", ColumnType::Text, TypeSize::Length},
    {u"VARCHAR", ColumnType::Text, TypeSize::Length},
    {u"STRING", ColumnType::Text, TypeSize::Length},
    {u"MEMO", ColumnType::Memo},
    {u"LONGTEXT", ColumnType::Memo},
    {u"NOTE", ColumnType::Memo},
    {u"BYTE", ColumnType::Byte},
    {u"TINYINT", ColumnType::Byte},
    {u"SHORT", ColumnType::Integer},
    {u"SMALLINT", ColumnType::Integer},
    {u"INTEGER2", ColumnType::Integer},
    {u"LONG", ColumnType::Long},
    {u"INTEGER", ColumnType::Long},
    {u"INTEGER4", ColumnType::Long},
    {u"INT", ColumnType::Long},
    {u"COUNTER", ColumnType::Long, TypeSize::None, true},
    {u"AUTOINCREMENT", ColumnType::Long, TypeSize::None, true},
    {u"CURRENCY", ColumnType::Currency},
    {u"MONEY", ColumnType::Currency},
    {u"SINGLE", ColumnType::Single},
    {u"REAL", ColumnType::Single},
    {u"DOUBLE", ColumnType::Double},
    {u"FLOAT", ColumnType::Double},
    {u"NUMBER", ColumnType::Double},
    {u"DATETIME", ColumnType::Date},
    {u"DATE", ColumnType::Date},
    {u"TIME", ColumnType::Date},
    {u"TIMESTAMP", ColumnType::Date},
    {u"BIT", ColumnType::Boolean},
    {u"YESNO", ColumnType::Boolean},
    {u"LOGICAL", ColumnType::Boolean},
    {u"BOOLEAN", ColumnType::Boolean},
    {u"GUID", ColumnType::Guid},
    {u"UNIQUEIDENTIFIER", ColumnType::Guid},
    {u"BINARY", ColumnType::Binary, TypeSize::Length},
    {u"VARBINARY", ColumnType::Binary, TypeSize::Length},
    {u"LONGBINARY", ColumnType::Ole},
    {u"OLEOBJECT", ColumnType::Ole},
    {u"IMAGE", ColumnType::Ole},
    {u"DECIMAL", ColumnType::Numeric, TypeSize::Precision},
    {u"NUMERIC", ColumnType::Numeric, TypeSize::Precision},
};

}  // namespace

const ColumnTypeName* FindColumnType(TextView word) {
    const auto* found = std::find_if(std::begin(kNames), std::end(kNames), [word](const auto& name) {
        return basic::EqualNoCase(name.word, word);
    });
    return found == std::end(kNames) ? nullptr : found;
}

}  // namespace quardele::sql
