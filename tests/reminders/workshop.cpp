#include "workshop.h"

#include <QAction>
#include <QTest>

#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/calendar_settings.h>
#include <services/translation.h>
#include <shell/main_window.h>
#include <shell/session.h>

namespace quardele::tests {

using reminders::FRELANCES;
using shell::MDIMENU_VEH;

Workshop::Workshop() {
    shell::TheSession() = shell::Session();
    services::TheCalendarSettings() = services::CalendarSettings();
    shell::TheMenuForms().reminders = []() -> forms::Form& { return forms::Instance<FRELANCES>(); };
    endsBefore_ = forms::CatchEndOfProcess(true);
    forms::Instance<MDIMENU_VEH>().Show();
    QCoreApplication::processEvents();
}

Workshop::~Workshop() {
    if (forms::IsLoaded<FRELANCES>()) {
        forms::Instance<FRELANCES>().Unload();
    }
    if (forms::IsLoaded<MDIMENU_VEH>()) {
        forms::Instance<MDIMENU_VEH>().Unload();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    forms::CatchEndOfProcess(false);
    forms::Screen::SetMousePointer(0);
    shell::TheSession() = shell::Session();
    services::TheCalendarSettings() = services::CalendarSettings();
    services::Translation() = services::TranslationSettings();
}

FRELANCES& Workshop::Reminders() {
    if (!forms::IsLoaded<FRELANCES>()) {
        forms::Instance<MDIMENU_VEH>().M_RELANC->trigger();
        QCoreApplication::processEvents();
    }
    return forms::Instance<FRELANCES>();
}

void Workshop::ListDueBefore(const QString& date) {
    FRELANCES& form = Reminders();
    forms::SetFocus(form.CTX_DATEREL);
    form.CTX_DATEREL->selectAll();
    QTest::keyClick(form.CTX_DATEREL, Qt::Key_Delete);
    QTest::keyClicks(form.CTX_DATEREL, date);
    QTest::keyClick(form.CTX_DATEREL, Qt::Key_Return);
}

int Workshop::Ends() const {
    return forms::CatchEndOfProcess(true) - endsBefore_;
}

namespace {

void ChangeRows(const dao::Database& database, basic::TextView rows,
                const std::map<basic::Text, basic::Variant>& values) {
    const std::shared_ptr<dao::Recordset> found = database.OpenRecordset(rows, dao::RecordsetType::Dynaset);
    for (; !found->Eof(); found->MoveNext()) {
        found->Edit();
        for (const auto& [field, value] : values) {
            found->SetValue(field, value);
        }
        found->Update();
    }
}

}  // namespace

void Workshop::Change(basic::TextView rows, const std::map<basic::Text, basic::Variant>& values) const {
    ChangeRows(*shell::TheSession().BD_DONNEES, rows, values);
}

void Workshop::Change(const QString& file, basic::TextView rows,
                      const std::map<basic::Text, basic::Variant>& values) {
    const QString path = QStringLiteral("C:\\QUARDELE\\") + file;
    ChangeRows(*dao::DBEngine::Instance().Workspaces(0).OpenDatabase(forms::ToText(path)), rows, values);
}

std::string Workshop::StoredVisit(const std::string& registration, const std::string& work) const {
    const std::string start = '"' + registration + "\",\"" + work + "\",";
    for (const std::string& row :
         support::Installation::ExportTable(installation.File("DATA/talmeon.mdb"), "TVEH_DETAIL")) {
        if (row.starts_with(start)) {
            return row.substr(start.size());
        }
    }
    return {};
}

QString Cell(forms::Grid& grid, int col, int row) {
    grid.SetCol(col);
    grid.SetRow(row);
    return grid.Text();
}

int RowOf(forms::Grid& grid, const QString& registration, const QString& work) {
    for (int row = 1; row <= grid.MaxRows(); ++row) {
        if (Cell(grid, 2, row) == registration && Cell(grid, 5, row) == work) {
            return row;
        }
    }
    return 0;
}

bool IsTicked(forms::Grid& grid, int col, int row) {
    grid.SetCol(col);
    grid.SetRow(row);
    return grid.Value() == QStringLiteral("1");
}

bool IsRowHidden(forms::Grid& grid, int row) {
    grid.SetRow(row);
    return grid.RowHidden();
}

void ClickCell(forms::Grid& grid, int col, int row) {
    const QModelIndex index = grid.model()->index(row - 1, col - 1);
    grid.scrollTo(index);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(index).center());
}

void Press(QWidget* button) {
    QTest::mouseClick(button, Qt::LeftButton);
}

void ChooseSite(const FRELANCES& form, const QString& code) {
    form.DBC_SITE->setFocus();
    QTest::keyClicks(form.DBC_SITE, code);
}

}  // namespace quardele::tests
