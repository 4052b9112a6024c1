// What the benchmark programs have in common at their command line.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace quardele::bench {

/// The options of one program. Targets are set as words are read and must outlive the object.
class Options {
 public:
    /// `usage` is what follows the words "Utilisation : " when the command line is wrong.
    explicit Options(std::string usage) : usage_(std::move(usage)) {}

    /// `--name N`: a whole number above 0.
    Options& Number(const std::string& name, int& target);
    /// `--name PATH`.
    Options& Path(const std::string& name, std::filesystem::path& target);
    /// The one word without a name, which comes last.
    Options& Operand(std::filesystem::path& target);

    /// False when a word is unknown, lacks its value, or its value is none.
    [[nodiscard]] bool Read(const std::vector<std::string>& words) const;
    [[nodiscard]] const std::string& Usage() const { return usage_; }

 private:
    using Setter = std::function<bool(const std::string& value)>;
    struct Named {
        std::string name;
        Setter set;
    };

    [[nodiscard]] const Setter* SetterOf(const std::string& name) const;

    std::string usage_;
    std::vector<Named> named_;
    Setter operand_;
};

/// Reads the command line, then measures. The result is that of `main`: 2 after a wrong command line, 1 after
/// an exception of `measure`; both are told on the standard error.
int RunProgram(int argc, char* argv[], const Options& options, const std::function<void()>& measure);

}  // namespace quardele::bench
