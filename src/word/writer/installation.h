// Where LibreOffice is installed, and what it can do there.
#pragma once

#include <filesystem>

namespace quardele::word::writer {

/// LibreOffice's own folder, the one with program/soffice.bin: what the environment variable
/// QUARDELE_LIBREOFFICE says, else the usual places, else where the command soffice leads to. Throws
/// RuntimeError 429 when there is none.
[[nodiscard]] std::filesystem::path InstallationFolder();

/// Whether this installation can show windows in this session: a display is there, a window system part is
/// installed, and the environment variable QUARDELE_WRITER_HEADLESS is not 1.
[[nodiscard]] bool CanShowWindows(const std::filesystem::path& installation);

}  // namespace quardele::word::writer
