#include "printed_letter.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStringList>

namespace quardele::tests {

namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72;
constexpr int kPatience = 120000;

QString Native(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

QString OutputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(kPatience);
    return QString::fromUtf8(process.readAllStandardOutput());
}

}  // namespace

PrintedLetter::PrintedLetter(const std::filesystem::path& letter, const std::filesystem::path& scratch)
    : pdf_((scratch / letter.filename()).replace_extension("pdf")) {
    OutputOf(QStringLiteral("soffice"),
             {QStringLiteral("-env:UserInstallation=file://") + Native(scratch / "reader"),
              QStringLiteral("--headless"), QStringLiteral("--convert-to"),
              QStringLiteral("pdf:writer_pdf_Export"), QStringLiteral("--outdir"), Native(scratch),
              Native(letter)});
}

QString PrintedLetter::Page(int number) const {
    const QString page = QString::number(number);
    return OutputOf(QStringLiteral("pdftotext"),
                    {QStringLiteral("-layout"), QStringLiteral("-f"), page, QStringLiteral("-l"), page,
                     Native(pdf_), QStringLiteral("-")})
        .simplified();
}

WordPlace PrintedLetter::PlaceOf(const QString& word) const {
    const QString words =
        OutputOf(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), QStringLiteral("-l"),
                                               QStringLiteral("1"), Native(pdf_), QStringLiteral("-")});
    const QRegularExpression pattern(
        QString(R"re(xMin="([\d.]+)" yMin="([\d.]+)" xMax="[\d.]+" yMax="([\d.]+)">%1<)re")
            .arg(QRegularExpression::escape(word.toHtmlEscaped())));
    const auto match = pattern.match(words);
    if (!match.hasMatch()) {
        return {};
    }
    const auto millimetres = [&](int group) {
        return match.captured(group).toDouble() * kMillimetresPerPoint;
    };
    return {millimetres(1), millimetres(2), millimetres(3)};
}

}  // namespace quardele::tests
