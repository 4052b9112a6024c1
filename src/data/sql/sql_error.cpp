#include "sql_error.h"

#include <algorithm>
#include <iterator>

#include <basic/conversion.h>

namespace quardele::sql {
namespace {

/// Longer pieces of a statement are cut in descriptions, which operators read in a message box.
constexpr std::size_t kLongestQuote = 120;

Text Quoted(TextView text) {
    Text quoted = u"« ";
    quoted += text.substr(0, kLongestQuote);
    quoted += text.size() > kLongestQuote ? u" … »" : u" »";
    return quoted;
}

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
    {error::kCircularAlias, u"Référence circulaire causée par l'alias ", u" de la liste SELECT."},
};

Text SyntaxPlace(int number) {
    switch (number) {
        case error::kSyntaxInFrom:
            return u"dans la clause FROM";
        case error::kSyntaxInSelect:
            return u"dans la clause SELECT";
        case error::kSyntaxInOrderBy:
            return u"dans la clause ORDER BY";
        default:
            return u"dans l'expression";
    }
}

}  // namespace

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

void FailTooComplex() {
    throw basic::RuntimeError(error::kTooComplex, u"La requête est trop complexe.");
}

void FailMissingParameters(std::size_t count) {
    FailNaming(error::kTooFewParameters, basic::NumberText(static_cast<double>(count)));
}

}  // namespace quardele::sql
