// Writes letters with windows as the program does, and ends while they are open:
//
//   letter_writer TEMPLATE FOLDER LETTERS VISITS
//
// TEMPLATE (without extension) and FOLDER are Windows paths. Prints the milliseconds of each letter, one a
// line.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <basic/conversion.h>

#include "letter_loop.h"

namespace {

using namespace quardele;
using Clock = std::chrono::steady_clock;

void TellOnStandardError(const basic::Text& text, const basic::Text& title) {
    std::fprintf(stderr, "%s: %s\n", basic::ToUtf8(title).c_str(), basic::ToUtf8(text).c_str());
}

void WriteLetters(const basic::Text& templatePath, const basic::Text& folder, int letters, int visits) {
    word::GWORD gword([] { return word::CatalogueKey{}; }, TellOnStandardError);
    automation::ObjectPtr Word;
    for (int letter = 1; letter <= letters; ++letter) {
        const auto start = Clock::now();
        const basic::Text file = folder + u"\\L" + basic::FromUtf8(std::to_string(letter)) + u".RVE";
        tests::WriteLetter(gword, Word, templatePath, tests::SampleLetter(visits), file);
        const std::chrono::duration<double, std::milli> elapsed = Clock::now() - start;
        std::printf("%.0f\n", elapsed.count());
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        return 2;
    }
    WriteLetters(basic::FromUtf8(argv[1]), basic::FromUtf8(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]));
    return 0;
}
