#include "written_letter.h"

#include <QProcess>
#include <QXmlStreamReader>

namespace quardele::tests {

namespace {

QByteArray Unzip(const QStringList& arguments) {
    QProcess unzip;
    unzip.start(QStringLiteral("unzip"), arguments);
    unzip.waitForFinished();
    return unzip.readAllStandardOutput();
}

/// Reads one part of the package.
class PartReader {
 public:
    explicit PartReader(const QByteArray& xml) : reader_(xml) { Read(); }

    QStringList paragraphs;
    std::vector<std::vector<QStringList>> tables;

 private:
    void Read() {
        while (!reader_.atEnd()) {
            const QXmlStreamReader::TokenType token = reader_.readNext();
            if (token == QXmlStreamReader::StartElement) {
                Start(reader_.name());
            } else if (token == QXmlStreamReader::EndElement) {
                End(reader_.name());
            }
        }
    }
    void Start(QStringView element) {
        if (element == u"tbl") {
            tables.emplace_back();
        } else if (element == u"tr") {
            tables.back().emplace_back();
        } else if (element == u"tc") {
            cell_.clear();
        } else if (element == u"p") {
            paragraph_.clear();
        } else if (element == u"t") {
            paragraph_ += reader_.readElementText();
        }
    }
    void End(QStringView element) {
        if (element == u"p") {
            paragraphs << paragraph_;
            cell_ += paragraph_;
        } else if (element == u"tc") {
            tables.back().back() << cell_;
        }
    }

    QXmlStreamReader reader_;
    QString paragraph_;
    QString cell_;
};

}  // namespace

WrittenLetter ReadLetter(const std::filesystem::path& file) {
    const QString path = QString::fromStdU16String(file.u16string());
    WrittenLetter letter;
    const QByteArray names = Unzip({QStringLiteral("-Z1"), path, QStringLiteral("word/header*.xml")});
    for (const QByteArray& name : names.split('\n')) {
        if (!name.isEmpty()) {
            letter.header +=
                PartReader(Unzip({QStringLiteral("-p"), path, QString::fromUtf8(name)})).paragraphs;
        }
    }
    letter.tables =
        PartReader(Unzip({QStringLiteral("-p"), path, QStringLiteral("word/document.xml")})).tables;
    return letter;
}

}  // namespace quardele::tests
