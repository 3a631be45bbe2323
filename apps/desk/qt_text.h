// Between the host's wide text and Qt's.
#pragma once
#include <QString>
#include <string>
#include <string_view>

namespace desk {

inline QString shown(std::wstring_view text) {
    return QString::fromWCharArray(text.data(), qsizetype(text.size()));
}
inline std::wstring wide(const QString& text) { return text.toStdWString(); }

} // namespace desk
