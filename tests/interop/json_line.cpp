#include "json_line.h"

#include <stdexcept>

#include <basic/text.h>

namespace quardele::jet::test {

namespace {

class JsonLine {
 public:
    explicit JsonLine(std::string_view line) : rest_(line) {}

    std::vector<CellText> Array() {
        std::vector<CellText> elements;
        Take('[');
        do {
            elements.push_back(Element());
        } while (TakeIf(','));
        Take(']');
        return elements;
    }

 private:
    CellText Element() {
        constexpr std::string_view kNull = "null";
        if (rest_.starts_with(kNull)) {
            rest_.remove_prefix(kNull.size());
            return {};
        }
        Take('"');
        std::string text;
        for (char unit = Next(); unit != '"'; unit = Next()) {
            text += unit == '\\' ? Escaped() : std::string(1, unit);
        }
        return text;
    }

    std::string Escaped() {
        switch (const char unit = Next()) {
            case 'n':
                return "\n";
            case 'r':
                return "\r";
            case 't':
                return "\t";
            case 'b':
                return "\b";
            case 'f':
                return "\f";
            case 'u': {
                const std::string digits = {Next(), Next(), Next(), Next()};
                return basic::ToUtf8(basic::Text(1, static_cast<char16_t>(std::stoi(digits, nullptr, 16))));
            }
            default:
                return {unit};
        }
    }

    char Next() {
        if (rest_.empty()) {
            throw std::runtime_error("a line of JSON ends too early");
        }
        const char unit = rest_.front();
        rest_.remove_prefix(1);
        return unit;
    }
    void Take(char expected) {
        if (Next() != expected) {
            throw std::runtime_error("not an array of texts");
        }
    }
    bool TakeIf(char expected) {
        const bool found = rest_.starts_with(expected);
        rest_.remove_prefix(found ? 1 : 0);
        return found;
    }

    std::string_view rest_;
};

}  // namespace

std::vector<CellText> ParseJsonLine(std::string_view line) {
    return JsonLine(line).Array();
}

}  // namespace quardele::jet::test
