// Reading a file that others write to: what is read belongs to one state of it, or is read again.
#pragma once

#include <cstdint>

#include <basic/runtime_error.h>

#include "commit/change_mark.h"
#include "file/os_file.h"
#include "format.h"

namespace quardele::jet {

/// A state of a file, between two changes of it.
struct Picture {
    ChangeMark mark;
    FileStamp stamp;
};

/// Somebody has changed the file since the picture was taken, so that its next page is not to be had any
/// more. What was being read is read again from the start, from a new picture; nobody above the engine sees
/// this error. It carries the number of a lock error for the case that this happens over and over.
class PictureTorn : public basic::RuntimeError {
 public:
    PictureTorn() : RuntimeError(basic::error::kRecordLocked) {}
};

/// Takes pictures of a file.
class PictureTaker {
 public:
    /// The file and the format must outlive it.
    PictureTaker(OsFile& file, const Format& format, bool readOnly)
        : file_(file), format_(format), readOnly_(readOnly) {}

    /// Waits for a writer that is writing its pages, and undoes what one that died has left half done. Throws
    /// 3260 when the writer takes very long, 3027 when something must be undone in a file that may only be
    /// read, 3343 when it cannot be undone.
    [[nodiscard]] Picture Take();
    /// Whether nobody has begun to change the file since the picture was taken.
    [[nodiscard]] bool IsWhole(const Picture& picture) const;
    /// The same with all that the file system records: also what is changed without counting it.
    [[nodiscard]] bool IsCurrent(const Picture& picture) const;

    /// Takes a journal away that a writer has left, if no other one is at work.
    void Tidy();
    /// Says that this opener holds the writer's lock.
    void SetWriting(bool writing) { writing_ = writing; }

    /// Keeps everybody from writing pages until Release; false when that cannot be had.
    [[nodiscard]] bool Hold();
    void Release();

 private:
    [[nodiscard]] bool TryTake(Picture& picture);
    [[nodiscard]] bool LookAtFile(Picture& picture);
    [[nodiscard]] bool TryHold();
    void RecoverAsWriter();

    OsFile& file_;
    const Format& format_;
    bool readOnly_;
    bool writing_ = false;
    int holds_ = 0;
};

}  // namespace quardele::jet
