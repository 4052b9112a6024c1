#include "pdf_picture.h"

#include <QProcess>

namespace quardele::demo {

bool RunToTheEnd(const QString& program, const QStringList& arguments) {
    constexpr int kMinute = 60'000;
    QProcess process;
    process.start(program, arguments);
    return process.waitForStarted() && process.waitForFinished(kMinute) &&
           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool PictureOfPdf(const std::filesystem::path& pdf, const std::filesystem::path& picture) {
    const std::filesystem::path stem = picture.parent_path() / picture.stem();
    return RunToTheEnd(QStringLiteral("pdftoppm"),
                       {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("80"),
                        QStringLiteral("-f"), QStringLiteral("1"), QStringLiteral("-singlefile"),
                        QString::fromStdString(pdf.string()), QString::fromStdString(stem.string())});
}

}  // namespace quardele::demo
