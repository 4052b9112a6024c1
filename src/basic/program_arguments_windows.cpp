#include <windows.h>

#include <string_view>

#include <basic/program_arguments.h>
#include <basic/text.h>

#include "command_line.h"

namespace quardele::basic {

std::vector<std::string> ProgramArguments(int /*argc*/, char** /*argv*/) {
    const std::wstring_view line = ::GetCommandLineW();
    std::vector<std::string> arguments;
    for (const Text& argument : SplitCommandLine(Text(line.begin(), line.end()))) {
        arguments.push_back(ToUtf8(argument));
    }
    return arguments;
}

}  // namespace quardele::basic
