#include "child_action.h"

#include <iostream>
#include <map>
#include <string_view>

#include <gtest/gtest.h>

#include <basic/program_arguments.h>
#include <basic/runtime_error.h>

namespace quardele::test {

namespace {

constexpr std::string_view kMark = "--child";

std::map<std::string, ChildAction::Function>& Actions() {
    static std::map<std::string, ChildAction::Function> actions;
    return actions;
}

int RunAction(const ChildAction::Arguments& words) {
    try {
        Actions().at(words.front())({words.begin() + 1, words.end()});
        return 0;
    } catch (const basic::RuntimeError& error) {
        std::cerr << words.front() << ": " << error.what() << '\n';
        return 1;
    }
}

}  // namespace

ChildAction::ChildAction(const char* name, Function function) : name_(name) {
    Actions().emplace(name, function);
}

Process ChildAction::Start(const Arguments& arguments) const {
    Arguments words = {std::string(kMark), name_};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return {ThisProgram(), words};
}

Process ChildAction::Keep(const Arguments& arguments) const {
    Process process = Start(arguments);
    EXPECT_TRUE(process.WaitForSign()) << name_;
    return process;
}

void GiveSign() {
    std::cout << 'x' << std::flush;
}

void Stay() {
    GiveSign();
    std::cin.get();
}

std::string Argument(const std::filesystem::path& path) {
    const std::u8string utf8 = path.u8string();
    return {utf8.begin(), utf8.end()};
}

std::filesystem::path PathOf(const std::string& argument) {
    return std::u8string(argument.begin(), argument.end());
}

}  // namespace quardele::test

int main(int count, char** words) {
    const auto arguments = quardele::basic::ProgramArguments(count, words);
    if (arguments.size() > 1 && arguments.front() == quardele::test::kMark) {
        return quardele::test::RunAction({arguments.begin() + 1, arguments.end()});
    }
    testing::InitGoogleTest(&count, words);
    return RUN_ALL_TESTS();
}
