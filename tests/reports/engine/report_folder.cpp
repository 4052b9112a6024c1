#include "report_folder.h"

#include <QApplication>
#include <QFile>

#include <basic/paths.h>
#include <basic/runtime_error.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <sql/statement.h>

namespace quardele::engine::test {

ReportFolder::ReportFolder() {
    NeedApplication();
}

QString ReportFolder::WindowsPath(const QString& name) const {
    return forms::ToQString(basic::WindowsPath(NativePath(name).toStdU16String()));
}

void ReportFolder::WriteFile(const QString& name, const QByteArray& bytes) const {
    QFile file(NativePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qPrintable(name));
    }
}

void ReportFolder::MakeData(const QString& name, const QStringList& statements) const {
    const std::shared_ptr<jet::Database> file = jet::Database::Create(NativePath(name).toStdU16String());
    for (const QString& statement : statements) {
        sql::Execute(*file, forms::ToText(statement));
    }
}

void ReportFolder::MakeVehicles() const {
    MakeData(
        QStringLiteral("DONNEES.MDB"),
        {
            QStringLiteral("CREATE TABLE TVEH (IMMAT TEXT(20) PRIMARY KEY, MARQUE TEXT(30), CLI TEXT(10), KM "
                           "LONG, ACHAT DATETIME, NOTE MEMO)"),
            QStringLiteral("CREATE TABLE TCLI (CODE TEXT(10) PRIMARY KEY, NOM TEXT(40))"),
            QStringLiteral("INSERT INTO TCLI VALUES ('DUP', 'Dupont & Fils')"),
            QStringLiteral("INSERT INTO TCLI VALUES ('MAR', 'Martin')"),
            QStringLiteral(
                "INSERT INTO TVEH VALUES ('EE-555-EE', 'Renault', 'DUP', 50000, #5/15/2021#, 'N5')"),
            QStringLiteral(
                "INSERT INTO TVEH VALUES ('AA-111-AA', 'Renault', 'DUP', 10000, #1/31/2019#, 'N1')"),
            QStringLiteral(
                "INSERT INTO TVEH VALUES ('CC-333-CC', 'Peugeot', 'MAR', 30000, #3/1/2020#, Null)"),
            QStringLiteral("INSERT INTO TVEH VALUES ('BB-222-BB', 'Citroën', 'MAR', 20000, Null, 'N2')"),
            QStringLiteral(
                "INSERT INTO TVEH VALUES ('DD-444-DD', 'Peugeot', 'ZZZ', 40000, #4/4/2020#, 'N4')"),
        });
}

QString ReportFolder::Xml(const QString& elements) const {
    const QString tables = elements.contains(QStringLiteral("<tables"))
                               ? QString()
                               : QStringLiteral("<tables><table name=\"TVEH\" location=\"%1\"/></tables>")
                                     .arg(WindowsPath(QStringLiteral("DONNEES.MDB")));
    return QStringLiteral(
               "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report xmlns=\"urn:quardele:report\" "
               "version=\"1\" title=\"Essai\">\n") +
           tables + elements + QStringLiteral("</report>\n");
}

std::shared_ptr<Report> ReportFolder::Open(const QString& elements) const {
    WriteFile(QStringLiteral("ESSAI.RPT"), Xml(elements).toUtf8());
    return Application().OpenReport(WindowsPath(QStringLiteral("ESSAI.RPT")));
}

QStringList ReportFolder::Pages(const QString& elements) const {
    return PagesOf(*Open(elements)->Compose());
}

QStringList PagesOf(const Document& document) {
    QStringList pages;
    for (int page = 1; page <= document.Pages(); ++page) {
        pages.push_back(document.TextOf(page));
    }
    return pages;
}

std::string ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const basic::RuntimeError& failure) {
        return std::to_string(failure.Number()) + ' ' + basic::ToUtf8(failure.Description());
    }
    return {};
}

void NeedApplication() {
    if (qApp != nullptr) {
        return;
    }
    static int argc = 1;
    static char name[] = "reports";
    static char* argv[] = {name, nullptr};
    static QApplication application(argc, argv);
    forms::SetUpApplication(application);
}

}  // namespace quardele::engine::test
