// Values under the window's own key of the user's registry.
#include "apps/desk/desk_settings.h"

#include <QFileInfo>

#include "apps/desk/qt_text.h"
#include "host/os/registry.h"

namespace desk {
namespace {

constexpr wchar_t kKey[] = L"Software\\Brinkhaven\\Corvane\\Desk";
constexpr wchar_t kRecent[] = L"Recent";
constexpr int kMostRecent = 9;
constexpr int kMostListed = 1000;

// Several values are written as one.
class Batch {
public:
    Batch() { host::userRegistry().beginBatch(); }
    ~Batch() { host::userRegistry().endBatch(); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;
};

std::wstring numbered(const wchar_t* name, int i) { return name + std::to_wstring(i); }

} // namespace

namespace settings {

int number(const wchar_t* name, int otherwise) {
    const auto value = host::userRegistry().number(kKey, name);
    return value && *value <= 0x7FFFFFFF ? int(*value) : otherwise;
}
void setNumber(const wchar_t* name, int value) { host::userRegistry().set(kKey, name, std::uint32_t(value)); }

QByteArray bytes(const wchar_t* name) {
    const auto value = host::userRegistry().bytes(kKey, name);
    if (!value) return {};
    return {reinterpret_cast<const char*>(value->data()), qsizetype(value->size())};
}
void setBytes(const wchar_t* name, const QByteArray& value) {
    host::userRegistry().set(kKey, name, host::RegistryBytes(value.begin(), value.end()));
}

QStringList list(const wchar_t* name) {
    QStringList values;
    for (int i = 1; i <= kMostListed; ++i) {
        const auto value = host::userRegistry().text(kKey, numbered(name, i));
        if (!value) break;
        values += shown(*value);
    }
    return values;
}
void setList(const wchar_t* name, const QStringList& values) {
    const Batch batch;
    const int before = int(list(name).size());
    for (int i = 1; i <= int(values.size()); ++i)
        host::userRegistry().set(kKey, numbered(name, i), wide(values[i - 1]));
    for (int i = int(values.size()) + 1; i <= before; ++i)
        host::userRegistry().remove(kKey, numbered(name, i));
}

} // namespace settings

QStringList recentFiles() { return settings::list(kRecent).mid(0, kMostRecent); }

void noteRecentFile(const QString& path) {
    const QString whole = QFileInfo(path).absoluteFilePath();
    QStringList paths = recentFiles();
    if (!paths.isEmpty() && paths.front() == whole) return;
    paths.removeAll(whole);
    paths.prepend(whole);
    settings::setList(kRecent, paths.mid(0, kMostRecent));
}

void forgetRecentFile(const QString& path) {
    QStringList paths = recentFiles();
    paths.removeAll(path);
    settings::setList(kRecent, paths);
}

} // namespace desk
