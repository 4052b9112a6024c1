// What the tests of this folder share.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include <basic/date.h>
#include <basic/locale.h>
#include <basic/runtime_error.h>

namespace quardele::basic {

inline void PrintTo(const Date& date, std::ostream* out) {
    *out << "day " << date.days;
}

/// The number of the RuntimeError that an action raises; 0 when it raises none.
template <class Action>
int ErrorOf(Action action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

/// Puts the session's locale back at the end of a test.
class LocaleGuard {
 public:
    LocaleGuard() : saved_(SessionLocale()) {}
    ~LocaleGuard() { SessionLocale() = saved_; }
    LocaleGuard(const LocaleGuard&) = delete;
    LocaleGuard& operator=(const LocaleGuard&) = delete;

 private:
    Locale saved_;
};

/// A folder that goes with the test.
class TemporaryFolder {
 public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    /// Writes a file with its folders; gives its path.
    std::filesystem::path Write(const std::string& name, const std::string& content = "x") const;

 private:
    std::filesystem::path path_;
};

}  // namespace quardele::basic
