#include "letter_picture.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

namespace quardele::demo {

namespace {

constexpr int kMinute = 60'000;

bool Run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    return process.waitForStarted() && process.waitForFinished(kMinute) &&
           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

}  // namespace

bool PictureOfLetter(const std::filesystem::path& letter, const std::filesystem::path& picture) {
    const QTemporaryDir folder;
    const QString document = folder.filePath(QStringLiteral("lettre.docx"));
    const QString target = QString::fromStdString(picture.string());
    // A profile of its own: an office that runs already would take the job and answer too early.
    const QString profile =
        QStringLiteral("-env:UserInstallation=") +
        QString::fromLatin1(QUrl::fromLocalFile(folder.filePath(QStringLiteral("profil"))).toEncoded());
    return QFile::copy(QString::fromStdString(letter.string()), document) &&
           Run(QStringLiteral("soffice"),
               {profile, QStringLiteral("--headless"), QStringLiteral("--convert-to"), QStringLiteral("pdf"),
                QStringLiteral("--outdir"), folder.path(), document}) &&
           Run(QStringLiteral("pdftoppm"),
               {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("80"), QStringLiteral("-f"),
                QStringLiteral("1"), QStringLiteral("-singlefile"),
                folder.filePath(QStringLiteral("lettre.pdf")), target.chopped(4)});
}

}  // namespace quardele::demo
