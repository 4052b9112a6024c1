// Texts as the reference functions see them. They know the letters that the generated texts have.
#pragma once

#include <string>

namespace quardele::sql::differential {

[[nodiscard]] std::u16string Upper(std::u16string text);
[[nodiscard]] std::u16string Lower(std::u16string text);
/// Below, equal or above 0. Letters decide, then accents, then hyphens and apostrophes by their places.
[[nodiscard]] int Collate(const std::u16string& left, const std::u16string& right);
[[nodiscard]] bool IsLike(std::u16string_view text, std::u16string_view pattern);
/// The position counted from 1, 0 when it is not there.
[[nodiscard]] int PositionOf(const std::u16string& what, const std::u16string& text, int from);
/// The first ones replaced, all for -1.
[[nodiscard]] std::u16string Replaced(const std::u16string& text, const std::u16string& what,
                                      const std::u16string& with, int most = -1);

}  // namespace quardele::sql::differential
