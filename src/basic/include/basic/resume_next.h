// The error handler that resumes at the next statement, for procedures that go on after a failure.
#pragma once

#include <functional>
#include <utility>

#include <basic/runtime_error.h>

namespace quardele::basic {

/// Runs the statements of a procedure one by one; a statement that fails has no further effect and the next
/// one runs. What is no run-time error passes through.
///
///   ResumeNext statement([&](const RuntimeError& error) { Report(error); });
///   statement([&] { OpenTheFile(); });
///   statement([&] { ReadTheFile(); });
class ResumeNext {
 public:
    /// `handler` sees each failure; without one failures are ignored.
    explicit ResumeNext(std::function<void(const RuntimeError&)> handler = {})
        : handler_(std::move(handler)) {}

    template <class Statement>
    void operator()(Statement&& statement) {
        try {
            std::forward<Statement>(statement)();
        } catch (const RuntimeError& error) {
            description_ = error.Description();
            if (handler_) {
                handler_(error);
            }
        }
    }

    /// The description of the last failure; empty while nothing has failed.
    [[nodiscard]] const Text& Description() const { return description_; }

 private:
    std::function<void(const RuntimeError&)> handler_;
    Text description_;
};

}  // namespace quardele::basic
