#include "comparison.h"

#include <algorithm>
#include <array>

#include "command.h"
#include "figures.h"

namespace quardele::bench {

namespace {

/// What one process told, "start" (the moment of its start) added; empty when it failed.
Figures RunMeasured(const Command& command) {
    const double start = Duration(Clock::now().time_since_epoch()).count();
    std::string output;
    if (!Run(command, [&output](std::string_view piece) { output += piece; })) {
        return {};
    }
    Figures figures = ReadFigures(output);
    figures["start"] = std::to_string(start);
    return figures;
}

double TimeToIdle(const Figures& figures) {
    return NumberOf(figures, "idle") - NumberOf(figures, "start");
}

std::string PeakMemoryOf(const Figures& figures) {
    return MemoryText(static_cast<std::uint64_t>(NumberOf(figures, "memory")));
}

bool OneFailed(const std::vector<Figures>& all) {
    return std::any_of(all.begin(), all.end(), [](const Figures& figures) { return figures.empty(); });
}

Duration MedianOf(const std::vector<Figures>& all, const std::string& name) {
    std::vector<Duration> times;
    times.reserve(all.size());
    for (const Figures& figures : all) {
        times.emplace_back(NumberOf(figures, name));
    }
    return Median(std::move(times));
}

}  // namespace

void ScreenComparison::MeasureStart() {
    report_.Section("Du lancement à la fenêtre principale au repos", "mdb-export");
    std::vector<Figures> starts;
    const auto start = [&] {
        starts.push_back(RunMeasured({self_, "--measure-start", driveC_.string()}));
        return Duration(TimeToIdle(starts.back()));
    };
    std::vector<Command> exports = ExportTables(File("dbpath.mdb"), {"TPATH"});
    exports.push_back(ExportTables(File("DATA/talmeon.mdb"), {"TPAR"}).front());
    const RaceTimes times = RaceTimed(runs_, start, exports);
    if (OneFailed(starts)) {
        report_.Tell("le programme ne démarre pas", "");
        return;
    }
    report_.Compare("le programme / export de TPATH, TPAR", times);
    const auto startSmall = [this] {
        return Duration(TimeToIdle(RunMeasured({self_, "--measure-small-window"})));
    };
    report_.Compare("une fenêtre Qt d'un mot / export de TPATH, TPAR", RaceTimed(runs_, startSmall, exports));
    report_.Tell("mémoire de pointe", PeakMemoryOf(starts.back()));
}

void ScreenComparison::MeasureDueList() {
    report_.Section("D'Entrée à la liste dessinée, 31/12/2026", "mdb-export");
    std::vector<Figures> lists;
    const auto list = [&] {
        lists.push_back(RunMeasured({self_, "--measure-list", driveC_.string()}));
        return Duration(NumberOf(lists.back(), "first"));
    };
    const RaceTimes first =
        RaceTimed(runs_, list, ExportTables(File("DATA/talmeon.mdb"), {"TVEH", "TVEH_DETAIL", "TAFF"}));
    if (OneFailed(lists)) {
        report_.Tell("la liste n'apparaît pas", "");
        return;
    }
    const std::string rows = Number(NumberOf(lists.back(), "rows"), 0) + " lignes";
    report_.Compare("première fois, " + rows + " / TVEH, TVEH_DETAIL, TAFF", first);
    report_.Compare("fois suivantes", {.ours = MedianOf(lists, "again"), .theirs = first.theirs});
    report_.Tell("mémoire de pointe", PeakMemoryOf(lists.back()));
}

void ScreenComparison::MeasureVehicleList() {
    constexpr std::array<std::pair<const char*, const char*>, 7> kActions{{
        {"open", "du menu à la liste dessinée"},
        {"end", "à la dernière ligne"},
        {"home", "retour à la première"},
        {"page", "une page plus bas"},
        {"step", "une ligne plus bas"},
        {"record", "dans une fiche et retour à la liste"},
        {"refresh", "actualiser"},
    }};
    report_.Section("Liste des véhicules", "");
    std::vector<Figures> lists;
    for (int run = 0; run < runs_; ++run) {
        lists.push_back(RunMeasured({self_, "--measure-vehicles", driveC_.string()}));
    }
    if (OneFailed(lists)) {
        report_.Tell("la liste n'apparaît pas", "");
        return;
    }
    report_.Tell("lignes", Number(NumberOf(lists.back(), "rows"), 0));
    for (const auto& [name, text] : kActions) {
        report_.Tell(text, TimeText(MedianOf(lists, name)));
    }
    report_.Tell("mémoire de pointe", PeakMemoryOf(lists.back()));
}

void ScreenComparison::MeasureLetters(int customers) {
    constexpr double kMinute = 60e6;
    report_.Section("Lettres, avec LibreOffice Writer", "");
    const Figures run =
        RunMeasured({self_, "--measure-letters", driveC_.string(), std::to_string(customers)});
    const double letters = NumberOf(run, "letters");
    if (letters == 0) {
        const auto message = run.find("message");
        report_.Tell(
            "sans mesure : " + (message == run.end() ? "le programme s'est arrêté" : message->second), "");
        return;
    }
    const Duration time(NumberOf(run, "time"));
    report_.Tell("première lettre, démarrage de LibreOffice compris",
                 TimeText(Duration(NumberOf(run, "first"))));
    report_.Tell(Number(letters, 0) + " lettres, " + Number(NumberOf(run, "visits"), 0) + " visites",
                 TimeText(time));
    report_.Tell("une lettre", TimeText(time / letters));
    report_.Tell("lettres par minute", Number(letters * kMinute / time.count(), 0));
    report_.Tell("mémoire de pointe de notre processus", PeakMemoryOf(run));
}

}  // namespace quardele::bench
