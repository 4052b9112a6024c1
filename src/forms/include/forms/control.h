// What all controls have in common, as functions on the widgets of a layout file: name and index, geometry in
// twips, visibility, focus, order.
#pragma once

#include <vector>

#include <QString>
#include <QWidget>

#include <basic/runtime_error.h>

namespace quardele::forms {

/// The control's name without its index. An element of a control array carries the dynamic property "index"
/// in the layout file and the object name NAME_index (CTX_USER_3 is CTX_USER(3)).
[[nodiscard]] QString ControlName(const QWidget* control);
/// -1 for a control that is in no array.
[[nodiscard]] int ControlIndex(const QWidget* control);

// Geometry in twips, relative to the container.
[[nodiscard]] int Left(const QWidget* control);
[[nodiscard]] int Top(const QWidget* control);
[[nodiscard]] int Width(const QWidget* control);
[[nodiscard]] int Height(const QWidget* control);
void SetLeft(QWidget* control, int twips);
void SetTop(QWidget* control, int twips);
void SetWidth(QWidget* control, int twips);
void SetHeight(QWidget* control, int twips);

/// Gives the focus now, as far as LostFocus and GotFocus handlers are concerned. Throws RuntimeError 5 for a
/// control that is hidden or disabled.
void SetFocus(QWidget* control);

/// Free text that a control carries along.
[[nodiscard]] QString Tag(const QWidget* control);
void SetTag(QWidget* control, const QString& tag);

/// The elements of a control array on a form's surface, by index.
template <class T>
class ControlArray {
 public:
    ControlArray() = default;
    ControlArray(const QWidget* surface, const QString& name) {
        for (T* control : surface->findChildren<T*>()) {
            const int index = ControlIndex(control);
            if (index < 0 || ControlName(control) != name) {
                continue;
            }
            if (static_cast<std::size_t>(index) >= controls_.size()) {
                controls_.resize(static_cast<std::size_t>(index) + 1, nullptr);
            }
            controls_[static_cast<std::size_t>(index)] = control;
        }
    }
    /// Throws RuntimeError 9 when there is no such element.
    [[nodiscard]] T* operator()(int index) const {
        if (index < 0 || static_cast<std::size_t>(index) >= controls_.size() ||
            controls_[static_cast<std::size_t>(index)] == nullptr) {
            throw basic::RuntimeError(basic::error::kSubscript);
        }
        return controls_[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] int UBound() const { return static_cast<int>(controls_.size()) - 1; }

 private:
    std::vector<T*> controls_;
};

}  // namespace quardele::forms
