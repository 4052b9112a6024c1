#include "word_error.h"

namespace quardele::word::writer {

namespace {

basic::Text Describe(WordError error) {
    switch (error) {
        case WordError::ReadOnlyProperty:
            return u"Cette propriété est en lecture seule.";
        case WordError::MissingArgument:
            return u"Un argument obligatoire manque.";
        case WordError::BadParameter:
            return u"Paramètre incorrect.";
        case WordError::CommandFailed:
            return u"Échec de la commande.";
        case WordError::NoDocument:
            return u"Cette commande n'est pas disponible car aucun document n'est ouvert.";
        case WordError::NotInTable:
            return u"Cette commande n'est pas disponible car la sélection n'est pas dans un tableau.";
        case WordError::OutOfRange:
            return u"Valeur hors limites.";
        case WordError::BadFileName:
            return u"Le document ne peut pas être enregistré sous ce nom : le dossier n'existe pas, ou "
                   u"l'écriture n'y est pas autorisée.";
        case WordError::FileNotFound:
            return u"Ce fichier est introuvable ou ne peut pas être lu.";
        case WordError::ObjectDeleted:
            return u"Cet objet a été supprimé : sa fenêtre a peut-être été fermée.";
        case WordError::NoSuchElement:
            return u"Le membre demandé de la collection n'existe pas.";
    }
    return {};
}

}  // namespace

basic::RuntimeError Failure(WordError error) {
    return {static_cast<int>(error), Describe(error)};
}

}  // namespace quardele::word::writer
