#include "control_appli.h"

#include <cstdint>
#include <new>

#include <basic/conversion.h>
#include <basic/paths.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/translation.h>
#include <shell/session.h>

namespace quardele::shell {

namespace {

using basic::Text;
using basic::Variant;
using services::TRAD;

/// Keys of the suite's databases in the table TPATH.
constexpr std::int16_t kStockDatabase = 1;
constexpr std::int16_t kDataDatabase = 2;

constexpr int kOutOfMemory = 7;

/// The parent of the current folder, with its backslash; empty when the current folder has none.
Text FolderPrefix() {
    const Text current = basic::CurDir();
    const std::size_t backslash = current.rfind(u'\\');
    return backslash == Text::npos ? Text() : current.substr(0, backslash + 1);
}

std::shared_ptr<dao::Database> OpenPathDatabase(const Text& prefix) {
    const Text path = prefix + u"dbpath.mdb";
    if (basic::Dir(path).empty()) {
        forms::MsgBox(TRAD(QStringLiteral("La base de données DBPATH.MDB est introuvable !")),
                      forms::BoxButtons::Ok, forms::BoxIcon::Critical);
        forms::EndProcess();
    }
    return dao::DBEngine::Instance().Workspaces(0).OpenDatabase(path);
}

std::shared_ptr<dao::Recordset> OpenPathTable(const dao::Database& paths) {
    std::shared_ptr<dao::Recordset> table = paths.OpenRecordset(u"TPATH", dao::RecordsetType::Table);
    table->SetIndex(u"PrimaryKey");
    dao::DBEngine::Instance().Idle(1);
    return table;
}

bool SeekKey(dao::Recordset& table, std::int16_t key) {
    table.Seek(u"=", {Variant(key)});
    return !table.NoMatch();
}

void OpenDataDatabase(dao::Recordset& table) {
    if (!SeekKey(table, kDataDatabase)) {
        forms::MsgBox(TRAD(QStringLiteral("Cette application ne peut pas fonctionner sans TALMEON")));
        forms::EndProcess();
    }
    // Folder and file name are joined as they stand: the folder brings its backslash along.
    const Text path = basic::Joined(table.Value(u"TPATH_PATH")) + basic::Joined(table.Value(u"TPATH_NOMMDB"));
    TheSession().BD_DONNEES = dao::DBEngine::Instance().Workspaces(0).OpenDatabase(path);
    TheSession().CHEMIN_DONNEES = forms::ToQString(basic::CStr(table.Value(u"TPATH_PATH")));
}

void FindStockFolder(dao::Recordset& table) {
    if (SeekKey(table, kStockDatabase)) {
        TheSession().CHEMIN_STOCK = forms::ToQString(basic::CStr(table.Value(u"TPATH_PATH")));
    }
}

/// Program and data agree in major and minor number; a database without a version agrees with any.
void CheckVersion() {
    const auto parameters = TheSession().BD_DONNEES->OpenRecordset(u"TPAR", dao::RecordsetType::Table);
    const QString program =
        QString::number(forms::App::Major()) + QLatin1Char('.') + QString::number(forms::App::Minor());
    const Variant data = parameters->Value(u"TPAR_Ver");
    if (data.IsNull() || forms::ToText(program) == basic::CStr(data)) {
        return;
    }
    forms::MsgBox(TRAD(QStringLiteral("Ce programme est en version ")) + program +
                  TRAD(QStringLiteral(" et la base de données en version ")) +
                  forms::ToQString(basic::CStr(data)));
    forms::EndProcess();
}

}  // namespace

void CONTROL_APPLI() {
    std::int16_t ETAPE = 0;
    const auto report = [&ETAPE](const basic::RuntimeError& error) {
        forms::MsgBox(QStringLiteral("control appli: (%1) : ").arg(ETAPE) +
                      forms::ToQString(error.Description()));
    };
    try {
        const Text prefix = FolderPrefix();
        ++ETAPE;
        const std::shared_ptr<dao::Database> paths = OpenPathDatabase(prefix);
        ++ETAPE;
        const std::shared_ptr<dao::Recordset> table = OpenPathTable(*paths);
        OpenDataDatabase(*table);
        FindStockFolder(*table);
        ++ETAPE;
        CheckVersion();
    } catch (const basic::RuntimeError& error) {
        report(error);
    } catch (const std::bad_alloc&) {
        report(basic::RuntimeError(kOutOfMemory));
    }
}

}  // namespace quardele::shell
