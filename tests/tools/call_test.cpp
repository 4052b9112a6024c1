// Calls, right and wrong, and the language of messages.

#include "child_process.h"
#include "command.h"
#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST(CallTest, HelpNamesEveryCommandAndGoesToTheOutput) {
    const Outcome help = Mdb({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_THAT(help.err, IsEmpty());
    for (const Command& command : Commands()) {
        EXPECT_THAT(help.out, HasSubstr(std::string("\n  ") + command.name + ' '));
        EXPECT_THAT(help.out, HasSubstr(command.summary.english));
    }
    EXPECT_THAT(MdbInFrench({"--help"}).out, HasSubstr("Utilisation : mdb COMMANDE FICHIER"));
}

TEST(CallTest, EveryCommandHelpsInBothLanguages) {
    for (const Command& command : Commands()) {
        const Outcome help = Mdb({command.name, "--help"});
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_THAT(help.out,
                    StartsWith(std::string("Usage: mdb ") + command.name + ' ' + command.operands.english));
        for (const Option& option : command.options) {
            EXPECT_THAT(help.out, HasSubstr(option.name));
        }
        const Outcome french = MdbInFrench({command.name, "--help"});
        EXPECT_THAT(french.out, HasSubstr(command.summary.french));
    }
}

TEST(CallTest, NoCommandIsAWrongCall) {
    const Outcome call = Mdb({});
    EXPECT_EQ(call.exitCode, 2);
    EXPECT_EQ(call.err, "mdb: no command; \"mdb --help\" shows them\n");
    EXPECT_THAT(call.out, IsEmpty());
}

TEST(CallTest, AnUnknownCommandIsAWrongCall) {
    const Outcome call = Mdb({"drop", "x.mdb"});
    EXPECT_EQ(call.exitCode, 2);
    EXPECT_EQ(call.err, "mdb: unknown command: drop; \"mdb --help\" shows them\n");
    EXPECT_EQ(MdbInFrench({"drop"}).err, "mdb : commande inconnue : drop ; « mdb --help » les montre\n");
}

TEST(CallTest, TooFewAndTooManyArgumentsAreWrongCalls) {
    for (const Command& command : Commands()) {
        const std::vector<std::string> none = {command.name};
        std::vector<std::string> many(command.mostOperands + 2, "x");
        many[0] = command.name;
        for (const auto& arguments : {none, many}) {
            const Outcome call = Mdb(arguments);
            EXPECT_EQ(call.exitCode, 2) << command.name;
            EXPECT_THAT(call.err, StartsWith("mdb: wrong number of arguments\nUsage: mdb ")) << command.name;
        }
    }
    EXPECT_THAT(MdbInFrench({"dump", "x.mdb"}).err,
                StartsWith("mdb : nombre d'arguments incorrect\nUtilisation : mdb dump FICHIER TABLE"));
}

TEST(CallTest, UnknownOptionsAndWrongValuesAreWrongCalls) {
    struct Case {
        std::vector<std::string> arguments;
        const char* message;
    };
    for (const auto& [arguments, message] : std::initializer_list<Case>{
             {{"dump", "f", "t", "--xml"}, "mdb: unknown option: --xml\n"},
             {{"dump", "f", "t", "--json=1"}, "mdb: option --json takes no value\n"},
             {{"import", "f", "t", "c", "--chunk"}, "mdb: option --chunk needs a value\n"},
             {{"import", "f", "t", "c", "--chunk=0"}, "mdb: \"0\" is no possible number for --chunk\n"},
             {{"import", "f", "t", "-", "--chunk", "many"},
              "mdb: \"many\" is no possible number for --chunk\n"},
             {{"recover", "f", "--keep", "--rollback"}, "mdb: --rollback and --keep exclude each other\n"},
             {{"recover", "f", "--force"}, "mdb: --force needs --rollback\n"}}) {
        const Outcome call = Mdb(arguments);
        EXPECT_EQ(call.exitCode, 2);
        EXPECT_THAT(call.err, StartsWith(message));
    }
}

TEST(CallTest, WhatComesBehindTwoHyphensIsNoOption) {
    const Outcome call = Mdb({"tables", "--", "--json"});
    EXPECT_EQ(call.exitCode, 1);
    EXPECT_EQ(call.err, "mdb: error 3024: the file does not exist (--json)\n");
}

TEST(CallTest, AMissingFileIsToldInBothLanguages) {
    const Outcome english = Mdb({"tables", "missing.mdb"});
    EXPECT_EQ(english.exitCode, 1);
    EXPECT_EQ(english.err, "mdb: error 3024: the file does not exist (missing.mdb)\n");
    EXPECT_EQ(MdbInFrench({"tables", "missing.mdb"}).err,
              "mdb : erreur 3024 : Le fichier « missing.mdb » est introuvable.\n");
}

TEST(CallTest, TheLocaleDecidesAboutTheLanguage) {
    EXPECT_THAT(Mdb({"--help"}, "", "C").out, StartsWith("Usage: "));
    EXPECT_THAT(Mdb({"--help"}, "", "de_DE.UTF-8").out, StartsWith("Usage: "));
    EXPECT_THAT(Mdb({"--help"}, "", "fr_CA").out, StartsWith("Utilisation : "));
    // Without LC_ALL the others count, LC_MESSAGES first.
    quardele::test::SetEnvironment("LC_MESSAGES", "fr_FR.UTF-8");
    quardele::test::SetEnvironment("LANG", "en_US");
    EXPECT_THAT(Mdb({"--help"}, "", "").out, StartsWith("Utilisation : "));
    quardele::test::SetEnvironment("LC_MESSAGES", "");
    quardele::test::SetEnvironment("LANG", "fr_FR");
    EXPECT_THAT(Mdb({"--help"}, "", "").out, StartsWith("Utilisation : "));
}

TEST(CallTest, AnOutputThatTakesNoMoreIsAFailure) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "no device that is always full";
    }
    const std::string command = std::string(QUARDELE_MDB) + " --help > /dev/full 2> /dev/null";
    EXPECT_NE(std::system(command.c_str()), 0);
}

}  // namespace
}  // namespace quardele::mdb::test
