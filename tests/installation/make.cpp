// Makes the installation that the tests copy, and a data database of a former version:
//   quardele_make_installation DIR    writes DIR/QUARDELE and DIR/before-notes/talmeon.mdb
#include <filesystem>
#include <iostream>

#include <basic/date.h>
#include <basic/runtime_error.h>
#include <workshop/installation.h>

#include "known_rows.h"
#include "scale.h"

namespace fs = std::filesystem;
using namespace quardele;

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "usage: quardele_make_installation DIR\n";
        return 2;
    }
    const fs::path folder = argv[1];
    try {
        fs::remove_all(folder);
        workshop::MakeInstallation(folder / "QUARDELE", tests::kScale, tests::KnownRows());
        workshop::MakeFormerDataFile(folder / "before-notes" / "talmeon.mdb", tests::kFormerScale);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << "\n";
        return 1;
    }
    return 0;
}
