// How large the demonstration is, from the command line.
#pragma once

#include <QCommandLineParser>

#include <workshop/installation.h>

namespace quardele::demo {

/// The options --vehicles, --customers, --visits, --jobs, --seed and --today.
class ScaleOptions {
 public:
    explicit ScaleOptions(QCommandLineParser& parser);

    /// What was asked for; numbers that were not follow from that of the vehicles, and the day is today's.
    /// Throws std::runtime_error (French text) for what is no number or no day.
    [[nodiscard]] workshop::Scale Scale() const;

 private:
    [[nodiscard]] int Number(const QCommandLineOption& option, int otherwise) const;
    [[nodiscard]] basic::Date Day() const;

    QCommandLineParser& parser_;
    QCommandLineOption vehicles_;
    QCommandLineOption customers_;
    QCommandLineOption visits_;
    QCommandLineOption jobs_;
    QCommandLineOption seed_;
    QCommandLineOption today_;
};

}  // namespace quardele::demo
