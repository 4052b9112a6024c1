// A folder with report files and a small data file, as reports want them.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <engine/application.h>

namespace quardele::engine::test {

class ReportFolder {
 public:
    ReportFolder();

    /// The Windows path of a file in the folder.
    [[nodiscard]] QString WindowsPath(const QString& name) const;
    [[nodiscard]] QString NativePath(const QString& name) const { return folder_.filePath(name); }
    void WriteFile(const QString& name, const QByteArray& bytes) const;

    /// Makes a data file by statements of the dialect.
    void MakeData(const QString& name, const QStringList& statements) const;
    /// DONNEES.MDB with vehicles: TVEH(IMMAT, MARQUE, CLI, KM, ACHAT, NOTE), five of three makes, and
    /// customers TCLI(CODE, NOM). IMMAT and CODE are primary keys.
    void MakeVehicles() const;

    /// A report around the given elements, with TVEH of DONNEES.MDB unless the elements name tables.
    [[nodiscard]] QString Xml(const QString& elements) const;
    [[nodiscard]] std::shared_ptr<Report> Open(const QString& elements) const;
    /// What the pages of such a report say.
    [[nodiscard]] QStringList Pages(const QString& elements) const;

 private:
    QTemporaryDir folder_;
};

[[nodiscard]] QStringList PagesOf(const Document& document);

/// Number and description of the error of an action: "53 Fichier introuvable ..."; empty without one.
[[nodiscard]] std::string ErrorOf(const std::function<void()>& action);

/// The application that fonts and pictures need; made at the first call.
void NeedApplication();

}  // namespace quardele::engine::test
