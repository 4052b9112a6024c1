#include <forms/msg_box.h>

#include <QCloseEvent>
#include <QDialog>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <QApplication>

#include <forms/line_feeds.h>
#include <forms/runtime.h>
#include <forms/strings.h>

namespace quardele::forms {
namespace {

constexpr QSize kButtonSize(88, 32);
constexpr int kIconSize = 32;
constexpr int kTextWidth = 460;
constexpr int kLeastTextWidth = 280;
constexpr int kEdge = 16;
constexpr int kGap = 8;

QString IconName(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::None:
            return {};
        case BoxIcon::Critical:
            return QStringLiteral("erreur");
        case BoxIcon::Question:
            return QStringLiteral("question");
        case BoxIcon::Exclamation:
            return QStringLiteral("avertissement");
        case BoxIcon::Information:
            return QStringLiteral("information");
    }
    return {};
}

class Box : public QDialog {
 public:
    Box(const QString& prompt, BoxButtons buttons, BoxIcon icon, QWidget* parent)
        : QDialog(parent), buttons_(buttons) {
        setObjectName(QStringLiteral("MsgBox"));
        setProperty("icon", IconName(icon));
        setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                       (MayEscape() ? Qt::WindowCloseButtonHint : Qt::WindowFlags()));
        auto* outer = new QVBoxLayout(this);
        outer->setContentsMargins(kEdge, kEdge + 4, kEdge, 12);
        outer->setSpacing(kEdge + 4);
        outer->setSizeConstraint(QLayout::SetFixedSize);
        AddMessage(*outer, prompt, icon);
        AddButtons(*outer);
    }

    [[nodiscard]] BoxAnswer Ask() {
        exec();
        return answer_;
    }

    void reject() override {
        if (MayEscape()) {
            QDialog::reject();
        }
    }

 protected:
    void closeEvent(QCloseEvent* event) override {
        event->setAccepted(MayEscape());
        if (MayEscape()) {
            QDialog::closeEvent(event);
        }
    }

 private:
    [[nodiscard]] bool MayEscape() const { return buttons_ == BoxButtons::Ok; }

    void AddMessage(QVBoxLayout& outer, const QString& prompt, BoxIcon icon) {
        auto* row = new QHBoxLayout;
        row->setSpacing(kGap + 4);
        if (icon != BoxIcon::None) {
            auto* picture = new QLabel;
            picture->setPixmap(QIcon(QStringLiteral(":/icons/%1.svg").arg(IconName(icon))).pixmap(kIconSize));
            row->addWidget(picture, 0, Qt::AlignTop);
        }
        auto* text = new QLabel;
        text->setObjectName(QStringLiteral("MsgBox_Text"));
        text->setTextFormat(Qt::PlainText);
        text->setText(WithLineFeeds(prompt));
        text->setMinimumHeight(kIconSize);
        FitWidth(*text);
        row->addWidget(text, 1);
        outer.addLayout(row);
    }

    /// Lines as they come; what is longer wraps.
    static void FitWidth(QLabel& text) {
        const int natural = text.sizeHint().width();
        text.setWordWrap(natural > kTextWidth);
        text.setFixedWidth(std::clamp(natural, kLeastTextWidth, kTextWidth));
    }

    void AddButtons(QVBoxLayout& outer) {
        auto* row = new QHBoxLayout;
        row->setSpacing(kGap);
        row->addStretch(1);
        if (buttons_ == BoxButtons::Ok) {
            AddButton(*row, QStringLiteral("OK"), QStringLiteral("MsgBox_Ok"), BoxAnswer::Ok)
                ->setDefault(true);
        } else {
            AddButton(*row, QStringLiteral("&Oui"), QStringLiteral("MsgBox_Yes"), BoxAnswer::Yes)
                ->setDefault(true);
            AddButton(*row, QStringLiteral("&Non"), QStringLiteral("MsgBox_No"), BoxAnswer::No);
        }
        outer.addLayout(row);
    }

    QPushButton* AddButton(QHBoxLayout& row, const QString& text, const QString& name, BoxAnswer answer) {
        auto* button = new QPushButton(text);
        button->setObjectName(name);
        button->setFixedSize(kButtonSize);
        connect(button, &QPushButton::clicked, this, [this, answer] {
            answer_ = answer;
            accept();
        });
        row.addWidget(button);
        return button;
    }

    BoxButtons buttons_;
    BoxAnswer answer_ = BoxAnswer::Ok;
};

}  // namespace

BoxAnswer MsgBox(const QString& prompt, BoxButtons buttons, BoxIcon icon, const QString& title) {
    Box box(prompt, buttons, icon, QApplication::activeWindow());
    box.setWindowTitle(title.isEmpty() ? App::Title() : title);
    return box.Ask();
}

void ShowBox(const basic::Text& text, const basic::Text& title) {
    MsgBox(ToQString(text), BoxButtons::Ok, BoxIcon::None, ToQString(title));
}

}  // namespace quardele::forms
