// What the operations of GWORD have in common: how they fail, the way to Word's objects, its literals.
#pragma once

#include <automation/object.h>
#include <basic/conversion.h>
#include <word/gword.h>

namespace quardele::word {

// Literals of Word's object model.
inline constexpr int kUnitCharacter = 1;
inline constexpr int kUnitWord = 2;
inline constexpr int kUnitParagraph = 4;
inline constexpr int kUnitLine = 5;
inline constexpr int kUnitStory = 6;
inline constexpr int kUnitColumn = 9;
inline constexpr int kUnitRow = 10;
inline constexpr int kUnitCell = 12;
inline constexpr int kMove = 0;
inline constexpr int kExtend = 1;

/// Runs the statements of an operation, as far as the first that fails; whether none did.
template <class Statements>
bool Quietly(const Statements& statements) {
    try {
        statements();
        return true;
    } catch (const basic::RuntimeError&) {
        return false;
    }
}

/// The same, with a box that shows the failure.
template <class Statements>
bool OrBox(const ShowBox& showBox, TextView title, const Statements& statements) {
    try {
        statements();
        return true;
    } catch (const basic::RuntimeError& error) {
        showBox(error.Description(), Text(title));
        return false;
    }
}

/// The application; throws 91 when there is none.
[[nodiscard]] automation::Object& Application(const ObjectPtr& Word);
[[nodiscard]] ObjectPtr ActiveDocument(const ObjectPtr& Word);
[[nodiscard]] ObjectPtr ActiveWindow(const ObjectPtr& Word);
[[nodiscard]] ObjectPtr Selection(const ObjectPtr& Word);
[[nodiscard]] ObjectPtr ViewOfActivePane(const ObjectPtr& Word);

[[nodiscard]] std::int32_t Number(automation::Object& object, TextView member);
[[nodiscard]] bool Truth(automation::Object& object, TextView member);

}  // namespace quardele::word
