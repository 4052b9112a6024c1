#include "sql_error.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <basic/conversion.h>

namespace quardele::sql {
namespace {

/// Longer pieces of a statement are cut in descriptions, which operators read in a message box.
constexpr std::size_t kLongestQuote = 120;

struct Description {
    int number;
    const char16_t* before;  ///< stands before the quoted name
    const char16_t* after;
};

constexpr Description kDescriptions[] = {
    {error::kAmbiguousName, u"Le champ ", u" peut désigner plusieurs tables de la clause FROM."},
    {error::kDuplicateSource, u"La table ", u" figure deux fois dans la clause FROM sous le même nom."},
    {error::kOrderOutsideDistinct, u"La clause ORDER BY (", u") est incompatible avec DISTINCT."},
    {error::kNestedAggregate, u"Fonction d'agrégat interdite dans l'expression ", u"."},
    {error::kAggregateInWhere, u"Fonction d'agrégat interdite dans la clause WHERE : ", u"."},
    {error::kAggregateInJoin, u"Fonction d'agrégat interdite dans l'opération JOIN : ", u"."},
    {error::kAggregateInGroupBy, u"Fonction d'agrégat interdite dans la clause GROUP BY : ", u"."},
    {error::kDuplicateTarget, u"Le champ ", u" reçoit deux valeurs."},
    {error::kUnknownInsertField, u"L'instruction INSERT INTO contient le nom de champ inconnu ", u"."},
    {error::kNotUpdatable, u"L'opération doit utiliser une requête qui peut être mise à jour : ",
     u" ne peut pas être modifié par cette instruction."},
    {error::kCircularAlias, u"Référence circulaire causée par l'alias ", u" de la liste SELECT."},
};

struct Place {
    int number;
    const char16_t* text;
};

constexpr Place kSyntaxPlaces[] = {
    {error::kSyntaxInFrom, u"dans la clause FROM"},
    {error::kSyntaxInSelect, u"dans la clause SELECT"},
    {error::kSyntaxInOrderBy, u"dans la clause ORDER BY"},
    {error::kSyntaxInInsert, u"dans l'instruction INSERT INTO"},
    {error::kSyntaxInUpdate, u"dans l'instruction UPDATE"},
    {error::kSyntaxInDelete, u"dans l'instruction DELETE"},
    {error::kSyntaxInCreateTable, u"dans l'instruction CREATE TABLE"},
    {error::kSyntaxInCreateIndex, u"dans l'instruction CREATE INDEX"},
    {error::kSyntaxInAlterTable, u"dans l'instruction ALTER TABLE"},
    {error::kSyntaxInConstraint, u"dans la clause CONSTRAINT"},
    {error::kSyntaxInFieldDefinition, u"dans la définition de champ"},
    {error::kSyntaxInDefinition, u"dans l'instruction de définition de données"},
};

/// What calculating and comparing fail with.
constexpr int kCalculationErrors[] = {error::kInvalidCall,  error::kOverflow,    error::kDivisionByZero,
                                      error::kTypeMismatch, error::kInvalidNull, error::kDataTypeMismatch};

/// So many unknown names are told.
constexpr std::size_t kMostNames = 5;

/// The names in the order of their capitals.
Text DescriptionOfMissing(const UnknownNames& names) {
    Text description =
        basic::Describe(error::kTooFewParameters, basic::NumberText(static_cast<double>(names.size())));
    description.pop_back();
    std::size_t told = 0;
    for (const auto& [capitals, name] : names) {
        if (told == kMostNames) {
            return description + u" …";
        }
        description += (told++ == 0 ? u" : " : u", ") + Quoted(name);
    }
    return description + u".";
}

Text SyntaxPlace(int number) {
    const auto* found = std::find_if(std::begin(kSyntaxPlaces), std::end(kSyntaxPlaces),
                                     [number](const Place& place) { return place.number == number; });
    return found == std::end(kSyntaxPlaces) ? u"dans l'expression" : found->text;
}

}  // namespace

Text Quoted(TextView text) {
    Text quoted = u"« ";
    quoted += text.substr(0, kLongestQuote);
    quoted += text.size() > kLongestQuote ? u" … »" : u" »";
    return quoted;
}

void FailNaming(int number, TextView name) {
    const auto* found = std::find_if(std::begin(kDescriptions), std::end(kDescriptions),
                                     [number](const Description& d) { return d.number == number; });
    if (found == std::end(kDescriptions)) {
        throw basic::RuntimeError(number, basic::Describe(number, name));
    }
    throw basic::RuntimeError(number, found->before + Quoted(name) + found->after);
}

void FailSyntax(int number, TextView reason, TextView expression, TextView stop) {
    Text description = u"Erreur de syntaxe (";
    description += reason;
    description += u") " + SyntaxPlace(number);
    if (!expression.empty()) {
        description += u" " + Quoted(expression);
    }
    description += stop.empty() ? Text(u", à la fin.") : u", près de " + Quoted(stop) + u".";
    throw basic::RuntimeError(number, description);
}

void FailTooComplex(TextView what) {
    throw basic::RuntimeError(error::kTooComplex, u"La requête est trop complexe : " + Text(what) + u".");
}

void FailIn(const basic::RuntimeError& failure, TextView expression) {
    const auto* found =
        std::find(std::begin(kCalculationErrors), std::end(kCalculationErrors), failure.Number());
    if (found == std::end(kCalculationErrors) || failure.Description() != basic::DescriptionOf(*found)) {
        throw;
    }
    const Text what = failure.Number() == error::kDataTypeMismatch ? u"Types de données incompatibles"
                                                                   : failure.Description();
    throw basic::RuntimeError(failure.Number(), what + u" dans l'expression " + Quoted(expression) + u".");
}

MissingParameters::MissingParameters(UnknownNames names)
    : RuntimeError(error::kTooFewParameters, DescriptionOfMissing(names)), names_(std::move(names)) {}

}  // namespace quardele::sql
