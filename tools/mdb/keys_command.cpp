#include "cell_text.h"
#include "commands.h"
#include "failure.h"
#include "utf8_text.h"

namespace quardele::mdb {

namespace {

constexpr Message kNoIndex{"la table n'a pas d'index « |1 »", "the table has no index \"|1\""};

}  // namespace

int RunKeys(const Arguments& arguments, Session& session) {
    const auto database = OpenFile(arguments);
    const auto table = OpenTable(*database, arguments);
    const int index = table->FindIndex(TextOf(arguments.Operand(2)));
    if (index < 0) {
        throw Failure(kNoIndex, {arguments.Operand(2)});
    }
    TextBuffer& buffer = session.out.Buffer();
    jet::IndexCursor cursor = table->OpenIndex(index);
    for (bool found = cursor.First(); found; found = cursor.Next()) {
        AppendHex(cursor.KeyBytes(), buffer);
        buffer += ' ';
        AppendInteger(cursor.Current().page, buffer);
        buffer += ' ';
        AppendInteger(cursor.Current().slot, buffer);
        buffer += '\n';
        session.out.FlushIfLarge();
    }
    return kDone;
}

}  // namespace quardele::mdb
