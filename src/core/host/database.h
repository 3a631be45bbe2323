// The door to the host: drawings, tables, dictionaries, reactors.
#pragma once
#include "host/db/database.h"
#include "host/db/filer.h"
#include "host/db/reactor.h"
