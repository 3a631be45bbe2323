// What must stand before anything else runs.
#include "host/ed/startup.h"

#include "host/ed/application.h"
#include "host/ed/commands.h"
#include "host/ed/dialog_script.h"
#include "host/ed/interpreter.h"
#include "host/ent/register.h"
#include "host/solid/region.h"
#include "host/view/screen.h"

namespace host {

void startHost() {
    static bool started = false;
    if (started) return;
    started = true;
    registerEntityClasses();
    registerSolidClasses();
    static AcEdCommandStack stack;
    acrxSysRegistry()->atPut(ACRX_COMMAND_DOCK, &stack);
    acrxSysRegistry()->atPut(ACRX_DYNAMIC_LINKER, acrxDynamicLinkerPtr());
    screen();
    registerHostCommands();
    installPromptedDialogs();
}

} // namespace host
