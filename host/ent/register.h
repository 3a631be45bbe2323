// Makes the entity classes known to the class tree; called once at start-up, harmless when repeated.
#pragma once

namespace host {
void registerEntityClasses();
} // namespace host
