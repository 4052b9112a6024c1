// A report of 10 000 details as a PDF: ours from the data file, beside LibreOffice's conversion of a document
// that holds the same pages ready made. Prints a comparison in French.
//   quardele-bench-reports [--runs N] [--vehicles N]
#include <fstream>
#include <iostream>
#include <string>

#include <QApplication>
#include <QFile>

#include <basic/paths.h>
#include <engine/application.h>
#include <forms/runtime.h>
#include <forms/strings.h>

#include "made_installation.h"
#include "program.h"
#include "race.h"
#include "report.h"
#include "temporary_folder.h"

namespace fs = std::filesystem;
using namespace quardele;
using namespace quardele::bench;

namespace {

constexpr int kVisits = 30000;
constexpr int kJobs = 4000;

constexpr auto kReport = R"(<?xml version="1.0" encoding="UTF-8"?>
<report xmlns="urn:quardele:report" version="1" title="Parc">
 <page size="A4" left="1020" top="1020" right="1020" bottom="1020"/>
 <tables><table name="TVEH"/></tables>
 <sort><by field="{TVEH.TVEH_MARQUE}"/><by field="{TVEH.TVEH_IMMAT}"/></sort>
 <pageHeader><section height="500"><text width="4000" height="300" size="12" bold="true">Parc de véhicules</text>
  <field x="5866" width="4000" height="300" align="right" value="PrintDate" format="dd/mm/yyyy"/></section></pageHeader>
 <details><section height="280"><field width="1600" height="260" value="{TVEH.TVEH_IMMAT}"/>
  <field x="1700" width="2400" height="260" value="{TVEH.TVEH_MARQUE}"/>
  <field x="4200" width="3600" height="260" value="{TVEH.TVEH_ComplIdent}"/>
  <field x="7900" width="1200" height="260" value="{TVEH.TVEH_CODCLI}"/>
  <field x="9100" width="766" height="260" align="right" value="RecordNumber" format="#,##0"/></section></details>
 <pageFooter><section height="300"><field width="9866" height="260" align="right"
  value="'Page ' &amp; PageNumber &amp; '/' &amp; TotalPageCount"/></section></pageFooter>
</report>
)";

constexpr auto kDocumentStart = R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0" office:version="1.2"
 office:mimetype="application/vnd.oasis.opendocument.text">
<office:styles><style:style style:name="Standard" style:family="paragraph"><style:paragraph-properties fo:line-height="14pt">
<style:tab-stops><style:tab-stop style:position="3cm"/><style:tab-stop style:position="7.4cm"/>
<style:tab-stop style:position="13.9cm"/><style:tab-stop style:position="16cm"/></style:tab-stops></style:paragraph-properties>
<style:text-properties fo:font-family="Noto Sans" fo:font-size="9pt"/></style:style></office:styles>
<office:automatic-styles><style:page-layout style:name="pm1"><style:page-layout-properties fo:page-width="21cm"
 fo:page-height="29.7cm" fo:margin="1.8cm"/></style:page-layout>
<style:style style:name="Top" style:family="paragraph" style:parent-style-name="Standard"><style:paragraph-properties
 fo:break-before="page"/></style:style></office:automatic-styles>
<office:master-styles><style:master-page style:name="Standard" style:page-layout-name="pm1"/></office:master-styles>
<office:body><office:text>
)";

std::shared_ptr<const engine::Document> Compose(const fs::path& file, const fs::path& database) {
    const auto report = engine::Application().OpenReport(forms::ToQString(basic::WindowsPath(file)));
    report->Database().Tables().Item(1).SetLocation(forms::ToQString(basic::WindowsPath(database)));
    return report->Compose();
}

void MakePdf(const fs::path& report, const fs::path& database, const fs::path& pdf) {
    QFile file(QString::fromStdString(pdf.string()));
    if (!file.open(QIODevice::WriteOnly)) {
        throw std::runtime_error("cannot write " + pdf.string());
    }
    Compose(report, database)->WritePdf(file);
}

/// The texts of our pages, page by page and line by line.
void WriteOfficeDocument(const engine::Document& document, const fs::path& path) {
    std::ofstream out(path);
    out << kDocumentStart;
    for (int page = 1; page <= document.Pages(); ++page) {
        const char* style = page == 1 ? "Standard" : "Top";
        for (const QString& line : document.TextOf(page).split(u'\n')) {
            QString text = line.toHtmlEscaped();
            out << "<text:p text:style-name=\"" << style << "\">"
                << text.replace(u'\t', QStringLiteral("<text:tab/>")).toStdString() << "</text:p>\n";
            style = "Standard";
        }
    }
    out << "</office:text></office:body></office:document>\n";
}

void Compare(int runs, int vehicles) {
    const TemporaryFolder folder;
    const fs::path database = MadeDatabase(folder.Path() / "QUARDELE", vehicles, kVisits, kJobs);
    const fs::path reportFile = folder.Path() / "PARC.RPT";
    std::ofstream(reportFile) << kReport;
    const auto document = Compose(reportFile, database);
    const fs::path office = folder.Path() / "parc.fodt";
    WriteOfficeDocument(*document, office);
    const Command convert{"soffice",
                          "-env:UserInstallation=file://" + (folder.Path() / "profile").string(),
                          "--headless",
                          "--convert-to",
                          "pdf",
                          "--outdir",
                          folder.Path().string(),
                          office.string()};
    Report report(std::cout);
    report.Section("État de " + std::to_string(vehicles) + " lignes en PDF", "autrement");
    report.Tell("pages", std::to_string(document->Pages()));
    report.Compare("de la base au PDF / LibreOffice, pages déjà faites",
                   Race(runs, [&] { MakePdf(reportFile, database, folder.Path() / "ours.pdf"); }, {convert}));
    report.Tell("dont lecture et mise en pages",
                TimeText(TimeOf([&] { static_cast<void>(Compose(reportFile, database)); })));
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    int runs = 5;
    int vehicles = 10000;
    Options options("quardele-bench-reports [--runs N] [--vehicles N]");
    options.Number("--runs", runs).Number("--vehicles", vehicles);
    return RunProgram(argc, argv, options, [&] { Compare(runs, vehicles); });
}
