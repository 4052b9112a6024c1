#include "report_reader.h"

#include <QSet>

#include "object_reader.h"
#include "paper.h"
#include "report_xml.h"

namespace quardele::engine {
namespace {

using Name = QLatin1StringView;

constexpr int kDefaultMargin = 567;  ///< 1 cm

class ReportReader {
 public:
    ReportReader(QIODevice& file, const QString& shownName, const QDir& folder)
        : xml_(file, shownName), folder_(folder), report_(std::make_unique<ReportDefinition>()) {}

    std::unique_ptr<ReportDefinition> Run() {
        xml_.BeginRoot(Name("report"));
        Attributes attributes(xml_);
        report_->title = attributes.Text(Name("title"));
        if (attributes.Name(Name("version")) != Name("1")) {
            xml_.Fail(QStringLiteral("cette version du format est inconnue"));
        }
        attributes.RequireKnown();
        SetPage(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMargins(1, 1, 1, 1) * kDefaultMargin);
        xml_.ForEachChild([this](const QString& name) { ReadPart(name); });
        xml_.RequireEndOfFile();
        return std::move(report_);
    }

 private:
    void ReadPart(const QString& name) {
        if (name == Name("group")) {
            ReadGroup();
            return;
        }
        if (seen_.contains(name)) {
            xml_.Fail(QStringLiteral("l'élément « %1 » est en double").arg(name));
        }
        seen_.insert(name);
        if (name == Name("page")) {
            ReadPage();
        } else if (name == Name("tables")) {
            ReadTables();
        } else if (name == Name("selection")) {
            Attributes(xml_).RequireKnown();
            report_->selection = xml_.TextToEnd().trimmed();
        } else if (name == Name("sort")) {
            ReadSort();
        } else if (name == Name("formulas")) {
            ReadFormulas();
        } else {
            ReadArea(name);
        }
    }

    void ReadArea(const QString& name) {
        if (name == Name("reportHeader")) {
            report_->reportHeader = Sections(SectionKind::ReportHeader);
        } else if (name == Name("pageHeader")) {
            report_->pageHeader = Sections(SectionKind::PageHeader);
        } else if (name == Name("details")) {
            report_->details = Sections(SectionKind::Details);
        } else if (name == Name("reportFooter")) {
            report_->reportFooter = Sections(SectionKind::ReportFooter);
        } else if (name == Name("pageFooter")) {
            report_->pageFooter = Sections(SectionKind::PageFooter);
        } else {
            xml_.FailUnknownElement(name);
        }
    }

    [[nodiscard]] std::vector<std::shared_ptr<Section>> Sections(SectionKind kind) {
        return ReadSections(xml_, kind, folder_);
    }

    // The page.

    void SetPage(const QPageSize& size, QPageLayout::Orientation orientation, const QMargins& twips) {
        report_->layout =
            QPageLayout(size, orientation, QMarginsF(twips) / kTwipsPerPoint, QPageLayout::Point);
    }

    void ReadPage() {
        Attributes attributes(xml_);
        const auto id =
            attributes.Choice<QPageSize::PageSizeId>(Name("size"), {{Name("A4"), QPageSize::A4},
                                                                    {Name("A3"), QPageSize::A3},
                                                                    {Name("A5"), QPageSize::A5},
                                                                    {Name("A6"), QPageSize::A6},
                                                                    {Name("Letter"), QPageSize::Letter}});
        const auto orientation = attributes.Choice<QPageLayout::Orientation>(
            Name("orientation"),
            {{Name("portrait"), QPageLayout::Portrait}, {Name("landscape"), QPageLayout::Landscape}});
        const bool isOwnSize = attributes.Has(Name("width")) || attributes.Has(Name("height"));
        const bool isNamedSize = attributes.Has(Name("size")) || attributes.Has(Name("orientation"));
        if (isOwnSize && isNamedSize) {
            xml_.Fail(QStringLiteral("une page qui a sa propre taille n'a ni « size » ni « orientation »"));
        }
        const QSize own =
            isOwnSize ? QSize(attributes.Extent(Name("width")), attributes.Extent(Name("height"))) : QSize();
        const auto margin = [&](const char* side) { return attributes.Length(Name(side), kDefaultMargin); };
        const QMargins margins(margin("left"), margin("top"), margin("right"), margin("bottom"));
        attributes.RequireKnown();
        if (isOwnSize) {
            SetPage(QPageSize(QSizeF(own) / kTwipsPerPoint, QPageSize::Point), QPageLayout::Portrait,
                    margins);
        } else {
            SetPage(QPageSize(id), orientation, margins);
        }
        RequireRoom(margins);
        xml_.ExpectEmpty();
    }

    void RequireRoom(const QMargins& margins) const {
        constexpr double kLeastRoom = 1440;
        const QSizeF room = SizeOf(report_->layout).shrunkBy(margins);
        if (room.width() < kLeastRoom || room.height() < kLeastRoom) {
            xml_.Fail(QStringLiteral("les marges ne laissent pas de place sur la page"));
        }
    }

    // Data.

    [[nodiscard]] FieldName NameOfField(const QString& text) const {
        QString inner = text.trimmed();
        if (inner.startsWith(u'{') && inner.endsWith(u'}')) {
            inner = inner.sliced(1, inner.size() - 2).trimmed();
        }
        const qsizetype point = inner.indexOf(u'.');
        if (point <= 0 || point + 1 == inner.size()) {
            xml_.Fail(
                QStringLiteral("« %1 » n'est pas le nom d'un champ ; il s'écrit {TABLE.CHAMP}").arg(text));
        }
        return {inner.first(point), inner.sliced(point + 1)};
    }

    void ReadTables() {
        Attributes(xml_).RequireKnown();
        xml_.ForEachChild([this](const QString& name) {
            if (name == Name("table")) {
                ReadTable();
            } else if (name == Name("link")) {
                ReadLink();
            } else {
                xml_.FailUnknownElement(name);
            }
        });
    }

    void ReadTable() {
        Attributes attributes(xml_);
        const QString name = attributes.Name(Name("name"));
        const QString source = attributes.Text(Name("source"));
        const QString location = attributes.Text(Name("location"));
        const bool firstOnly =
            attributes.Choice<bool>(Name("records"), {{Name("all"), false}, {Name("first"), true}});
        attributes.RequireKnown();
        for (const std::shared_ptr<Table>& other : report_->database.Tables()) {
            if (other->Name().compare(name, Qt::CaseInsensitive) == 0) {
                xml_.Fail(QStringLiteral("la table « %1 » est en double").arg(name));
            }
        }
        auto table = std::make_shared<Table>(report_->database, name, source.isEmpty() ? name : source);
        table->SetLocation(location);
        table->SetFirstRecordOnly(firstOnly);
        report_->database.Tables().Add(table);
        xml_.ExpectEmpty();
    }

    void ReadLink() {
        Attributes attributes(xml_);
        Link link;
        link.from = NameOfField(attributes.Name(Name("from")));
        link.to = NameOfField(attributes.Name(Name("to")));
        link.outer = attributes.Choice<bool>(Name("join"), {{Name("left"), true}, {Name("inner"), false}});
        attributes.RequireKnown();
        report_->links.push_back(link);
        xml_.ExpectEmpty();
    }

    [[nodiscard]] static SortDirection Direction(Attributes& attributes) {
        return attributes.Choice<SortDirection>(
            Name("direction"),
            {{Name("ascending"), SortDirection::Ascending}, {Name("descending"), SortDirection::Descending}});
    }

    void ReadSort() {
        Attributes(xml_).RequireKnown();
        xml_.ForEachChild([this](const QString& name) {
            if (name != Name("by")) {
                xml_.FailUnknownElement(name);
            }
            Attributes attributes(xml_);
            const FieldName field = NameOfField(attributes.Name(Name("field")));
            const SortDirection direction = Direction(attributes);
            attributes.RequireKnown();
            report_->sort.Add({field.table, field.field, direction});
            xml_.ExpectEmpty();
        });
    }

    void ReadFormulas() {
        Attributes(xml_).RequireKnown();
        QSet<QString> names;
        xml_.ForEachChild([&](const QString& element) {
            if (element != Name("formula")) {
                xml_.FailUnknownElement(element);
            }
            Attributes attributes(xml_);
            const QString name = attributes.Name(Name("name"));
            attributes.RequireKnown();
            if (names.contains(name.toUpper())) {
                xml_.Fail(QStringLiteral("la formule « %1 » est en double").arg(name));
            }
            names.insert(name.toUpper());
            report_->formulas.Add(std::make_shared<FormulaField>(name, xml_.TextToEnd()));
        });
    }

    // Groups.

    void ReadGroup() {
        Attributes attributes(xml_);
        Group group;
        group.by = NameOfField(attributes.Name(Name("by")));
        group.direction = Direction(attributes);
        group.keepTogether = attributes.Truth(Name("keepTogether"), false);
        group.repeatHeader = attributes.Truth(Name("repeatHeader"), false);
        attributes.RequireKnown();
        xml_.ForEachChild([&](const QString& name) {
            if (name == Name("header")) {
                group.header = Sections(SectionKind::GroupHeader);
            } else if (name == Name("footer")) {
                group.footer = Sections(SectionKind::GroupFooter);
            } else {
                xml_.FailUnknownElement(name);
            }
        });
        report_->groups.push_back(std::move(group));
    }

    ReportXml xml_;
    const QDir& folder_;
    std::unique_ptr<ReportDefinition> report_;
    QSet<QString> seen_;
};

}  // namespace

std::unique_ptr<ReportDefinition> ReadReport(QIODevice& file, const QString& shownName, const QDir& folder) {
    return ReportReader(file, shownName, folder).Run();
}

}  // namespace quardele::engine
