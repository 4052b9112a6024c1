// A drop-down list of entries given in the layout file.
#pragma once

#include <QComboBox>

namespace quardele::forms {

/// Chosen from, never typed into. KeyPress as of a text box: 0 swallows the character.
class DropDown : public QComboBox {
    Q_OBJECT
 public:
    explicit DropDown(QWidget* parent = nullptr);
    /// The chosen entry, counted from 0; -1 for none.
    [[nodiscard]] int ListIndex() const { return currentIndex(); }
    void SetListIndex(int index) { setCurrentIndex(index); }
    /// The text of the chosen entry; empty for none.
    [[nodiscard]] QString Text() const { return currentText(); }

 signals:
    /// Another entry was chosen, by hand or by SetListIndex.
    void Click();
    void GotFocus();
    void LostFocus();
    void KeyPress(int& character);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace quardele::forms
