#include <QCoreApplication>
#include <QGuiApplication>
#include <QVersionNumber>

#include <basic/paths.h>
#include <forms/runtime.h>
#include <forms/strings.h>

namespace quardele::forms {
namespace {

QVersionNumber Version() {
    return QVersionNumber::fromString(QCoreApplication::applicationVersion());
}

QString& PathForTests() {
    static QString path;
    return path;
}

}  // namespace

int App::Major() {
    return Version().majorVersion();
}
int App::Minor() {
    return Version().minorVersion();
}
int App::Revision() {
    return Version().microVersion();
}
QString App::Title() {
    return QGuiApplication::applicationDisplayName();
}

QString App::Path() {
    if (!PathForTests().isEmpty()) {
        return PathForTests();
    }
    const QString path =
        ToQString(basic::WindowsPath(QCoreApplication::applicationDirPath().toStdU16String()));
    return path.endsWith(u'\\') ? path.chopped(1) : path;
}

void App::SetPathForTests(const QString& path) {
    PathForTests() = path;
}

QString Command() {
    return QCoreApplication::arguments().mid(1).join(u' ');
}

}  // namespace quardele::forms
