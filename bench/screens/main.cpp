// Benchmarks of the screens, off screen, beside the tools that one would use instead. Prints a comparison in
// French.
//   quardele-bench-screens [--runs N] [--letters N] [--vehicles N]
// The other options are the program's own: it starts itself with them, one process for each measure.
#include <unistd.h>

#include <algorithm>
#include <exception>
#include <iostream>

#include <QApplication>
#include <QCommandLineParser>

#include "comparison.h"
#include "installation_maker.h"
#include "measured_program.h"
#include "temporary_folder.h"

namespace fs = std::filesystem;
using namespace quardele;
using namespace quardele::bench;

namespace {

constexpr unsigned kPatienceSeconds = 600;
/// 20 November 2026: some weeks before the reference date that the measures type.
constexpr workshop::Scale kScale{.today = {46346}};

struct Options {
    QCommandLineOption runs{QStringLiteral("runs"), QStringLiteral("mesures de chaque sorte"),
                            QStringLiteral("N"), QStringLiteral("9")};
    QCommandLineOption letters{QStringLiteral("letters"), QStringLiteral("clients à qui écrire"),
                               QStringLiteral("N"), QStringLiteral("30")};
    QCommandLineOption vehicles{QStringLiteral("vehicles"), QStringLiteral("véhicules de la grande liste"),
                                QStringLiteral("N"), QStringLiteral("100000")};
};

/// Runs one measure when the command line asks for one; false when it does not.
bool RunMeasure(int argc, char* argv[]) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.empty() || !words[0].starts_with("--measure-")) {
        return false;
    }
    // A message box that nobody expects would wait for ever.
    alarm(kPatienceSeconds);
    const QApplication application(argc, argv);
    const fs::path driveC = words.size() > 1 ? words[1] : "";
    if (words[0] == "--measure-small-window") {
        RunSmallWindow();
    } else if (words[0] == "--measure-start") {
        RunStart(driveC);
    } else if (words[0] == "--measure-list") {
        RunDueList(driveC);
    } else if (words[0] == "--measure-vehicles") {
        RunVehicleList(driveC);
    } else if (words[0] == "--measure-letters" && words.size() > 2) {
        RunLetters(driveC, std::stoi(words[2]));
    }
    return true;
}

void Compare(const std::string& self, int runs, int letters) {
    const TemporaryFolder folder;
    // Letters of a measure never meet an operator's word processor.
    qputenv("QUARDELE_WRITER_PROFILE", (folder.Path() / "writer").string().c_str());
    Report report(std::cout);
    ScreenComparison comparison(report, self, demo::MakeInstallation(folder.Path(), kScale), runs);
    comparison.MeasureStart();
    comparison.MeasureDueList();
    comparison.MeasureLetters(letters);
}

void MeasureLargeList(const std::string& self, int runs, int vehicles) {
    const TemporaryFolder folder;
    Report report(std::cout);
    ScreenComparison comparison(
        report, self, demo::MakeInstallation(folder.Path(), workshop::ScaleFor(vehicles, kScale.today)),
        runs);
    comparison.MeasureVehicleList();
}

int Run(int argc, char* argv[]) {
    if (RunMeasure(argc, argv)) {
        return 0;
    }
    const QCoreApplication application(argc, argv);
    const Options options;
    QCommandLineParser arguments;
    arguments.addHelpOption();
    arguments.addOptions({options.runs, options.letters, options.vehicles});
    arguments.process(application);
    const std::string self = QCoreApplication::applicationFilePath().toStdString();
    const auto atLeastOne = [&](const QCommandLineOption& option) {
        return std::max(arguments.value(option).toInt(), 1);
    };
    Compare(self, atLeastOne(options.runs), atLeastOne(options.letters));
    MeasureLargeList(self, atLeastOne(options.runs), atLeastOne(options.vehicles));
    return 0;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
