#include "save_file.h"

#include <streambuf>

#include <QFileInfo>
#include <QSaveFile>

#include <basic/open_elsewhere.h>
#include <basic/runtime_error.h>
#include <forms/strings.h>

namespace quardele::forms {
namespace {

/// Hands on what a stream writes, without a buffer of its own: the file has one.
class FileBuffer : public std::streambuf {
 public:
    explicit FileBuffer(QIODevice& file) : file_(file) {}

 protected:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override {
        return file_.write(bytes, count);
    }
    int_type overflow(int_type byte) override {
        return traits_type::eq_int_type(byte, traits_type::eof()) ||
                       file_.putChar(traits_type::to_char_type(byte))
                   ? traits_type::not_eof(byte)
                   : traits_type::eof();
    }

 private:
    QIODevice& file_;
};

[[noreturn]] void Refuse(int number, const QString& reason, const QString& shownName) {
    throw basic::RuntimeError(
        number, ToText(QStringLiteral("Le fichier %1 n'a pas pu être écrit : %2").arg(shownName, reason)));
}

void RequirePlace(const std::filesystem::path& path, const QString& shownName) {
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    if (!folder.isDir()) {
        Refuse(basic::error::kPathNotFound, QStringLiteral("le dossier n'existe pas."), shownName);
    }
    if (basic::IsOpenElsewhere(path)) {
        Refuse(basic::error::kPermissionDenied, QStringLiteral("il est ouvert dans un autre programme."),
               shownName);
    }
    if (file.exists() && !file.isWritable()) {
        Refuse(basic::error::kPermissionDenied, QStringLiteral("il est en lecture seule."), shownName);
    }
    if (!folder.isWritable()) {
        Refuse(basic::error::kPathFileAccess, QStringLiteral("le dossier est en lecture seule."), shownName);
    }
}

}  // namespace

void SaveFile(const std::filesystem::path& path, const QString& shownName,
              const std::function<void(std::ostream&)>& write) {
    RequirePlace(path, shownName);
    QSaveFile file(QString::fromStdU16String(path.u16string()));
    const auto refuse = [&] { Refuse(basic::error::kDeviceIo, file.errorString(), shownName); };
    if (!file.open(QIODevice::WriteOnly)) {
        refuse();
    }
    FileBuffer buffer(file);
    std::ostream out(&buffer);
    write(out);
    if (!out || !file.commit()) {
        refuse();
    }
}

}  // namespace quardele::forms
