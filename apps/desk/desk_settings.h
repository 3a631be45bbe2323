// What the window remembers from one start to the next, beside the settings of the commands.
#pragma once
#include <QByteArray>
#include <QStringList>

namespace desk {

namespace settings {
int number(const wchar_t* name, int otherwise);
void setNumber(const wchar_t* name, int value);
QByteArray bytes(const wchar_t* name);
void setBytes(const wchar_t* name, const QByteArray& value);
// Lists are numbered values, "Name1" and so on.
QStringList list(const wchar_t* name);
void setList(const wchar_t* name, const QStringList& values);
} // namespace settings

// The drawings opened or saved last, the latest first; a path stands there once.
QStringList recentFiles();
void noteRecentFile(const QString& path);
void forgetRecentFile(const QString& path);

} // namespace desk
