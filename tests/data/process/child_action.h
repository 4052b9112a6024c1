// What a test program can be told to do in a process of its own.
#pragma once

#include <functional>

#include "child_process.h"

namespace quardele::test {

/// An action with a name, defined at namespace scope of a test's source file. A process that runs it is this
/// same program, started anew: it shares nothing with the test but the arguments.
class ChildAction {
 public:
    using Arguments = std::vector<std::string>;
    using Function = void (*)(const Arguments& arguments);

    ChildAction(const char* name, Function function);

    /// Starts a process that ends with 0, or with 1 when a RuntimeError leaves the function (its text goes to
    /// the standard error).
    [[nodiscard]] Process Start(const Arguments& arguments) const;
    /// The same, and waits for its end.
    [[nodiscard]] int Run(const Arguments& arguments) const { return Start(arguments).Wait(); }
    /// The same, and returns when it has given its sign.
    [[nodiscard]] Process Keep(const Arguments& arguments) const;

 private:
    const char* name_;
};

// For actions.
/// Gives the test the sign that it waits for.
void GiveSign();
/// The same, and waits until the test says to go on.
void Stay();

/// A path as an argument.
[[nodiscard]] std::string Argument(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path PathOf(const std::string& argument);

}  // namespace quardele::test
