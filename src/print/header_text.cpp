#include <print/header_text.h>

#include <algorithm>
#include <optional>

#include <QRegularExpression>

namespace quardele::print {
namespace {

constexpr int kMostPoints = 96;

class HeaderReader {
 public:
    explicit HeaderReader(int page) : page_(QString::number(page)) {}

    void Text(QStringView text) { text_ += text; }

    void Mark(const QRegularExpressionMatch& mark) {
        const QStringView name = mark.capturedView(1);
        if (name == u"p") {
            text_ += page_;
            return;
        }
        EndPiece();
        if (name == u"n") {
            EndLine();
        } else if (name == u"l" || name == u"c" || name == u"r") {
            style_.place = name == u"l" ? Place::Left : name == u"c" ? Place::Centre : Place::Right;
        } else if (name == u"fb1" || name == u"fb0") {
            style_.bold = name == u"fb1";
        } else {
            style_.points = std::clamp(mark.capturedView(2).toInt(), 1, kMostPoints);
        }
    }

    std::vector<HeaderLine> Lines() {
        EndPiece();
        if (!line_.pieces.empty()) {
            EndLine();
        }
        return std::move(lines_);
    }

 private:
    void EndPiece() {
        if (text_.isEmpty()) {
            return;
        }
        style_.text = std::exchange(text_, QString());
        line_.pieces.push_back(style_);
    }

    void EndLine() {
        line_.points = style_.points;
        lines_.push_back(std::exchange(line_, HeaderLine()));
    }

    QString page_;
    QString text_;
    HeaderPiece style_;
    HeaderLine line_;
    std::vector<HeaderLine> lines_;
};

const QRegularExpression& Marks() {
    static const QRegularExpression marks(QStringLiteral("/(fb[01]|fz\"(\\d{1,3})\"|[lcrnp])"));
    return marks;
}

}  // namespace

std::vector<HeaderLine> HeaderLines(const QString& markup, int page) {
    HeaderReader reader(page);
    qsizetype end = 0;
    auto marks = Marks().globalMatch(markup);
    while (marks.hasNext()) {
        const QRegularExpressionMatch mark = marks.next();
        reader.Text(QStringView(markup).sliced(end, mark.capturedStart() - end));
        reader.Mark(mark);
        end = mark.capturedEnd();
    }
    reader.Text(QStringView(markup).sliced(end));
    return reader.Lines();
}

bool ShowsPageNumber(const QString& markup) {
    auto marks = Marks().globalMatch(markup);
    while (marks.hasNext()) {
        if (marks.next().capturedView(1) == u"p") {
            return true;
        }
    }
    return false;
}

}  // namespace quardele::print
