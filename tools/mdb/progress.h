// How far a long command is, on a terminal.
#pragma once

#include <chrono>
#include <cstddef>

namespace quardele::mdb {

/// A line on the error stream that changes several times a second. Nothing is written when that stream is no
/// terminal, when it would run into other output there, nor in the first half second.
class Progress {
 public:
    /// What the command writes meanwhile.
    enum class Beside { Nothing, Output };

    explicit Progress(Beside beside);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// `total` 0 when it is not known.
    void Show(std::size_t done, std::size_t total);
    /// The same for callers that come by very often.
    template <class Total>
    void ShowSometimes(std::size_t done, const Total& total) {
        constexpr std::size_t kOften = 1024;
        if (isOn_ && done % kOften == 0) {
            Show(done, total());
        }
    }

 private:
    using Clock = std::chrono::steady_clock;

    bool isOn_;
    Clock::time_point next_;
    bool isShown_ = false;
};

}  // namespace quardele::mdb
