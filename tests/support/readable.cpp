#include <support/readable.h>

#include <algorithm>

#include <QAbstractButton>
#include <QDir>
#include <QHeaderView>

#include <forms/control_kind.h>
#include <forms/controls.h>
#include <forms/grid.h>

namespace quardele::support {

namespace {

/// Headings break between words.
QString LongestWord(const QString& heading) {
    const QStringList words = QString(heading).replace(u'\n', u' ').split(u' ');
    return *std::max_element(words.begin(), words.end(), [](const QString& one, const QString& other) {
        return one.size() < other.size();
    });
}

/// What of a text would be cut off or shortened.
QString Cut(const QString& name, const QString& text, const QFontMetrics& font, const QSize& room) {
    for (const QString& line : text.split(u'\n')) {
        if (font.horizontalAdvance(line) > room.width() || font.height() > room.height()) {
            return QStringLiteral("%1: \"%2\" ").arg(name, text);
        }
    }
    return {};
}

bool Parked(const QWidget& control) {
    return control.x() < 0;
}

QString CutLabels(const QWidget& surface) {
    QString found;
    for (const forms::Label* label : surface.findChildren<forms::Label*>()) {
        if (label->isVisible() && !Parked(*label)) {
            found += Cut(label->objectName(), label->Caption(), label->fontMetrics(),
                         label->contentsRect().size());
        }
    }
    return found;
}

/// Round the text of a button run its border and the frame of the focus.
QString CutButtons(const QWidget& surface) {
    constexpr int kBorder = 3;
    QString found;
    for (const QAbstractButton* button : surface.findChildren<QAbstractButton*>()) {
        if (button->isVisible() && !button->text().isEmpty()) {
            const QString text = QString(button->text()).remove(u'&');
            const QSize needed = button->sizeHint() - button->fontMetrics().size(0, text);
            const bool choice = button->isCheckable();
            const QSize room = choice ? button->size() - QSize(needed.width(), 0)
                                      : button->size() - QSize(2 * kBorder, 2 * kBorder);
            found += Cut(button->objectName(), text, button->fontMetrics(), room);
        }
    }
    return found;
}

QString CutHeadings(const QWidget& surface) {
    QString found;
    for (const forms::Grid* grid : surface.findChildren<forms::Grid*>()) {
        const QHeaderView* const heading = grid->horizontalHeader();
        QFont font = heading->font();
        if (grid->HeadingPixels() > 0) {
            font.setPixelSize(grid->HeadingPixels());
        }
        font.setBold(grid->HeadingBold());
        for (int column = 0; grid->isVisible() && column < heading->count(); ++column) {
            if (!heading->isSectionHidden(column)) {
                const QString text = grid->model()->headerData(column, Qt::Horizontal).toString();
                found += Cut(grid->objectName(), LongestWord(text), QFontMetrics(font),
                             QSize(heading->sectionSize(column), heading->height()));
            }
        }
    }
    return found;
}

QString BoxesTooLow(const QWidget& surface) {
    QString found;
    for (const forms::TextBox* box : surface.findChildren<forms::TextBox*>()) {
        if (box->isVisible() && box->fontMetrics().height() > box->height()) {
            found += box->objectName() + u' ';
        }
    }
    return found;
}

QString ControlsThatReachOut(const forms::Form& form) {
    QString found;
    for (const QWidget* control : form.Controls()) {
        const bool inside = control->parentWidget()->rect().contains(control->geometry());
        if (control->isVisible() && !Parked(*control) && !inside) {
            found += control->objectName() + u' ';
        }
    }
    return found;
}

/// What stands in front of the others on purpose.
bool Floats(const QWidget& control) {
    const auto* const frame = qobject_cast<const forms::Frame*>(&control);
    return frame != nullptr && frame->IsFloating();
}

bool StandsFree(const QWidget& control) {
    return control.isVisible() && !Parked(control) && !Floats(control) &&
           forms::KindOf(&control) != forms::ControlKind::TabPage;
}

/// A label, whose text does not fill its height, may reach some pixels under its neighbours.
QRect PlaceOf(const QWidget& control) {
    constexpr int kLabelRoom = 3;
    const bool label = qobject_cast<const forms::Label*>(&control) != nullptr;
    return label ? control.geometry().adjusted(0, kLabelRoom, 0, -kLabelRoom) : control.geometry();
}

QString ControlsThatOverlap(const forms::Form& form) {
    QString found;
    const std::vector<QWidget*> controls = form.Controls();
    for (auto one = controls.begin(); one != controls.end(); ++one) {
        for (auto other = one + 1; other != controls.end(); ++other) {
            const bool neighbours = (*one)->parentWidget() == (*other)->parentWidget();
            if (neighbours && StandsFree(**one) && StandsFree(**other) &&
                PlaceOf(**one).intersects(PlaceOf(**other))) {
                found += (*one)->objectName() + u'/' + (*other)->objectName() + u' ';
            }
        }
    }
    return found;
}

QString Told(const char* what, const QString& found) {
    return found.isEmpty() ? found : QLatin1String(what) + found;
}

}  // namespace

QString WhatCannotBeRead(const forms::Form& form) {
    const QWidget& surface = *form.Surface();
    return Told("cut: ", CutLabels(surface) + CutButtons(surface) + CutHeadings(surface)) +
           Told("too low: ", BoxesTooLow(surface)) + Told("reach out: ", ControlsThatReachOut(form)) +
           Told("overlap: ", ControlsThatOverlap(form));
}

void KeepPicture(QWidget& widget, const QString& name) {
    const QDir folder(QStringLiteral(QUARDELE_BINARY_DIR "/pictures"));
    folder.mkpath(QStringLiteral("."));
    const QPixmap picture = widget.grab();
    const int percent = qRound(100 * picture.devicePixelRatio());
    const QString scale = percent == 100 ? QString() : QStringLiteral("-%1").arg(percent);
    const QString file = folder.filePath(name + scale + QStringLiteral(".png"));
    if (!picture.save(file)) {
        qFatal("%s cannot be written", qPrintable(file));
    }
}

}  // namespace quardele::support
