// Files of the copies: N.dxf with the drawing, N.note beside it with the path, title and version of the
// original, written after it, so that a note always has its drawing.
#include "apps/desk/autosave.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <set>

#include "host/dxf/dxf.h"
#include "host/os/files.h"
#include "host/os/text.h"

namespace desk {
namespace {

constexpr int kMostPrograms = 1000;
constexpr char kLock[] = "/lock";
const QStringList kNotes{"*.note"};

// Locks tell by the program's number whether it runs; their age says nothing.
std::unique_ptr<QLockFile> lockOf(const std::string& folder) {
    auto lock = std::make_unique<QLockFile>(QString::fromStdString(folder + kLock));
    lock->setStaleLockTime(0);
    return lock;
}

std::string noteOf(AcApDocument& document) {
    return host::utf8(document.fileName()) + "\n" + host::utf8(document.docTitle()) + "\n" +
           host::versionName(document.database()->originalFileVersion()) + "\n";
}

Autosave::Left leftOf(const QFileInfo& note) {
    std::string text;
    host::readWhole(note.absoluteFilePath().toStdString(), text);
    const QStringList lines = QString::fromStdString(text).split('\n');
    Autosave::Left left;
    left.copy = (note.absolutePath() + "/" + note.completeBaseName() + ".dxf").toStdString();
    left.path = lines.value(0).toStdWString();
    left.title = lines.value(1).toStdWString();
    left.version = host::versionByName(lines.value(2).toStdString());
    return left;
}

} // namespace

std::unique_ptr<AcDbDatabase> Autosave::Left::read(std::string& error) const {
    auto database = std::make_unique<AcDbDatabase>(false);
    const host::ReadReport report = host::readDrawing(copy, *database);
    error = report.message;
    if (!report.ok) return nullptr;
    if (!path.empty()) database->setFilename(path);
    if (version != AcDb::kDHL_Unknown) database->setOriginalFileVersion(version);
    database->undoLog().clear();
    database->undoLog().markChanged(); // it isn't what the file holds
    return database;
}

Autosave::Autosave(std::string folder) : all_(std::move(folder)) {}

Autosave::~Autosave() {
    left_.clear();
    if (own_.empty()) return;
    lock_.reset();
    QDir(QString::fromStdString(own_)).removeRecursively();
}

// A folder that nobody else has; false when none can be made.
bool Autosave::takeFolder() {
    if (!own_.empty()) return true;
    if (host::makeFolders(all_)) return false;
    QDir all(QString::fromStdString(all_));
    for (int number = 1; number <= kMostPrograms; ++number) {
        if (!all.mkdir(QString::number(number))) continue; // someone's
        own_ = all_ + "/" + std::to_string(number);
        lock_ = lockOf(own_);
        if (lock_->tryLock(0)) return true;
        own_.clear();
    }
    return false;
}

std::string Autosave::fileOf(const Copy& copy, const char* ending) const {
    return own_ + "/" + std::to_string(copy.number) + ending;
}

std::string Autosave::save() {
    std::string wrong;
    std::set<const AcDbDatabase*> kept;
    for (AcApDocument* document : acDocManagerPtr()->documents()) {
        host::UndoLog& log = document->database()->undoLog();
        if (!log.changedSinceSave()) continue;
        if (!takeFolder()) return "no folder can be made under " + all_;
        kept.insert(document->database());
        const auto [at, fresh] = copies_.try_emplace(document->database(), Copy{last_ + 1, 0});
        if (fresh) ++last_;
        if (!fresh && at->second.changes == log.changes()) continue;
        at->second.changes = log.changes();
        if (std::string error = write(*document, at->second); !error.empty()) wrong = error;
    }
    std::erase_if(copies_, [&](const auto& copy) {
        if (kept.contains(copy.first)) return false;
        return remove(copy.second), true;
    });
    return wrong;
}

void Autosave::forget(const AcDbDatabase* database) {
    const auto found = copies_.find(database);
    if (found == copies_.end()) return;
    remove(found->second);
    copies_.erase(found);
}

// As the newest version, which holds everything.
std::string Autosave::write(AcApDocument& document, const Copy& copy) {
    host::WriteOptions newest;
    newest.version = AcDb::kDHL_1032;
    const std::string bytes = host::drawingBytes(*document.database(), newest);
    if (const host::FileError error = host::writeWhole(fileOf(copy, ".dxf"), bytes)) return error.message;
    return host::writeWhole(fileOf(copy, ".note"), noteOf(document)).message;
}

void Autosave::remove(const Copy& copy) {
    QFile::remove(QString::fromStdString(fileOf(copy, ".note")));
    QFile::remove(QString::fromStdString(fileOf(copy, ".dxf")));
}

std::vector<Autosave::Left> Autosave::leftBehind() {
    std::vector<Left> found;
    const QDir all(QString::fromStdString(all_));
    for (const QFileInfo& folder : all.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const std::string path = folder.absoluteFilePath().toStdString();
        if (path == QFileInfo(QString::fromStdString(own_)).absoluteFilePath().toStdString()) continue;
        Session session{path, lockOf(path)};
        if (!session.lock->tryLock(0)) continue; // its program runs
        const QFileInfoList notes =
            QDir(folder.absoluteFilePath()).entryInfoList(kNotes, QDir::Files, QDir::Name);
        for (const QFileInfo& note : notes) found.push_back(leftOf(note));
        left_.push_back(std::move(session));
        if (notes.isEmpty()) QDir(folder.absoluteFilePath()).removeRecursively(), left_.pop_back();
    }
    return found;
}

void Autosave::forgetLeft() {
    for (Session& session : left_) {
        session.lock.reset();
        QDir(QString::fromStdString(session.folder)).removeRecursively();
    }
    left_.clear();
}

void Autosave::keepForLater() { left_.clear(); }

} // namespace desk
