// The pages of one open file in memory, read with pread as they are asked for.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "commit/picture.h"
#include "file/os_file.h"
#include "file/page.h"

namespace quardele::jet {

/// A bounded set of recently used pages, all of one state of the file: a page that belongs to a later one
/// throws PictureTorn, and everything is read anew. The file is not mapped: another process may shorten or
/// rewrite it at any moment, which must neither kill this one nor change a row while it is being decoded.
class PageCache final : public PageSource {
 public:
    /// File and pictures must outlive the cache. Without pictures the caller sees to it that nobody writes.
    PageCache(const OsFile& file, const Format& format, PictureTaker* pictures = nullptr);

    [[nodiscard]] std::uint32_t PageCount() const override {
        Look();
        return pageCount_;
    }
    /// Forgets everything; what is read next is what the file holds then. Pages that others hold stay valid.
    void Clear() const;
    /// Forgets everything if the file has changed.
    void Refresh();
    /// Whether the file is as it was when the picture was taken; false without a picture.
    [[nodiscard]] bool IsCurrent() const;
    /// Counts how often everything was forgotten: pages read at one number belong together.
    [[nodiscard]] std::uint64_t PictureNumber() const { return pictureNumber_; }
    /// Counts the pages that were read from the file.
    [[nodiscard]] std::uint64_t PagesRead() const { return pagesRead_; }
    /// Counts the pages that were asked for, whether or not they were in memory.
    [[nodiscard]] std::uint64_t PagesAsked() const { return pagesAsked_; }
    /// Takes over a page that was just written.
    void Put(PagePtr page);
    /// The pages that were put are those of the file with this mark.
    void Adopt(const ChangeMark& mark);
    [[nodiscard]] std::uint64_t Generation() const override { return generation_; }
    /// Makes stale what was computed from pages.
    void Touch() { ++generation_; }

 protected:
    [[nodiscard]] PagePtr ReadInside(std::uint32_t number) const override;
    [[nodiscard]] PagePtr ReadFirstInside(std::span<const std::uint32_t> pages) const override;

 private:
    static constexpr std::uint32_t kNoFrame = UINT32_MAX;

    struct Frame {
        PagePtr page;
        bool used = false;
    };
    /// Those who go through the file in order leave their pages to each other, so that none of the others has
    /// to go: a list reads a million rows between two looks at what it shows.
    enum class Reader { InOrder, ByPlace };
    struct Frames {
        std::vector<Frame> frames = {};
        std::size_t hand = 0;
    };

    /// Takes a picture if there is none.
    void Look() const {
        if (!picture_) {
            TakePicture();
        }
    }
    void TakePicture() const;
    /// Reads pages in ascending order, and what lies between them, with one system call. Keeps those that are
    /// not there yet, and returns the first, which must be one of them. What cannot
    /// be read behind the first one is left out.
    PagePtr Load(std::span<const std::uint32_t> pages, Reader reader) const;
    /// Reads pages into the buffer, and returns how many: at least one. Throws RuntimeError 3343 when the
    /// file ends within the first one, 57 when that one cannot be read.
    [[nodiscard]] std::uint32_t ReadRun(std::uint32_t number, std::uint32_t run) const;
    [[nodiscard]] std::uint32_t ReadWhatCanBeRead(std::uint32_t number, std::uint32_t run) const;
    void Insert(PagePtr page, Reader reader) const;
    /// Memory for a page that Insert will be given: that of the page which has to go, if nobody else holds
    /// it.
    [[nodiscard]] std::shared_ptr<Page> MemoryFor(Reader reader) const;
    [[nodiscard]] Frames& FramesOf(Reader reader) const {
        return reader == Reader::InOrder ? inOrder_ : byPlace_;
    }
    [[nodiscard]] static std::size_t FrameToReuse(Frames& kept);
    [[nodiscard]] bool Holds(std::uint32_t number) const {
        return number < frameOf_.size() && frameOf_[number] != kNoFrame;
    }
    /// The frame of a page that is held.
    [[nodiscard]] Frame& FrameOf(std::uint32_t number) const;
    void Remember(std::uint32_t number, std::size_t place) const;
    [[nodiscard]] std::size_t WorthReading(std::span<const std::uint32_t> pages) const;

    const OsFile& file_;
    PictureTaker* pictures_;
    mutable std::optional<Picture> picture_;
    mutable std::uint64_t pictureNumber_ = 0;
    mutable std::uint32_t pageCount_ = 0;
    mutable std::uint64_t generation_ = 0;
    mutable std::uint64_t pagesRead_ = 0;
    mutable std::uint64_t pagesAsked_ = 0;
    /// By page number, as far as pages were read: a list finds a page for every row that it shows. Twice the
    /// frame, and 1 more for those of readers by place.
    mutable std::vector<std::uint32_t> frameOf_;
    mutable Frames inOrder_;
    mutable Frames byPlace_;
    mutable std::uint32_t expected_ = 0;  ///< the page that a sequential reader would ask for next
    mutable std::vector<std::uint8_t> readBuffer_;
};

}  // namespace quardele::jet
