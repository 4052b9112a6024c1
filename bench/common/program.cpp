#include "program.h"

#include <charconv>
#include <exception>
#include <iostream>

namespace quardele::bench {
namespace {

bool ReadNumber(const std::string& text, int& target) {
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, target);
    return result.ec == std::errc() && result.ptr == end && target > 0;
}

}  // namespace

Options& Options::Number(const std::string& name, int& target) {
    named_.push_back({name, [&target](const std::string& value) { return ReadNumber(value, target); }});
    return *this;
}

Options& Options::Path(const std::string& name, std::filesystem::path& target) {
    named_.push_back({name, [&target](const std::string& value) {
                          target = value;
                          return true;
                      }});
    return *this;
}

Options& Options::Operand(std::filesystem::path& target) {
    operand_ = [&target](const std::string& value) {
        target = value;
        return true;
    };
    return *this;
}

const Options::Setter* Options::SetterOf(const std::string& name) const {
    for (const Named& option : named_) {
        if (option.name == name) {
            return &option.set;
        }
    }
    return nullptr;
}

bool Options::Read(const std::vector<std::string>& words) const {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool last = i + 1 == words.size();
        if (const Setter* const set = SetterOf(words[i]); set != nullptr) {
            if (last || !(*set)(words[++i])) {
                return false;
            }
        } else if (!last || !operand_ || words[i].starts_with("-") || !operand_(words[i])) {
            return false;
        }
    }
    return true;
}

int RunProgram(int argc, char* argv[], const Options& options, const std::function<void()>& measure) {
    if (!options.Read({argv + 1, argv + argc})) {
        std::cerr << "Utilisation : " << options.Usage() << '\n';
        return 2;
    }
    try {
        measure();
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}

}  // namespace quardele::bench
