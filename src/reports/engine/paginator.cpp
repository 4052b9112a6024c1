#include "paginator.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <basic/runtime_error.h>

namespace quardele::engine {
namespace {

/// A body that is lower than a line of text makes no sense.
constexpr qreal kLeastRoom = 240;

/// Parts a strip that is higher than the room: returns what stays. Lines of text and pictures are never cut,
/// unless one alone is higher than the room; boxes and lines go on on the next page.
Pieces CutOff(Strip& strip, qreal room) {
    qreal cut = room;
    for (const Piece& piece : strip.pieces) {
        const bool whole =
            std::holds_alternative<TextMark>(piece.mark) || std::holds_alternative<PictureMark>(piece.mark);
        if (whole && piece.area.top() > 0 && piece.area.bottom() > room) {
            cut = std::min(cut, piece.area.top());
        }
    }
    Pieces staying;
    Pieces rest;
    for (Piece& piece : strip.pieces) {
        const bool shape =
            std::holds_alternative<BoxMark>(piece.mark) || std::holds_alternative<LineMark>(piece.mark);
        const bool above = piece.area.top() < cut || (shape && piece.area.bottom() <= cut);
        if (shape && above && piece.area.bottom() > cut) {
            Piece below = piece;
            below.area.setTop(cut);
            piece.area.setBottom(cut);
            rest.push_back(std::move(below));
        }
        (above ? staying : rest).push_back(std::move(piece));
    }
    MoveDown(rest, -cut);
    strip.pieces = std::move(rest);
    strip.height -= cut;
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
        footerHeight_ = frame_.footer(position).height;
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
        top_ = Bottom();
        Put(frame_.footer(position));
    }

    /// As far as they leave room for more than themselves.
    void RepeatHeaders(std::size_t depth) {
        for (std::size_t group = 0; group < std::min(depth, headers_.size()); ++group) {
            if (frame_.repeatHeader[group] &&
                top_ + headers_[group].height < bodyTop_ + (Bottom() - bodyTop_) / 2) {
                Put(headers_[group]);
            }
        }
        contentTop_ = top_;
    }

    void NewPage() {
        EndPage();
        BeginPage(bands_[next_].record, bands_[next_].depth);
    }

    [[nodiscard]] qreal Bottom() const { return frame_.height - footerHeight_; }
    [[nodiscard]] qreal Room() const { return Bottom() - top_; }
    /// What a fresh page offers.
    [[nodiscard]] qreal WholeRoom() const { return Bottom() - bodyTop_; }
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
        while (band.strip.height > Room()) {
            if (IsFresh() || Room() >= kLeastRoom) {
                Put({CutOff(band.strip, Room()), 0});
            }
            NewPage();
        }
        Put(std::move(band.strip));
        pageIsFull_ = band.newPageAfter;
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
        if (height > Room() && height <= WholeRoom()) {
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

    /// A header needs the first of what it is the header of.
    [[nodiscard]] qreal Needed(const Band& band) const {
        qreal height = band.strip.height;
        for (std::size_t i = next_ + 1; band.kind == SectionKind::GroupHeader && i < bands_.size(); ++i) {
            height += bands_[i].strip.height;
            if (!bands_[i].starts && bands_[i].kind != SectionKind::GroupHeader) {
                break;
            }
        }
        return band.kind == SectionKind::GroupHeader && height > WholeRoom() ? band.strip.height : height;
    }

    std::vector<Band> bands_;
    const PageFrame& frame_;
    std::size_t next_ = 0;
    std::vector<Pieces> pages_;
    std::vector<Strip> headers_;  ///< by group, of the one that is open
    std::optional<std::size_t> lastRecord_;
    qreal footerHeight_ = 0;
    qreal top_ = 0;
    qreal bodyTop_ = 0;
    qreal contentTop_ = 0;
    bool pageIsFull_ = false;
};

}  // namespace

std::vector<Pieces> Paginate(std::vector<Band> bands, const PageFrame& frame) {
    return Paginator(std::move(bands), frame).Run();
}

}  // namespace quardele::engine
