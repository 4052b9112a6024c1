// What stands in the sections of a report. Lengths are twips of paper, counted from the section's top left
// corner.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QColor>
#include <QRect>
#include <QString>

namespace quardele::engine {

enum class ObjectKind { Field = 1, Text = 2, Line = 3, Box = 4, Picture = 5, Flow = 6 };

struct Font {
    QString name;     ///< empty for the program's own
    int charset = 0;  ///< kept for those who ask; texts are Unicode
    double points = 9;
    bool bold = false;
    bool italic = false;
    bool underline = false;

    friend bool operator==(const Font&, const Font&) = default;
};

class ReportObject {
 public:
    virtual ~ReportObject() = default;
    ReportObject(const ReportObject&) = delete;
    ReportObject& operator=(const ReportObject&) = delete;

    [[nodiscard]] ObjectKind Kind() const { return kind_; }

    QRect area;
    QString suppress;  ///< formula; the object is left out where it is true

 protected:
    explicit ReportObject(ObjectKind kind) : kind_(kind) {}

 private:
    ObjectKind kind_;
};

/// How a text is shown.
struct TextLook {
    engine::Font font;
    QColor color = Qt::black;
    Qt::Alignment alignment = Qt::AlignLeft;
    bool grows = false;  ///< downwards, as its text needs
};

/// A fixed text.
class TextObject : public ReportObject {
 public:
    TextObject() : ReportObject(ObjectKind::Text) {}

    [[nodiscard]] const QString& Text() const { return text_; }
    void SetText(const QString& text) { text_ = text; }
    [[nodiscard]] engine::Font& Font() { return look.font; }

    TextLook look;

 private:
    QString text_;
};

/// The value of a field, or of any formula.
class FieldObject : public ReportObject {
 public:
    FieldObject() : ReportObject(ObjectKind::Field) {}

    QString value;   ///< formula
    QString format;  ///< pattern; empty for the ordinary text of the value
    TextLook look;
};

/// From the top left to the bottom right corner of its area.
class LineObject : public ReportObject {
 public:
    LineObject() : ReportObject(ObjectKind::Line) {}

    QColor color = Qt::black;
    int thickness = 10;
};

class BoxObject : public ReportObject {
 public:
    BoxObject() : ReportObject(ObjectKind::Box) {}

    QColor color = Qt::black;
    int thickness = 10;  ///< of the border; 0 for none
    std::optional<QColor> fill;
    int radius = 0;  ///< of the corners
};

/// A picture file, as large as it fits into its area with its own proportions.
class PictureObject : public ReportObject {
 public:
    PictureObject() : ReportObject(ObjectKind::Picture) {}

    QString file;  ///< native path
};

/// A piece of a flow; objects count from its own top left corner.
struct FlowCell {
    int height = 0;    ///< more when its objects grow
    QString suppress;  ///< formula; the next cell then takes its place
    std::vector<std::shared_ptr<ReportObject>> objects;
};

/// Cells in columns, filled downwards, without holes for those left out. Grows as its cells need.
class FlowObject : public ReportObject {
 public:
    FlowObject() : ReportObject(ObjectKind::Flow) {}

    int columns = 1;
    int gap = 0;  ///< between columns
    std::vector<FlowCell> cells;
};

}  // namespace quardele::engine
