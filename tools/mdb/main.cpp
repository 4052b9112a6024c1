// mdb: Access data files from the command line. Exit codes: 0 done, 1 failed or faults found, 2 wrong call.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <span>

#include <basic/program_arguments.h>

#include "command.h"
#include "error_text.h"
#include "failure.h"
#include "help.h"
#include "platform.h"

namespace {

using namespace quardele::mdb;

constexpr const char* kHelp = "--help";

constexpr Message kNoCommand{"aucune commande ; « mdb --help » les montre",
                             "no command; \"mdb --help\" shows them"};
constexpr Message kUnknownCommand{"commande inconnue : |1 ; « mdb --help » les montre",
                                  "unknown command: |1; \"mdb --help\" shows them"};
constexpr Message kError{"mdb : |1\n", "mdb: |1\n"};

int Complain(const std::string& text, Language language) {
    std::fputs(Say(language, kError, {text}).c_str(), stderr);
    return kFailed;
}

int ComplainOfCall(const std::string& text, const Command* command, Language language) {
    Complain(text, language);
    if (command != nullptr) {
        std::fputs((UsageLine(*command, language) + '\n').c_str(), stderr);
    }
    return kWrongCall;
}

int RunCommand(const Command& command, std::span<const std::string> words, Session& session) {
    constexpr Message kOperands{"nombre d'arguments incorrect", "wrong number of arguments"};
    const Arguments arguments(words, command.options);
    if (arguments.Operands().size() < command.leastOperands ||
        arguments.Operands().size() > command.mostOperands) {
        throw Failure(kOperands, {}, kWrongCall);
    }
    return command.run(arguments, session);
}

int Run(std::span<const std::string> words, Session& session) {
    const Language language = session.language;
    const std::string name = words.empty() ? "" : words[0];
    const Command* command = FindCommand(name);
    if (name == kHelp || name == "-h") {
        ShowHelp(session);
        return kDone;
    }
    if (command == nullptr) {
        const Message& message = words.empty() ? kNoCommand : kUnknownCommand;
        return ComplainOfCall(Say(language, message, {name}), nullptr, language);
    }
    if (std::find(words.begin(), words.end(), kHelp) != words.end()) {
        ShowHelp(*command, session);
        return kDone;
    }
    try {
        return RunCommand(*command, words.subspan(1), session);
    } catch (const Failure& failure) {
        session.out.Flush();
        return failure.ExitCode() == kWrongCall ? ComplainOfCall(failure.In(language), command, language)
                                                : Complain(failure.In(language), language);
    } catch (const quardele::basic::RuntimeError& error) {
        session.out.Flush();
        return Complain(ErrorText(error, language), language);
    }
}

}  // namespace

int main(int argc, char** argv) {
    constexpr Message kNoMemory{"mémoire insuffisante", "out of memory"};
    const PlainStreams streams;
    const Language language = LanguageOfUser();
    try {
        Output out(stdout);
        Session session{language, out};
        const int exitCode = Run(quardele::basic::ProgramArguments(argc, argv), session);
        out.Flush();
        return exitCode;
    } catch (const Failure& failure) {
        return Complain(failure.In(language), language);
    } catch (const std::bad_alloc&) {
        return Complain(kNoMemory.In(language), language);
    } catch (const std::exception& error) {
        return Complain(error.what(), language);
    }
}
