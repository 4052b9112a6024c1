#include <basic/runtime_error.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quardele::basic {
namespace {

struct Entry {
    int number;
    /// Complete as it stands.
    const char16_t* general;
    /// With places "|1" and "|2" for names; null when the description names nothing.
    const char16_t* named = nullptr;
};

constexpr Entry kDescriptions[] = {
    // The language's own.
    {error::kInvalidCall, u"Argument ou appel de procédure incorrect"},
    {error::kOverflow, u"Dépassement de capacité"},
    {error::kSubscript, u"L'indice n'appartient pas à la sélection"},
    {error::kDivisionByZero, u"Division par zéro"},
    {error::kTypeMismatch, u"Type incompatible"},
    {error::kBadFileName, u"Nom ou numéro de fichier incorrect"},
    {error::kFileNotFound, u"Fichier introuvable", u"Fichier introuvable : « |1 »"},
    {error::kFileAlreadyOpen, u"Fichier déjà ouvert"},
    {error::kDeviceIo, u"Erreur d'entrée/sortie"},
    {error::kDiskFull, u"Disque plein"},
    {error::kPermissionDenied, u"Permission refusée"},
    {error::kPathFileAccess, u"Accès au chemin ou au fichier impossible"},
    {error::kPathNotFound, u"Chemin d'accès introuvable", u"Chemin d'accès introuvable : « |1 »"},
    {error::kObjectNotSet, u"Variable objet non définie"},
    {error::kInvalidNull, u"Utilisation incorrecte de Null"},
    {error::kInvalidFileFormat, u"Format de fichier incorrect", u"Format de fichier incorrect : « |1 »"},
    {error::kCannotCreateObject, u"Le composant ne peut pas créer l'objet",
     u"Le composant ne peut pas créer l'objet « |1 »"},
    {error::kNoSuchMember, u"Cet objet ne connaît pas cette propriété ou méthode",
     u"Cet objet ne connaît pas la propriété ou la méthode « |1 »"},
    {error::kServerGone, u"Le serveur distant n'existe plus ou ne répond pas"},
    {error::kInvalidPicture, u"Image incorrecte", u"Image incorrecte : « |1 »"},
    {error::kPrinterError, u"Erreur d'imprimante"},

    // The database engine's.
    {error::kInvalidArgument, u"Argument incorrect."},
    {error::kLinkedTableMissing, u"L'objet de base de données demandé est introuvable.",
     u"L'objet « |1 » est introuvable dans la base de données. Vérifiez qu'il existe et que son nom est "
     u"correctement orthographié."},
    {error::kIndexNotFound, u"Cet index n'existe pas dans la table.",
     u"« |1 » n'est pas un index de cette table."},
    {error::kNotAnIndex, u"Opération impossible : aucun index n'est en cours."},
    {error::kUpdateWithoutEdit, u"Update ou CancelUpdate sans AddNew ni Edit préalable."},
    {error::kNoCurrentRecord, u"Aucun enregistrement en cours."},
    {error::kDuplicateKey,
     u"Les modifications n'ont pas été enregistrées : elles créeraient un doublon dans un index, une clé "
     u"primaire ou une relation qui n'en admet pas."},
    {error::kFileMissing, u"Fichier introuvable.", u"Le fichier « |1 » est introuvable."},
    {error::kDiskFullDatabase, u"Espace disque insuffisant."},
    {error::kReadOnly, u"Mise à jour impossible : la base de données ou l'objet est en lecture seule."},
    {error::kBadPassword, u"Mot de passe incorrect."},
    {error::kBadPath, u"Le chemin d'accès est incorrect.",
     u"« |1 » n'est pas un chemin d'accès correct. Vérifiez son orthographe et la connexion au serveur."},
    {error::kFileInUse, u"Le fichier est déjà utilisé.",
     u"Le fichier « |1 » ne peut pas être utilisé : il l'est déjà."},
    {error::kRecordTooLarge, u"L'enregistrement est trop grand."},
    {error::kCannotOpenFile,
     u"Le fichier ne peut pas être ouvert. Il est déjà ouvert en mode exclusif, ou sa lecture n'est pas "
     u"autorisée.",
     u"Le fichier « |1 » ne peut pas être ouvert. Il est déjà ouvert en mode exclusif, ou sa lecture n'est "
     u"pas autorisée."},
    {error::kNullInPrimaryKey, u"Une clé primaire ou un index ne peut pas contenir de valeur Null."},
    {error::kTooFewParameters, u"Trop peu de paramètres.", u"Trop peu de paramètres. |1 attendu."},
    {error::kSyntaxError, u"Erreur de syntaxe dans l'expression.",
     u"Erreur de syntaxe dans l'expression « |1 »."},
    {error::kNoSuchTable, u"La table ou la requête source est introuvable.",
     u"La table ou la requête source « |1 » est introuvable. Vérifiez qu'elle existe et que son nom est "
     u"correctement orthographié."},
    {error::kUndefinedFunction, u"Fonction non définie dans l'expression.",
     u"Fonction « |1 » non définie dans l'expression."},
    {error::kNotInAggregate, u"L'expression ne fait pas partie d'une fonction d'agrégat.",
     u"L'expression « |1 » n'est ni un critère de regroupement ni un argument d'une fonction d'agrégat."},
    {error::kSyntaxInFrom, u"Erreur de syntaxe dans la clause FROM."},
    {error::kSyntaxInSelect,
     u"L'instruction SELECT comporte un mot réservé ou un nom mal orthographié ou absent, ou sa ponctuation "
     u"est incorrecte."},
    {error::kSyntaxInSql, u"Erreur de syntaxe dans l'instruction UPDATE."},
    {error::kInvalidBookmark, u"Ce signet n'est pas correct."},
    {error::kTextTooLong, u"Le champ est trop petit pour la quantité de données à y placer.",
     u"Le champ « |1 » est trop petit pour la quantité de données à y placer."},
    {error::kFieldNotUpdatable, u"Le champ ne peut pas être mis à jour.",
     u"Le champ « |1 » ne peut pas être mis à jour."},
    {error::kRecordDeleted, u"L'enregistrement est supprimé."},
    {error::kLockedHere,
     u"Mise à jour impossible : une autre partie de ce programme détient l'enregistrement."},
    {error::kFieldExists, u"Ce nom de champ existe déjà dans la table.",
     u"Le champ « |1 » existe déjà dans la table."},
    {error::kFileInUseBy, u"La base de données est utilisée par un autre utilisateur.",
     u"La base de données « |1 » est utilisée par un autre utilisateur. Réessayez quand elle sera libre."},
    {error::kRecordChanged,
     u"Opération arrêtée : un autre utilisateur tente de modifier les mêmes données au même moment."},
    {error::kTableInUse, u"La table est déjà utilisée par un autre utilisateur ou un autre processus.",
     u"La table « |1 » est déjà utilisée par un autre utilisateur ou un autre processus."},
    {error::kOperationNotSupported, u"Cet objet ne permet pas cette opération."},
    {error::kInvalidOperation, u"Opération incorrecte."},
    {error::kRecordLocked,
     u"Mise à jour impossible : l'enregistrement est verrouillé par un autre utilisateur.",
     u"Mise à jour impossible : l'enregistrement est verrouillé par l'utilisateur « |1 » du poste « |2 »."},
    {error::kNoSuchField, u"Élément introuvable dans cette collection.",
     u"Élément « |1 » introuvable dans cette collection."},
    {error::kNullRequired, u"Ce champ est obligatoire : il ne peut pas contenir de valeur Null.",
     u"Le champ « |1 » est obligatoire : il ne peut pas contenir de valeur Null."},
    {error::kEmptyText, u"Ce champ ne peut pas contenir de texte vide.",
     u"Le champ « |1 » ne peut pas contenir de texte vide."},
    {error::kNotADatabase, u"Format de base de données non reconnu.",
     u"Format de base de données « |1 » non reconnu."},
    {error::kOpenExclusive,
     u"La base de données est ouverte en mode exclusif par un autre utilisateur. Réessayez quand elle sera "
     u"libre.",
     u"La base de données « |1 » est ouverte en mode exclusif par un autre utilisateur. Réessayez quand elle "
     u"sera libre."},
    {error::kTableExists, u"Cette table existe déjà.", u"La table « |1 » existe déjà."},
    {error::kBadName, u"Ce nom n'est pas correct.",
     u"« |1 » n'est pas un nom correct : il est vide ou trop long, commence par un espace ou contient un "
     u"caractère interdit."},
    {error::kTooManyFields, u"Une table ne peut pas avoir autant de champs."},
    {error::kDatabaseExists, u"La base de données existe déjà.", u"La base de données « |1 » existe déjà."},
    {error::kUsedInRelation, u"Suppression impossible : une relation utilise cet index ou cette table.",
     u"Suppression impossible : une relation utilise « |1 »."},
    {error::kPrimaryKeyExists, u"La table a déjà une clé primaire."},
    {error::kIndexExists, u"Cet index existe déjà dans la table.",
     u"L'index « |1 » existe déjà dans la table."},
    {error::kCannotDropTable, u"Cette table ne peut pas être supprimée.",
     u"La table « |1 » ne peut pas être supprimée : elle est du système ou se trouve dans un autre fichier."},
    {error::kBadIndexField, u"La définition de l'index nomme un champ qui ne convient pas.",
     u"La définition de l'index ne peut pas nommer le champ « |1 »."},
    {error::kTooManyIndexes, u"Une table ne peut pas avoir autant d'index.",
     u"La table « |1 » ne peut pas avoir plus d'index."},
    {error::kObjectClosed, u"Cet objet est fermé ou n'est plus défini."},
    {error::kTypeConversion, u"Erreur de conversion de type de données."},
    {error::kDataTypeMismatch, u"Types de données incompatibles dans l'expression du critère."},
};

constexpr char16_t kUnknown[] = u"Erreur définie par l'application";

const Entry* Find(int number) {
    const auto* entry = std::find_if(std::begin(kDescriptions), std::end(kDescriptions),
                                     [number](const Entry& e) { return e.number == number; });
    return entry == std::end(kDescriptions) ? nullptr : entry;
}

/// Fills in both names in one pass, so that a name may contain "|2" itself.
Text FilledIn(TextView pattern, TextView first, TextView second) {
    Text result;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const TextView place = pattern.substr(i, 2);
        if (place == u"|1" || place == u"|2") {
            result += place == u"|1" ? first : second;
            ++i;
        } else {
            result += pattern[i];
        }
    }
    return result;
}

}  // namespace

RuntimeError::RuntimeError(int number) : RuntimeError(number, DescriptionOf(number)) {}

RuntimeError::RuntimeError(int number, Text description)
    : number_(number),
      description_(std::move(description)),
      what_(std::to_string(number) + ": " + ToUtf8(description_)) {}

Text DescriptionOf(int number) {
    const Entry* entry = Find(number);
    return entry != nullptr ? entry->general : kUnknown;
}

Text Describe(int number, TextView first, TextView second) {
    const Entry* entry = Find(number);
    if (entry == nullptr || entry->named == nullptr) {
        return DescriptionOf(number);
    }
    return FilledIn(entry->named, first, second);
}

}  // namespace quardele::basic
