#include <support/translation.h>

#include <QRegularExpression>

#include <basic/conversion.h>
#include <dao/dao.h>
#include <forms/strings.h>
#include <services/translation.h>

namespace quardele::support {

namespace {

constexpr std::ptrdiff_t kKeyLength = 20;

void Empty(dao::Recordset& table) {
    if (table.RecordCount() == 0) {
        return;
    }
    for (table.MoveFirst(); !table.Eof(); table.MoveNext()) {
        table.Delete();
    }
}

void Fill(dao::Recordset& table, const std::vector<TranslationRow>& rows) {
    for (const TranslationRow& row : rows) {
        table.AddNew();
        table.SetValue(u"T_ABREGE", row.key);
        table.SetValue(u"T_VALEUR", row.text);
        table.SetValue(u"t_trad", row.translation);
        table.Update();
    }
}

std::shared_ptr<dao::Recordset> Raise(basic::TextView file) {
    const auto database = dao::DBEngine::Instance().Workspaces(0).OpenDatabase(file);
    services::TranslationSettings& settings = services::Translation();
    settings.TranslationTable = database->OpenRecordset(u"TTRAD", dao::RecordsetType::Table);
    settings.TranslationTable->SetIndex(u"T_ABREGE");
    settings.TranslationOn = true;
    return settings.TranslationTable;
}

TranslationRow RowOf(const QString& text, const QString& translation) {
    return {forms::ToText(text), forms::ToText(translation)};
}

}  // namespace

TranslationRow::TranslationRow(basic::TextView frenchText, basic::TextView translatedText)
    : TranslationRow(basic::Left(basic::Trim(frenchText), kKeyLength), basic::Trim(frenchText),
                     translatedText) {}

TranslationRow::TranslationRow(basic::Variant rowKey, basic::Variant frenchText,
                               basic::TextView translatedText)
    : key(std::move(rowKey)), text(std::move(frenchText)), translation(translatedText) {}

void RaiseTranslation() {
    Raise(kTranslationFile);
}

void RaiseTranslation(const std::vector<TranslationRow>& rows, basic::TextView file) {
    const std::shared_ptr<dao::Recordset> table = Raise(file);
    Empty(*table);
    Fill(*table, rows);
}

QString WithoutAccents(const QString& text) {
    static const QRegularExpression kAccents(QStringLiteral("\\p{Mn}"));
    return text.normalized(QString::NormalizationForm_D).remove(kAccents);
}

QStringList BoxesWithoutAccents(const QStringList& boxes) {
    QStringList shown;
    for (const QString& box : boxes) {
        shown.append(WithoutAccents(box));
    }
    return shown;
}

QStringList TakeWithoutAccents(BoxAnswerer& boxes) {
    const std::vector<QString> texts = boxes.TakeTexts();
    return BoxesWithoutAccents(QStringList(texts.begin(), texts.end()));
}

QString Marked(const QString& text) {
    const QString trimmed = text.trimmed();
    const qsizetype start = text.indexOf(trimmed);
    return text.left(start) + u'[' + WithoutAccents(trimmed) + u']' + text.mid(start + trimmed.size());
}

QString MarkedTwice(const QString& text) {
    return Marked(Marked(text));
}

void RaiseMarks(const QSet<QString>& texts, basic::TextView file) {
    std::vector<TranslationRow> rows;
    for (const QString& text : texts) {
        const QString trimmed = text.trimmed();
        if (!trimmed.isEmpty()) {
            rows.push_back(RowOf(trimmed, Marked(trimmed)));
            rows.push_back(RowOf(Marked(trimmed), MarkedTwice(trimmed)));
        }
    }
    RaiseTranslation(rows, file);
}

void RaiseMarksFor(const QStringList& boxes, basic::TextView file) {
    static const QRegularExpression kBracket(QStringLiteral("[\\[\\]]"));
    QSet<QString> texts;
    for (const QString& box : boxes) {
        QStringList parts = box.split(kBracket);
        parts.append(QString(box).remove(kBracket));
        for (const QString& part : std::as_const(parts)) {
            // The lines of a box may end in several ways in the program.
            for (const char* lineBreak : {"\n", "\r", "\r\n"}) {
                texts.insert(QString(part).replace(u'\n', QLatin1String(lineBreak)));
            }
        }
    }
    RaiseMarks(texts, file);
}

}  // namespace quardele::support
