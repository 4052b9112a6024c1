#include "scale_options.h"

#include <stdexcept>

#include <QDate>

#include <basic/date.h>

namespace quardele::demo {

namespace {

QCommandLineOption Counting(const char* name, const char* description) {
    return {QString::fromLatin1(name), QString::fromUtf8(description), QStringLiteral("N")};
}

}  // namespace

ScaleOptions::ScaleOptions(QCommandLineParser& parser)
    : parser_(parser),
      vehicles_(Counting("vehicles", "nombre de véhicules")),
      customers_(Counting("customers", "nombre de clients")),
      visits_(Counting("visits", "nombre de visites périodiques")),
      jobs_(Counting("jobs", "nombre d'affaires")),
      seed_(Counting("seed", "un autre nombre fait d'autres données")),
      today_(QStringLiteral("today"),
             QStringLiteral("le jour des données, au lieu d'aujourd'hui ; deux appels ne donnent les mêmes "
                            "données que pour le même jour"),
             QStringLiteral("AAAA-MM-JJ")) {
    parser.addOptions({vehicles_, customers_, visits_, jobs_, seed_, today_});
}

workshop::Scale ScaleOptions::Scale() const {
    constexpr int kVehicles = 1500;
    workshop::Scale scale = workshop::ScaleFor(Number(vehicles_, kVehicles), Day());
    scale.customers = Number(customers_, scale.customers);
    scale.visits = Number(visits_, scale.visits);
    scale.jobs = Number(jobs_, scale.jobs);
    scale.seed = static_cast<std::uint64_t>(Number(seed_, 1));
    return scale;
}

int ScaleOptions::Number(const QCommandLineOption& option, int otherwise) const {
    if (!parser_.isSet(option)) {
        return otherwise;
    }
    bool isNumber = false;
    const int number = parser_.value(option).toInt(&isNumber);
    constexpr int kMost = 20'000'000;
    if (!isNumber || number < 0 || number > kMost) {
        throw std::runtime_error("--" + option.names().constFirst().toStdString() +
                                 " : un nombre de 0 à 20000000 est attendu");
    }
    return number;
}

basic::Date ScaleOptions::Day() const {
    if (!parser_.isSet(today_)) {
        return basic::Today();
    }
    const QDate day = QDate::fromString(parser_.value(today_), Qt::ISODate);
    if (!day.isValid()) {
        throw std::runtime_error("--today : une date de la forme 2026-11-20 est attendue");
    }
    return basic::DateOf(day.year(), day.month(), day.day());
}

}  // namespace quardele::demo
