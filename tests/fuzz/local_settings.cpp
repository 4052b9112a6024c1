// Files of local parameters that say anything.
#include "local_settings.h"

#include <sstream>
#include <string>

#include "harness.h"

namespace quardele::fuzz {

void Use(BytesView input) {
    Attempt([&] {
        std::istringstream file(std::string(input.begin(), input.end()));
        shell::LocalSettings settings;
        shell::ReadLocalSettings(file, settings);
    });
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds;
    for (const std::string file : {"[SUITE]\r\nMIRE=OFF\r\nMIREVEH=\"C:\\QUARDELE\\mire.bmp\"\r\n",
                                   "DEVCAL = EUR\r\nSITE=PA RIS\r\n", "CALENDRIER = 1\r\n\r\nSITE=A\r\n"}) {
        seeds.emplace_back(file.begin(), file.end());
    }
    return seeds;
}

}  // namespace quardele::fuzz
