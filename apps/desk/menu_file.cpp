// The zip archive by its central directory, and the XML by a stream reader.
#include "apps/desk/menu_file.h"

#include <zlib.h>

#include <QHash>
#include <QXmlStreamReader>
#include <optional>

#include "host/os/files.h"

namespace desk {
namespace {

constexpr size_t kMostBytes = 64 << 20;

// Numbers of one or more bytes, the lowest first; nothing beyond the end.
class Bytes {
public:
    explicit Bytes(std::string_view all) : all_(all) {}
    std::optional<std::uint32_t> number(size_t at, size_t count) const {
        if (at + count > all_.size() || at + count < at) return std::nullopt;
        std::uint32_t value = 0;
        for (size_t i = 0; i < count; ++i) value |= std::uint32_t(std::uint8_t(all_[at + i])) << 8 * i;
        return value;
    }
    bool has(size_t at, std::uint32_t mark) const { return number(at, 4) == mark; }

private:
    std::string_view all_;
};

std::optional<std::string> inflated(std::string_view packed, size_t size) {
    std::string out(size, '\0');
    z_stream stream{};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) return std::nullopt; // without a header of its own
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = uInt(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = uInt(out.size());
    const int status = inflate(&stream, Z_FINISH);
    const bool whole = status == Z_STREAM_END && stream.total_out == size;
    inflateEnd(&stream);
    return whole ? std::optional(out) : std::nullopt;
}

ZipMember unpacked(std::string_view archive, size_t entry) {
    const Bytes bytes(archive);
    const auto method = bytes.number(entry + 10, 2), packed = bytes.number(entry + 20, 4),
               size = bytes.number(entry + 24, 4), local = bytes.number(entry + 42, 4);
    if (!local || *size > kMostBytes || !bytes.has(*local, 0x04034B50)) return {{}, "the archive is damaged"};
    const auto name = bytes.number(*local + 26, 2), extra = bytes.number(*local + 28, 2);
    const size_t from = size_t(*local) + 30 + name.value_or(0) + extra.value_or(0);
    if (!extra || from > archive.size() || *packed > archive.size() - from)
        return {{}, "the archive is cut short"};
    const std::string_view data = archive.substr(from, *packed);
    if (*method == 0) return {std::string(data), {}};
    const auto out = *method == 8 ? inflated(data, *size) : std::nullopt;
    return out ? ZipMember{*out, {}} : ZipMember{{}, "a member of the archive can't be unpacked"};
}

} // namespace

ZipMember zipMember(std::string_view archive, std::string_view name) {
    const Bytes bytes(archive);
    constexpr size_t kEndSize = 22, kLongestComment = 65535;
    size_t end = archive.size() < kEndSize ? 0 : archive.size() - kEndSize;
    for (size_t tried = 0; end > 0 && tried < kLongestComment && !bytes.has(end, 0x06054B50); ++tried) --end;
    if (!bytes.has(end, 0x06054B50)) return {{}, "it is no zip archive"};
    size_t entry = *bytes.number(end + 16, 4);
    for (std::uint32_t count = *bytes.number(end + 10, 2); count > 0 && bytes.has(entry, 0x02014B50);
         --count) {
        const auto length = bytes.number(entry + 28, 2), extra = bytes.number(entry + 30, 2),
                   comment = bytes.number(entry + 32, 2);
        if (!comment || entry + 46 > archive.size()) break;
        if (archive.substr(entry + 46, *length) == name) return unpacked(archive, entry);
        entry += 46 + size_t(*length) + *extra + *comment;
    }
    return {{}, "the archive has no member " + std::string(name)};
}

namespace {

// The macros come first, then the menus that name them.
class MenuReader {
public:
    explicit MenuReader(const std::string& xml) : xml_(QByteArray::fromStdString(xml)) {}
    MenuFile read() {
        while (!xml_.atEnd()) {
            if (xml_.readNext() != QXmlStreamReader::StartElement) continue;
            if (xml_.name() == QLatin1String("MenuMacro")) readMacro();
            if (xml_.name() == QLatin1String("PopMenu")) file_.menus.push_back(readMenu());
        }
        if (xml_.hasError()) file_.error = "the menu is no whole XML: " + xml_.errorString().toStdString();
        return std::move(file_);
    }

private:
    QString attribute(const char* name) const {
        return xml_.attributes().value(QLatin1String(name)).toString();
    }

    void readMacro() {
        const QString uid = attribute("UID");
        MenuItem item;
        item.mark = uid;
        while (!xml_.atEnd() && !(xml_.readNext() == QXmlStreamReader::EndElement &&
                                  xml_.name() == QLatin1String("MenuMacro"))) {
            if (!xml_.isStartElement()) continue;
            if (xml_.name() == QLatin1String("Name")) item.caption = xml_.readElementText();
            if (xml_.name() == QLatin1String("Command")) item.line = lineOf(xml_.readElementText());
            if (xml_.name() == QLatin1String("HelpString")) item.help = xml_.readElementText();
        }
        macros_.insert(uid, item);
    }
    // Without the marks that cancel what runs.
    static std::wstring lineOf(QString command) {
        while (command.startsWith("^C", Qt::CaseInsensitive)) command.remove(0, 2);
        return command.toStdWString();
    }
    MenuItem readMenu() {
        MenuItem menu;
        menu.caption = attribute("Name");
        menu.mark = attribute("UID");
        const QString kind = xml_.name().toString();
        while (!xml_.atEnd() && !(xml_.readNext() == QXmlStreamReader::EndElement && xml_.name() == kind)) {
            if (!xml_.isStartElement()) continue;
            if (xml_.name() == QLatin1String("Name")) menu.caption = xml_.readElementText();
            if (xml_.name() == QLatin1String("PopMenuSub")) menu.items.push_back(readMenu());
            if (xml_.name() == QLatin1String("PopMenuItem"))
                if (const auto macro = macros_.constFind(attribute("MenuMacroID")); macro != macros_.cend())
                    menu.items.push_back(*macro);
        }
        return menu;
    }

    QXmlStreamReader xml_;
    QHash<QString, MenuItem> macros_;
    MenuFile file_;
};

} // namespace

MenuFile readMenuFile(const std::string& path) {
    std::string archive;
    if (const host::FileError error = host::readWhole(path, archive)) return {{}, error.message};
    const ZipMember member = zipMember(archive, "Menu.cui");
    if (!member.error.empty()) return {{}, path + ": " + member.error};
    MenuFile file = MenuReader(member.bytes).read();
    if (!file.error.empty()) file.error = path + ": " + file.error;
    return file;
}

} // namespace desk
