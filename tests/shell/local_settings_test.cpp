// The rules by which local parameters are read, beside a second reader that is written as plainly as can be.
#include <random>
#include <sstream>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include <basic/conversion.h>
#include <basic/runtime_error.h>
#include <basic/western.h>

#include "local_settings.h"

using namespace quardele;
using basic::Text;
using shell::LocalSettings;

namespace {

struct Outcome {
    LocalSettings settings;
    int failure = 0;  ///< number of the error; 0 for none

    friend bool operator==(const Outcome& one, const Outcome& other) {
        return one.failure == other.failure && one.settings.MIRE_ACTIVE == other.settings.MIRE_ACTIVE &&
               one.settings.MIRE_VEH == other.settings.MIRE_VEH &&
               one.settings.PARAM_DEVCAL == other.settings.PARAM_DEVCAL &&
               one.settings.PARAM_SITE == other.settings.PARAM_SITE &&
               one.settings.PARAM_CALENDRIER == other.settings.PARAM_CALENDRIER;
    }
};

template <class Read>
Outcome OutcomeOf(const Read& read) {
    Outcome outcome;
    try {
        read(outcome.settings);
    } catch (const basic::RuntimeError& error) {
        outcome.failure = error.Number();
    }
    return outcome;
}

Outcome Program(const std::string& file) {
    return OutcomeOf([&](LocalSettings& settings) {
        std::istringstream stream(file);
        shell::ReadLocalSettings(stream, settings);
    });
}

// The second reader works on bytes, one rule after the other. What a byte from 0x80 on means and how a number
// is converted are not its subject: it asks the program's own conversions.

std::vector<std::string> Lines(const std::string& file) {
    std::vector<std::string> lines;
    std::string line;
    for (std::size_t at = 0; at < file.size(); ++at) {
        const bool pair = file.compare(at, 2, "\r\n") == 0;
        if (file[at] == '\r' || file[at] == '\n') {
            lines.push_back(std::exchange(line, {}));
            at += pair ? 1 : 0;
        } else {
            line += file[at];
        }
    }
    if (!line.empty()) {
        lines.push_back(line);
    }
    return lines;
}

std::string WithoutOuterBlanks(std::string text) {
    while (!text.empty() && text.front() == ' ') {
        text.erase(text.begin());
    }
    while (!text.empty() && text.back() == ' ') {
        text.pop_back();
    }
    return text;
}

std::string InCapitals(std::string text) {
    for (char& letter : text) {
        letter = letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    }
    return text;
}

bool Begins(const std::string& line, const std::string& key) {
    const std::string capitals = InCapitals(line);
    return capitals.rfind(key + "=", 0) == 0 || capitals.rfind(key + " =", 0) == 0;
}

Text AsText(const std::string& bytes) {
    Text text;
    for (const char byte : bytes) {
        text += basic::FromWestern(static_cast<std::uint8_t>(byte));
    }
    return text;
}

void ReadPlainly(const std::string& file, LocalSettings& settings) {
    for (std::string line : Lines(file)) {
        line = WithoutOuterBlanks(line);
        if (line.empty()) {
            break;
        }
        if (Begins(line, "MIRE")) {
            const std::string capitals = InCapitals(line);
            if (capitals.size() >= 3 && capitals.substr(capitals.size() - 3) == "OFF") {
                settings.MIRE_ACTIVE = false;
            }
        }
        if (Begins(line, "MIREVEH") && line.back() == '"' && line.find('"') != line.size() - 1) {
            const std::string from = line.substr(line.find('"') + 1);
            settings.MIRE_VEH = AsText(from.substr(0, from.size() - 1));
        }
        const std::size_t sign = line.find('=');
        if (Begins(line, "DEVCAL") && sign != line.size() - 1) {
            settings.PARAM_DEVCAL = AsText(WithoutOuterBlanks(line.substr(sign + 1)));
        }
        std::string dense;
        for (const char letter : line) {
            dense += letter == ' ' ? "" : std::string(1, letter);
        }
        const std::size_t denseSign = dense.find('=');
        if (Begins(dense, "SITE") && denseSign != dense.size() - 1) {
            settings.PARAM_SITE = AsText(dense.substr(denseSign + 1));
        }
        settings.PARAM_CALENDRIER = 0;
        const bool calendar = InCapitals(dense).rfind("CALENDRIER", 0) == 0;
        if (calendar && denseSign != std::string::npos && denseSign != dense.size() - 1) {
            settings.PARAM_CALENDRIER = basic::CInt(AsText(dense.substr(denseSign + 1)));
        }
    }
}

Outcome Plain(const std::string& file) {
    return OutcomeOf([&](LocalSettings& settings) { ReadPlainly(file, settings); });
}

/// Files made of what the rules are about, with some of anything in between.
class FileMaker {
 public:
    explicit FileMaker(unsigned seed) : random_(seed) {}

    std::string File() {
        std::string file;
        for (int line = Number(8); line > 0; --line) {
            file += Number(2) == 0 ? Setting() : Parts();
            file += OneOf({"\r\n", "\r\n", "\r\n", "\n", "\r"});
        }
        return file + (Number(2) == 0 ? Setting() : std::string());
    }

 private:
    int Number(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random_); }

    std::string OneOf(const std::vector<std::string>& choices) {
        return choices[static_cast<std::size_t>(Number(static_cast<int>(choices.size())))];
    }

    std::string Key() {
        return InSomeCase(OneOf({"MIRE", "MIREVEH", "MIREXYZ", "DEVCAL", "SITE", "CALENDRIER"}));
    }
    std::string Sign() { return OneOf({"=", " =", "= ", " = ", "  ="}); }
    std::string Value() {
        return OneOf({"1", "0", "-3", "2,5", "32768", "deux", "Paris", "C:\\mire.bmp", "EUR", "OFF", "off"});
    }
    std::string Noise() {
        return OneOf({"\"", " ", "  ", "\t", "[SUITE]", ";", std::string(1, static_cast<char>(Number(256)))});
    }

    std::string Setting() {
        const std::string quote = OneOf({"", "\""});
        return OneOf({"", "  "}) + Key() + Sign() + quote + Value() + OneOf({"", " "}) + quote +
               OneOf({"", " "});
    }

    std::string Parts() {
        std::string parts;
        for (int part = Number(6); part >= 0; --part) {
            parts += OneOf({Key(), Sign(), Value(), Noise(), Noise()});
        }
        return parts;
    }

    std::string InSomeCase(std::string word) {
        for (char& letter : word) {
            letter = Number(4) == 0 ? static_cast<char>(letter - 'A' + 'a') : letter;
        }
        return word;
    }

    std::mt19937 random_;
};

}  // namespace

TEST(LocalSettings, TwoReadersAgreeOnThousandsOfFiles) {
    constexpr unsigned kFiles = 40000;
    for (unsigned seed = 0; seed < kFiles; ++seed) {
        const std::string file = FileMaker(seed).File();
        ASSERT_TRUE(Program(file) == Plain(file)) << "seed " << seed << ":\n" << file;
    }
}

/// Else the comparison would say little.
TEST(LocalSettings, TheFilesOfTheComparisonUseEveryRule) {
    constexpr unsigned kFiles = 40000;
    int off = 0;
    int pictures = 0;
    int currencies = 0;
    int sites = 0;
    int calendars = 0;
    int failures = 0;
    for (unsigned seed = 0; seed < kFiles; ++seed) {
        const Outcome outcome = Program(FileMaker(seed).File());
        off += outcome.settings.MIRE_ACTIVE ? 0 : 1;
        pictures += outcome.settings.MIRE_VEH.empty() ? 0 : 1;
        currencies += outcome.settings.PARAM_DEVCAL.empty() ? 0 : 1;
        sites += outcome.settings.PARAM_SITE.empty() ? 0 : 1;
        calendars += outcome.settings.PARAM_CALENDRIER == 0 ? 0 : 1;
        failures += outcome.failure == 0 ? 0 : 1;
    }
    constexpr int kEnough = 50;
    for (const int count : {off, pictures, currencies, sites, calendars, failures}) {
        EXPECT_GT(count, kEnough);
    }
}

TEST(LocalSettings, ACalendarThatIsNoNumberKeepsWhatWasReadBefore) {
    const Outcome outcome = Program("SITE=A\r\nCALENDRIER=1\r\nDEVCAL=EUR\r\nCALENDRIER=deux\r\nSITE=B\r\n");
    EXPECT_EQ(outcome.failure, basic::error::kTypeMismatch);
    EXPECT_EQ(outcome.settings.PARAM_SITE, u"A");
    EXPECT_EQ(outcome.settings.PARAM_DEVCAL, u"EUR");
    EXPECT_EQ(outcome.settings.PARAM_CALENDRIER, 0);
}

namespace {

/// A share that goes away behind some bytes.
class BrokenFile : public std::streambuf {
 public:
    explicit BrokenFile(std::string bytes) : bytes_(std::move(bytes)) {
        setg(bytes_.data(), bytes_.data(), bytes_.data() + bytes_.size());
    }

 protected:
    int_type underflow() override { throw std::runtime_error("the network is gone"); }

 private:
    std::string bytes_;
};

}  // namespace

TEST(LocalSettings, AFileThatCannotBeReadFurtherIsAFailureAndKeepsItsWholeLines) {
    for (const char* end : {"", "SITE=LY"}) {
        BrokenFile share(std::string("DEVCAL=EUR\r\nSITE=PARIS\r\n") + end);
        std::istream file(&share);
        const Outcome outcome =
            OutcomeOf([&](LocalSettings& settings) { shell::ReadLocalSettings(file, settings); });
        EXPECT_EQ(outcome.failure, basic::error::kDeviceIo);
        EXPECT_EQ(outcome.settings.PARAM_DEVCAL, u"EUR");
        EXPECT_EQ(outcome.settings.PARAM_SITE, u"PARIS");
    }
}

TEST(LocalSettings, ACalendarBeyondSixteenBitsIsRefused) {
    EXPECT_EQ(Program("CALENDRIER=32768").failure, basic::error::kOverflow);
    EXPECT_EQ(Program("CALENDRIER=32767").settings.PARAM_CALENDRIER, 32767);
}

TEST(LocalSettings, EveryByteOfTheWesternCodePageIsACharacter) {
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        const Outcome outcome = Program("SITE=" + std::string(1, static_cast<char>(byte)));
        EXPECT_EQ(outcome.settings.PARAM_SITE.size(), 1U) << byte;
    }
    EXPECT_EQ(Program("SITE=\x80\x9C\xE9").settings.PARAM_SITE, u"€œé");
}
