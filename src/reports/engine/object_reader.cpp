#include "object_reader.h"

namespace quardele::engine {
namespace {

using Name = QLatin1StringView;
using Objects = std::vector<std::shared_ptr<ReportObject>>;

constexpr int kMostColumns = 20;

class ObjectReader {
 public:
    ObjectReader(ReportXml& xml, SectionKind kind, const QDir& folder)
        : xml_(xml), kind_(kind), folder_(folder) {}

    std::shared_ptr<Section> ReadSection() {
        auto section = std::make_shared<Section>(kind_);
        Attributes attributes(xml_);
        section->height = attributes.Length(Name("height"));
        section->suppress = attributes.Text(Name("suppress"));
        section->suppressBlank = attributes.Truth(Name("suppressBlank"), false);
        section->keepTogether = attributes.Truth(Name("keepTogether"), true);
        section->newPageBefore = attributes.Truth(Name("newPageBefore"), false);
        section->newPageAfter = attributes.Truth(Name("newPageAfter"), false);
        attributes.RequireKnown();
        RequireNoPageBreaks(attributes);
        xml_.ForEachChild([&](const QString& name) {
            section->objects.push_back(name == Name("flow") ? ReadFlow() : ReadObject(name));
        });
        return section;
    }

 private:
    /// Page headers and footers stand where pages begin and end.
    void RequireNoPageBreaks(const Attributes& attributes) const {
        if (kind_ != SectionKind::PageHeader && kind_ != SectionKind::PageFooter) {
            return;
        }
        for (const auto name : {Name("keepTogether"), Name("newPageBefore"), Name("newPageAfter")}) {
            if (attributes.Has(name)) {
                xml_.Fail(
                    QStringLiteral("l'attribut « %1 » n'a pas de sens dans un en-tête ou un pied de page")
                        .arg(name));
            }
        }
    }

    std::shared_ptr<ReportObject> ReadObject(const QString& name) {
        if (name == Name("text")) {
            return ReadText();
        }
        if (name == Name("field")) {
            return ReadField();
        }
        if (name == Name("line")) {
            return ReadLine();
        }
        if (name == Name("box")) {
            return ReadBox();
        }
        if (name == Name("picture")) {
            return ReadPicture();
        }
        xml_.FailUnknownElement(name);
    }

    /// Lines may have no width or no height.
    static void ReadPlace(Attributes& attributes, ReportObject& object) {
        object.area = QRect(attributes.Length(Name("x")), attributes.Length(Name("y")),
                            attributes.Length(Name("width")), attributes.Length(Name("height")));
        object.suppress = attributes.Text(Name("suppress"));
    }

    /// Texts and flows need a width only: they take the height of a line, or of their cells.
    static void ReadWidePlace(Attributes& attributes, ReportObject& object) {
        ReadPlace(attributes, object);
        object.area.setWidth(attributes.Extent(Name("width")));
    }

    static void ReadFullPlace(Attributes& attributes, ReportObject& object) {
        ReadWidePlace(attributes, object);
        object.area.setHeight(attributes.Extent(Name("height")));
    }

    void ReadLook(Attributes& attributes, TextLook& look) {
        look.font.name = attributes.Text(Name("font"));
        look.font.points = attributes.Points(Name("size"), look.font.points);
        look.font.bold = attributes.Truth(Name("bold"), false);
        look.font.italic = attributes.Truth(Name("italic"), false);
        look.font.underline = attributes.Truth(Name("underline"), false);
        look.color = attributes.Color(Name("color")).value_or(Qt::black);
        look.alignment =
            attributes.Choice<Qt::AlignmentFlag>(Name("align"), {{Name("left"), Qt::AlignLeft},
                                                                 {Name("center"), Qt::AlignHCenter},
                                                                 {Name("right"), Qt::AlignRight}});
        look.grows = attributes.Truth(Name("grow"), false);
        if (look.grows) {
            RequireMayGrow();
        }
    }

    /// The foot of a page is as high at its end as it was when the page was begun.
    void RequireMayGrow() const {
        if (kind_ == SectionKind::PageFooter) {
            xml_.Fail(QStringLiteral("rien ne grandit dans un pied de page"));
        }
    }

    std::shared_ptr<ReportObject> ReadText() {
        auto text = std::make_shared<TextObject>();
        Attributes attributes(xml_);
        ReadWidePlace(attributes, *text);
        ReadLook(attributes, text->look);
        attributes.RequireKnown();
        text->SetText(xml_.TextToEnd());
        return text;
    }

    std::shared_ptr<ReportObject> ReadField() {
        auto field = std::make_shared<FieldObject>();
        Attributes attributes(xml_);
        ReadWidePlace(attributes, *field);
        ReadLook(attributes, field->look);
        field->value = attributes.Name(Name("value"));
        field->format = attributes.Text(Name("format"));
        attributes.RequireKnown();
        xml_.ExpectEmpty();
        return field;
    }

    std::shared_ptr<ReportObject> ReadLine() {
        auto line = std::make_shared<LineObject>();
        Attributes attributes(xml_);
        ReadPlace(attributes, *line);
        line->color = attributes.Color(Name("color")).value_or(Qt::black);
        line->thickness = attributes.Length(Name("thickness"), line->thickness);
        attributes.RequireKnown();
        if (line->area.size() == QSize(0, 0)) {
            xml_.Fail(QStringLiteral("la ligne n'a ni largeur ni hauteur"));
        }
        xml_.ExpectEmpty();
        return line;
    }

    std::shared_ptr<ReportObject> ReadBox() {
        auto box = std::make_shared<BoxObject>();
        Attributes attributes(xml_);
        ReadFullPlace(attributes, *box);
        box->color = attributes.Color(Name("color")).value_or(Qt::black);
        box->thickness = attributes.Length(Name("thickness"), box->thickness);
        box->fill = attributes.Color(Name("fill"));
        box->radius = attributes.Length(Name("radius"));
        attributes.RequireKnown();
        xml_.ExpectEmpty();
        return box;
    }

    std::shared_ptr<ReportObject> ReadPicture() {
        auto picture = std::make_shared<PictureObject>();
        Attributes attributes(xml_);
        ReadFullPlace(attributes, *picture);
        picture->file = PathOfPicture(attributes.Name(Name("file")));
        attributes.RequireKnown();
        xml_.ExpectEmpty();
        return picture;
    }

    /// Report files may be copied from anywhere; what they show comes from their own folder.
    [[nodiscard]] QString PathOfPicture(QString windowsName) const {
        const QString name = QDir::cleanPath(windowsName.replace(u'\\', u'/'));
        if (name.startsWith(u'/') || name.contains(u':') || name == QLatin1StringView("..") ||
            name.startsWith(QLatin1StringView("../"))) {
            xml_.Fail(QStringLiteral("une image est dans le dossier de l'état ou en dessous"));
        }
        return folder_.filePath(name);
    }

    std::shared_ptr<ReportObject> ReadFlow() {
        RequireMayGrow();
        auto flow = std::make_shared<FlowObject>();
        Attributes attributes(xml_);
        ReadWidePlace(attributes, *flow);
        flow->columns = attributes.Number(Name("columns"), 1, 1, kMostColumns);
        flow->gap = attributes.Length(Name("gap"));
        attributes.RequireKnown();
        if (flow->area.width() <= flow->gap * (flow->columns - 1)) {
            xml_.Fail(QStringLiteral("il ne reste pas de place pour les colonnes"));
        }
        xml_.ForEachChild([&](const QString& name) {
            if (name != Name("cell")) {
                xml_.FailUnknownElement(name);
            }
            flow->cells.push_back(ReadCell());
        });
        return flow;
    }

    FlowCell ReadCell() {
        FlowCell cell;
        Attributes attributes(xml_);
        cell.height = attributes.Length(Name("height"));
        cell.suppress = attributes.Text(Name("suppress"));
        attributes.RequireKnown();
        xml_.ForEachChild([&](const QString& name) { cell.objects.push_back(ReadObject(name)); });
        return cell;
    }

    ReportXml& xml_;
    SectionKind kind_;
    const QDir& folder_;
};

}  // namespace

std::vector<std::shared_ptr<Section>> ReadSections(ReportXml& xml, SectionKind kind, const QDir& folder) {
    std::vector<std::shared_ptr<Section>> sections;
    Attributes(xml).RequireKnown();
    xml.ForEachChild([&](const QString& name) {
        if (name != Name("section")) {
            xml.FailUnknownElement(name);
        }
        sections.push_back(ObjectReader(xml, kind, folder).ReadSection());
    });
    return sections;
}

}  // namespace quardele::engine
