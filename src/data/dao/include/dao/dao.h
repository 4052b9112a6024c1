// Data access objects: what the screens see of the data files. Names and behaviour are those of the
// well-known object model: workspaces, databases, table definitions, fields, recordsets with a current
// record. One thread.
//
// Everything throws basic::RuntimeError with the engine's numbers. Objects are held by shared pointers; a
// recordset keeps its database open; closing a database leaves open recordsets usable.
#pragma once

#include <dao/database.h>
#include <dao/field.h>
#include <dao/recordset.h>
#include <dao/table_def.h>
