// What a measured process tells the one that started it: named values, one per line.
#pragma once

#include <map>
#include <string>

namespace quardele::bench {

/// Values by name. Times are in microseconds, memory in bytes, moments in microseconds of the steady clock,
/// which all processes share.
using Figures = std::map<std::string, std::string>;

void TellFigure(const std::string& name, const std::string& value);
void TellFigure(const std::string& name, double value);

/// Reads what a process told. Lines of another form are passed over.
[[nodiscard]] Figures ReadFigures(const std::string& output);
/// The number of that name; 0 when it was not told.
[[nodiscard]] double NumberOf(const Figures& figures, const std::string& name);

}  // namespace quardele::bench
