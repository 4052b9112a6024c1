#include "letter_picture.h"

#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include "pdf_picture.h"

namespace quardele::demo {

bool PictureOfLetter(const std::filesystem::path& letter, const std::filesystem::path& picture) {
    const QTemporaryDir folder;
    const QString document = folder.filePath(QStringLiteral("lettre.docx"));
    // A profile of its own: an office that runs already would take the job and answer too early.
    const QString profile =
        QStringLiteral("-env:UserInstallation=") +
        QString::fromLatin1(QUrl::fromLocalFile(folder.filePath(QStringLiteral("profil"))).toEncoded());
    return QFile::copy(QString::fromStdString(letter.string()), document) &&
           RunToTheEnd(QStringLiteral("soffice"),
                       {profile, QStringLiteral("--headless"), QStringLiteral("--convert-to"),
                        QStringLiteral("pdf"), QStringLiteral("--outdir"), folder.path(), document}) &&
           PictureOfPdf(folder.filePath(QStringLiteral("lettre.pdf")).toStdString(), picture);
}

}  // namespace quardele::demo
