#include "figures.h"

#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace quardele::bench {

void TellFigure(const std::string& name, const std::string& value) {
    std::cout << name << '=' << value << std::endl;
}

void TellFigure(const std::string& name, double value) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << value;
    TellFigure(name, text.str());
}

Figures ReadFigures(const std::string& output) {
    Figures figures;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (const std::size_t sign = line.find('='); sign != std::string::npos) {
            figures[line.substr(0, sign)] = line.substr(sign + 1);
        }
    }
    return figures;
}

double NumberOf(const Figures& figures, const std::string& name) {
    const auto found = figures.find(name);
    return found == figures.end() ? 0 : std::strtod(found->second.c_str(), nullptr);
}

}  // namespace quardele::bench
