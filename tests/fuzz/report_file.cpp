// Report files of any bytes, and a good one with other numbers in it. What can be read can be made into
// pages, over a small data file.
#include <algorithm>
#include <array>
#include <string_view>

#include <QBuffer>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <basic/paths.h>
#include <forms/strings.h>
#include <sql/statement.h>

#include "definition.h"
#include "harness.h"
#include "report_reader.h"

namespace quardele::fuzz {

namespace {

/// Longer files find nothing that shorter ones do not.
constexpr std::size_t kLongest = 16'384;
/// In front of pairs of bytes: the place of a number in kReport, and what stands there instead.
constexpr std::uint8_t kNumbersFollow = 1;
constexpr std::array kNumbers = {0, 1, 2, 19, 240, 241, 300, 1440, 3000, 5000, 31680, 31681};

constexpr std::string_view kReport = R"(<report xmlns="urn:quardele:report" version="1" title="Essai">
<page width="4000" height="5000" left="100" top="100" right="100" bottom="100"/>
<tables><table name="TVEH"/><table name="C" source="TCLI"/><table name="TPAR" records="first"/>
<link from="{TVEH.CLI}" to="{C.CODE}"/></tables>
<selection>{TVEH.KM} &gt; 10000 or IsNull({TVEH.NOTE})</selection>
<sort><by field="{TVEH.KM}" direction="descending"/></sort>
<formulas><formula name="A">{TVEH.IMMAT} &amp; ' ' &amp; {TPAR.NOM}</formula>
<formula name="B">Sum({TVEH.KM}, {TVEH.CLI}) / Count({@A})</formula></formulas>
<reportHeader><section height="300"><text x="10" y="20" width="3000" height="300" size="14" grow="true">Titre du parc</text>
<line x="0" y="0" width="900" height="4000" thickness="20"/></section></reportHeader>
<pageHeader><section height="400"><field x="0" y="0" width="3000" height="280" value="'Page ' &amp; PageNumber &amp; '/' &amp; TotalPageCount"/>
</section></pageHeader>
<group by="{TVEH.CLI}" keepTogether="1" repeatHeader="1"><header><section height="500">
<field x="0" y="0" width="2000" height="250" value="{C.NOM}" grow="1"/></section></header>
<footer><section height="300"><field width="3000" height="250" value="{@B}" format="#,##0.00"/></section></footer></group>
<details><section height="900" keepTogether="0" newPageAfter="0"><box x="0" y="0" width="3600" height="800" thickness="10" radius="40"/>
<flow x="20" y="30" width="3500" height="0" columns="2" gap="100"><cell height="280" suppress="{TVEH.KM} = 20000">
<field x="5" y="5" width="1500" height="250" value="{@A}" grow="1"/></cell><cell height="280"><text width="1500" height="300" grow="1">un
deux trois</text></cell></flow></section><section height="300" suppressBlank="1" newPageBefore="0">
<field width="600" height="250" size="9" value="{TVEH.NOTE}" grow="1"/></section></details>
<pageFooter><section height="300" suppress="PageNumber = 1"><field width="3000" height="250" value="RecordNumber"/></section></pageFooter>
<reportFooter><section height="3000"><text y="2500" width="900">Fin</text></section></reportFooter>
</report>)";

/// What the pages are made with, once for all inputs.
class Workplace {
 public:
    Workplace() {
        const std::filesystem::path file = folder_.filePath(QStringLiteral("DONNEES.MDB")).toStdU16String();
        const std::shared_ptr<jet::Database> database = jet::Database::Create(file);
        for (const char16_t* const statement :
             {u"CREATE TABLE TVEH (IMMAT TEXT(20) PRIMARY KEY, CLI TEXT(10), KM LONG, NOTE MEMO)",
              u"CREATE TABLE TCLI (CODE TEXT(10) PRIMARY KEY, NOM TEXT(40))",
              u"CREATE TABLE TPAR (NOM TEXT(40))",
              u"INSERT INTO TVEH VALUES ('AA-111-AA', 'DUP', 10000, 'Une note qui prend plusieurs lignes')",
              u"INSERT INTO TVEH VALUES ('BB-222-BB', 'DUP', 20000, Null)",
              u"INSERT INTO TVEH VALUES ('CC-333-CC', 'MAR', 30000, 'N3')",
              u"INSERT INTO TCLI VALUES ('DUP', 'Dupont')", u"INSERT INTO TPAR VALUES ('Atelier')"}) {
            sql::Execute(*database, statement);
        }
        location_ = forms::ToQString(basic::WindowsPath(file));
    }

    [[nodiscard]] const QString& Location() const { return location_; }
    [[nodiscard]] QDir Folder() const { return QDir(folder_.path()); }

 private:
    QTemporaryDir folder_;
    QString location_;
};

const Workplace& TheWorkplace() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    static const QGuiApplication application(count, arguments);
    static const Workplace workplace;
    return workplace;
}

QByteArray WithOtherNumbers(BytesView pairs) {
    static const QRegularExpression number(QStringLiteral("(?<=\")\\d+(?=\")"));
    QString report = QString::fromUtf8(kReport.data(), static_cast<qsizetype>(kReport.size()));
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
        std::vector<std::pair<qsizetype, qsizetype>> places;
        auto numbers = number.globalMatch(report);
        while (numbers.hasNext()) {
            const QRegularExpressionMatch match = numbers.next();
            places.emplace_back(match.capturedStart(), match.capturedLength());
        }
        const auto& [start, length] = places[pairs[i] % places.size()];
        report.replace(start, length, QString::number(kNumbers[pairs[i + 1] % kNumbers.size()]));
    }
    return report.toUtf8();
}

void Compose(QByteArray bytes) {
    const Workplace& workplace = TheWorkplace();
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    engine::Report report(engine::ReadReport(file, QStringLiteral("X.RPT"), workplace.Folder()));
    for (const std::shared_ptr<engine::Table>& table : report.Database().Tables()) {
        table->SetLocation(workplace.Location());
    }
    const auto document = report.Compose();
    for (int page = 1; page <= document->Pages(); ++page) {
        static_cast<void>(document->TextOf(page));
    }
    static_cast<void>(document->Find(QStringLiteral("a")));
}

}  // namespace

void Use(BytesView input) {
    const BytesView start = input.first(std::min(input.size(), kLongest));
    if (!start.empty() && start.front() == kNumbersFollow) {
        Attempt([&] { Compose(WithOtherNumbers(start.subspan(1))); });
    } else {
        Attempt([&] {
            Compose(QByteArray(reinterpret_cast<const char*>(start.data()),
                               static_cast<qsizetype>(start.size())));
        });
    }
}

std::vector<Bytes> Seeds() {
    // Only what shows that all of it is read and made into pages is a seed.
    Compose(QByteArray(kReport.data(), static_cast<qsizetype>(kReport.size())));
    std::vector<Bytes> seeds{Bytes(kReport.begin(), kReport.end())};
    for (std::uint8_t first = 0; first < 6; ++first) {
        Bytes& seed = seeds.emplace_back(Bytes{kNumbersFollow});
        for (std::uint8_t i = 0; i < 12; ++i) {
            seed.push_back(static_cast<std::uint8_t>(first * 12 + i * 5));
        }
    }
    return seeds;
}

}  // namespace quardele::fuzz
