#include "compiled_section.h"

#include <forms/strings.h>

namespace quardele::engine {
namespace {

QString NameOf(SectionKind kind) {
    switch (kind) {
        case SectionKind::ReportHeader:
            return QStringLiteral("en-tête d'état");
        case SectionKind::PageHeader:
            return QStringLiteral("en-tête de page");
        case SectionKind::GroupHeader:
            return QStringLiteral("en-tête de groupe");
        case SectionKind::Details:
            return QStringLiteral("détail");
        case SectionKind::GroupFooter:
            return QStringLiteral("pied de groupe");
        case SectionKind::PageFooter:
            return QStringLiteral("pied de page");
        case SectionKind::ReportFooter:
            return QStringLiteral("pied d'état");
    }
    return {};
}

class SectionCompiler {
 public:
    SectionCompiler(const Section& section, FormulaSet& formulas)
        : section_(section),
          formulas_(formulas),
          where_(NameOf(section.Kind())),
          knowsPage_(section.Kind() == SectionKind::PageHeader || section.Kind() == SectionKind::PageFooter) {
    }

    CompiledSection Run() {
        return {&section_, Condition(section_.suppress, where_), Objects(section_.objects)};
    }

 private:
    [[nodiscard]] std::optional<CompiledFormula> Condition(const QString& text, const QString& where) {
        if (text.trimmed().isEmpty()) {
            return std::nullopt;
        }
        CompiledFormula condition = formulas_.Compile(text, where + QStringLiteral(", suppress"));
        if (condition.onTotal || (condition.onPage && !knowsPage_)) {
            throw basic::RuntimeError(
                basic::error::kInvalidArgument,
                u"Un numéro de page n'est pas encore connu ici (" + condition.where + u").");
        }
        return condition;
    }

    [[nodiscard]] std::vector<CompiledObject> Objects(
        const std::vector<std::shared_ptr<ReportObject>>& objects) {
        std::vector<CompiledObject> compiled;
        for (const std::shared_ptr<ReportObject>& object : objects) {
            compiled.push_back(Object(*object));
        }
        return compiled;
    }

    [[nodiscard]] CompiledObject Object(const ReportObject& object) {
        CompiledObject compiled{
            .object = &object, .suppress = Condition(object.suppress, where_), .value = {}, .cells = {}};
        if (object.Kind() == ObjectKind::Field) {
            const auto& field = static_cast<const FieldObject&>(object);
            compiled.value =
                formulas_.Compile(field.value, where_ + QStringLiteral(", champ %1").arg(field.value));
        } else if (object.Kind() == ObjectKind::Flow) {
            for (const FlowCell& cell : static_cast<const FlowObject&>(object).cells) {
                compiled.cells.push_back({&cell, Condition(cell.suppress, where_), Objects(cell.objects)});
            }
        }
        return compiled;
    }

    const Section& section_;
    FormulaSet& formulas_;
    QString where_;
    bool knowsPage_;
};

}  // namespace

CompiledSections CompileSections(const std::vector<std::shared_ptr<Section>>& sections,
                                 FormulaSet& formulas) {
    CompiledSections compiled;
    for (const std::shared_ptr<Section>& section : sections) {
        compiled.push_back(SectionCompiler(*section, formulas).Run());
    }
    return compiled;
}

}  // namespace quardele::engine
