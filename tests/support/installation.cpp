#include <support/installation.h>

#include <system_error>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <basic/paths.h>

namespace quardele::support {
namespace {

std::filesystem::path FreshFolder() {
    QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/quardele-XXXXXX"));
    folder.setAutoRemove(false);
    return std::filesystem::path(folder.path().toStdU16String());
}

/// Fixtures may be read-only where they come from; a copy is there to be changed.
void MakeWritable(const std::filesystem::path& folder) {
    using std::filesystem::perms;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        std::filesystem::permissions(entry.path(), perms::owner_read | perms::owner_write,
                                     std::filesystem::perm_options::add);
    }
}

}  // namespace

Installation::Installation() : Installation(std::filesystem::path(QUARDELE_INSTALLATION_DIR) / "QUARDELE") {}

Installation::Installation(const std::filesystem::path& source)
    : driveC_(FreshFolder() / "drive_c"), before_(std::filesystem::current_path()) {
    std::filesystem::create_directories(driveC_);
    std::filesystem::copy(source, Root(), std::filesystem::copy_options::recursive);
    MakeWritable(Root());
    std::filesystem::create_directories(Root() / "VEH");
    drives_ = basic::DriveTable::Session();
    basic::DriveTable::Session().Set(u'C', driveC_);
    basic::ChDir(u"C:\\QUARDELE\\VEH");
}

Installation::~Installation() {
    basic::DriveTable::Session() = drives_;
    std::error_code ignored;
    std::filesystem::current_path(before_, ignored);
    std::filesystem::remove_all(driveC_.parent_path(), ignored);
}

std::vector<std::string> Installation::ExportTable(const std::filesystem::path& file,
                                                   const std::string& table) {
    QProcess program;
    program.start(QStringLiteral("mdb-export"),
                  {QString::fromStdU16String(file.u16string()), QString::fromStdString(table)});
    if (!program.waitForFinished() || program.exitCode() != 0) {
        return {};
    }
    std::vector<std::string> lines;
    for (const QByteArray& line : program.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty()) {
            lines.push_back(line.toStdString());
        }
    }
    return lines;
}

}  // namespace quardele::support
