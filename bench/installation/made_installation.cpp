#include "made_installation.h"

namespace quardele::bench {

namespace fs = std::filesystem;

fs::path MadeDatabase(const fs::path& folder, int vehicles, int visits, int jobs) {
    auto scale = workshop::ScaleFor(vehicles, kToday);
    scale.visits = visits;
    if (jobs > 0) {
        scale.jobs = jobs;
    }
    workshop::MakeInstallation(folder, scale);
    return DatabaseOf(folder);
}

fs::path DatabaseOf(const fs::path& installation) {
    return installation / "DATA" / "talmeon.mdb";
}

}  // namespace quardele::bench
