#include "commit/unended_writes.h"

#include <algorithm>
#include <string>

#include <basic/runtime_error.h>

#include "locks/live_user.h"
#include "locks/lock_wait.h"

namespace quardele::jet {

namespace {

[[noreturn]] void ThrowUnderWay(const OsFile& file, const std::vector<int>& users) {
    basic::Text description = u"Un autre programme est en train d'écrire dans « ";
    description += FileName(file.Path());
    description += u" » (utilisateur " + UserList(users) + u"). Réessayez plus tard.";
    throw basic::RuntimeError(basic::error::kRecordLocked, std::move(description));
}

[[noreturn]] void ThrowMustBeRepaired(const OsFile& file, const std::vector<int>& users) {
    basic::Text description = u"« ";
    description += FileName(file.Path());
    description +=
        u" » doit être réparé : l'écriture d'un autre programme ne s'est pas terminée (utilisateur ";
    description += UserList(users);
    description += u"). Le fichier peut être lu ; la commande « mdb compact » en fait une copie saine.";
    throw basic::RuntimeError(basic::error::kNotADatabase, std::move(description));
}

}  // namespace

UnendedWrites UnendedWritesOf(const ChangeMark& mark, const std::filesystem::path& dataFile) {
    UnendedWrites found;
    for (const int user : mark.UsersInTrouble()) {
        // An exclusive opener has no place in the lock file, and nobody is beside one.
        const bool there = user != 0 && IsUserThere(dataFile, user);
        (there ? found.underWay : found.left).push_back(user);
    }
    return found;
}

void WaitForUnendedWrites(const OsFile& file, const Format& format) {
    UnendedWrites unended;
    const bool settled = RetryUntil([&] {
        unended = UnendedWritesOf(ChangeMark::Read(file, format), file.Path());
        return unended.underWay.empty() || !unended.left.empty();
    });
    if (!unended.left.empty()) {
        ThrowMustBeRepaired(file, unended.left);
    }
    if (!settled) {
        ThrowUnderWay(file, unended.underWay);
    }
}

bool IsBeingWritten(const ChangeMark& mark, const std::filesystem::path& dataFile) {
    const std::vector<int> writing = mark.UsersInWriting();
    return std::any_of(writing.begin(), writing.end(),
                       [&](int user) { return user != 0 && IsUserThere(dataFile, user); });
}

basic::Text UserList(const std::vector<int>& users) {
    basic::Text list;
    for (const int user : users) {
        list += list.empty() ? u"" : u", ";
        list += basic::FromUtf8(std::to_string(user));
    }
    return list;
}

}  // namespace quardele::jet
