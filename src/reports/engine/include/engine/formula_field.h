// A named formula of a report.
#pragma once

#include <QString>

namespace quardele::engine {

enum class FieldKind { Database = 1, Formula = 2 };

class FormulaField {
 public:
    FormulaField(const QString& bareName, QString text)
        : name_(QStringLiteral("{@%1}").arg(bareName)), text_(std::move(text)) {}

    [[nodiscard]] static FieldKind Kind() { return FieldKind::Formula; }
    /// As formulas write it: "{@NAME}".
    [[nodiscard]] const QString& Name() const { return name_; }
    [[nodiscard]] const QString& Text() const { return text_; }
    /// Read when the report is composed; a bad formula is an error then.
    void SetText(const QString& text) { text_ = text; }

 private:
    QString name_;
    QString text_;
};

}  // namespace quardele::engine
