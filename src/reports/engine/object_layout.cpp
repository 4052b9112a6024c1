#include "object_layout.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <basic/conversion.h>
#include <basic/number_format.h>
#include <forms/strings.h>

#include "text_lines.h"

namespace quardele::engine {

QString FieldText(const Evaluator& evaluator, const CompiledFormula& value, const QString& format,
                  const Position& position) {
    const Variant result = evaluator.Evaluate(value, position);
    return Concerning(value.where, [&] {
        return forms::ToQString(format.isEmpty() ? basic::Joined(result)
                                                 : basic::FormatValue(result, forms::ToText(format)));
    });
}

qreal LeftOf(qreal left, qreal room, qreal width, Qt::Alignment alignment) {
    if (alignment.testFlag(Qt::AlignRight)) {
        return left + room - width;
    }
    return alignment.testFlag(Qt::AlignHCenter) ? left + (room - width) / 2 : left;
}

bool ObjectLayout::IsSuppressed(const std::optional<CompiledFormula>& condition) const {
    return condition && evaluator_.Holds(*condition, position_);
}

namespace {

bool IsShape(const ReportObject& object) {
    return object.Kind() == ObjectKind::Box || object.Kind() == ObjectKind::Line;
}

qreal BottomOf(const ReportObject& object) {
    return object.area.y() + object.area.height();
}

const TextLook* LookOf(const ReportObject& object) {
    switch (object.Kind()) {
        case ObjectKind::Text:
            return &static_cast<const TextObject&>(object).look;
        case ObjectKind::Field:
            return &static_cast<const FieldObject&>(object).look;
        default:
            return nullptr;
    }
}

}  // namespace

qreal ObjectLayout::EndOf(const ReportObject& object) const {
    const TextLook* const look = LookOf(object);
    const bool takesALine = look != nullptr && !look->grows && object.area.height() == 0;
    return takesALine ? object.area.y() + materials_.fonts.LineHeight(materials_.fonts.NumberOf(look->font))
                      : BottomOf(object);
}

qreal ObjectLayout::HeightOf(const std::vector<CompiledObject>& objects, int height) const {
    qreal most = height;
    for (const CompiledObject& object : objects) {
        most = std::max(most, EndOf(*object.object));
    }
    return most;
}

Strip ObjectLayout::Lay(const std::vector<CompiledObject>& objects, int height) {
    std::vector<Laid> laid;
    for (const CompiledObject& object : objects) {
        if (!IsSuppressed(object.suppress)) {
            laid.push_back(LayObject(object));
        }
    }
    // What stands at a height or below moves down by the largest growth above it.
    const auto shiftAt = [&laid](qreal y, const ReportObject* self) {
        qreal shift = 0;
        for (const Laid& above : laid) {
            if (above.object != self && BottomOf(*above.object) <= y) {
                shift = std::max(shift, above.shift + above.growth);
            }
        }
        return shift;
    };
    std::vector<Laid*> fromTheTop;
    fromTheTop.reserve(laid.size());
    for (Laid& object : laid) {
        fromTheTop.push_back(&object);
    }
    std::stable_sort(fromTheTop.begin(), fromTheTop.end(), [](const Laid* left, const Laid* right) {
        return std::pair(BottomOf(*left->object), IsShape(*left->object)) <
               std::pair(BottomOf(*right->object), IsShape(*right->object));
    });
    for (Laid* object : fromTheTop) {
        object->shift = shiftAt(object->object->area.y(), object->object);
        if (IsShape(*object->object) && object->object->area.height() > 0) {
            // Drawn around what grows.
            object->growth = shiftAt(BottomOf(*object->object), object->object) - object->shift;
            Piece& shape = object->pieces.front();
            shape.area.setHeight(shape.area.height() + object->growth);
        }
    }
    Strip strip;
    strip.height = height;
    for (Laid& object : laid) {
        const qreal moved = object.shift + object.growth;
        strip.height = std::max({strip.height, height + moved, EndOf(*object.object) + moved});
        MoveDown(object.pieces, object.shift);
        std::move(object.pieces.begin(), object.pieces.end(), std::back_inserter(strip.pieces));
    }
    return strip;
}

ObjectLayout::Laid ObjectLayout::LayObject(const CompiledObject& object) {
    switch (object.object->Kind()) {
        case ObjectKind::Text: {
            const auto& text = static_cast<const TextObject&>(*object.object);
            return LayText(text, text.Text(), text.look);
        }
        case ObjectKind::Field:
            return LayField(object);
        case ObjectKind::Picture:
            return LayPicture(static_cast<const PictureObject&>(*object.object));
        case ObjectKind::Flow:
            return LayFlow(object);
        case ObjectKind::Line:
        case ObjectKind::Box:
            break;
    }
    return LayShape(*object.object);
}

ObjectLayout::Laid ObjectLayout::LayShape(const ReportObject& object) {
    Piece piece{QRectF(object.area), {}};
    if (object.Kind() == ObjectKind::Line) {
        const auto& line = static_cast<const LineObject&>(object);
        piece.mark = LineMark{line.color, line.thickness};
    } else {
        const auto& box = static_cast<const BoxObject&>(object);
        piece.mark = BoxMark{box.color, box.thickness, box.fill.value_or(QColor()), box.radius};
    }
    return {.object = &object, .pieces = {piece}};
}

ObjectLayout::Laid ObjectLayout::LayText(const ReportObject& object, const QString& text,
                                         const TextLook& look) {
    Laid laid{.object = &object, .pieces = {}};
    if (text.isEmpty()) {
        return laid;
    }
    const std::size_t font = materials_.fonts.NumberOf(look.font);
    const QFontMetricsF& metrics = materials_.fonts.Metrics(font);
    const qreal lineHeight = materials_.fonts.LineHeight(font);
    const QRectF area(object.area);
    const int fitting = std::max(1, static_cast<int>(area.height() / lineHeight));
    const QStringList lines = look.grows ? AllLines(text, metrics, area.width())
                                         : FittingLines(text, metrics, area.width(), fitting);
    qreal top = area.top();
    for (const QString& line : lines) {
        const qreal width = metrics.horizontalAdvance(line);
        const qreal left = LeftOf(area.left(), area.width(), width, look.alignment);
        if (!line.isEmpty()) {
            laid.pieces.push_back({QRectF(left, top, width, lineHeight), TextMark{line, font, look.color}});
        }
        top += lineHeight;
    }
    laid.growth = look.grows ? std::max(0.0, top - area.bottom()) : 0;
    return laid;
}

ObjectLayout::Laid ObjectLayout::LayField(const CompiledObject& object) {
    const auto& field = static_cast<const FieldObject&>(*object.object);
    if (object.value->onPage || object.value->onTotal) {
        return LayPending(field, *object.value);
    }
    const QString text = FieldText(evaluator_, *object.value, field.format, position_);
    hasFieldText_ = hasFieldText_ || !text.isEmpty();
    return LayText(field, text, field.look);
}

ObjectLayout::Laid ObjectLayout::LayPending(const FieldObject& field, const CompiledFormula& value) {
    hasFieldText_ = true;
    const std::size_t font = materials_.fonts.NumberOf(field.look.font);
    const QRectF area(field.area);
    materials_.pending.push_back({&value, field.format, position_, field.look.alignment});
    TextMark mark{{}, font, field.look.color, static_cast<int>(materials_.pending.size()) - 1};
    const QRectF line(area.left(), area.top(), area.width(), materials_.fonts.LineHeight(font));
    return {.object = &field,
            .pieces = {{line, std::move(mark)}},
            .growth = field.look.grows ? std::max(0.0, line.bottom() - area.bottom()) : 0};
}

ObjectLayout::Laid ObjectLayout::LayPicture(const PictureObject& picture) {
    const std::size_t number = materials_.pictures.NumberOf(picture.file);
    const QRectF area(picture.area);
    QSizeF size(materials_.pictures.Picture(number).size());
    size.scale(area.size(), Qt::KeepAspectRatio);
    return {.object = &picture, .pieces = {{QRectF(area.topLeft(), size), PictureMark{number}}}};
}

std::vector<Strip> ObjectLayout::VisibleCells(const CompiledObject& object) {
    std::vector<Strip> cells;
    for (const CompiledCell& cell : object.cells) {
        if (!IsSuppressed(cell.suppress)) {
            cells.push_back(Lay(cell.objects, cell.cell->height));
        }
    }
    return cells;
}

/// Cells side by side are as high as the highest of them.
ObjectLayout::Laid ObjectLayout::LayFlow(const CompiledObject& object) {
    const auto& flow = static_cast<const FlowObject&>(*object.object);
    std::vector<Strip> cells = VisibleCells(object);
    const auto columns = static_cast<std::size_t>(flow.columns);
    const std::size_t rows = (cells.size() + columns - 1) / columns;
    const qreal pitch = (flow.area.width() + flow.gap) / static_cast<qreal>(columns);
    Laid laid{.object = &flow, .pieces = {}};
    qreal top = flow.area.y();
    for (std::size_t row = 0; row < rows; ++row) {
        qreal height = 0;
        for (std::size_t cell = row; cell < cells.size(); cell += rows) {
            const std::size_t column = cell / rows;
            const qreal left = flow.area.x() + pitch * static_cast<qreal>(column);
            for (Piece& piece : cells[cell].pieces) {
                piece.area.translate(left, top);
                laid.pieces.push_back(std::move(piece));
            }
            height = std::max(height, cells[cell].height);
        }
        top += height;
    }
    laid.growth = std::max(0.0, top - BottomOf(flow));
    return laid;
}

}  // namespace quardele::engine
