#include "file/page_cache.h"

#include <algorithm>
#include <utility>

namespace quardele::jet {

namespace {

/// 36 MiB of pages of 4 KiB: rows in an order that is not theirs come back to the same pages again and again.
constexpr std::size_t kMostFramesByPlace = 9216;
/// 4 MiB for who goes through the file in order and does not come back: memory that is used anew is at hand.
constexpr std::size_t kMostFramesInOrder = 1024;
/// Who says which pages he wants gets so many with one system call, the pages between them included.
constexpr std::uint32_t kLongestRun = 64;
/// From one of these to the next, if both are to be read at once.
constexpr std::uint32_t kWidestStep = 5;

constexpr std::size_t MostFrames(bool inOrder) {
    return inOrder ? kMostFramesInOrder : kMostFramesByPlace;
}

}  // namespace

PageCache::PageCache(const OsFile& file, const Format& format, PictureTaker* pictures)
    : PageSource(format), file_(file), pictures_(pictures) {}

void PageCache::TakePicture() const {
    picture_ = pictures_ != nullptr ? pictures_->Take() : Picture{.mark = {}, .stamp = file_.Stamp()};
    pageCount_ = static_cast<std::uint32_t>(std::min(picture_->stamp.size, kLargestFile) / Layout().pageSize);
}

void PageCache::Clear() const {
    frameOf_.clear();
    inOrder_ = {};
    byPlace_ = {};
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
        FrameOf(page->number).page = std::move(page);
    } else {
        Insert(std::move(page), Reader::InOrder);
    }
    ++generation_;
}

PagePtr PageCache::ReadInside(std::uint32_t number) const {
    ++pagesAsked_;
    if (Holds(number)) {
        Frame& frame = FrameOf(number);
        frame.used = true;
        expected_ = number + 1;
        return frame.page;
    }
    const Reader reader = number == expected_ ? Reader::InOrder : Reader::ByPlace;
    expected_ = number + 1;
    return Load({&number, 1}, reader);
}

PagePtr PageCache::ReadFirstInside(std::span<const std::uint32_t> pages) const {
    if (Holds(pages.front())) {
        return ReadInside(pages.front());
    }
    ++pagesAsked_;
    expected_ = pages.front() + 1;
    return Load(pages.first(WorthReading(pages)), Reader::InOrder);
}

PagePtr PageCache::Load(std::span<const std::uint32_t> pages, Reader reader) const {
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
        const std::shared_ptr<Page> page = MemoryFor(reader);
        page->number = number;
        page->size = Layout().pageSize;
        std::copy_n(readBuffer_.begin() + static_cast<std::ptrdiff_t>((number - start) * pageSize), pageSize,
                    page->bytes.begin());
        if (number == start) {
            first = page;
        }
        Insert(page, reader);
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
        const std::size_t wanted = run * pageSize;
        readBuffer_.resize(std::max(readBuffer_.size(), wanted));
        try {
            const std::size_t read =
                file_.ReadAt(std::uint64_t{number} * pageSize, std::span(readBuffer_).first(wanted));
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

PageCache::Frame& PageCache::FrameOf(std::uint32_t number) const {
    const std::uint32_t place = frameOf_[number];
    return ((place & 1) == 0 ? inOrder_ : byPlace_).frames[place / 2];
}

void PageCache::Insert(PagePtr page, Reader reader) const {
    const std::uint32_t number = page->number;
    Frames& kept = FramesOf(reader);
    std::size_t frame = kept.frames.size();
    if (frame < MostFrames(reader == Reader::InOrder)) {
        kept.frames.push_back({std::move(page), false});
    } else {
        frame = FrameToReuse(kept);
        if (kept.frames[frame].page != nullptr) {
            frameOf_[kept.frames[frame].page->number] = kNoFrame;
        }
        kept.frames[frame] = {std::move(page), false};
    }
    Remember(number, frame * 2 + (reader == Reader::InOrder ? 0 : 1));
}

std::shared_ptr<Page> PageCache::MemoryFor(Reader reader) const {
    Frames& kept = FramesOf(reader);
    if (kept.frames.size() == MostFrames(reader == Reader::InOrder)) {
        const std::size_t index = FrameToReuse(kept);
        kept.hand = (index + kept.frames.size() - 1) % kept.frames.size();  // it is the next to be filled
        PagePtr& page = kept.frames[index].page;
        if (page != nullptr && page.use_count() == 1) {
            frameOf_[page->number] = kNoFrame;
            return std::const_pointer_cast<Page>(std::exchange(page, nullptr));
        }
    }
    return std::make_shared_for_overwrite<Page>();
}

void PageCache::Remember(std::uint32_t number, std::size_t place) const {
    if (number >= frameOf_.size()) {
        frameOf_.resize(std::max(number + 1, pageCount_), kNoFrame);
    }
    frameOf_[number] = static_cast<std::uint32_t>(place);
}

// Second chance: a frame that was used since the hand last passed stays for one more round.
std::size_t PageCache::FrameToReuse(Frames& kept) {
    for (;;) {
        kept.hand = (kept.hand + 1) % kept.frames.size();
        Frame& frame = kept.frames[kept.hand];
        if (!frame.used) {
            return kept.hand;
        }
        frame.used = false;
    }
}

}  // namespace quardele::jet
