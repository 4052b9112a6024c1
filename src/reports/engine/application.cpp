#include <engine/application.h>

#include <QFile>
#include <QFileInfo>

#include <basic/paths.h>
#include <forms/strings.h>

#include "report_reader.h"

namespace quardele::engine {

namespace error = basic::error;

std::shared_ptr<Report> Application::OpenReport(const QString& windowsPath) const {
    const basic::Text shown = forms::ToText(windowsPath);
    QFile file(QString::fromStdU16String(basic::NativePath(shown).u16string()));
    const QFileInfo info(file);
    if (!info.isFile()) {
        throw basic::RuntimeError(error::kFileNotFound, basic::Describe(error::kFileNotFound, shown));
    }
    if (!file.open(QIODevice::ReadOnly)) {
        throw basic::RuntimeError(error::kPathFileAccess,
                                  basic::DescriptionOf(error::kPathFileAccess) + u" : « " + shown + u" »");
    }
    return std::make_shared<Report>(ReadReport(file, windowsPath, info.absoluteDir()));
}

}  // namespace quardele::engine
