#include "cell_name.h"

#include <cstddef>

#include <basic/characters.h>
#include <basic/conversion.h>

namespace quardele::word::writer {

namespace {

constexpr int kLetters = 26;

/// 0 to 51 for A to Z and a to z, -1 for anything else.
int LetterValue(char16_t unit) {
    if (unit >= u'A' && unit <= u'Z') {
        return unit - u'A';
    }
    return unit >= u'a' && unit <= u'z' ? unit - u'a' + kLetters : -1;
}

}  // namespace

CellName ParseCellName(basic::TextView name) {
    std::size_t position = 0;
    int column = 0;
    for (; position < name.size() && LetterValue(name[position]) >= 0; ++position) {
        column = column * 2 * kLetters + LetterValue(name[position]) + 1;
    }
    int row = 0;
    for (; position < name.size() && basic::IsDigit(name[position]); ++position) {
        row = row * 10 + (name[position] - u'0');
    }
    return column == 0 || row == 0 ? CellName{} : CellName{column - 1, row - 1};
}

basic::Text CellText(const CellName& cell) {
    basic::Text name;
    for (int column = cell.column + 1; column > 0; column = (column - 1) / (2 * kLetters)) {
        const int letter = (column - 1) % (2 * kLetters);
        name.insert(name.begin(),
                    static_cast<char16_t>(letter < kLetters ? u'A' + letter : u'a' + letter - kLetters));
    }
    return name + basic::NumberText(cell.row + 1);
}

}  // namespace quardele::word::writer
