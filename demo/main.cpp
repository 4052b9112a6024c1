// Makes a demonstration installation, and takes the guided tour of it:
//   quardele-demo make DIR
//   quardele-demo tour DIR [--images DIR]
#include <filesystem>
#include <iostream>

#include <QApplication>
#include <QCommandLineParser>

#include <basic/paths.h>
#include <forms/form.h>
#include <forms/runtime.h>
#include <program/program.h>
#include <shell/main_window.h>
#include "guided_tour.h"
#include "installation_maker.h"
#include "letter_picture.h"

namespace fs = std::filesystem;
using namespace quardele;

namespace {

/// The screen of the tour, in twips: 800 x 600 pixels.
constexpr int kScreenWidth = 12000;
constexpr int kScreenHeight = 9000;

int Make(const fs::path& folder) {
    const fs::path driveC = demo::MakeInstallation(folder);
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

int Tour(const fs::path& folder, const fs::path& pictures) {
    const fs::path driveC = demo::MakeInstallation(folder);
    basic::DriveTable::Session().Set(u'C', driveC);
    basic::ChDir(u"C:\\QUARDELE\\VEH");
    forms::Screen::SetSizeForTests(kScreenWidth, kScreenHeight);

    StartProgram();
    auto& mainWindow = forms::Instance<shell::MDIMENU_VEH>();
    demo::TourResult result = demo::TakeTour(mainWindow, driveC, pictures);
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
    QApplication application(argc, argv);
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
    arguments.process(application);

    const QStringList words = arguments.positionalArguments();
    if (words.size() != 2 || (words[0] != u"make" && words[0] != u"tour")) {
        arguments.showHelp(2);
    }
    const fs::path folder = fs::absolute(words[1].toStdString());
    try {
        if (words[0] == u"make") {
            return Make(folder);
        }
        const fs::path pictures =
            arguments.isSet(images) ? fs::absolute(arguments.value(images).toStdString()) : folder / "images";
        return Tour(folder, pictures);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
