// What stands behind one open Database: the file, its pages, its catalogue.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include <jet/database.h>

#include "commit/picture.h"
#include "definitions/catalog.h"
#include "file/os_file.h"
#include "file/page_cache.h"
#include "locks/lock_file.h"
#include "locks/row_locks.h"
#include "locks/shut_out.h"
#include "scope_exit.h"

namespace quardele::jet {

class WriteStep;

/// A table that is open, and what its structure was known by then.
struct OpenedTable {
    std::weak_ptr<Table> table;
    std::uint32_t page = 0;
    double changed = 0;
};

class Engine {
 public:
    Engine(const std::filesystem::path& path, OpenMode mode);

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    [[nodiscard]] OpenMode Mode() const { return mode_; }
    [[nodiscard]] bool IsReadOnly() const { return readOnly_; }
    [[nodiscard]] const Format& Layout() const { return *format_; }
    [[nodiscard]] PageCache& Cache() { return *cache_; }
    /// The pages as this process sees them: with the changes of the open step, if there is one.
    [[nodiscard]] const PageSource& Pages() const;
    [[nodiscard]] OsFile& File() { return file_; }
    [[nodiscard]] LockFile& Users() { return users_; }
    [[nodiscard]] RowLocks& Rows() { return *rows_; }
    /// Keeps everybody out of the file who is not of this process, until the open step ends; false when
    /// somebody is in. An exclusive opener is alone all the time.
    [[nodiscard]] bool ShutOthersOut();
    /// Ends that.
    void LetOthersIn();

    /// The catalogue, read when it is first asked for after opening or Refresh.
    [[nodiscard]] const jet::Catalog& Objects();
    void Refresh();
    /// The same for the pages alone.
    void RefreshPages() { cache_->Refresh(); }
    /// The catalogue has changed, or a change of it was undone.
    void ForgetCatalog() { catalog_.reset(); }

    /// Reads something that must belong to one state of the file: when somebody changes the file meanwhile
    /// the action is run again, from its start. Every public way to read goes through here.
    template <class Action>
    auto Reading(const Action& action) -> decltype(action());

    /// Says for the pages that this engine holds the writer's lock.
    void SetWriting(bool writing) { pictures_->SetWriting(writing); }

    WriteStep* openStep = nullptr;  ///< the outermost one; it registers itself
    /// Tables that are open, by upper-case name; they are shared.
    std::map<Text, OpenedTable> openTables;

 private:
    void OpenFile();
    [[nodiscard]] bool OpenToWrite();
    void TakePresence();
    void EnterLockFile();
    void TakeFirstPicture();
    template <class Action>
    auto ReadingAlone(const Action& action) -> decltype(action());

    std::filesystem::path path_;
    OpenMode mode_;
    bool readOnly_ = false;
    OsFile file_;
    LockFile users_;
    ShutOut others_;
    std::unique_ptr<RowLocks> rows_;
    const Format* format_ = nullptr;
    std::unique_ptr<PictureTaker> pictures_;
    std::unique_ptr<PageCache> cache_;
    std::optional<jet::Catalog> catalog_;
    std::uint64_t catalogGeneration_ = 0;
    bool reading_ = false;  ///< within Reading; the outermost one begins again
};

template <class Action>
auto Engine::Reading(const Action& action) -> decltype(action()) {
    constexpr int kTries = 3;
    if (reading_ || openStep != nullptr) {
        return action();  // in a step nobody of ours changes the file
    }
    reading_ = true;
    const ScopeExit end([this] { reading_ = false; });
    for (int i = 0; i < kTries; ++i) {
        try {
            return action();
        } catch (const PictureTorn&) {
            continue;
        }
    }
    return ReadingAlone(action);
}

// Where many write all the time a reader has its turn as well: they wait for it.
template <class Action>
auto Engine::ReadingAlone(const Action& action) -> decltype(action()) {
    pictures_->Tidy();
    if (!pictures_->Hold()) {
        throw PictureTorn();
    }
    const ScopeExit end([this] { pictures_->Release(); });
    return action();
}

}  // namespace quardele::jet
