#include "statement_text.h"

#include <algorithm>
#include <set>

#include <basic/conversion.h>
#include <basic/date_literal.h>
#include <forms/strings.h>

namespace quardele::engine {

using basic::EqualNoCase;
using forms::ToText;
using formula::Comparison;

namespace {

Text Bracketed(TextView name) {
    return u"[" + Text(name) + u"]";
}

TextView Sign(Comparison comparison) {
    switch (comparison) {
        case Comparison::Equal:
            return u" = ";
        case Comparison::NotEqual:
            return u" <> ";
        case Comparison::Less:
            return u" < ";
        case Comparison::LessOrEqual:
            return u" <= ";
        case Comparison::Greater:
            return u" > ";
        case Comparison::GreaterOrEqual:
            return u" >= ";
    }
    return {};
}

Text QuotedText(TextView text) {
    return u"'" + basic::Replace(text, u"'", u"''") + u"'";
}

/// A number as statements write it, whatever the workstation's settings.
Text NumberLiteral(double number) {
    Text text = basic::NumberText(number);
    std::replace(text.begin(), text.end(), u',', u'.');
    return text;
}

class StatementWriter {
 public:
    StatementWriter(const ReportDefinition& report, FormulaSet& formulas)
        : report_(report), formulas_(formulas) {}

    Text Run(const CompiledFormula& selection) {
        const Text order = OrderBy();
        const Text from = From();
        const Text where = Where(selection);
        return u"SELECT " + ColumnList() + u" FROM " + from + where + order;
    }

 private:
    [[nodiscard]] Text Qualified(std::size_t column) const {
        const Column& asked = formulas_.Columns()[column];
        return Bracketed(ToText(asked.table->Name())) + u"." + Bracketed(asked.field);
    }
    [[nodiscard]] Text Qualified(const QString& table, const QString& field) {
        return Qualified(formulas_.ColumnOf(ToText(table), ToText(field)));
    }
    /// Such a column has one value for all records, which no statement has to choose or order by.
    [[nodiscard]] bool IsOfFirstRecord(std::size_t column) const {
        return formulas_.Columns()[column].table->FirstRecordOnly();
    }

    /// A report that shows no field counts its records all the same.
    [[nodiscard]] Text ColumnList() const {
        Text list;
        for (std::size_t column = 0; column < formulas_.Columns().size(); ++column) {
            if (!IsOfFirstRecord(column)) {
                list += (list.empty() ? u"" : u", ") + Qualified(column);
            }
        }
        return list.empty() ? Text(u"1") : list;
    }

    // Tables.

    [[nodiscard]] static Text Named(const Table& table) {
        return Bracketed(ToText(table.Source())) + u" AS " + Bracketed(ToText(table.Name()));
    }

    [[nodiscard]] Text From() {
        Text from;
        int joined = 0;
        for (const std::shared_ptr<Table>& table : report_.database.Tables()) {
            if (table->FirstRecordOnly()) {
                RequireUnlinked(*table);
            } else if (++joined == 1) {
                from = Named(*table);
            } else {
                from = Joined(joined > 2 ? InParentheses(from) : from, *table);
            }
        }
        return from;
    }

    [[nodiscard]] static Text InParentheses(const Text& from) { return u"(" + from + u")"; }

    [[nodiscard]] Text Joined(const Text& from, const Table& table) {
        const Text conditions = LinksTo(table);
        return from + (IsOuter(table) ? u" LEFT JOIN " : u" INNER JOIN ") + Named(table) + u" ON " +
               conditions;
    }

    void RequireUnlinked(const Table& table) const {
        for (const Link& link : report_.links) {
            if (IsOf(link.from, table) || IsOf(link.to, table)) {
                throw basic::RuntimeError(
                    basic::error::kInvalidArgument,
                    ToText(
                        QStringLiteral("La table « %1 » ne donne que son premier enregistrement : aucun lien "
                                       "ne la concerne.")
                            .arg(table.Name())));
            }
        }
    }

    [[nodiscard]] static bool IsOf(const FieldName& name, const Table& table) {
        return name.table.compare(table.Name(), Qt::CaseInsensitive) == 0;
    }

    [[nodiscard]] bool IsOuter(const Table& table) const {
        return std::all_of(report_.links.begin(), report_.links.end(),
                           [&table](const Link& link) { return !IsOf(link.to, table) || link.outer; });
    }

    [[nodiscard]] Text LinksTo(const Table& table) {
        Text conditions;
        for (const Link& link : report_.links) {
            if (IsOf(link.to, table)) {
                conditions += (conditions.empty() ? u"" : u" AND ") +
                              Qualified(link.from.table, link.from.field) + u" = " +
                              Qualified(link.to.table, link.to.field);
            }
        }
        if (conditions.empty()) {
            throw basic::RuntimeError(
                basic::error::kInvalidArgument,
                ToText(QStringLiteral("Rien ne relie la table « %1 » aux autres tables de l'état.")
                           .arg(table.Name())));
        }
        return conditions;
    }

    // Records.

    [[nodiscard]] Text Where(const CompiledFormula& selection) const {
        Text where;
        for (const formula::Requirement& requirement : selection.formula.Requirements()) {
            const auto& place = std::get<FieldPlace>(selection.places[requirement.reference]);
            const Text literal = IsOfFirstRecord(place.column) ? Text() : Literal(requirement);
            if (!literal.empty()) {
                where += (where.empty() ? u" WHERE " : u" AND ") + Qualified(place.column) +
                         Text(Sign(requirement.comparison)) + literal;
            }
        }
        return where;
    }

    /// Texts are compared in the formula's way for equality only: the file's order of texts is its own.
    [[nodiscard]] static Text Literal(const formula::Requirement& requirement) {
        const Variant& value = requirement.value;
        if (value.IsText()) {
            return requirement.comparison == Comparison::Equal ? QuotedText(value.As<Text>()) : Text();
        }
        if (value.IsDate()) {
            return basic::WriteDateLiteral(value.As<basic::Date>());
        }
        return value.Is<double>() ? NumberLiteral(value.As<double>()) : Text();
    }

    [[nodiscard]] Text OrderBy() {
        Text order;
        std::set<std::size_t> sorted;
        const auto add = [&](const QString& table, const QString& field, SortDirection direction) {
            const std::size_t column = formulas_.ColumnOf(ToText(table), ToText(field));
            if (!IsOfFirstRecord(column) && sorted.insert(column).second) {
                order += (order.empty() ? u" ORDER BY " : u", ") + Qualified(column) +
                         (direction == SortDirection::Descending ? u" DESC" : u"");
            }
        };
        for (const Group& group : report_.groups) {
            add(group.by.table, group.by.field, group.direction);
        }
        for (const SortField& field : report_.sort.All()) {
            add(field.table, field.field, field.direction);
        }
        return order;
    }

    const ReportDefinition& report_;
    FormulaSet& formulas_;
};

}  // namespace

Text StatementText(const ReportDefinition& report, FormulaSet& formulas, const CompiledFormula& selection) {
    return StatementWriter(report, formulas).Run(selection);
}

}  // namespace quardele::engine
