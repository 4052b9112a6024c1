// What stands behind one open Database: the file, its pages, its catalogue.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include <jet/database.h>

#include "catalog.h"
#include "os_file.h"
#include "page_cache.h"

namespace quardele::jet {

class Engine {
 public:
    Engine(const std::filesystem::path& path, OpenMode mode);

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    [[nodiscard]] OpenMode Mode() const { return mode_; }
    [[nodiscard]] bool IsReadOnly() const { return readOnly_; }
    [[nodiscard]] const Format& Layout() const { return *format_; }
    [[nodiscard]] PageCache& Pages() { return *pages_; }
    [[nodiscard]] const PageCache& Pages() const { return *pages_; }
    [[nodiscard]] OsFile& File() { return file_; }

    /// The catalogue, read when it is first asked for after opening or Refresh.
    [[nodiscard]] const jet::Catalog& Objects();
    void Refresh();

    /// Tables that are open, by upper-case name; they are shared.
    std::map<Text, std::weak_ptr<Table>> openTables;

 private:
    void OpenFile();
    void TakePresence();
    void Recover();
    void RecoverAlone();

    std::filesystem::path path_;
    OpenMode mode_;
    bool readOnly_ = false;
    OsFile file_;
    const Format* format_ = nullptr;
    std::unique_ptr<PageCache> pages_;
    std::optional<jet::Catalog> catalog_;
};

}  // namespace quardele::jet
