#include "paginator.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include <basic/runtime_error.h>

namespace quardele::engine {
namespace {

/// A body that is lower than a line of text makes no sense.
constexpr qreal kLeastRoom = 240;

bool IsCut(const Piece& piece, qreal room) {
    const bool whole =
        std::holds_alternative<TextMark>(piece.mark) || std::holds_alternative<PictureMark>(piece.mark);
    return whole && piece.area.top() < room && piece.area.bottom() > room;
}

/// Where a strip that is higher than the room is parted without cutting lines of text and pictures.
qreal PartingOf(const Strip& strip, qreal room) {
    qreal parting = room;
    for (const Piece& piece : strip.pieces) {
        if (IsCut(piece, room)) {
            parting = std::min(parting, piece.area.top());
        }
    }
    return parting;
}

/// What a strip that may be parted needs to begin: its first line.
qreal BeginningOf(const Strip& strip) {
    qreal first = strip.height;
    qreal atTheTop = kLeastRoom;
    for (const Piece& piece : strip.pieces) {
        if (std::holds_alternative<TextMark>(piece.mark)) {
            first = std::min(first, piece.area.bottom());
            atTheTop = piece.area.top() <= 0 ? std::max(atTheTop, piece.area.bottom()) : atTheTop;
        }
    }
    return std::min(std::max(first, atTheTop), strip.height);
}

/// As large as it can be with its own proportions.
void FitPicture(Piece& piece, qreal room) {
    if (std::holds_alternative<PictureMark>(piece.mark) && piece.area.height() > room) {
        piece.area.setSize(piece.area.size().scaled(piece.area.width(), room, Qt::KeepAspectRatio));
    }
}

/// Boxes and lines go on below; slanting lines keep their slope.
Piece PartShape(Piece& shape, qreal parting) {
    Piece below = shape;
    if (std::holds_alternative<LineMark>(shape.mark)) {
        const qreal part = (parting - shape.area.top()) / shape.area.height();
        const qreal x = shape.area.left() + part * shape.area.width();
        shape.area.setRight(x);
        below.area.setLeft(x);
    }
    shape.area.setBottom(parting);
    below.area.setTop(parting);
    return below;
}

/// Parts a strip: returns what stays above.
Pieces CutOff(Strip& strip, qreal parting) {
    Pieces staying;
    Pieces rest;
    for (Piece& piece : strip.pieces) {
        const bool shape =
            std::holds_alternative<BoxMark>(piece.mark) || std::holds_alternative<LineMark>(piece.mark);
        const bool above = piece.area.top() < parting || (shape && piece.area.bottom() <= parting);
        if (shape && above && piece.area.bottom() > parting) {
            rest.push_back(PartShape(piece, parting));
        }
        (above ? staying : rest).push_back(std::move(piece));
    }
    MoveDown(rest, -parting);
    strip.pieces = std::move(rest);
    strip.height -= parting;
    return staying;
}

class Paginator {
 public:
    Paginator(std::vector<Band> bands, const PageFrame& frame) : bands_(std::move(bands)), frame_(frame) {}

    std::vector<Pieces> Run() {
        headers_.resize(frame_.repeatHeader.size());
        BeginPage(bands_.empty() ? std::nullopt : bands_.front().record, 0);
        for (next_ = 0; next_ < bands_.size(); ++next_) {
            PlaceNext();
        }
        EndPage();
        return std::move(pages_);
    }

 private:
    // Pages.

    void BeginPage(std::optional<std::size_t> record, std::size_t depth) {
        const Position position{.record = record, .page = static_cast<int>(pages_.size()) + 1};
        pages_.emplace_back();
        lastRecord_ = record;
        footerHeight_ = frame_.footerRoom(position);
        top_ = 0;
        Put(frame_.header(position));
        bodyTop_ = top_;
        if (Bottom() - bodyTop_ < kLeastRoom) {
            throw basic::RuntimeError(basic::error::kInvalidArgument,
                                      u"L'en-tête et le pied de page ne laissent pas de place sur la page.");
        }
        RepeatHeaders(depth);
    }

    void EndPage() {
        const Position position{.record = lastRecord_, .page = static_cast<int>(pages_.size())};
        Strip footer = frame_.footer(position);
        top_ = frame_.height - footer.height;
        Put(std::move(footer));
    }

    void RepeatHeaders(std::size_t depth) {
        for (const std::size_t group : HeadersToRepeat(depth)) {
            Put(headers_[group]);
        }
        pageTop_ = top_;
        contentTop_ = top_;
    }

    /// By group, as far as they leave room for more than themselves.
    [[nodiscard]] std::vector<std::size_t> HeadersToRepeat(std::size_t depth) const {
        std::vector<std::size_t> groups;
        qreal height = 0;
        for (std::size_t group = 0; group < std::min(depth, headers_.size()); ++group) {
            if (frame_.repeatHeader[group] && height + headers_[group].height < WholeRoom() / 2) {
                height += headers_[group].height;
                groups.push_back(group);
            }
        }
        return groups;
    }

    void NewPage() {
        EndPage();
        BeginPage(bands_[next_].record, bands_[next_].depth);
    }

    [[nodiscard]] qreal Bottom() const { return frame_.height - footerHeight_; }
    [[nodiscard]] qreal Room() const { return Bottom() - top_; }
    /// What a page offers below its header.
    [[nodiscard]] qreal WholeRoom() const { return Bottom() - bodyTop_; }
    /// What a new page offers below the headers of so many groups.
    [[nodiscard]] qreal RoomBelowHeaders(std::size_t depth) const {
        qreal room = WholeRoom();
        for (const std::size_t group : HeadersToRepeat(depth)) {
            room -= headers_[group].height;
        }
        return room;
    }
    [[nodiscard]] bool IsEmpty() const { return top_ <= pageTop_; }
    /// Nothing but headers of groups stands there.
    [[nodiscard]] bool IsFresh() const { return top_ <= contentTop_; }

    void Put(Strip strip) {
        MoveDown(strip.pieces, top_);
        top_ += strip.height;
        Pieces& page = pages_.back();
        std::move(strip.pieces.begin(), strip.pieces.end(), std::back_inserter(page));
    }

    // Bands.

    void PlaceNext() {
        Band& band = bands_[next_];
        if ((pageIsFull_ || band.newPageBefore) && !IsFresh() && !band.starts) {
            NewPage();
        }
        pageIsFull_ = pageIsFull_ && band.starts.has_value();
        if (band.starts) {
            BeginGroup(*band.starts);
            return;
        }
        KeepHeader(band);
        MakeRoom(band);
        lastRecord_ = band.record;
        PartWhatIsTooHigh(band.strip);
        const bool beginsPage = IsFresh();
        Put(std::move(band.strip));
        pageIsFull_ = band.newPageAfter;
        if (beginsPage && band.kind == SectionKind::GroupHeader && !band.newPageAfter) {
            contentTop_ = top_;
        }
    }

    void PartWhatIsTooHigh(Strip& strip) {
        while (strip.height > Room()) {
            if (IsEmpty()) {
                FitFirstLine(strip);
            }
            if (const qreal parting = PartingOf(strip, Room());
                parting > 0 && (IsFresh() || Room() >= kLeastRoom)) {
                Put({CutOff(strip, parting), 0});
                if (strip.pieces.empty()) {
                    // What is left is empty: no page for that.
                    strip.height = 0;
                    top_ = Bottom();
                    return;
                }
            }
            NewPage();
        }
    }

    /// What stands first and is higher than a page cannot go on anywhere.
    void FitFirstLine(Strip& strip) const {
        for (Piece& piece : strip.pieces) {
            if (piece.area.top() <= 0 && IsCut(piece, Room())) {
                FitPicture(piece, Room());
                piece.area.setBottom(std::min(piece.area.bottom(), Room()));
            }
        }
    }

    /// Remembers the header for the pages to come.
    void KeepHeader(const Band& band) {
        if (band.kind == SectionKind::GroupHeader && frame_.repeatHeader[band.depth]) {
            Strip copy = band.strip;
            MoveDown(copy.pieces, headers_[band.depth].height);
            headers_[band.depth].height += copy.height;
            std::move(copy.pieces.begin(), copy.pieces.end(),
                      std::back_inserter(headers_[band.depth].pieces));
        }
    }

    void BeginGroup(std::size_t group) {
        headers_[group] = {};
        if (!frame_.keepTogether[group] || IsFresh()) {
            return;
        }
        const qreal height = HeightOfGroup(group);
        if (height > Room() && height <= RoomBelowHeaders(group)) {
            NewPage();
        }
    }

    [[nodiscard]] qreal HeightOfGroup(std::size_t group) const {
        qreal height = 0;
        for (std::size_t i = next_ + 1; i < bands_.size() && !EndsGroup(bands_[i], group); ++i) {
            height += bands_[i].strip.height;
        }
        return height;
    }

    /// Whether a band is the first one behind a group.
    [[nodiscard]] static bool EndsGroup(const Band& band, std::size_t group) {
        return band.starts ? *band.starts <= group
                           : band.kind != SectionKind::GroupHeader && band.depth <= group;
    }

    void MakeRoom(const Band& band) {
        const qreal needed = Needed(band);
        const bool mayPart = !band.keepTogether && band.kind != SectionKind::GroupHeader;
        if (needed <= Room() || IsFresh() || mayPart) {
            return;
        }
        NewPage();
    }

    /// A header needs the first of what it is the header of; where that may be parted, the beginning of it.
    [[nodiscard]] qreal Needed(const Band& band) const {
        qreal height = band.strip.height;
        for (std::size_t i = next_ + 1; band.kind == SectionKind::GroupHeader && i < bands_.size(); ++i) {
            const Band& below = bands_[i];
            if (below.newPageBefore) {
                // The header goes there, too.
                return std::numeric_limits<qreal>::infinity();
            }
            height += below.keepTogether ? below.strip.height : BeginningOf(below.strip);
            if (!below.starts && below.kind != SectionKind::GroupHeader) {
                break;
            }
        }
        return height;
    }

    std::vector<Band> bands_;
    const PageFrame& frame_;
    std::size_t next_ = 0;
    std::vector<Pieces> pages_;
    std::vector<Strip> headers_;  ///< by group, of the one that is open
    std::optional<std::size_t> lastRecord_;
    qreal footerHeight_ = 0;
    qreal top_ = 0;
    qreal bodyTop_ = 0;     ///< below the page header
    qreal pageTop_ = 0;     ///< below page header and repeated headers
    qreal contentTop_ = 0;  ///< below the headers of groups that begin there
    bool pageIsFull_ = false;
};

}  // namespace

std::vector<Pieces> Paginate(std::vector<Band> bands, const PageFrame& frame) {
    return Paginator(std::move(bands), frame).Run();
}

}  // namespace quardele::engine
