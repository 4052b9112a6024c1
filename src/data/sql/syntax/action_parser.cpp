// Statements that change rows, and which statement it is at all.
#include "syntax/action_parser.h"

#include <utility>

#include "sql_error.h"
#include "syntax/parser.h"
#include "syntax/token_reader.h"

namespace quardele::sql {
namespace {

class RowChangeReader {
 public:
    explicit RowChangeReader(TokenReader& reader) : reader_(reader) { reader_.StartQuote(); }

    InsertAction Insert() {
        InsertAction insert;
        reader_.Expect(u"INTO", error::kSyntaxInInsert);
        insert.table = reader_.TakeName(error::kSyntaxInInsert);
        if (reader_.TakeSymbol(u"(")) {
            do {
                insert.columns.push_back(reader_.TakeName(error::kSyntaxInInsert));
            } while (reader_.TakeSymbol(u","));
            reader_.ExpectSymbol(u")", error::kSyntaxInInsert);
        }
        if (reader_.Peek().IsWord(u"SELECT")) {
            insert.source = ReadQuery(reader_);
        } else {
            insert.source.selects.push_back(Values());
        }
        RequireEnd(reader_, error::kSyntaxInInsert);
        return insert;
    }

    UpdateAction Update() {
        UpdateAction update;
        update.from = ReadFromList(reader_);
        reader_.Expect(u"SET", error::kSyntaxInUpdate);
        do {
            update.assignments.push_back(OneAssignment());
        } while (reader_.TakeSymbol(u","));
        update.where = WhereToEnd();
        return update;
    }

    DeleteAction Delete() {
        DeleteAction remove;
        if (IsName(reader_.Peek()) && reader_.Peek(1).IsSymbol(u".") && reader_.Peek(2).IsSymbol(u"*")) {
            remove.target = reader_.TakeName(error::kSyntaxInDelete);
            reader_.Take();
            reader_.Take();
        } else {
            reader_.TakeSymbol(u"*");
        }
        reader_.Expect(u"FROM", error::kSyntaxInDelete);
        remove.from = ReadFromList(reader_);
        RequireEndOrWhere(error::kSyntaxInDelete);
        remove.where = WhereToEnd();
        return remove;
    }

 private:
    Select Values() {
        if (!reader_.TakeWord(u"VALUES")) {
            reader_.Fail(error::kSyntaxInInsert, u"VALUES ou SELECT attendu");
        }
        reader_.ExpectSymbol(u"(", error::kSyntaxInInsert);
        Select values;
        do {
            SelectItem item;
            item.expression = ReadExpression(reader_);
            values.items.push_back(std::move(item));
        } while (reader_.TakeSymbol(u","));
        if (!reader_.TakeSymbol(u")")) {
            reader_.FailInExpression(reader_.AtEnd() ? u"parenthèse fermante absente" : u"opérateur absent");
        }
        return values;
    }

    Assignment OneAssignment() {
        Assignment assignment;
        reader_.StartQuote();
        NameReference target;
        target.name = reader_.TakeName(error::kSyntaxInUpdate);
        if (reader_.TakeSymbol(u".") || reader_.TakeSymbol(u"!")) {
            target.qualifier = std::exchange(target.name, reader_.TakeName(error::kSyntaxInUpdate));
        }
        assignment.target = MakeExpression(std::move(target));
        reader_.ExpectSymbol(u"=", error::kSyntaxInUpdate);
        assignment.value = ReadExpression(reader_);
        if (!reader_.Peek().IsSymbol(u",")) {
            RequireEndOrWhere(error::kSyntaxError);
        }
        return assignment;
    }

    void RequireEndOrWhere(int number) {
        if (!reader_.Peek().IsWord(u"WHERE") && !reader_.Peek().IsSymbol(u";") && !reader_.AtEnd()) {
            reader_.Fail(number, number == error::kSyntaxError ? u"opérateur absent" : u"WHERE attendu");
        }
    }

    ExpressionPtr WhereToEnd() {
        ExpressionPtr where;
        if (reader_.TakeWord(u"WHERE")) {
            where = ReadExpression(reader_);
        }
        RequireEnd(reader_, error::kSyntaxError);
        return where;
    }

    TokenReader& reader_;
};

}  // namespace

Action ReadRowChange(TokenReader& reader) {
    RowChangeReader changes(reader);
    if (reader.TakeWord(u"INSERT")) {
        return changes.Insert();
    }
    if (reader.TakeWord(u"UPDATE")) {
        return changes.Update();
    }
    reader.Expect(u"DELETE", error::kSyntaxInDelete);
    return changes.Delete();
}

Action ParseAction(TextView text) {
    TokenReader reader(text, error::kSyntaxError);
    const Token& first = reader.Peek();
    for (const TextView word : {u"INSERT", u"UPDATE", u"DELETE"}) {
        if (first.IsWord(word)) {
            return ReadRowChange(reader);
        }
    }
    for (const TextView word : {u"CREATE", u"ALTER", u"DROP"}) {
        if (first.IsWord(word)) {
            return ReadDefinition(reader);
        }
    }
    if (first.IsWord(u"SELECT")) {
        throw basic::RuntimeError(error::kCannotExecuteSelect,
                                  u"Une requête SELECT ne peut pas être exécutée comme une action.");
    }
    throw basic::RuntimeError(error::kInvalidStatement,
                              u"Instruction SQL non valide : « INSERT », « UPDATE », « DELETE », « CREATE », "
                              u"« ALTER » ou « DROP » attendu au début.");
}

}  // namespace quardele::sql
