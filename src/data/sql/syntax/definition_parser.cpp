// Statements that change the structure.
#include <algorithm>
#include <string>
#include <utility>

#include <basic/conversion.h>

#include "sql_error.h"
#include "syntax/action_parser.h"
#include "syntax/column_type_names.h"
#include "syntax/parser.h"
#include "syntax/token_reader.h"

namespace quardele::sql {
namespace {

constexpr TextView kNewGuid = u"GenGUID()";
constexpr int kLongestText = 255;
constexpr int kLongestBinary = 510;
constexpr int kUsualLength = 255;
constexpr int kMostDigits = 28;
constexpr int kUsualDigits = 18;

constexpr TextView kPrimaryKeyName = u"PrimaryKey";

using Indexes = std::vector<jet::IndexDesign>;

void MakePrimary(jet::IndexDesign& index) {
    index.primary = true;
    index.unique = true;
    index.required = true;
}

bool IsTaken(const Indexes& indexes, TextView name) {
    return std::any_of(indexes.begin(), indexes.end(), [name](const jet::IndexDesign& index) {
        return basic::EqualNoCase(index.name, name);
    });
}

/// Constraints without a name are called after what they are: the primary key, or their first column.
void NameIndexes(Indexes& indexes) {
    for (jet::IndexDesign& index : indexes) {
        if (!index.name.empty()) {
            continue;
        }
        const Text plain = index.primary ? Text(kPrimaryKeyName) : index.columns.front().column;
        Text name = plain;
        for (int number = 1; IsTaken(indexes, name); ++number) {
            name = plain + basic::NumberText(number);
        }
        index.name = std::move(name);
    }
}

class DefinitionReader {
 public:
    explicit DefinitionReader(TokenReader& reader) : reader_(reader) { reader_.StartQuote(); }

    Action Create() {
        if (reader_.TakeWord(u"TABLE")) {
            return CreateTable();
        }
        const bool unique = reader_.TakeWord(u"UNIQUE");
        if (reader_.TakeWord(u"INDEX")) {
            return CreateIndex(unique);
        }
        reader_.Fail(unique ? error::kSyntaxInCreateIndex : error::kSyntaxInDefinition,
                     unique ? u"INDEX attendu" : u"TABLE ou INDEX attendu");
    }

    AlterTableAction Alter() {
        AlterTableAction alter;
        reader_.Expect(u"TABLE", error::kSyntaxInAlterTable);
        alter.table = reader_.TakeName(error::kSyntaxInAlterTable);
        if (reader_.Peek().IsWord(u"DROP") || reader_.Peek().IsWord(u"ALTER")) {
            FailUnsupported(u"Supprimer ou changer un champ ou une contrainte de la table « " + alter.table +
                            u" »");
        }
        reader_.Expect(u"ADD", error::kSyntaxInAlterTable);
        if (AtConstraint()) {
            alter.indexes.push_back(TableConstraint());
        } else {
            reader_.TakeWord(u"COLUMN");
            alter.column = Column(alter.indexes);
        }
        NameIndexes(alter.indexes);
        RequireEnd(reader_, error::kSyntaxInAlterTable);
        return alter;
    }

    DropTableAction Drop() {
        if (reader_.TakeWord(u"INDEX")) {
            FailUnsupported(u"Supprimer un index");
        }
        reader_.Expect(u"TABLE", error::kSyntaxInDefinition);
        DropTableAction drop{reader_.TakeName(error::kSyntaxInDefinition)};
        RequireEnd(reader_, error::kSyntaxInDefinition);
        return drop;
    }

 private:
    [[noreturn]] static void FailUnsupported(TextView what) {
        throw basic::RuntimeError(error::kOperationNotSupported,
                                  Text(what) + u" n'est pas possible par une instruction SQL.");
    }

    CreateTableAction CreateTable() {
        CreateTableAction create;
        create.design.name = reader_.TakeName(error::kSyntaxInCreateTable);
        reader_.ExpectSymbol(u"(", error::kSyntaxInCreateTable);
        do {
            if (AtConstraint()) {
                create.design.indexes.push_back(TableConstraint());
            } else {
                create.design.columns.push_back(Column(create.design.indexes));
            }
        } while (reader_.TakeSymbol(u","));
        reader_.ExpectSymbol(u")", error::kSyntaxInCreateTable);
        RequireEnd(reader_, error::kSyntaxInCreateTable);
        NameIndexes(create.design.indexes);
        return create;
    }

    CreateIndexAction CreateIndex(bool unique) {
        CreateIndexAction create;
        create.design.unique = unique;
        create.design.name = reader_.TakeName(error::kSyntaxInCreateIndex);
        reader_.Expect(u"ON", error::kSyntaxInCreateIndex);
        create.table = reader_.TakeName(error::kSyntaxInCreateIndex);
        create.design.columns = IndexParts(error::kSyntaxInCreateIndex);
        if (reader_.TakeWord(u"WITH")) {
            IndexOption(create.design);
        }
        RequireEnd(reader_, error::kSyntaxInCreateIndex);
        return create;
    }

    void IndexOption(jet::IndexDesign& index) {
        if (reader_.TakeWord(u"PRIMARY")) {
            MakePrimary(index);
        } else if (reader_.TakeWord(u"DISALLOW")) {
            reader_.Expect(u"NULL", error::kSyntaxInCreateIndex);
            index.required = true;
        } else if (reader_.TakeWord(u"IGNORE")) {
            reader_.Expect(u"NULL", error::kSyntaxInCreateIndex);
            index.ignoreNulls = true;
        } else {
            reader_.Fail(error::kSyntaxInCreateIndex, u"PRIMARY, DISALLOW NULL ou IGNORE NULL attendu");
        }
    }

    std::vector<jet::IndexPart> IndexParts(int number) {
        std::vector<jet::IndexPart> parts;
        reader_.ExpectSymbol(u"(", number);
        do {
            jet::IndexPart part{reader_.TakeName(number)};
            part.ascending = !reader_.TakeWord(u"DESC");
            if (part.ascending) {
                reader_.TakeWord(u"ASC");
            }
            parts.push_back(std::move(part));
        } while (reader_.TakeSymbol(u","));
        reader_.ExpectSymbol(u")", number);
        return parts;
    }

    // Constraints.

    [[nodiscard]] bool AtConstraint() const {
        const Token& first = reader_.Peek();
        const Token& second = reader_.Peek(1);
        return first.IsWord(u"CONSTRAINT") || (first.IsWord(u"PRIMARY") && second.IsWord(u"KEY")) ||
               (first.IsWord(u"FOREIGN") && second.IsWord(u"KEY")) ||
               (first.IsWord(u"UNIQUE") && second.IsSymbol(u"("));
    }

    jet::IndexDesign TableConstraint() {
        jet::IndexDesign index = Constraint();
        index.columns = IndexParts(error::kSyntaxInConstraint);
        return index;
    }

    /// [CONSTRAINT name] PRIMARY KEY | UNIQUE
    jet::IndexDesign Constraint() {
        jet::IndexDesign index;
        if (reader_.TakeWord(u"CONSTRAINT")) {
            index.name = reader_.TakeName(error::kSyntaxInConstraint);
        }
        if (reader_.TakeWord(u"PRIMARY")) {
            reader_.Expect(u"KEY", error::kSyntaxInConstraint);
            MakePrimary(index);
        } else if (reader_.TakeWord(u"UNIQUE")) {
            index.unique = true;
        } else {
            if (reader_.Peek().IsWord(u"FOREIGN") || reader_.Peek().IsWord(u"REFERENCES")) {
                FailUnsupported(u"Créer une relation");
            }
            reader_.Fail(error::kSyntaxInConstraint, u"PRIMARY KEY ou UNIQUE attendu");
        }
        return index;
    }

    // Columns.

    jet::Column Column(Indexes& indexes) {
        jet::Column column;
        column.name = reader_.TakeName(error::kSyntaxInFieldDefinition);
        TypeOf(column);
        while (Attribute(column, indexes)) {
        }
        return column;
    }

    /// One of what may follow the type; false when nothing does.
    bool Attribute(jet::Column& column, Indexes& indexes) {
        const Token& next = reader_.Peek();
        if (reader_.TakeWord(u"NOT")) {
            reader_.Expect(u"NULL", error::kSyntaxInFieldDefinition);
            column.required = true;
        } else if (reader_.TakeWord(u"DEFAULT")) {
            const std::size_t start = reader_.Peek().position;
            static_cast<void>(ReadExpression(reader_));
            column.defaultValue = reader_.TakenSince(start);
            // Access has no type of its own for a GUID that comes by itself.
            column.autoNumber = column.autoNumber || (column.type == jet::ColumnType::Guid &&
                                                      basic::EqualNoCase(column.defaultValue, kNewGuid));
        } else if (next.IsWord(u"CONSTRAINT") || next.IsWord(u"PRIMARY") || next.IsWord(u"UNIQUE") ||
                   next.IsWord(u"REFERENCES")) {
            jet::IndexDesign index = Constraint();
            index.columns.push_back({column.name});
            indexes.push_back(std::move(index));
        } else {
            return false;
        }
        return true;
    }

    void TypeOf(jet::Column& column) {
        const ColumnTypeName* name =
            reader_.Peek().kind == TokenKind::Word ? FindColumnType(reader_.Peek().text) : nullptr;
        if (name == nullptr) {
            reader_.Fail(error::kSyntaxInFieldDefinition, u"type de champ attendu");
        }
        reader_.Take();
        column.type = name->type;
        column.autoNumber = name->autoNumber;
        if (name->size == TypeSize::Length) {
            column.size = kUsualLength;
        } else if (name->size == TypeSize::Precision) {
            column.precision = kUsualDigits;
        }
        if (name->size != TypeSize::None && reader_.TakeSymbol(u"(")) {
            SizeOf(column);
            reader_.ExpectSymbol(u")", error::kSyntaxInFieldDefinition);
        }
    }

    void SizeOf(jet::Column& column) {
        if (column.type != jet::ColumnType::Numeric) {
            column.size =
                WholeNumber(1, column.type == jet::ColumnType::Text ? kLongestText : kLongestBinary);
            return;
        }
        column.precision = static_cast<std::uint8_t>(WholeNumber(1, kMostDigits));
        if (reader_.TakeSymbol(u",")) {
            column.scale = static_cast<std::uint8_t>(WholeNumber(0, column.precision));
        }
    }

    int WholeNumber(int least, int most) {
        const Token& token = reader_.Peek();
        const int number = token.kind == TokenKind::Literal && token.value.Is<std::int32_t>()
                               ? token.value.As<std::int32_t>()
                               : -1;
        if (number < least || number > most) {
            reader_.Fail(error::kSyntaxInFieldDefinition, u"nombre de " + basic::NumberText(least) + u" à " +
                                                              basic::NumberText(most) + u" attendu");
        }
        reader_.Take();
        return number;
    }

    TokenReader& reader_;
};

}  // namespace

Action ReadDefinition(TokenReader& reader) {
    DefinitionReader definitions(reader);
    if (reader.TakeWord(u"CREATE")) {
        return definitions.Create();
    }
    if (reader.TakeWord(u"ALTER")) {
        return definitions.Alter();
    }
    reader.Expect(u"DROP", error::kSyntaxInDefinition);
    return definitions.Drop();
}

}  // namespace quardele::sql
