#include "report_xml.h"

#include <basic/runtime_error.h>
#include <forms/strings.h>

namespace quardele::engine {
namespace {

/// Nothing on paper is larger: 22 inches.
constexpr int kLargestLength = 31680;
constexpr double kLeastPoints = 1;
constexpr double kMostPoints = 400;
constexpr auto kNamespace = "urn:quardele:report";
constexpr auto kSchemaInstance = "http://www.w3.org/2001/XMLSchema-instance";

}  // namespace

Attributes::Attributes(const ReportXml& xml) : xml_(xml), attributes_(xml.reader_.attributes()) {}

void Attributes::RequireKnown() const {
    for (const QXmlStreamAttribute& attribute : attributes_) {
        // Where a schema lies may stand in any XML file.
        if (attribute.namespaceUri() != QLatin1StringView(kSchemaInstance) &&
            !asked_.contains(attribute.qualifiedName())) {
            xml_.Fail(QStringLiteral("l'attribut « %1 » est inconnu").arg(attribute.qualifiedName()));
        }
    }
}

void Attributes::FailValue(QLatin1StringView name) const {
    xml_.Fail(QStringLiteral("la valeur de l'attribut « %1 » est incorrecte").arg(name));
}

void Attributes::FailMissing(QLatin1StringView name) const {
    xml_.Fail(QStringLiteral("l'attribut « %1 » manque").arg(name));
}

QString Attributes::Text(QLatin1StringView name) {
    asked_.push_back(name);
    return attributes_.value(name).toString();
}

QString Attributes::Name(QLatin1StringView name) {
    QString text = Text(name).trimmed();
    if (text.isEmpty()) {
        FailMissing(name);
    }
    return text;
}

int Attributes::Number(QLatin1StringView name, int otherwise, int least, int most) {
    const QString text = Text(name);
    if (!Has(name)) {
        return otherwise;
    }
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < least || number > most) {
        FailValue(name);
    }
    return number;
}

int Attributes::Length(QLatin1StringView name, int otherwise) {
    return Number(name, otherwise, 0, kLargestLength);
}

int Attributes::Extent(QLatin1StringView name) {
    if (!Has(name)) {
        FailMissing(name);
    }
    return Number(name, 0, 1, kLargestLength);
}

double Attributes::Points(QLatin1StringView name, double otherwise) {
    const QString text = Text(name);
    if (!Has(name)) {
        return otherwise;
    }
    bool isNumber = false;
    const double points = text.toDouble(&isNumber);
    if (!isNumber || !(points >= kLeastPoints && points <= kMostPoints)) {
        FailValue(name);
    }
    return points;
}

bool Attributes::Truth(QLatin1StringView name, bool otherwise) {
    const QString text = Text(name);
    if (text == QLatin1StringView("true") || text == QLatin1StringView("1")) {
        return true;
    }
    if (text == QLatin1StringView("false") || text == QLatin1StringView("0")) {
        return false;
    }
    if (Has(name)) {
        FailValue(name);
    }
    return otherwise;
}

std::optional<QColor> Attributes::Color(QLatin1StringView name) {
    const QString text = Text(name);
    if (!Has(name)) {
        return std::nullopt;
    }
    constexpr qsizetype kLengthOfColor = 7;
    const QColor color = text.size() == kLengthOfColor && text.startsWith(u'#') ? QColor(text) : QColor();
    if (!color.isValid()) {
        FailValue(name);
    }
    return color;
}

void ReportXml::BeginRoot(QLatin1StringView name) {
    if (!reader_.readNextStartElement()) {
        RequireReadable();
    }
    if (reader_.name() != name || reader_.namespaceUri() != QLatin1StringView(kNamespace)) {
        Fail(QStringLiteral("ce n'est pas un état"));
    }
}

void ReportXml::ForEachChild(const std::function<void(const QString& name)>& element) {
    for (;;) {
        reader_.readNext();
        RequireReadable();
        if (reader_.isStartElement()) {
            if (reader_.namespaceUri() != QLatin1StringView(kNamespace)) {
                FailUnknownElement(reader_.qualifiedName().toString());
            }
            element(reader_.name().toString());
        } else if (reader_.isEndElement()) {
            return;
        } else if (reader_.isCharacters() && !reader_.isWhitespace()) {
            Fail(QStringLiteral("il y a du texte en trop"));
        }
    }
}

QString ReportXml::TextToEnd() {
    QString text = reader_.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
    RequireReadable();
    return text;
}

void ReportXml::ExpectEmpty() {
    ForEachChild([this](const QString& name) { FailUnknownElement(name); });
}

void ReportXml::RequireEndOfFile() {
    while (!reader_.atEnd()) {
        reader_.readNext();
    }
    RequireReadable();
}

void ReportXml::RequireReadable() const {
    if (reader_.hasError()) {
        Fail(QStringLiteral("le texte XML est endommagé ou incomplet"));
    }
}

void ReportXml::FailUnknownElement(const QString& name) const {
    Fail(QStringLiteral("l'élément « %1 » n'a pas sa place ici").arg(name));
}

void ReportXml::Fail(const QString& reason) const {
    const basic::Text place =
        forms::ToText(QStringLiteral(", ligne %1 : %2.").arg(reader_.lineNumber()).arg(reason));
    throw basic::RuntimeError(
        basic::error::kInvalidFileFormat,
        basic::Describe(basic::error::kInvalidFileFormat, forms::ToText(shownName_)) + place);
}

}  // namespace quardele::engine
