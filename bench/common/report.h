// The printed comparison: sections of lines "what, ours, theirs, ratio", in French.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "race.h"

namespace quardele::bench {

class Report {
 public:
    explicit Report(std::ostream& out) : out_(out) {}

    /// Starts a section; `other` heads the column of what is compared with; empty for a section
    /// that compares nothing.
    void Section(const std::string& title, const std::string& other);
    /// A line with its ratio: how many times our time goes into theirs.
    void Compare(const std::string& what, const RaceTimes& times);
    /// A line that stands alone.
    void Tell(const std::string& what, const std::string& figure);

 private:
    void Line(const std::string& what, const std::string& ours, const std::string& theirs,
              const std::string& ratio);

    std::ostream& out_;
};

/// A number with a decimal comma.
[[nodiscard]] std::string Number(double value, int decimals);
/// A time in the unit that suits it: "812 µs", "12,3 ms", "1,42 s".
[[nodiscard]] std::string TimeText(Duration duration);
/// "12,3 Mo" (of 1024 x 1024 bytes).
[[nodiscard]] std::string MemoryText(std::uint64_t bytes);

}  // namespace quardele::bench
