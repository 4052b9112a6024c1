// What the commands do. Each returns the exit code.
#pragma once

#include "session.h"

namespace quardele::mdb {

int RunTables(const Arguments& arguments, Session& session);
int RunSchema(const Arguments& arguments, Session& session);
int RunQuery(const Arguments& arguments, Session& session);
int RunDump(const Arguments& arguments, Session& session);
int RunExec(const Arguments& arguments, Session& session);
int RunImport(const Arguments& arguments, Session& session);
int RunCheck(const Arguments& arguments, Session& session);
int RunCompact(const Arguments& arguments, Session& session);
int RunCreate(const Arguments& arguments, Session& session);
int RunRecover(const Arguments& arguments, Session& session);
int RunKeys(const Arguments& arguments, Session& session);

// Options that the commands ask for by name.
inline constexpr const char* kJson = "--json";
inline constexpr const char* kAtomic = "--atomic";
inline constexpr const char* kChunk = "--chunk";
inline constexpr const char* kNotes = "--notes";
inline constexpr const char* kRollback = "--rollback";
inline constexpr const char* kKeep = "--keep";
inline constexpr const char* kForce = "--force";

}  // namespace quardele::mdb
