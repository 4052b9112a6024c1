// Another operator in the middle of an edit: row_holder TABLE CONDITION, in a folder of an installation.
// Edits the row, says so, and lets go when its input ends.
#include <iostream>

#include <basic/runtime_error.h>
#include <basic/text.h>
#include <dao/dao.h>

int main(int count, char** words) {
    using namespace quardele;
    if (count != 3) {
        return 2;
    }
    try {
        const auto database =
            dao::DBEngine::Instance().Workspaces(0).OpenDatabase(u"C:\\QUARDELE\\DATA\\talmeon.mdb");
        const auto rows = database->OpenRecordset(basic::FromUtf8(words[1]), dao::RecordsetType::Dynaset);
        rows->FindFirst(basic::FromUtf8(words[2]));
        if (rows->NoMatch()) {
            std::cerr << "no such row\n";
            return 1;
        }
        rows->Edit();
        std::cout << 'x' << std::flush;
        std::cin.get();
        return 0;
    } catch (const basic::RuntimeError& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
