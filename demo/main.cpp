// Makes a demonstration installation, and takes the guided tour of it:
//   quardele-demo make DIR [scale]
//   quardele-demo tour DIR [--images DIR] [scale]
// scale: --vehicles N --customers N --visits N --jobs N --seed N --today YYYY-MM-DD
// The same scale, seed and day make the same data; the day is the current one unless --today gives it.
#include <filesystem>
#include <iostream>

#include <QApplication>
#include <QCommandLineParser>

#include <basic/conversion.h>
#include <basic/date.h>
#include <basic/paths.h>
#include <forms/form.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <program/program.h>
#include <shell/main_window.h>
#include "guided_tour.h"
#include "installation_maker.h"
#include "letter_picture.h"
#include "scale_options.h"

namespace fs = std::filesystem;
using namespace quardele;

namespace {

/// The screen of the tour, in twips: 800 x 600 pixels.
constexpr int kScreenWidth = 12000;
constexpr int kScreenHeight = 9000;

int Make(const fs::path& folder, const workshop::Scale& scale) {
    const fs::path driveC = demo::MakeInstallation(folder, scale);
    std::cout << "Installation de démonstration : " << driveC.string() << "\n"
              << "Le programme se lance depuis " << (driveC / "QUARDELE" / "VEH").string() << "\n";
    return 0;
}

void Report(const demo::TourResult& result) {
    for (const demo::Stage& stage : result.stages) {
        std::cout << "  " << stage.title << " : " << stage.picture.string() << "\n";
    }
    for (const std::string& message : result.messages) {
        std::cout << "  Message : " << message << "\n";
    }
    std::cout << result.letters.size() << " lettres :\n";
    for (const fs::path& letter : result.letters) {
        std::cout << "  " << letter.string() << "\n";
    }
}

/// What falls due within six weeks is listed.
QString ReferenceDate(const workshop::Scale& scale) {
    constexpr double kDays = 42;
    return forms::ToQString(basic::CStr(basic::DateAdd(u"d", kDays, scale.today)));
}

int Tour(const fs::path& folder, const fs::path& pictures, const workshop::Scale& scale) {
    const fs::path driveC = demo::MakeInstallation(folder, scale);
    basic::DriveTable::Session().Set(u'C', driveC);
    basic::ChDir(u"C:\\QUARDELE\\VEH");
    forms::Screen::SetSizeForTests(kScreenWidth, kScreenHeight);

    StartProgram();
    auto& mainWindow = forms::Instance<shell::MDIMENU_VEH>();
    demo::TourResult result = demo::TakeTour(mainWindow, driveC, pictures, ReferenceDate(scale));
    if (!result.letters.empty() && demo::PictureOfLetter(result.letters.front(), pictures / "lettre.png")) {
        result.stages.push_back({"Une lettre", pictures / "lettre.png"});
    }
    Report(result);
    return result.letters.size() == demo::kLetters ? 0 : 1;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // The program takes its command line for the number of a module: it sees none.
    int onlyTheName = 1;
    QApplication application(onlyTheName, argv);
    SetUpProgram(application);

    QCommandLineParser arguments;
    arguments.setApplicationDescription(
        QStringLiteral("Installation de démonstration du suivi des véhicules"));
    arguments.addHelpOption();
    arguments.addPositionalArgument(QStringLiteral("commande"), QStringLiteral("make ou tour"));
    arguments.addPositionalArgument(QStringLiteral("dossier"), QStringLiteral("où faire l'installation"));
    const QCommandLineOption images(QStringLiteral("images"),
                                    QStringLiteral("dossier des images de la visite"),
                                    QStringLiteral("dossier"));
    arguments.addOption(images);
    const demo::ScaleOptions scale(arguments);
    arguments.process(QStringList(argv, argv + argc));

    const QStringList words = arguments.positionalArguments();
    if (words.size() != 2 || (words[0] != u"make" && words[0] != u"tour")) {
        arguments.showHelp(2);
    }
    const fs::path folder = fs::absolute(words[1].toStdString());
    try {
        if (words[0] == u"make") {
            return Make(folder, scale.Scale());
        }
        const fs::path pictures =
            arguments.isSet(images) ? fs::absolute(arguments.value(images).toStdString()) : folder / "images";
        return Tour(folder, pictures, scale.Scale());
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
