#include <QApplication>
#include <QFontDatabase>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <forms/runtime.h>

#include "focus_events.h"
#include "form_host.h"
#include "palette.h"
#include "style.h"

/// The pictures lie in a static library; without this the linker would leave them out.
static void LoadPictures() {
    Q_INIT_RESOURCE(resources);
}

namespace quardele::forms {
namespace {

constexpr double kTextPoints = 9;

QFont TextFont() {
    const QStringList installed = QFontDatabase::families();
    for (const char* family : {"Segoe UI", "Noto Sans", "Open Sans"}) {
        if (installed.contains(QLatin1String(family))) {
            return QFont(QLatin1String(family));
        }
    }
    return QFont(QStringLiteral("Liberation Sans"));
}

void SpeakFrench(QApplication& application) {
    const QLocale french(QLocale::French, QLocale::France);
    QLocale::setDefault(french);
    auto* texts = new QTranslator(&application);
    if (texts->load(french, QStringLiteral("qtbase"), QStringLiteral("_"),
                    QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(texts);
    }
}

}  // namespace

void SetUpApplication(QApplication& application) {
    LoadPictures();
    SpeakFrench(application);
    QApplication::setStyle(new Style);
    QApplication::setPalette(ScreenPalette());
    QFont font = TextFont();
    font.setPointSizeF(kTextPoints);
    QApplication::setFont(font);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/application.svg")));
    // The process ends with its last form, on screen or not; a message box is no form.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    FocusEvents::Instance();
    FormHost::Instance();
}

void DoEvents() {
    QCoreApplication::processEvents();
}

}  // namespace quardele::forms
