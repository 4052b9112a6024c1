// The objects of a section at a record. Objects that grow push down what stands below them.
#pragma once

#include "section_layout.h"

namespace quardele::engine {

/// The text of a field: after its format, or the ordinary one of its value.
[[nodiscard]] QString FieldText(const Evaluator& evaluator, const CompiledFormula& value,
                                const QString& format, const Position& position);
/// Where a text of a width begins in a room.
[[nodiscard]] qreal LeftOf(qreal left, qreal room, qreal width, Qt::Alignment alignment);

class ObjectLayout {
 public:
    ObjectLayout(const Evaluator& evaluator, Materials& materials, const Position& position)
        : evaluator_(evaluator), materials_(materials), position_(position) {}

    /// `height` is the designed one; the strip is at least as high as its objects.
    [[nodiscard]] Strip Lay(const std::vector<CompiledObject>& objects, int height);
    /// The height of objects that do not grow, those left out too.
    [[nodiscard]] qreal HeightOf(const std::vector<CompiledObject>& objects, int height) const;
    /// Whether a field that was laid out has a text.
    [[nodiscard]] bool HasFieldText() const { return hasFieldText_; }

 private:
    /// An object with the pieces that it is made of, at their designed places in the section, and by how much
    /// it is higher than designed and moves down.
    struct Laid {
        const ReportObject* object;
        Pieces pieces;
        qreal growth = 0;
        qreal shift = 0;
    };

    /// Where an object ends before it grows. A text without a height takes a line.
    [[nodiscard]] qreal EndOf(const ReportObject& object) const;
    [[nodiscard]] bool IsSuppressed(const std::optional<CompiledFormula>& condition) const;
    [[nodiscard]] Laid LayObject(const CompiledObject& object);
    [[nodiscard]] Laid LayText(const ReportObject& object, const QString& text, const TextLook& look);
    [[nodiscard]] Laid LayField(const CompiledObject& object);
    [[nodiscard]] Laid LayPending(const FieldObject& field, const CompiledFormula& value);
    [[nodiscard]] Laid LayPicture(const PictureObject& picture);
    [[nodiscard]] Laid LayFlow(const CompiledObject& object);
    [[nodiscard]] std::vector<Strip> VisibleCells(const CompiledObject& object);
    [[nodiscard]] static Laid LayShape(const ReportObject& object);

    const Evaluator& evaluator_;
    Materials& materials_;
    Position position_;
    bool hasFieldText_ = false;
};

}  // namespace quardele::engine
