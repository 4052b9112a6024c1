// dao_other_process FILE TABLE KEY... FIELD VALUE: seeks a row by its primary key and writes one field, as
// another workstation would. FILE is a path of this machine. Exit code 0 when the row was written; otherwise
// the output tells why. When the value is "?" it says that it edits the row, waits for the end of its input,
// and writes nothing.
//
// dao_other_process FILE STATEMENT: runs an action statement there.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <limits>
#include <string>
#include <vector>

#include <basic/paths.h>
#include <basic/program_arguments.h>
#include <basic/runtime_error.h>
#include <dao/dao.h>
#include <jet/database.h>
#include <sql/statement.h>

namespace {

using namespace quardele;

void Write(const std::vector<basic::Text>& arguments, const std::filesystem::path& file) {
    const auto database = dao::DBEngine::Instance().Workspaces(0).OpenDatabase(basic::WindowsPath(file));
    const auto rows = database->OpenRecordset(arguments[0], dao::RecordsetType::Table);
    rows->SetIndex(u"PrimaryKey");
    if (arguments.size() == 5) {
        rows->Seek(u"=", {arguments[1], arguments[2]});
    } else {
        rows->Seek(u"=", {arguments[1]});
    }
    rows->Edit();
    if (arguments.back() == u"?") {
        std::cout << "held" << std::flush;
        std::cin.ignore(std::numeric_limits<std::streamsize>::max());
        return;
    }
    rows->SetValue(arguments[arguments.size() - 2], arguments.back());
    rows->Update();
}

}  // namespace

int main(int count, char** values) {
    const std::vector<std::string> words = basic::ProgramArguments(count, values);
    if (words.size() != 2 && words.size() != 5 && words.size() != 6) {
        std::cerr << "usage: dao_other_process FILE TABLE KEY [KEY] FIELD VALUE\n"
                     "       dao_other_process FILE STATEMENT\n";
        return EXIT_FAILURE;
    }
    try {
        const std::filesystem::path file = std::u8string(words[0].begin(), words[0].end());
        std::vector<basic::Text> arguments;
        for (std::size_t i = 1; i < words.size(); ++i) {
            arguments.push_back(basic::FromUtf8(words[i]));
        }
        if (arguments.size() == 1) {
            sql::Execute(*jet::Database::Open(file), arguments.front());
        } else {
            Write(arguments, file);
        }
    } catch (const basic::RuntimeError& error) {
        std::cout << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
