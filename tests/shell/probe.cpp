// A plug-in that Qt loads into the program at start-up when the environment asks for it
// (QT_QPA_GENERIC_PLUGINS=quardele_probe). It writes to the standard output what comes on screen, answers
// message boxes, and once the main window is idle triggers the menu entry that QUARDELE_PROBE_TRIGGER names,
// or closes the window for the name "close".
#include <cstdio>

#include <QAction>
#include <QApplication>
#include <QGenericPlugin>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QTimer>

namespace {

constexpr int kLookEveryMs = 20;

void Say(const char* what, const QString& text) {
    std::printf("%s: %s\n", what, text.toUtf8().replace('\r', "\\r").replace('\n', "\\n").constData());
    std::fflush(stdout);
}

}  // namespace

class Probe : public QObject {
    Q_OBJECT
 public:
    Probe() {
        timer_.setInterval(kLookEveryMs);
        connect(&timer_, &QTimer::timeout, this, &Probe::Look);
        timer_.start();
    }

 private:
    void Look() {
        if (QWidget* const modal = QApplication::activeModalWidget()) {
            Answer(*modal);
            return;
        }
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* const mainWindow = qobject_cast<QMainWindow*>(window);
            if (mainWindow != nullptr && mainWindow->isVisible()) {
                timer_.stop();
                Say("window", mainWindow->windowTitle());
                Trigger(*mainWindow);
                return;
            }
        }
    }

    static void Answer(QWidget& box) {
        auto* const text = box.findChild<QLabel*>(QStringLiteral("MsgBox_Text"));
        auto* const ok = box.findChild<QPushButton*>(QStringLiteral("MsgBox_Ok"));
        if (text != nullptr && ok != nullptr) {
            Say("box", text->text());
            ok->click();
        }
    }

    static void Trigger(QMainWindow& window) {
        const QString name = qEnvironmentVariable("QUARDELE_PROBE_TRIGGER");
        if (name == QLatin1String("close")) {
            window.close();
        } else if (auto* const action = window.findChild<QAction*>(name)) {
            action->trigger();
        }
    }

    QTimer timer_;
};

class ProbePlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "probe.json")
 public:
    QObject* create(const QString& /*key*/, const QString& /*specification*/) override { return new Probe; }
};

#include "probe.moc"
