// Word's tables, and the columns of a table.
#pragma once

#include <utility>
#include <vector>

#include <com/sun/star/text/XTextTable.hpp>

#include "document_object.h"

namespace quardele::word::writer {

using TableList = std::vector<Reference<css::text::XTextTable>>;

/// The tables of the body, in the order of the text; those within cells count too, which Word
/// leaves out: Writer does not tell what a table's place lies in.
[[nodiscard]] TableList BodyTables(const OpenDocument& document);

/// The widest row's cells. Writer's own count is wrong for a table with merged cells.
[[nodiscard]] int ColumnCount(const Reference<css::text::XTextTable>& table);

class Tables final : public DocumentObject<Tables> {
 public:
    Tables(OpenDocumentPtr document, TableList tables)
        : DocumentObject(std::move(document)), tables_(std::move(tables)) {}
    static std::span<const Member<Tables>> Members();

 private:
    Value Count(const Arguments&) { return static_cast<int>(tables_.size()); }
    Value Item(const Arguments& arguments);

    TableList tables_;
};

class Table final : public DocumentObject<Table> {
 public:
    Table(OpenDocumentPtr document, Reference<css::text::XTextTable> table)
        : DocumentObject(std::move(document)), table_(std::move(table)) {}
    static std::span<const Member<Table>> Members();

 private:
    Value Columns(const Arguments& arguments);
    /// Selects all its cells.
    Value Select(const Arguments&);

    Reference<css::text::XTextTable> table_;
};

/// Columns by their 0-based numbers: all of a table, or the one that the selection stands in.
class Columns final : public DocumentObject<Columns> {
 public:
    Columns(OpenDocumentPtr document, std::vector<int> columns)
        : DocumentObject(std::move(document)), columns_(std::move(columns)) {}
    static std::span<const Member<Columns>> Members();

 private:
    Value Count(const Arguments&) { return static_cast<int>(columns_.size()); }
    Value Item(const Arguments& arguments);

    std::vector<int> columns_;
};

class Column final : public DocumentObject<Column> {
 public:
    Column(OpenDocumentPtr document, int column) : DocumentObject(std::move(document)), column_(column) {}
    static std::span<const Member<Column>> Members();

 private:
    /// 1-based.
    Value Index(const Arguments&) { return column_ + 1; }

    int column_;
};

}  // namespace quardele::word::writer
