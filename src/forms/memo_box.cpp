#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QTextDocumentFragment>

#include <forms/controls.h>

#include "key_press.h"
#include "palette.h"
#include "style.h"

namespace quardele::forms {
namespace {

/// Stored texts end their lines with CR LF, Qt's with LF.
QString ToStored(QString text) {
    return text.replace(u'\n', QStringLiteral("\r\n"));
}
QString FromStored(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

}  // namespace

MemoBox::MemoBox(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        ContentChanged();
        emit Change();
    });
}

QString MemoBox::Text() const {
    return ToStored(toPlainText());
}

void MemoBox::SetText(const QString& text) {
    const QString shown = FromStored(text);
    if (shown != toPlainText()) {
        setPlainText(shown);
    }
}

qsizetype MemoBox::Room() const {
    return MaxLength() - Text().size() + ToStored(textCursor().selection().toPlainText()).size();
}

void MemoBox::keyPressEvent(QKeyEvent* event) {
    if (TellKeyDown(*this, *event)) {
        return;
    }
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isLetter = !event->text().isEmpty() && event->text().front().isPrint();
    const bool adds = isEnter || (isLetter && !event->modifiers().testFlag(Qt::ControlModifier));
    const qsizetype units = isEnter ? 2 : event->text().size();
    if (adds && MaxLength() > 0 && units > Room()) {
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

void MemoBox::insertFromMimeData(const QMimeData* source) {
    QString text = FromStored(source->text());
    if (MaxLength() > 0) {
        const qsizetype room = std::max<qsizetype>(Room(), 0);
        while (ToStored(text).size() > room) {
            text.chop(1);
        }
    }
    insertPlainText(text);
}

void MemoBox::focusInEvent(QFocusEvent* event) {
    QPlainTextEdit::focusInEvent(event);
    QWidget::update();  // the frame, which Qt leaves alone
}

void MemoBox::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    QWidget::update();
}

void MemoBox::paintEvent(QPaintEvent* event) {
    QPlainTextEdit::paintEvent(event);
    if (HasPendingChange()) {
        QPainter painter(viewport());
        draw::PendingBar(painter, viewport()->rect());
    }
}

void MemoBox::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::ReadOnlyChange) {
        ShowFace();
    }
}

void MemoBox::DataChangedChanged() {
    ShowFace();
}

void MemoBox::ShowFace() {
    const QColor unchanged = isReadOnly() ? colors::kLocked : colors::kEntry;
    QPalette colours = palette();
    colours.setColor(QPalette::Base, HasPendingChange() ? colors::kPendingFill : unchanged);
    setPalette(colours);
    viewport()->update();
}

}  // namespace quardele::forms
