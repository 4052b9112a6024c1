#include <shell/document_links.h>

#include <basic/paths.h>
#include <basic/shell.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/translation.h>
#include <shell/form_support.h>
#include <shell/session.h>

namespace quardele::shell {

namespace {

bool IsThere(const QString& file) {
    return !basic::Dir(forms::ToText(file)).empty();
}

}  // namespace

void OpenDocumentLinks(const QString& module, const QString& key) {
    const QString stock = TheSession().CHEMIN_STOCK;
    // The tool belongs to the suite and lies in the suite's folder, above this program's own.
    const QString program = Dossier_Parent(forms::App::Path()) + QStringLiteral("VFoliant.exe");
    if (!IsThere(stock + QStringLiteral("FOLIANT.MDB")) || !IsThere(program)) {
        forms::MsgBox(services::TRAD(
            QStringLiteral("Cette fonction nécessite le module de gestion des liens documentaire (contacter "
                           "BRESSIMOR)")));
        return;
    }
    basic::Shell(forms::ToText(program + u' ' + stock + u',' + module + u',' + key));
}

}  // namespace quardele::shell
