// The door to the host: prompts, selections, system variables, commands, documents, modules.
#pragma once
#include "host/ed/application.h"
#include "host/ed/commands.h"
#include "host/ed/document.h"
#include "host/ed/editor.h"
#include "host/ed/editor_reactor.h"
#include "host/ed/selection.h"
