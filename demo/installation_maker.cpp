#include "installation_maker.h"

#include <fstream>
#include <stdexcept>

#include <QDirIterator>
#include <QFile>

#include <basic/date.h>

namespace quardele::demo {

namespace fs = std::filesystem;

namespace {

/// The letter templates lie in the program, in the folders that they take on disk.
const QString kFiles = QStringLiteral(":/installation");
/// Lies beside drive_c and says that it was made here.
constexpr const char* kMark = ".quardele-demo";

void WriteFile(const QString& resource, const fs::path& target) {
    fs::create_directories(target.parent_path());
    QFile source(resource);
    if (!source.copy(QString::fromStdString(target.string()))) {
        throw std::runtime_error("Impossible d'écrire " + target.string() + " : " +
                                 source.errorString().toStdString());
    }
    // Files of a program are read-only; those of a workshop are not.
    fs::permissions(target, fs::perms::owner_write | fs::perms::group_write, fs::perm_options::add);
}

/// Clears the way for a new installation; touches nothing that was not made here.
void RemoveFormer(const fs::path& driveC, const fs::path& mark) {
    if (!fs::exists(driveC)) {
        return;
    }
    if (!fs::exists(mark)) {
        throw std::runtime_error(
            driveC.string() +
            " existe et n'est pas une installation de démonstration ; rien n'a été changé.");
    }
    fs::remove_all(driveC);
}

void CopyTemplates(const fs::path& driveC) {
    QDirIterator files(kFiles, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString resource = files.next();
        WriteFile(resource, driveC / resource.mid(kFiles.size() + 1).toStdString());
    }
}

/// A visit of a vehicle that was sold: its row has gone, the visit has stayed.
workshop::GivenRows SoldVehicle(const workshop::Scale& scale) {
    workshop::GivenRows given;
    if (scale.visits > 0) {
        constexpr int kMonths = 24;
        const basic::Date last = basic::DateAdd(u"m", -kMonths - 1, scale.today);
        given.visits.push_back({u"WW-482-KL", u"CT", last, kMonths});
    }
    return given;
}

}  // namespace

fs::path MakeInstallation(const fs::path& folder, const workshop::Scale& scale) {
    fs::path driveC = fs::absolute(folder) / "drive_c";
    const fs::path mark = fs::absolute(folder) / kMark;
    const workshop::GivenRows given = SoldVehicle(scale);
    workshop::RequirePossible(scale, given);
    RemoveFormer(driveC, mark);
    fs::create_directories(driveC);
    std::ofstream(mark) << "Installation de démonstration du suivi des véhicules\n";
    workshop::MakeInstallation(driveC / "QUARDELE", scale, given);
    CopyTemplates(driveC);
    return driveC;
}

}  // namespace quardele::demo
