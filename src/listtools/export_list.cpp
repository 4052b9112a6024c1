#include "export_list.h"

#include <optional>

#include <basic/paths.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/translation.h>

#include "pointer.h"

namespace quardele::listtools {

namespace {

using services::TRAD;

void WriteFile(forms::Grid& grid, const QString& name) {
    const bool protect = grid.Protect();
    grid.SetProtect(false);
    grid.SetPrintColHeaders(true);
    forms::Screen::SetMousePointer(kBusyPointer);
    grid.ExportToExcel(name, QStringLiteral("Feuille1"), QString());
    forms::Screen::SetMousePointer(kNormalPointer);
    grid.SetProtect(protect);
}

bool AskAndWrite(forms::Grid& grid) {
    if (forms::MsgBox(TRAD(QStringLiteral("Confirmez-vous la création du fichier Excel ?")),
                      forms::BoxButtons::YesNo) == forms::BoxAnswer::No) {
        return false;
    }
    const QString name = grid.ToolTipText() + QStringLiteral(".XLS");
    WriteFile(grid, name);
    forms::MsgBox(TRAD(QStringLiteral("Votre fichier Excel a été créé dans ")) +
                  forms::ToQString(basic::CurDir()) + QStringLiteral("   sous le nom :  ") + name);
    return true;
}

/// None where no record is current, as in an empty list, which is exported with its headings alone.
std::optional<dao::Bookmark> PlaceOf(const dao::Recordset& rows) {
    return rows.Bof() || rows.Eof() ? std::nullopt : std::optional(rows.CurrentBookmark());
}

}  // namespace

bool ExportList(forms::Grid& grid, forms::DataControl* data) {
    if (data == nullptr) {
        return AskAndWrite(grid);
    }
    const std::optional<dao::Bookmark> place = PlaceOf(data->Opened());
    const bool written = AskAndWrite(grid);
    if (place) {
        data->Opened().SetBookmark(*place);
    }
    return written;
}

}  // namespace quardele::listtools
