#include "structure_patch.h"

#include <algorithm>
#include <optional>

#include <basic/conversion.h>
#include <basic/resume_next.h>
#include <forms/msg_box.h>
#include <forms/strings.h>
#include <shell/session.h>

namespace quardele::shell {

namespace {

using basic::Text;
using basic::TextView;

constexpr TextView kColumns[] = {u"TVEH_Note1", u"TVEH_Note2"};
constexpr int kColumnSize = 100;
constexpr TextView kLineBreak = u"\r\n";

dao::Field NoteField(TextView name) {
    dao::Field field = dao::TableDef::CreateField();
    field.name = name;
    field.type = dao::FieldType::Text;
    field.size = kColumnSize;
    field.allowZeroLength = true;
    field.defaultValue = Text();
    return field;
}

/// One run of the patch. Each statement stands alone; a failing one is skipped.
class StructurePatch {
 public:
    void TakeTable() {
        statement_([this] {
            const std::shared_ptr<dao::Database>& database = TheSession().BD_DONNEES;
            if (!database) {
                throw basic::RuntimeError(basic::error::kObjectNotSet);
            }
            table_ = database->TableDefNamed(u"TVEH");
        });
    }

    /// True when the column was missing.
    bool AddWhenMissing(TextView column) {
        bool found = false;
        statement_([&] { found = Has(column); });
        if (found) {
            return false;
        }
        statement_([&] { Table().AppendField(NoteField(column)); });
        statement_([&] {
            JOURNAL_PATCH += Text(u"- Ajout champ ")
                                 .append(column)
                                 .append(u" - Table : ")
                                 .append(Table().Name())
                                 .append(kLineBreak);
        });
        // A description reads as a number in no ordinary run: the conversion fails and the flag stays.
        statement_([&] { PATCH_EN_ATTENTE = basic::CDbl(statement_.Description()) == 0; });
        return true;
    }

    void TellOperator() const {
        Text message;
        if (PATCH_EN_ATTENTE) {
            message.append(u"Une mise à jour de structure doit être effectuée.").append(kLineBreak);
            message.append(JOURNAL_PATCH).append(kLineBreak);
            message.append(u"Cela impose que tous les utilisateurs quittent QUARDELE...");
        } else {
            message.append(u"Une mise à jour de structure des données a été effectuée.").append(kLineBreak);
            message.append(JOURNAL_PATCH).append(kLineBreak).append(kLineBreak);
            message.append(u"L'application doit être redémarrée...");
        }
        forms::MsgBox(forms::ToQString(message));
    }

 private:
    /// Throws RuntimeError 91 while there is no data database or no such table.
    [[nodiscard]] dao::TableDef& Table() {
        if (!table_) {
            throw basic::RuntimeError(basic::error::kObjectNotSet);
        }
        return *table_;
    }
    /// Compares names exactly, unlike the engine.
    [[nodiscard]] bool Has(TextView column) {
        const std::vector<dao::Field>& fields = Table().Fields();
        return std::any_of(fields.begin(), fields.end(),
                           [column](const dao::Field& field) { return field.Name() == column; });
    }

    basic::ResumeNext statement_;
    std::optional<dao::TableDef> table_;
    /// One line per column added.
    Text JOURNAL_PATCH;
    /// Whether the change waits for the others to leave.
    bool PATCH_EN_ATTENTE = false;
};

}  // namespace

bool PATCH_VEH() {
    StructurePatch patch;
    patch.TakeTable();
    bool changed = false;
    for (const TextView column : kColumns) {
        changed = patch.AddWhenMissing(column) || changed;
    }
    if (changed) {
        patch.TellOperator();
    }
    return changed;
}

}  // namespace quardele::shell
