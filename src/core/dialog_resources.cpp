// Finds the resource among the module's and has the image read it.
#include "core/dialog_resources.h"

namespace corvane {

int LoadPngResource(CWnd*, CImage* image, WORD id, const wchar_t* type) {
    if (!image) return 0;
    image->Destroy();
    const auto resource = host_door::moduleResource(id, type);
    if (!resource) return 0;
    image->Load(std::string_view(*resource));
    return 1;
}

} // namespace corvane
