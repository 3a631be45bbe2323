// Options to bytes to file.
#include "host/picture/picture.h"

#include "host/os/files.h"
#include "host/os/text.h"
#include "host/picture/backends.h"

namespace host {
namespace {

PictureBytes bytesOf(const Page& page, PictureFormat format) {
    if (!page.error().empty()) return {{}, page.error()};
    switch (format) {
    case PictureFormat::png: return pngBytes(page);
    case PictureFormat::pdf: return pdfBytes(page);
    case PictureFormat::svg: break;
    }
    return {svgBytes(page), {}};
}

} // namespace

std::optional<PictureFormat> pictureFormat(std::string_view path) {
    const std::size_t dot = path.rfind('.');
    const std::wstring ending =
        dot == std::string_view::npos ? std::wstring() : lower(wide(path.substr(dot + 1)));
    if (ending == L"svg") return PictureFormat::svg;
    if (ending == L"png") return PictureFormat::png;
    if (ending == L"pdf") return PictureFormat::pdf;
    return std::nullopt;
}

PictureBytes pictureBytes(std::span<const PicturePanel> panels, PictureFormat format,
                          const PictureOptions& options) {
    for (const PicturePanel& panel : panels)
        if (!panel.list) return {{}, "a panel of the picture has nothing to show"};
    return bytesOf(Page(panels, format, options), format);
}

PictureResult writePicture(std::span<const PicturePanel> panels, const PictureOptions& options) {
    PictureResult result;
    const auto format = options.format ? options.format : pictureFormat(options.path);
    const auto refused = [&](const std::string& why) {
        result.error = "cannot write the picture \"" + options.path + "\": " + why;
        return result;
    };
    if (!format) return refused("its name must end in .svg, .png or .pdf");
    for (const PicturePanel& panel : panels) {
        if (!panel.list) return refused("a panel has nothing to show");
        if (panel.list->truncated)
            result.note = "The picture is not complete: the drawing has too much in it.";
    }
    const Page page(panels, *format, options);
    const PictureBytes made = bytesOf(page, *format);
    if (!made.error.empty()) return refused(made.error);
    if (const FileError error = writeWhole(options.path, made.bytes)) result.error = error.message;
    result.width = page.width();
    result.height = page.height();
    return result;
}

PictureResult writePicture(const DisplayList& list, const PictureOptions& options) {
    const PicturePanel panel{.list = &list};
    return writePicture(std::span(&panel, 1), options);
}

} // namespace host
