#include <basic/program_arguments.h>

namespace quardele::basic {

std::vector<std::string> ProgramArguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

}  // namespace quardele::basic
