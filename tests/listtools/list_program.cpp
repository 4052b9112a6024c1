#include "list_program.h"

#include <algorithm>

#include <QClipboard>
#include <QDialog>
#include <QMainWindow>

namespace quardele::tests {

namespace {

template <class F>
bool CloseIfOpen() {
    if (!forms::IsLoaded<F>()) {
        return false;
    }
    forms::Instance<F>().Unload();
    return true;
}

/// Waits for the window of a dialog and works in it once it is shown and has the focus.
class DialogOperator : public QObject {
 public:
    explicit DialogOperator(const std::function<void()>& work) : work_(work) {
        qApp->installEventFilter(this);
    }

    [[nodiscard]] bool HasWorked() const { return worked_; }

    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* dialog = qobject_cast<QDialog*>(watched);
        if (event->type() == QEvent::Show && !worked_ && dialog != nullptr &&
            dialog->objectName() != QLatin1String("MsgBox")) {
            worked_ = true;
            QMetaObject::invokeMethod(
                this, [this, dialog] { Work(*dialog); }, Qt::QueuedConnection);
        }
        return false;
    }

 private:
    void Work(QDialog& window) {
        QVERIFY(QTest::qWaitFor([&] { return QApplication::activeWindow() == &window; }));
        work_();
        QCoreApplication::processEvents();
        CloseIfOpen<listtools::FSELECT>();
        CloseIfOpen<listtools::FCHERCHE>();
        CloseIfOpen<listtools::FCLASSE>();
        if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            dialog->reject();
        }
    }

    const std::function<void()>& work_;
    bool worked_ = false;
};

}  // namespace

ListProgram::ListProgram() : endsBefore_(forms::CatchEndOfProcess(true)) {
    shell::TheMenuForms().reminders = []() -> forms::Form& {
        return forms::Instance<reminders::FRELANCES>();
    };
}

ListProgram::~ListProgram() {
    forms::Screen::SetMousePointer(0);
}

void ListProgram::OpenList() {
    program_.OpenVehicles();
}

void ListProgram::OpenReminders() {
    MainWindow().M_RELANC->trigger();
    MainWindow().MainWindow()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(MainWindow().MainWindow()));
    auto* date = forms::Instance<reminders::FRELANCES>().CTX_DATEREL;
    TypeOver(date, QStringLiteral("20/11/2026"));
    QTest::keyClick(date, Qt::Key_Return);
}

int ListProgram::Ends() const {
    return forms::CatchEndOfProcess(true) - endsBefore_;
}

std::filesystem::path ListProgram::CurrentFolder() const {
    return program_.DataFile().parent_path().parent_path() / "VEH";
}

List Vehicles() {
    return {Grid("DBG_Liste"), Data("DBD_TVEH"), &Form()};
}

List Reminders() {
    auto& form = forms::Instance<reminders::FRELANCES>();
    return {form.DBG_RELANCES, form.DBD_TVEH, &form};
}

void EmptyTheVehicles() {
    Vehicles().data->SetRecordSource(QStringLiteral("select * from TVEH where TVEH_IMMAT = '?'"));
    Vehicles().data->Refresh();
}

void ReplaceColumn(forms::Grid& grid, int column, const QString& line) {
    QStringList lines = grid.ColumnLines();
    lines[column - 1] = line;
    grid.SetColumnLines(lines);
}

void GoToColumn(forms::Grid& grid, int column) {
    grid.SetActiveCell(column, 1);
}

void PressTool(const List& list, int index) {
    const forms::ControlArray<forms::Button> tools(list.form->Surface(), QStringLiteral("Cmd_ToolBar"));
    Click(tools(index));
}

QString CellOf(forms::Grid& grid, int column, int row) {
    grid.SetCol(column);
    grid.SetRow(row);
    return grid.Text();
}

QStringList CellsOf(forms::Grid& grid, int column) {
    QStringList cells;
    for (int row = 1; row <= grid.MaxRows(); ++row) {
        cells.append(CellOf(grid, column, row));
    }
    return cells;
}

QString ActiveCell(forms::Grid& grid, int column) {
    return CellOf(grid, column, grid.ActiveRow());
}

bool InDialog(const std::function<void()>& open, const std::function<void()>& work) {
    const DialogOperator user(work);
    open();
    return user.HasWorked();
}

listtools::FSELECT& Selection() {
    return forms::Instance<listtools::FSELECT>();
}
listtools::FCHERCHE& SearchDialog() {
    return forms::Instance<listtools::FCHERCHE>();
}
listtools::FCLASSE& SortDialog() {
    return forms::Instance<listtools::FCLASSE>();
}

void Click(QWidget* control) {
    QTest::mouseClick(control, Qt::LeftButton);
    QCoreApplication::processEvents();
}

void EnterText(forms::TextBox* box, const QString& text) {
    constexpr qsizetype kMostTyped = 100;
    // What QTest has keys for.
    const bool plain = std::all_of(text.begin(), text.end(), [](QChar unit) { return unit < u'\x7F'; });
    forms::SetFocus(box);
    QTest::keySequence(box, QKeySequence::SelectAll);
    QTest::keyClick(box, Qt::Key_Delete);
    if (plain && text.size() <= kMostTyped) {
        QTest::keyClicks(box, text);
    } else {
        QGuiApplication::clipboard()->setText(text);
        QTest::keySequence(box, QKeySequence::Paste);
    }
}

void Select(int entry, const QString& value) {
    listtools::FSELECT& dialog = Selection();
    for (int step = 0; step < entry; ++step) {
        QTest::keyClick(dialog.DBC3_SELECTION, Qt::Key_Down);
    }
    EnterText(dialog.CTX3_SELECTION, value);
    Click(dialog.Cmd_GoSelection);
}

void SearchFor(const QString& value) {
    listtools::FCHERCHE& dialog = SearchDialog();
    EnterText(dialog.CTX3_CHERCHE, value);
    Click(dialog.Cmd_GoCherche);
}

void SelectOn(const List& list, int column, int entry, const QString& value) {
    GoToColumn(*list.grid, column);
    QVERIFY(InDialog([&] { PressTool(list, kSelectionTool); }, [&] { Select(entry, value); }));
}

}  // namespace quardele::tests
