#include "file/page_cache.h"

#include <algorithm>

namespace quardele::jet {

namespace {

/// 40 MiB of pages of 4 KiB: rows in an order that is not theirs come back to the same pages again and again.
constexpr std::size_t kMostFrames = 10240;
/// 4 MiB for who goes through the file in order and does not come back: memory that is used anew is at hand.
constexpr std::size_t kMostFramesInOrder = 1024;
/// Who says which pages he wants gets so many with one system call, the pages between them included.
constexpr std::uint32_t kLongestRun = 64;
/// From one of these to the next, if both are to be read at once.
constexpr std::uint32_t kWidestStep = 5;

}  // namespace

PageCache::PageCache(const OsFile& file, const Format& format, PictureTaker* pictures)
    : PageSource(format), file_(file), pictures_(pictures) {}

void PageCache::TakePicture() const {
    picture_ = pictures_ != nullptr ? pictures_->Take() : Picture{.mark = {}, .stamp = file_.Stamp()};
    pageCount_ = static_cast<std::uint32_t>(std::min(picture_->stamp.size, kLargestFile) / Layout().pageSize);
}

void PageCache::Clear() const {
    frameOf_.clear();
    frames_.clear();
    hand_ = 0;
    expected_ = 0;
    picture_.reset();
    ++pictureNumber_;
    ++generation_;
}

bool PageCache::IsCurrent() const {
    return picture_ && (pictures_ == nullptr || pictures_->IsCurrent(*picture_));
}

void PageCache::Refresh() {
    if (picture_ && !IsCurrent()) {
        Clear();
    }
}

void PageCache::Adopt(const ChangeMark& mark) {
    picture_ = Picture{.mark = mark, .stamp = file_.Stamp()};
}

void PageCache::Put(PagePtr page) {
    pageCount_ = std::max(pageCount_, page->number + 1);
    if (Holds(page->number)) {
        frames_[frameOf_[page->number]].page = std::move(page);
    } else {
        Insert(std::move(page), kMostFramesInOrder);
    }
    ++generation_;
}

PagePtr PageCache::ReadInside(std::uint32_t number) const {
    ++pagesAsked_;
    if (Holds(number)) {
        Frame& frame = frames_[frameOf_[number]];
        frame.used = true;
        expected_ = number + 1;
        return frame.page;
    }
    const std::size_t mostFrames = number == expected_ ? kMostFramesInOrder : kMostFrames;
    expected_ = number + 1;
    return Load({&number, 1}, mostFrames);
}

PagePtr PageCache::ReadFirstInside(std::span<const std::uint32_t> pages) const {
    if (Holds(pages.front())) {
        return ReadInside(pages.front());
    }
    ++pagesAsked_;
    expected_ = pages.front() + 1;
    return Load(pages.first(WorthReading(pages)), kMostFramesInOrder);
}

PagePtr PageCache::Load(std::span<const std::uint32_t> pages, std::size_t mostFrames) const {
    const std::uint32_t start = pages.front();
    const std::uint32_t end = start + ReadRun(start, pages.back() - start + 1);
    const std::size_t pageSize = Layout().pageSize;
    PagePtr first;
    for (const std::uint32_t number : pages) {
        if (number >= end) {
            break;
        }
        if (Holds(number)) {
            continue;
        }
        auto page = std::make_shared_for_overwrite<Page>();
        page->number = number;
        page->size = Layout().pageSize;
        std::copy_n(readBuffer_.begin() + static_cast<std::ptrdiff_t>((number - start) * pageSize), pageSize,
                    page->bytes.begin());
        if (number == start) {
            first = page;
        }
        Insert(std::move(page), mostFrames);
    }
    return first;
}

// The bytes count only if nobody had begun to change the file by the time they were read.
std::uint32_t PageCache::ReadRun(std::uint32_t number, std::uint32_t run) const {
    const std::uint32_t whole = ReadWhatCanBeRead(number, run);
    if (pictures_ != nullptr && !pictures_->IsWhole(*picture_)) {
        Clear();
        throw PictureTorn();
    }
    if (whole == 0) {
        ThrowDamaged(number, u"page incomplète");
    }
    pagesRead_ += whole;
    return whole;
}

// A sector that cannot be read lets the whole call fail, and a disk takes seconds to say so: half as many
// pages are tried each time, so that few of the calls meet it. It is the caller's matter once its page was
// asked for.
std::uint32_t PageCache::ReadWhatCanBeRead(std::uint32_t number, std::uint32_t run) const {
    const std::size_t pageSize = Layout().pageSize;
    for (;; run /= 2) {
        readBuffer_.resize(run * pageSize);
        try {
            const std::size_t read = file_.ReadAt(std::uint64_t{number} * pageSize, readBuffer_);
            return static_cast<std::uint32_t>(read / pageSize);
        } catch (const basic::RuntimeError&) {
            if (run == 1) {
                throw;
            }
        }
    }
}

// How many pages of a list to read at once. Those of one table lie close together; what lies between them is
// read along where that takes less time than another call.
std::size_t PageCache::WorthReading(std::span<const std::uint32_t> pages) const {
    std::uint32_t last = pages.front();
    std::size_t count = 1;
    for (std::size_t i = 1; i < pages.size(); ++i) {
        const std::uint32_t page = pages[i];
        if (page >= pageCount_ || page - last > kWidestStep || page - pages.front() >= kLongestRun) {
            break;
        }
        last = page;
        count = Holds(page) ? count : i + 1;
    }
    return count;
}

void PageCache::Insert(PagePtr page, std::size_t mostFrames) const {
    const std::uint32_t number = page->number;
    if (frames_.size() < mostFrames) {
        Remember(number, frames_.size());
        frames_.push_back({std::move(page), false});
        return;
    }
    const std::size_t index = FrameToReuse();
    frameOf_[frames_[index].page->number] = kNoFrame;
    Remember(number, index);
    frames_[index] = {std::move(page), false};
}

void PageCache::Remember(std::uint32_t number, std::size_t frame) const {
    if (number >= frameOf_.size()) {
        frameOf_.resize(std::max(number + 1, pageCount_), kNoFrame);
    }
    frameOf_[number] = static_cast<std::uint32_t>(frame);
}

// Second chance: a frame that was used since the hand last passed stays for one more round.
std::size_t PageCache::FrameToReuse() const {
    for (;;) {
        hand_ = (hand_ + 1) % frames_.size();
        if (!frames_[hand_].used) {
            return hand_;
        }
        frames_[hand_].used = false;
    }
}

}  // namespace quardele::jet
