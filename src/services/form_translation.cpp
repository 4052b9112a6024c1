// Translation of a form's own texts, control by control.
#include <functional>

#include <QAction>
#include <QMainWindow>
#include <QMenuBar>

#include <basic/resume_next.h>
#include <forms/control.h>
#include <forms/control_kind.h>
#include <forms/controls.h>
#include <forms/grid.h>
#include <services/charset_converter.h>
#include <services/translation.h>

namespace quardele::services {

namespace {

using forms::ControlKind;

/// One text of a control and how to write it. One that cannot be written leaves the others their turn.
void TranslateText(const QString& text, const std::function<void(const QString&)>& write) {
    basic::ResumeNext statement;
    statement([&] {
        if (!text.isEmpty()) {
            write(TRAD(text));
        }
    });
}

void TranslateToolTip(QWidget* control) {
    TranslateText(control->toolTip(), [control](const QString& text) { control->setToolTip(text); });
}

void TranslateTag(QWidget* control) {
    TranslateText(forms::Tag(control), [control](const QString& text) { forms::SetTag(control, text); });
}

void TranslateCaption(forms::Label* label) {
    TranslateText(label->Caption(), [label](const QString& text) { label->SetCaption(text); });
}

void TranslateCaption(QAbstractButton* button) {
    TranslateText(button->text(), [button](const QString& text) { button->setText(text); });
}

void TranslateCellTag(forms::Button* button) {
    TranslateText(button->CellTag(), [button](const QString& text) { button->SetCellTag(text); });
}

/// A frame's caption takes the translation as it is stored.
void TranslateCaption(forms::Frame* frame) {
    if (!frame->Caption().isEmpty()) {
        frame->SetCaption(TRAD(frame->Caption(), Plain));
    }
}

void TranslateTabs(forms::TabControl* tabs) {
    for (int tab = 0; tab < tabs->count(); ++tab) {
        TranslateText(tabs->TabCaption(tab), [=](const QString& text) { tabs->SetTabCaption(tab, text); });
    }
    TranslateToolTip(tabs);
}

void TranslateGrid(forms::Grid* grid) {
    grid->SetRow(0);
    for (int column = 1; column <= grid->MaxCols(); ++column) {
        grid->SetCol(column);
        TranslateText(grid->Value(), [grid](const QString& text) { grid->SetValue(text); });
    }
    TranslateText(grid->ToolTipText(), [grid](const QString& text) { grid->SetToolTipText(text); });
}

/// The font of translated texts; a grid hands it on to its columns and their headings. TranslationCharset has
/// no place to go: Qt's fonts are Unicode and choose the character set by themselves.
void SetTranslationFont(QWidget* control) {
    if (const QString& family = Translation().TranslationFont; !family.isEmpty()) {
        QFont font = control->font();
        font.setFamily(family);
        control->setFont(font);
    }
}

void TranslateControl(QWidget* control) {
    SetTranslationFont(control);
    switch (forms::KindOf(control)) {
        case ControlKind::Label:
            TranslateCaption(qobject_cast<forms::Label*>(control));
            TranslateToolTip(control);
            TranslateTag(control);
            break;
        case ControlKind::CommandButton:
        case ControlKind::OptionButton:
            TranslateCaption(qobject_cast<QAbstractButton*>(control));
            TranslateToolTip(control);
            TranslateTag(control);
            break;
        case ControlKind::PictureButton:
            TranslateCaption(qobject_cast<QAbstractButton*>(control));
            TranslateToolTip(control);
            TranslateTag(control);
            TranslateCellTag(qobject_cast<forms::Button*>(control));
            break;
        case ControlKind::CheckBox:
            TranslateCaption(qobject_cast<QAbstractButton*>(control));
            TranslateTag(control);
            break;
        case ControlKind::Combo:
        case ControlKind::TextBox:
        case ControlKind::MemoBox:
            TranslateToolTip(control);
            TranslateTag(control);
            break;
        case ControlKind::Frame:
            TranslateCaption(qobject_cast<forms::Frame*>(control));
            break;
        case ControlKind::Tab:
            TranslateTabs(qobject_cast<forms::TabControl*>(control));
            break;
        case ControlKind::Grid:
            TranslateGrid(qobject_cast<forms::Grid*>(control));
            break;
        default:
            break;
    }
}

void TranslateMenu(const QMainWindow& window) {
    for (QAction* entry : window.menuBar()->actions()) {
        if (!entry->isSeparator()) {
            TranslateText(entry->text(), [entry](const QString& text) { entry->setText(text); });
        }
    }
}

}  // namespace

void TranslateForm(forms::Form& form) {
    if (!Translation().TranslationOn) {
        return;
    }
    CharsetConverter::Instance().SetSourceCharset(QStringLiteral("utf-8"));
    form.SetCaption(TRAD(form.Caption()));
    basic::ResumeNext statement;
    for (QWidget* control : form.Controls()) {
        statement([control] { TranslateControl(control); });
    }
    if (const auto* window = qobject_cast<QMainWindow*>(form.Window())) {
        statement([window] { TranslateMenu(*window); });
    }
}

}  // namespace quardele::services
