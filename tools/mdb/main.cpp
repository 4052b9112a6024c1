// mdb: a look into Access data files from the command line. Exit codes: 0 done, 1 failed, 2 wrong call.

#include <iostream>
#include <string>
#include <vector>

#include <basic/runtime_error.h>

#include "commands.h"

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongCall = 2;

constexpr const char* kUsage =
    "Utilisation :\n"
    "  mdb tables FICHIER          noms des tables\n"
    "  mdb schema FICHIER [TABLE]  colonnes et index\n"
    "  mdb dump FICHIER TABLE      lignes, en CSV (UTF-8)\n";

int Run(const std::vector<std::string>& arguments) {
    using namespace quardele::mdb;
    const std::string command = arguments.empty() ? "" : arguments[0];
    if (command == "--help" || command == "-h") {
        std::cout << kUsage;
        return kDone;
    }
    if (command == "tables" && arguments.size() == 2) {
        ListTables(arguments[1], std::cout);
    } else if (command == "schema" && (arguments.size() == 2 || arguments.size() == 3)) {
        ShowSchema(arguments[1], arguments.size() == 3 ? arguments[2] : "", std::cout);
    } else if (command == "dump" && arguments.size() == 3) {
        DumpTable(arguments[1], arguments[2], std::cout);
    } else {
        std::cerr << kUsage;
        return kWrongCall;
    }
    std::cout.flush();
    return std::cout ? kDone : kFailed;
}

}  // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    try {
        return Run({argv + 1, argv + argc});
    } catch (const quardele::basic::RuntimeError& error) {
        std::cout.flush();
        std::cerr << "mdb : " << quardele::basic::ToUtf8(error.Description()) << '\n';
        return kFailed;
    }
}
