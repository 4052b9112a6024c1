#include "command.h"

#include <algorithm>
#include <iterator>

#include "commands.h"

namespace quardele::mdb {

namespace {

constexpr Option kJsonOption{kJson,
                             nullptr,
                             {"un tableau JSON, un objet par ligne, au lieu de CSV",
                              "a JSON array, one object per line, instead of CSV"}};
constexpr Option kExclusiveOption{
    kExclusive, nullptr, {"ouvre le fichier pour soi seul", "opens the file for this command alone"}};

constexpr Option kRowOptions[] = {kJsonOption};
constexpr Option kExecOptions[] = {{kAtomic,
                                    nullptr,
                                    {"tout ou rien, quel que soit le nombre d'instructions",
                                     "all or nothing, whatever the number of statements"}},
                                   kExclusiveOption};
constexpr Option kImportOptions[] = {{kChunk,
                                      "N",
                                      {"enregistre toutes les N lignes au lieu de tout ou rien",
                                       "writes every N rows instead of all or nothing"}},
                                     kExclusiveOption};
constexpr Option kCheckOptions[] = {
    {kNotes,
     nullptr,
     {"montre aussi ce qui est anormal sans être un défaut", "shows as well what is odd but no fault"}}};
constexpr Option kRecoverOptions[] = {
    {kRollback,
     nullptr,
     {"remet les anciennes pages et supprime le journal", "puts the old pages back and deletes the journal"}},
    {kForce,
     nullptr,
     {"avec --rollback : même si quelqu'un a écrit depuis",
      "with --rollback: even if somebody has written since"}},
    {kKeep,
     nullptr,
     {"laisse le fichier tel quel et renomme le journal",
      "leaves the file as it is and renames the journal"}}};

constexpr Message kFile{"FICHIER", "FILE"};
constexpr Message kFileAndTable{"FICHIER TABLE", "FILE TABLE"};
constexpr Message kRowHelp{
    "Les dates sont AAAA-MM-JJ HH:MM:SS, vrai et faux 1 et 0, les données binaires en hexadécimal.\n"
    "En CSV, Null n'est rien du tout et un texte vide est \"\".",
    "Dates are YYYY-MM-DD HH:MM:SS, true and false 1 and 0, binary data hexadecimal.\n"
    "In CSV, Null is nothing at all and an empty text is \"\"."};

constexpr Command kCommands[] = {
    {"tables",
     kFile,
     1,
     1,
     {},
     {"noms des tables, un par ligne", "names of the tables, one per line"},
     {"", ""},
     RunTables},
    {"schema",
     {"FICHIER [TABLE]", "FILE [TABLE]"},
     1,
     2,
     {},
     {"tables et index, en SQL", "tables and indexes, as SQL"},
     {"Les instructions peuvent être exécutées par la commande exec.",
      "The command exec can run the statements."},
     RunSchema},
    {"query",
     {"FICHIER INSTRUCTION", "FILE STATEMENT"},
     2,
     2,
     kRowOptions,
     {"lignes d'une instruction SELECT", "rows of a SELECT statement"},
     kRowHelp,
     RunQuery},
    {"dump", kFileAndTable, 2, 2, kRowOptions, {"lignes d'une table", "rows of a table"}, kRowHelp, RunDump},
    {"exec",
     {"FICHIER INSTRUCTION", "FILE STATEMENT"},
     2,
     2,
     kExecOptions,
     {"exécute INSERT, UPDATE, DELETE, CREATE, ALTER, DROP",
      "runs INSERT, UPDATE, DELETE, CREATE, ALTER, DROP"},
     {"Plusieurs instructions sont séparées par « ; ». L'instruction « - » les lit sur l'entrée standard.\n"
      "Sans --atomic, celles qui précèdent une erreur restent faites. Le nombre de lignes est affiché.",
      "Several statements are separated by \";\". The statement \"-\" reads them from the standard input.\n"
      "Without --atomic those before an error stay done. The number of rows is printed."},
     RunExec},
    {"import",
     {"FICHIER TABLE CSV", "FILE TABLE CSV"},
     3,
     3,
     kImportOptions,
     {"ajoute à une table les lignes d'un fichier CSV", "adds the rows of a CSV file to a table"},
     {"La première ligne nomme les colonnes ; les valeurs sont comme dump les écrit. Le fichier « - » est\n"
      "l'entrée standard. Une erreur nomme la ligne et, sans --chunk, rien n'est ajouté.",
      "The first line names the columns; values are as dump writes them. The file \"-\" is the standard\n"
      "input. An error names the line and, without --chunk, nothing is added."},
     RunImport},
    {"check",
     kFile,
     1,
     1,
     kCheckOptions,
     {"contrôle tout le fichier, une ligne par défaut", "checks the whole file, one line per fault"},
     {"Le code de retour est 1 quand il y a un défaut.", "The exit code is 1 when there is a fault."},
     RunCheck},
    {"compact",
     {"SOURCE CIBLE", "SOURCE TARGET"},
     2,
     2,
     {},
     {"copie un fichier sans ses vides", "copies a file without its gaps"},
     {"La cible ne doit pas exister ; la source n'est pas changée.",
      "The target must not exist; the source is not changed."},
     RunCompact},
    {"create",
     kFile,
     1,
     1,
     {},
     {"fait un fichier sans tables", "makes a file without tables"},
     {"", ""},
     RunCreate},
    {"recover",
     kFile,
     1,
     1,
     kRecoverOptions,
     {"montre ou termine une écriture interrompue", "shows or ends an interrupted write"},
     {"Sans option, montre page par page ce que le journal garde : avant, après, maintenant.",
      "Without an option, shows page by page what the journal keeps: before, after, now."},
     RunRecover},
    {"keys",
     {"FICHIER TABLE INDEX", "FILE TABLE INDEX"},
     3,
     3,
     {},
     {"entrées d'un index : clé, page, ligne", "entries of an index: key, page, row"},
     {"", ""},
     RunKeys},
};

}  // namespace

std::span<const Command> Commands() {
    return kCommands;
}

const Command* FindCommand(std::string_view name) {
    const auto* found = std::find_if(std::begin(kCommands), std::end(kCommands),
                                     [name](const Command& command) { return name == command.name; });
    return found == std::end(kCommands) ? nullptr : found;
}

}  // namespace quardele::mdb
