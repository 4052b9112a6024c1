#include <shell/session.h>

namespace quardele::shell {

Session& TheSession() {
    static Session session;
    return session;
}

}  // namespace quardele::shell
