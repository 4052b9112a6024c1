#include "race.h"

namespace quardele::bench {

RaceTimes RaceTimed(int runs, const std::function<Duration()>& ours, const Side& theirs) {
    std::vector<Duration> ourTimes;
    std::vector<Duration> theirTimes;
    bool theyFailed = false;
    do {
        ourTimes.push_back(ours());
        const std::optional<Duration> time = theyFailed ? std::nullopt : theirs();
        theyFailed = !time;
        theirTimes.push_back(time.value_or(Duration()));
    } while (ourTimes.size() < static_cast<std::size_t>(runs));
    return {.ours = Median(std::move(ourTimes)),
            .theirs = theyFailed ? std::nullopt : std::optional(Median(std::move(theirTimes)))};
}

RaceTimes RaceTimed(int runs, const std::function<Duration()>& ours, const std::vector<Command>& theirs) {
    return RaceTimed(runs, ours, Side([&theirs] { return TimeOfCommands(theirs); }));
}

RaceTimes Race(int runs, const std::function<void()>& ours, const std::vector<Command>& theirs) {
    return RaceTimed(
        runs, [&ours] { return TimeOf(ours); }, theirs);
}

}  // namespace quardele::bench
