// The two lists of the program as Excel files, cell by cell, as five other programs read them.
#include <QRegularExpression>

#include <basic/conversion.h>
#include <basic/date.h>
#include <forms/strings.h>

#include "../workbook/workbook_readers.h"
#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

using workbook::test::CellInWords;
using workbook::test::SheetInWords;

CellInWords InWords(const QString& text) {
    return text.isEmpty() ? CellInWords() : "s:" + text.toStdString();
}

CellInWords DateInWords(basic::Date date) {
    return "d:" + basic::ToUtf8(basic::Format(date, u"yyyy-mm-dd hh:nn:ss"));
}

/// A text of a field that stands in a column of numbers or dates: a value when that is written just so.
CellInWords TypedInWords(const QString& text, forms::CellType type) {
    static const QRegularExpression number(
        QStringLiteral("^(0|-?[1-9]\\d{0,14})$|^-?(0|[1-9]\\d{0,9}),\\d{0,4}[1-9]$"));
    static const QRegularExpression date(QStringLiteral("^(\\d\\d)/(\\d\\d)/(\\d{4})$"));
    if (type == forms::CellType::Date) {
        const QRegularExpressionMatch match = date.match(text);
        return match.hasMatch()
                   ? DateInWords(basic::DateOf(match.captured(3).toInt(), match.captured(2).toInt(),
                                               match.captured(1).toInt()))
                   : InWords(text);
    }
    const bool holdsNumbers =
        type == forms::CellType::Number || type == forms::CellType::Float || type == forms::CellType::Integer;
    return holdsNumbers && number.match(text).hasMatch()
               ? workbook::test::NumberInWords(QString(text).replace(u',', u'.').toDouble())
               : InWords(text);
}

/// A cell by the value of its field.
CellInWords InWords(const basic::Variant& value, forms::CellType type) {
    if (value.Is<basic::Null>()) {
        return std::nullopt;
    }
    if (value.Is<basic::Date>()) {
        return DateInWords(value.As<basic::Date>());
    }
    if (value.Is<basic::Text>()) {
        return TypedInWords(forms::ToQString(value.As<basic::Text>()), type);
    }
    return workbook::test::NumberInWords(basic::CDbl(value));
}

int FieldAt(const dao::Recordset& rows, const QString& name) {
    for (std::size_t field = 0; field < rows.Fields().size(); ++field) {
        if (forms::ToQString(rows.Fields()[field].name).compare(name, Qt::CaseInsensitive) == 0) {
            return static_cast<int>(field);
        }
    }
    return -1;
}

/// What the file has to say: headings, values of fields, ticks and texts of the grid's own.
SheetInWords Wanted(const List& list) {
    forms::Grid& grid = *list.grid;
    const dao::Recordset& rows = list.data->Opened();
    SheetInWords sheet(static_cast<std::size_t>(grid.MaxRows()) + 1);
    for (int column = 1; column <= grid.MaxCols(); ++column) {
        if (grid.isColumnHidden(column - 1) || grid.columnWidth(column - 1) == 0) {
            continue;
        }
        sheet[0].push_back(InWords(CellOf(grid, column, 0).replace(u'\n', u' ')));
        const int field = FieldAt(rows, grid.DataField());
        for (int row = 1; row <= grid.MaxRows(); ++row) {
            const QString text = CellOf(grid, column, row);
            CellInWords& cell = sheet[static_cast<std::size_t>(row)].emplace_back();
            if (grid.CellType() == forms::CellType::CheckBox) {
                cell = grid.Value() == u"1" ? "s:Oui" : "s:Non";
            } else if (field < 0) {
                cell = InWords(text);
            } else {
                cell = InWords(rows.ValueAt(static_cast<std::size_t>(row) - 1, field), grid.CellType());
            }
        }
    }
    for (auto& row : sheet) {
        while (!row.empty() && !row.back()) {
            row.pop_back();
        }
    }
    return sheet;
}

/// Moments as days, for readers that know no moments.
void CompareSheets(const SheetInWords& read, const SheetInWords& wanted, bool knowsMoments) {
    QCOMPARE(read.size(), wanted.size());
    for (std::size_t row = 0; row < wanted.size(); ++row) {
        QCOMPARE(read[row].size(), wanted[row].size());
        for (std::size_t column = 0; column < wanted[row].size(); ++column) {
            const CellInWords& cell = wanted[row][column];
            const bool moment = cell && QRegularExpression(QStringLiteral("\\d{4}-\\d\\d-\\d\\d \\d\\d:"))
                                            .match(QString::fromStdString(*cell))
                                            .hasMatch();
            if (knowsMoments || !moment) {
                QVERIFY2(read[row][column] == cell,
                         qPrintable(QStringLiteral("%1 %2: %3 for %4")
                                        .arg(row)
                                        .arg(column)
                                        .arg(QString::fromStdString(read[row][column].value_or("-")),
                                             QString::fromStdString(cell.value_or("-")))));
            }
        }
    }
}

void AddReaders() {
    QTest::addColumn<std::size_t>("number");
    for (std::size_t number = 0; number < workbook::test::WorkbookReaders().size(); ++number) {
        QTest::newRow(workbook::test::WorkbookReaders()[number]->Name().c_str()) << number;
    }
}

}  // namespace

class ExportingTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void TheVehicles_data() { AddReaders(); }
    void TheVehicles() {
        QVERIFY(Vehicles().grid->MaxRows() > 100);
        Check(Vehicles(), "Liste des véhicules.XLS");
    }
    void NoVehicles_data() { AddReaders(); }
    void NoVehicles() {
        EmptyTheVehicles();
        QCOMPARE(Vehicles().grid->MaxRows(), 0);
        Check(Vehicles(), "Liste des véhicules.XLS");
    }
    void TheReminders_data() { AddReaders(); }
    void TheReminders() {
        program_->OpenReminders();
        QVERIFY(Reminders().grid->MaxRows() > 100);
        Check(Reminders(), "Relances.XLS");
    }

 private:
    void Check(const List& list, const char* file) {
        QFETCH(std::size_t, number);
        const workbook::test::WorkbookReader& reader = *workbook::test::WorkbookReaders()[number];
        if (!reader.IsHere()) {
            QSKIP("the reader is not installed");
        }
        const SheetInWords wanted = reader.AsItTells(Wanted(list));
        QVERIFY(!wanted.empty() && !wanted[0].empty());
        PressTool(list, kExcelTool);
        QCOMPARE(list.grid->ExportFailure(), QString());
        const std::filesystem::path folder = program_->CurrentFolder();
        CompareSheets(reader.Read(folder / file, folder), wanted, reader.KnowsMoments());
    }

    std::unique_ptr<ListProgram> program_;
};

void ExportingTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    ExportingTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "exporting_test.moc"
