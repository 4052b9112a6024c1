#include "definitions/properties.h"

#include "rows/text_codec.h"

namespace quardele::jet {

namespace {

constexpr TextView kRequired = u"Required";
constexpr TextView kAllowZeroLength = u"AllowZeroLength";
constexpr TextView kDefaultValue = u"DefaultValue";
constexpr TextView kValidationRule = u"ValidationRule";
constexpr TextView kValidationText = u"ValidationText";

Text* TextProperty(Column& column, TextView name) {
    return name == kDefaultValue     ? &column.defaultValue
           : name == kValidationRule ? &column.validationRule
           : name == kValidationText ? &column.validationText
                                     : nullptr;
}

void Set(Column& column, TextView name, const ByteView& value, const Format& format) {
    const bool truth = !value.IsEmpty() && value.U8(0) != 0;
    if (name == kRequired) {
        column.required = truth;
    } else if (name == kAllowZeroLength) {
        column.allowZeroLength = truth;
    } else if (Text* text = TextProperty(column, name)) {
        *text = format.wideText ? DecodePlainText(value) : DecodeText(value, format);
    }
}

ByteString Truth(bool value) {
    return {value ? std::uint8_t{1} : std::uint8_t{0}};
}

}  // namespace

void ApplyProperties(const ByteView& blob, const Format& format, TableDef& table) {
    PropertyBlob(blob, format)
        .ForEachOfColumns([&](const Text& owner, const Text& name, const ByteView& value) {
            if (const int ordinal = table.FindColumn(owner); ordinal >= 0) {
                Set(table.columns[static_cast<std::size_t>(ordinal)], name, value, format);
            }
        });
}

void StoreRules(const Column& column, PropertyBlob& properties) {
    properties.SetOfColumn(column.name, kRequired, ColumnType::Boolean, Truth(column.required));
    if (column.type == ColumnType::Text || column.type == ColumnType::Memo) {
        properties.SetOfColumn(column.name, kAllowZeroLength, ColumnType::Boolean,
                               Truth(column.allowZeroLength));
    }
    if (column.defaultValue.empty()) {
        properties.RemoveOfColumn(column.name, kDefaultValue);
    } else {
        properties.SetOfColumn(column.name, kDefaultValue, ColumnType::Memo,
                               EncodePlainText(column.defaultValue));
    }
}

}  // namespace quardele::jet
