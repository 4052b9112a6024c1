// What an interrupted change has left, and what to do about it.

#include <jet/recovery.h>

#include <algorithm>
#include <iterator>

#include "cell_text.h"
#include "commands.h"
#include "failure.h"
#include "platform.h"
#include "utf8_text.h"

namespace quardele::mdb {

namespace {

using jet::JournalPageState;
using jet::JournalState;

template <class State>
struct StateText {
    State state;
    Message message;
};

constexpr StateText<JournalState> kStates[] = {
    {JournalState::None, {"aucune écriture interrompue", "no interrupted write"}},
    {JournalState::Unfinished,
     {"le journal est incomplet : le fichier est comme avant la modification",
      "the journal is incomplete: the file is as before the change"}},
    {JournalState::NotStarted,
     {"le journal est complet, le fichier est comme avant la modification",
      "the journal is complete, the file is as before the change"}},
    {JournalState::Half,
     {"des pages sont anciennes, d'autres nouvelles : l'ouverture remettra les anciennes",
      "some pages are old, some are new: opening the file will put the old ones back"}},
    {JournalState::Finished,
     {"toutes les pages sont nouvelles : l'ouverture les gardera",
      "all pages are new: opening the file will keep them"}},
    {JournalState::Stale,
     {"le journal est d'un état plus ancien du fichier", "the journal is of an older state of the file"}},
    {JournalState::OtherFile,
     {"le journal est celui d'un autre fichier", "the journal is that of another file"}},
    {JournalState::ForeignChange,
     {"quelqu'un a écrit dans le fichier depuis : choisissez --rollback --force ou --keep",
      "somebody has written to the file since: choose --rollback --force or --keep"}},
    {JournalState::Damaged,
     {"le journal est endommagé : on ne sait pas si le fichier est intact ; --keep écarte le journal",
      "the journal is damaged: nobody knows whether the file is whole; --keep puts the journal aside"}},
    {JournalState::Unreadable,
     {"le journal ne peut pas être lu, ou une autre version du programme l'a écrit ; --keep l'écarte",
      "the journal cannot be read, or another version of the program wrote it; --keep puts it aside"}},
};

constexpr StateText<JournalPageState> kPageStates[] = {
    {JournalPageState::Same, {"inchangée", "unchanged"}},
    {JournalPageState::Before, {"comme avant", "as before"}},
    {JournalPageState::After, {"comme après", "as after"}},
    {JournalPageState::Between, {"à moitié écrite", "half written"}},
    {JournalPageState::Foreign, {"écrite par quelqu'un d'autre", "written by somebody else"}},
};

template <class State, std::size_t count>
const Message& TextOf(State state, const StateText<State> (&texts)[count]) {
    return std::find_if(std::begin(texts), std::end(texts),
                        [state](const StateText<State>& text) { return text.state == state; })
        ->message;
}

constexpr std::size_t kPerLine = 16;

std::span<const std::uint8_t> LineAt(const std::vector<std::uint8_t>& side, std::size_t at) {
    return std::span(side).subspan(std::min(at, side.size()),
                                   std::min(kPerLine, side.size() - std::min(at, side.size())));
}

bool Differ(std::span<const std::uint8_t> left, std::span<const std::uint8_t> right) {
    return !std::equal(left.begin(), left.end(), right.begin(), right.end());
}

void ShowLine(const Message& side, std::size_t at, std::span<const std::uint8_t> bytes, Session& session) {
    if (bytes.empty()) {
        return;
    }
    TextBuffer& buffer = session.out.Buffer();
    const std::string offset = std::to_string(at);
    buffer += "  " + std::string(offset.size() < 4 ? 4 - offset.size() : 0, ' ') + offset + ' ' +
              side.In(session.language) + "  ";
    AppendHex(bytes, buffer);
    buffer += '\n';
}

// Both sides, and the file itself, of every sixteen bytes in which they differ.
void ShowPage(const jet::JournalPage& page, Session& session) {
    constexpr Message kPage{"page |1 : |2\n", "page |1: |2\n"};
    constexpr Message kBefore{"avant      ", "before"};
    constexpr Message kAfter{"après      ", "after "};
    constexpr Message kNow{"maintenant ", "now   "};
    session.out << Say(session.language, kPage,
                       {std::to_string(page.number), TextOf(page.state, kPageStates).In(session.language)});
    const std::size_t size = std::max({page.before.size(), page.after.size(), page.now.size()});
    for (std::size_t at = 0; at < size; at += kPerLine) {
        const auto before = LineAt(page.before, at);
        const auto after = LineAt(page.after, at);
        const auto now = LineAt(page.now, at);
        if (Differ(before, after) || Differ(before, now)) {
            ShowLine(kBefore, at, before, session);
            ShowLine(kAfter, at, after, session);
            ShowLine(kNow, at, now, session);
            session.out.FlushIfLarge();
        }
    }
}

void ShowUnendedWrites(const jet::Recovery& recovery, Session& session) {
    constexpr Message kUnended{
        "l'écriture d'un autre programme ne s'est pas terminée, utilisateur |1 : « mdb compact » fait une "
        "copie "
        "saine, --keep prend le fichier tel quel\n",
        "a write of another program did not end, user |1: \"mdb compact\" makes a sound copy, --keep takes "
        "the "
        "file as it is\n"};
    for (const int user : recovery.UnendedUsers()) {
        session.out << Say(session.language, kUnended, {std::to_string(user)});
    }
}

void ShowJournal(const jet::Recovery& recovery, Session& session) {
    session.out << TextOf(recovery.State(), kStates).In(session.language) << "\n";
    ShowUnendedWrites(recovery, session);
    if (recovery.State() == JournalState::None) {
        return;
    }
    constexpr Message kJournal{"journal : |1\n", "journal: |1\n"};
    constexpr Message kPages{"pages du fichier avant : |1, maintenant : |2\n",
                             "pages of the file before: |1, now: |2\n"};
    session.out << Say(session.language, kJournal, {Utf8Of(recovery.JournalFile())});
    session.out << Say(session.language, kPages,
                       {std::to_string(recovery.PagesBefore()), std::to_string(recovery.PagesNow())});
    for (std::size_t i = 0; i < recovery.PageCount(); ++i) {
        ShowPage(recovery.Page(i), session);
    }
}

}  // namespace

int RunRecover(const Arguments& arguments, Session& session) {
    constexpr Message kOneWay{"--rollback et --keep s'excluent", "--rollback and --keep exclude each other"};
    constexpr Message kForceAlone{"--force demande --rollback", "--force needs --rollback"};
    constexpr Message kRolledBack{"les anciennes pages sont remises\n", "the old pages are back\n"};
    constexpr Message kKept{"le fichier reste tel quel, le journal est maintenant « |1 »\n",
                            "the file stays as it is, the journal is now \"|1\"\n"};
    constexpr Message kCleared{"le fichier est pris tel quel et peut de nouveau être modifié\n",
                               "the file is taken as it is and may be changed again\n"};
    if (arguments.Has(kRollback) && arguments.Has(kKeep)) {
        throw Failure(kOneWay, {}, kWrongCall);
    }
    if (arguments.Has(kForce) && !arguments.Has(kRollback)) {
        throw Failure(kForceAlone, {}, kWrongCall);
    }
    jet::Recovery recovery(PathOf(arguments.Operand(0)));
    if (arguments.Has(kRollback)) {
        recovery.RollBack(arguments.Has(kForce));
        session.out << kRolledBack.In(session.language);
    } else if (arguments.Has(kKeep) && recovery.State() == JournalState::None &&
               !recovery.UnendedUsers().empty()) {
        recovery.ClearUnended();
        session.out << kCleared.In(session.language);
    } else if (arguments.Has(kKeep)) {
        session.out << Say(session.language, kKept, {Utf8Of(recovery.KeepFile())});
    } else {
        ShowJournal(recovery, session);
    }
    return kDone;
}

}  // namespace quardele::mdb
