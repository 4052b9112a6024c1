// An option of a group, of which one is set at most.
#pragma once

#include <QRadioButton>

namespace quardele::forms {

/// The options on one container are a group. Click comes with every setting of the option, by hand or by
/// SetValue. KeyPress as of a text box: 0 swallows the character.
class OptionButton : public QRadioButton {
    Q_OBJECT
 public:
    explicit OptionButton(QWidget* parent = nullptr);
    /// Whether the option is set.
    [[nodiscard]] bool Value() const { return isChecked(); }
    /// Setting one unsets the others of its group; false leaves a group without one.
    void SetValue(bool set);

 signals:
    void Click();
    void GotFocus();
    void LostFocus();
    void KeyPress(int& character);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace quardele::forms
