#include "object_reader.h"

namespace quardele::engine {
namespace {

using Name = QLatin1StringView;
using Objects = std::vector<std::shared_ptr<ReportObject>>;

constexpr int kMostColumns = 20;

class ObjectReader {
 public:
    ObjectReader(ReportXml& xml, const QDir& folder) : xml_(xml), folder_(folder) {}

    std::shared_ptr<Section> ReadSection(SectionKind kind) {
        auto section = std::make_shared<Section>(kind);
        Attributes attributes(xml_);
        section->height = attributes.Length(Name("height"));
        section->suppress = attributes.Text(Name("suppress"));
        section->suppressBlank = attributes.Truth(Name("suppressBlank"), false);
        section->keepTogether = attributes.Truth(Name("keepTogether"), true);
        section->newPageBefore = attributes.Truth(Name("newPageBefore"), false);
        section->newPageAfter = attributes.Truth(Name("newPageAfter"), false);
        attributes.RequireKnown();
        xml_.ForEachChild([&](const QString& name) {
            section->objects.push_back(name == Name("flow") ? ReadFlow() : ReadObject(name));
        });
        return section;
    }

 private:
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

    static void ReadPlace(Attributes& attributes, ReportObject& object) {
        object.area = QRect(attributes.Length(Name("x")), attributes.Length(Name("y")),
                            attributes.Length(Name("width")), attributes.Length(Name("height")));
        object.suppress = attributes.Text(Name("suppress"));
    }

    static void ReadLook(Attributes& attributes, TextLook& look) {
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
    }

    std::shared_ptr<ReportObject> ReadText() {
        auto text = std::make_shared<TextObject>();
        Attributes attributes(xml_);
        ReadPlace(attributes, *text);
        ReadLook(attributes, text->look);
        attributes.RequireKnown();
        text->SetText(xml_.TextToEnd());
        return text;
    }

    std::shared_ptr<ReportObject> ReadField() {
        auto field = std::make_shared<FieldObject>();
        Attributes attributes(xml_);
        ReadPlace(attributes, *field);
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
        xml_.ExpectEmpty();
        return line;
    }

    std::shared_ptr<ReportObject> ReadBox() {
        auto box = std::make_shared<BoxObject>();
        Attributes attributes(xml_);
        ReadPlace(attributes, *box);
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
        ReadPlace(attributes, *picture);
        picture->file = folder_.filePath(attributes.Name(Name("file")));
        attributes.RequireKnown();
        xml_.ExpectEmpty();
        return picture;
    }

    std::shared_ptr<ReportObject> ReadFlow() {
        auto flow = std::make_shared<FlowObject>();
        Attributes attributes(xml_);
        ReadPlace(attributes, *flow);
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
        sections.push_back(ObjectReader(xml, folder).ReadSection(kind));
    });
    return sections;
}

}  // namespace quardele::engine
