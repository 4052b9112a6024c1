// Data access objects: what the screens see of the data files. Names and behaviour are those of the
// well-known object model: workspaces, databases, table definitions, fields, recordsets with a current
// record. One thread.
//
// Everything throws basic::RuntimeError with the engine's numbers. Objects are held by shared pointers; a
// recordset keeps the file of a database open that nobody holds any more. Close ends the use of an object,
// that of a database also the use of its recordsets: what is called after it throws 3420.
#pragma once

#include <dao/database.h>
#include <dao/field.h>
#include <dao/recordset.h>
#include <dao/table_def.h>
