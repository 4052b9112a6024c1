// The XML of a report file: elements with checked attributes. Whatever is wrong is error 321 with its line.
#pragma once

#include <functional>
#include <initializer_list>
#include <optional>
#include <utility>

#include <QColor>
#include <QIODevice>
#include <QStringList>
#include <QXmlStreamReader>

namespace quardele::engine {

class ReportXml;

/// The attributes of the element that was just begun. Each is asked for once; one that is never asked for is
/// unknown.
class Attributes {
 public:
    explicit Attributes(const ReportXml& xml);

    /// Throws 321 for an attribute that nobody has asked for.
    void RequireKnown() const;

    [[nodiscard]] bool Has(QLatin1StringView name) const { return attributes_.hasAttribute(name); }
    /// A text; empty when it is not given.
    [[nodiscard]] QString Text(QLatin1StringView name);
    /// A text that has to be given.
    [[nodiscard]] QString Name(QLatin1StringView name);
    /// A whole number in a range.
    [[nodiscard]] int Number(QLatin1StringView name, int otherwise, int least, int most);
    /// Twips of paper, not negative.
    [[nodiscard]] int Length(QLatin1StringView name, int otherwise = 0);
    /// Twips of paper that have to be given, at least one: without it there would be nothing to see.
    [[nodiscard]] int Extent(QLatin1StringView name);
    [[nodiscard]] double Points(QLatin1StringView name, double otherwise);
    [[nodiscard]] bool Truth(QLatin1StringView name, bool otherwise);
    [[nodiscard]] std::optional<QColor> Color(QLatin1StringView name);

    /// One of some words; the first is taken when it is not given.
    template <class T>
    [[nodiscard]] T Choice(QLatin1StringView name,
                           std::initializer_list<std::pair<QLatin1StringView, T>> words) {
        const QString given = Text(name);
        for (const auto& [word, value] : words) {
            if (given == word) {
                return value;
            }
        }
        if (Has(name)) {
            FailValue(name);
        }
        return words.begin()->second;
    }

 private:
    [[noreturn]] void FailValue(QLatin1StringView name) const;
    [[noreturn]] void FailMissing(QLatin1StringView name) const;

    const ReportXml& xml_;
    QXmlStreamAttributes attributes_;
    QStringList asked_;
};

class ReportXml {
 public:
    /// The name stands in descriptions of errors.
    ReportXml(QIODevice& file, QString shownName) : reader_(&file), shownName_(std::move(shownName)) {}

    /// Goes into the file's root element; throws 321 when it is another.
    void BeginRoot(QLatin1StringView name);
    /// Reads the elements inside the current one to its end; `element` reads one, to its end, by its name.
    void ForEachChild(const std::function<void(const QString& name)>& element);
    /// The text of the current element, to its end.
    [[nodiscard]] QString TextToEnd();
    /// To the end of an element that holds nothing.
    void ExpectEmpty();
    void RequireEndOfFile();
    [[noreturn]] void FailUnknownElement(const QString& name) const;
    [[noreturn]] void Fail(const QString& reason) const;

 private:
    friend class Attributes;
    void RequireReadable() const;

    QXmlStreamReader reader_;
    QString shownName_;
};

}  // namespace quardele::engine
