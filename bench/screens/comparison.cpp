#include "comparison.h"

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

std::vector<Figures> RunMeasured(int runs, const Command& command) {
    std::vector<Figures> all;
    for (int run = 0; run < runs; ++run) {
        if (Figures figures = RunMeasured(command); !figures.empty()) {
            all.push_back(std::move(figures));
        }
    }
    return all;
}

template <class Measure>
std::optional<Duration> MedianOf(const std::vector<Figures>& all, Measure measure) {
    if (all.empty()) {
        return {};
    }
    std::vector<Duration> times;
    times.reserve(all.size());
    for (const Figures& figures : all) {
        times.emplace_back(measure(figures));
    }
    return Median(std::move(times));
}

double TimeToIdle(const Figures& figures) {
    return NumberOf(figures, "idle") - NumberOf(figures, "start");
}

std::string PeakMemoryOf(const Figures& figures) {
    return MemoryText(static_cast<std::uint64_t>(NumberOf(figures, "memory")));
}

}  // namespace

void ScreenComparison::MeasureStart() {
    report_.Section("Du lancement à la fenêtre principale au repos", "mdb-export");
    const std::vector<Figures> starts = RunMeasured(runs_, {self_, "--measure-start", driveC_.string()});
    const std::optional<Duration> idle = MedianOf(starts, TimeToIdle);
    if (!idle) {
        report_.Tell("le programme ne démarre pas", "");
        return;
    }
    std::vector<Command> exports = ExportTables(File("dbpath.mdb"), {"TPATH"});
    const std::vector<Command> more = ExportTables(File("DATA/talmeon.mdb"), {"TPAR"});
    exports.insert(exports.end(), more.begin(), more.end());
    report_.Compare("le programme / export de TPATH, TPAR", *idle, MedianTimeOf(runs_, exports));
    if (const auto empty = MedianOf(RunMeasured(runs_, {self_, "--measure-empty-window"}), TimeToIdle)) {
        report_.Tell("dont une fenêtre vide de la bibliothèque Qt", TimeText(*empty));
    }
    report_.Tell("mémoire de pointe", PeakMemoryOf(starts.back()));
}

void ScreenComparison::MeasureDueList() {
    report_.Section("D'Entrée à la liste dessinée, 31/12/2026", "mdb-export");
    const std::vector<Figures> lists = RunMeasured(runs_, {self_, "--measure-list", driveC_.string()});
    const auto first = MedianOf(lists, [](const Figures& figures) { return NumberOf(figures, "first"); });
    const auto again = MedianOf(lists, [](const Figures& figures) { return NumberOf(figures, "again"); });
    if (!first || !again) {
        report_.Tell("la liste n'apparaît pas", "");
        return;
    }
    const std::optional<Duration> exports =
        MedianTimeOf(runs_, ExportTables(File("DATA/talmeon.mdb"), {"TVEH", "TVEH_DETAIL", "TAFF"}));
    const std::string rows = Number(NumberOf(lists.back(), "rows"), 0) + " lignes";
    report_.Compare("première fois, " + rows + " / TVEH, TVEH_DETAIL, TAFF", *first, exports);
    report_.Compare("fois suivantes", *again, exports);
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
