// Pictures from the module's resources.
#pragma once
#include "core/host/dialogs.h"

namespace corvane {

// Gives up what the image holds and reads the resource of that number and type ("PNG") into it. 0 for a null
// pointer and when there is no such resource; 1 else, also when it can't be read: callers look whether the
// image is empty and show something of their own then.
int LoadPngResource(CWnd* window, CImage* image, WORD id, const wchar_t* type);

} // namespace corvane
