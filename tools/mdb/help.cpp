#include "help.h"

#include <algorithm>

namespace quardele::mdb {

namespace {

constexpr Message kUsage{"Utilisation : mdb |1", "Usage: mdb |1"};
constexpr Message kGeneral{"COMMANDE FICHIER [ARGUMENTS] [OPTIONS]", "COMMAND FILE [ARGUMENTS] [OPTIONS]"};
constexpr Message kOptionsWord{" [OPTIONS]", " [OPTIONS]"};
constexpr Message kMore{
    "« mdb COMMANDE --help » en dit plus. Codes de retour : 0 fait, 1 échec ou défauts, 2 appel incorrect.",
    "\"mdb COMMAND --help\" says more. Exit codes: 0 done, 1 failed or faults, 2 wrong call."};

// Letters, not bytes: the texts have accents.
std::size_t WidthOf(std::string_view utf8) {
    return static_cast<std::size_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char unit) { return (unit & 0xC0) != 0x80; }));
}

void ShowEntry(std::string_view name, std::size_t width, std::string_view text, Output& out) {
    out << "  " << name << std::string(width + 2 - std::min(width, WidthOf(name)), ' ') << text << "\n";
}

std::string OptionName(const Option& option) {
    return option.value == nullptr ? option.name : std::string(option.name) + ' ' + option.value;
}

std::string CommandName(const Command& command, Language language) {
    return std::string(command.name) + ' ' + command.operands.In(language);
}

}  // namespace

std::string UsageLine(const Command& command, Language language) {
    const std::string call =
        CommandName(command, language) + (command.options.empty() ? "" : kOptionsWord.In(language));
    return Say(language, kUsage, {call});
}

void ShowHelp(Session& session) {
    session.out << Say(session.language, kUsage, {kGeneral.In(session.language)}) << "\n\n";
    std::size_t width = 0;
    for (const Command& command : Commands()) {
        width = std::max(width, WidthOf(CommandName(command, session.language)));
    }
    for (const Command& command : Commands()) {
        ShowEntry(CommandName(command, session.language), width, command.summary.In(session.language),
                  session.out);
    }
    session.out << "\n" << kMore.In(session.language) << "\n";
}

void ShowHelp(const Command& command, Session& session) {
    session.out << UsageLine(command, session.language) << "\n\n"
                << command.summary.In(session.language) << "\n";
    if (*command.help.In(session.language) != '\0') {
        session.out << command.help.In(session.language) << "\n";
    }
    if (!command.options.empty()) {
        session.out << "\n";
    }
    std::size_t width = 0;
    for (const Option& option : command.options) {
        width = std::max(width, OptionName(option).size());
    }
    for (const Option& option : command.options) {
        ShowEntry(OptionName(option), width, option.help.In(session.language), session.out);
    }
}

}  // namespace quardele::mdb
