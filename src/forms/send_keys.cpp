#include <map>
#include <vector>

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

#include <basic/runtime_error.h>
#include <forms/runtime.h>

namespace quardele::forms {
namespace {

struct Key {
    int code;
    QString text;
};

/// One key on its way through the queue of events; where it goes is known when it arrives.
class KeyOnItsWay : public QEvent {
 public:
    explicit KeyOnItsWay(Key key) : QEvent(EventType()), key_(std::move(key)) {}
    static QEvent::Type EventType() {
        static const int type = QEvent::registerEventType();
        return static_cast<QEvent::Type>(type);
    }
    [[nodiscard]] const Key& TheKey() const { return key_; }

 private:
    Key key_;
};

class KeySender : public QObject {
 public:
    using QObject::QObject;
    static KeySender& Instance() {
        static QPointer<KeySender> instance;
        if (instance.isNull()) {
            instance = new KeySender(qApp);
        }
        return *instance;
    }
    bool event(QEvent* event) override {
        if (event->type() != KeyOnItsWay::EventType()) {
            return QObject::event(event);
        }
        Press(static_cast<KeyOnItsWay*>(event)->TheKey());
        return true;
    }

 private:
    static QWidget* Receiver() {
        // A box that has just opened has the keys even before the desktop has made it the active window.
        QWidget* window = QApplication::activeModalWidget();
        if (window == nullptr) {
            window = QApplication::activeWindow();
        }
        return window == nullptr || window->focusWidget() == nullptr ? window : window->focusWidget();
    }
    static void Send(QEvent::Type type, const Key& key) {
        if (QWidget* receiver = Receiver()) {
            QKeyEvent event(type, key.code, Qt::NoModifier, key.text);
            QCoreApplication::sendEvent(receiver, &event);
        }
    }
    static void Press(const Key& key) {
        Send(QEvent::KeyPress, key);
        Send(QEvent::KeyRelease, key);
    }
};

Key NamedKey(const QString& name) {
    static const std::map<QString, Key> named = {
        {QStringLiteral("TAB"), {Qt::Key_Tab, QStringLiteral("\t")}},
        {QStringLiteral("ESC"), {Qt::Key_Escape, QStringLiteral("\x1b")}},
        {QStringLiteral("ENTER"), {Qt::Key_Return, QStringLiteral("\r")}},
    };
    const QString upper = name.toUpper();
    if (const auto found = named.find(upper); found != named.end()) {
        return found->second;
    }
    bool isNumber = false;
    const int number = upper.startsWith(u'F') ? upper.mid(1).toInt(&isNumber) : 0;
    if (!isNumber || number < 1 || number > 12) {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
    return {Qt::Key_F1 + number - 1, QString()};
}

Key LetterKey(QChar letter) {
    return {letter.toUpper().unicode(), QString(letter)};
}

std::vector<Key> KeysOf(const QString& text) {
    std::vector<Key> keys;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] != u'{') {
            keys.push_back(LetterKey(text[at]));
            continue;
        }
        const qsizetype end = text.indexOf(u'}', at);
        if (end < 0) {
            throw basic::RuntimeError(basic::error::kInvalidCall);
        }
        keys.push_back(NamedKey(text.mid(at + 1, end - at - 1)));
        at = end;
    }
    return keys;
}

}  // namespace

void SendKeys(const QString& keys) {
    for (Key& key : KeysOf(keys)) {
        QCoreApplication::postEvent(&KeySender::Instance(), new KeyOnItsWay(std::move(key)));
    }
}

}  // namespace quardele::forms
