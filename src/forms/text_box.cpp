#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <forms/controls.h>

#include "key_press.h"
#include "style.h"

namespace quardele::forms {

TextBox::TextBox(QWidget* parent) : QLineEdit(parent) {
    setTextMargins(2, 0, 2, 0);
    connect(this, &QLineEdit::textChanged, this, &TextBox::Changed);
}

void TextBox::SetText(const QString& text) {
    const QScopedValueRollback<bool> assigning(assigning_, true);
    setText(text);
    setCursorPosition(0);
}

int TextBox::SelStart() const {
    return hasSelectedText() ? selectionStart() : cursorPosition();
}
void TextBox::SetSelStart(int position) {
    setCursorPosition(position);
}
void TextBox::SetSelLength(int length) {
    setSelection(SelStart(), length);
}

void TextBox::SetShaded(bool shaded) {
    shaded_ = shaded;
    update();
}

void TextBox::Changed() {
    if (!assigning_) {
        CutToMaxLength();
        if (text() == before_) {
            return;
        }
    }
    before_ = text();
    ContentChanged();
    emit Change();
}

void TextBox::CutToMaxLength() {
    const qsizetype tooMany =
        MaxLength() > 0 ? text().size() - std::max<qsizetype>(MaxLength(), before_.size()) : 0;
    if (tooMany <= 0) {
        return;
    }
    // What stands behind the cursor was there before; the surplus lies just before it.
    const qsizetype cursor = cursorPosition();
    const QSignalBlocker quiet(this);
    setText(QString(text()).remove(cursor - tooMany, tooMany));
    setCursorPosition(static_cast<int>(cursor - tooMany));
}

void TextBox::keyPressEvent(QKeyEvent* event) {
    if (TellKeyDown(*this, *event)) {
        return;
    }
    // Alt with Ctrl is the AltGr of some keyboards, which makes characters; Alt alone does not.
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const bool isCharacter = event->text().size() == 1 && (!modifiers.testFlag(Qt::AltModifier) ||
                                                           modifiers.testFlag(Qt::ControlModifier));
    if (!isCharacter) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const int typed = event->text().front().unicode();
    int character = typed;
    emit KeyPress(character);
    if (character == typed) {
        QLineEdit::keyPressEvent(event);
    } else if (character != 0) {
        insert(QString(QChar(static_cast<char16_t>(character))));
    }
}

void TextBox::inputMethodEvent(QInputMethodEvent* event) {
    // Accented letters made of two keys arrive here; each counts as one character typed.
    const QString typed = event->commitString();
    if (typed.size() == 1) {
        int character = typed.front().unicode();
        emit KeyPress(character);
        QInputMethodEvent answer(event->preeditString(), event->attributes());
        if (character != 0) {
            answer.setCommitString(QString(QChar(static_cast<char16_t>(character))));
        }
        QLineEdit::inputMethodEvent(&answer);
        return;
    }
    QLineEdit::inputMethodEvent(event);
}

void TextBox::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (HasPendingChange()) {
        QPainter painter(this);
        draw::PendingBar(painter, rect().adjusted(1, 1, -1, -1));
        if (hasFocus()) {
            draw::EntryBorder(painter, rect(), true);
        }
    }
}

void TextBox::DataChangedChanged() {
    setTextMargins(HasPendingChange() ? 6 : 2, 0, 2, 0);
    update();
}

}  // namespace quardele::forms
