#include <support/boxes.h>

#include <deque>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace quardele::support {
namespace {

QPushButton* ButtonOf(QDialog& box, const char* name) {
    return box.findChild<QPushButton*>(QLatin1String(name));
}

}  // namespace

class BoxAnswerer::Private : public QObject {
 public:
    Private() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->objectName() == QLatin1String("MsgBox")) {
            QMetaObject::invokeMethod(
                this, [this, box = QPointer(qobject_cast<QDialog*>(watched))] { Answer(box); },
                Qt::QueuedConnection);
        }
        return false;
    }

    std::deque<bool> answers;  ///< Oui or not, for the yes/no boxes to come
    std::vector<ShownBox> shown;
    std::function<void()> look;

 private:
    QPushButton* Choose(QDialog& box) {
        if (QPushButton* ok = ButtonOf(box, "MsgBox_Ok")) {
            return ok;
        }
        const bool yes = answers.empty() || answers.front();
        if (!answers.empty()) {
            answers.pop_front();
        }
        return ButtonOf(box, yes ? "MsgBox_Yes" : "MsgBox_No");
    }

    void Answer(QDialog* box) {
        if (box == nullptr) {
            return;
        }
        if (look) {
            look();
        }
        QPushButton* button = Choose(*box);
        const auto* label = box->findChild<QLabel*>(QStringLiteral("MsgBox_Text"));
        shown.push_back({label->text(), box->windowTitle(), button->text().remove(u'&'),
                         box->property("icon").toString()});
        QTest::mouseClick(button, Qt::LeftButton);
    }
};

BoxAnswerer::BoxAnswerer() : d_(std::make_unique<Private>()) {}
BoxAnswerer::~BoxAnswerer() = default;

void BoxAnswerer::AnswerNo() {
    d_->answers.push_back(false);
}
void BoxAnswerer::AnswerYes() {
    d_->answers.push_back(true);
}
void BoxAnswerer::LookAtBoxes(std::function<void()> look) {
    d_->look = std::move(look);
}
const std::vector<ShownBox>& BoxAnswerer::Shown() const {
    return d_->shown;
}

std::vector<QString> BoxAnswerer::TakeTexts() {
    std::vector<QString> texts;
    for (const ShownBox& box : std::exchange(d_->shown, {})) {
        texts.push_back(box.text);
    }
    return texts;
}

}  // namespace quardele::support
