// Documents, their locks, and who is current.
#include "host/ed/document.h"

#include <algorithm>

#include "host/ed/application.h"
#include "host/ed/interpreter.h"
#include "host/view/screen.h"

HOST_DEFINE_ABSTRACT_CLASS(AcApDocument, AcRxObject)
HOST_DEFINE_ABSTRACT_CLASS(AcApDocManager, AcRxObject)

AcApDocument::AcApDocument(std::unique_ptr<AcDbDatabase> database) : database_(std::move(database)) {}
AcApDocument::~AcApDocument() = default;

const ACHAR* AcApDocument::fileName() const {
    const ACHAR* path = L"";
    database_->getFilename(path);
    return path;
}
const ACHAR* AcApDocument::docTitle() const {
    const std::wstring path = fileName();
    title_ = path.empty() ? L"Drawing" + std::to_wstring(number_) + L".dxf"
                          : path.substr(path.find_last_of(L'/') + 1);
    return title_.c_str();
}
AcAp::DocLockMode AcApDocument::lockMode(bool) const {
    AcAp::DocLockMode strongest = AcAp::kNotLocked;
    const auto rank = [](AcAp::DocLockMode mode) {
        switch (mode) {
        case AcAp::kXWrite: return 4;
        case AcAp::kWrite: return 3;
        case AcAp::kAutoWrite:
        case AcAp::kProtectedAutoWrite: return 2;
        case AcAp::kRead: return 1;
        default: return 0;
        }
    };
    for (const AcAp::DocLockMode lock : locks_)
        if (rank(lock) > rank(strongest)) strongest = lock;
    return strongest;
}
bool AcApDocument::isQuiescent() const { return host::runningCommands() == 0; }
void AcApDocument::setDatabase(std::unique_ptr<AcDbDatabase> database) {
    std::swap(database_, database);
    if (acDocManagerPtr()->curDocument() == this)
        acdbHostApplicationServices()->setWorkingDatabase(database_.get());
}

AcApDocument* AcApDocManager::document(const AcDbDatabase* database) const {
    for (const auto& document : documents_)
        if (document->database() == database) return document.get();
    return nullptr;
}

std::vector<AcApDocument*> AcApDocManager::documents() const {
    std::vector<AcApDocument*> all;
    for (const auto& document : documents_) all.push_back(document.get());
    return all;
}

AcApDocumentIterator* AcApDocManager::newAcApDocumentIterator() const {
    return new AcApDocumentIterator(documents());
}

Acad::ErrorStatus AcApDocManager::setCurDocument(AcApDocument* document, AcAp::DocLockMode mode, bool) {
    if (!document) return Acad::eNoDocument;
    if (mode != AcAp::kNone)
        if (auto es = lockDocument(document, mode); es != Acad::eOk) return es;
    current_ = document;
    acdbHostApplicationServices()->setWorkingDatabase(document->database());
    const auto copy = reactors_;
    for (AcApDocManagerReactor* reactor : copy) reactor->documentBecameCurrent(document);
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::lockDocument(AcApDocument* document, AcAp::DocLockMode mode,
                                               const ACHAR* global, const ACHAR*, bool) {
    if (!document) return Acad::eNoDocument;
    const AcAp::DocLockMode before = document->lockMode(true);
    if (before == AcAp::kXWrite) return Acad::eLockConflict;
    if (mode == AcAp::kXWrite && before != AcAp::kNotLocked) return Acad::eLockConflict;
    document->locks_.push_back(mode);
    const auto copy = reactors_;
    for (AcApDocManagerReactor* reactor : copy)
        reactor->documentLockModeChanged(document, before, mode, document->lockMode(true), global);
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::unlockDocument(AcApDocument* document) {
    if (!document) return Acad::eNoDocument;
    if (document->locks_.empty()) return Acad::eInvalidInput;
    const AcAp::DocLockMode before = document->lockMode(true);
    document->locks_.pop_back();
    // Work under a lock outside any command is a step of its own to take back.
    if (document->locks_.empty() && host::runningCommands() == 0) document->database()->undoLog().commit();
    const auto copy = reactors_;
    for (AcApDocManagerReactor* reactor : copy)
        reactor->documentLockModeChanged(document, before, document->lockMode(true), document->lockMode(true),
                                         L"#");
    return Acad::eOk;
}

bool AcApDocManager::isApplicationContext() const { return host::runningCommands() == 0; }
void AcApDocManager::addReactor(AcApDocManagerReactor* reactor) { reactors_.push_back(reactor); }
void AcApDocManager::removeReactor(AcApDocManagerReactor* reactor) { std::erase(reactors_, reactor); }

AcApDocument* AcApDocManager::add(std::unique_ptr<AcDbDatabase> database) {
    documents_.push_back(std::make_unique<AcApDocument>(std::move(database)));
    AcApDocument* document = documents_.back().get();
    for (const auto& other : documents_)
        if (other.get() != document && !*other->fileName())
            document->number_ = std::max(document->number_, other->number_ + 1);
    setCurDocument(document);
    const auto copy = reactors_;
    for (AcApDocManagerReactor* reactor : copy) reactor->documentCreated(document);
    acrxDynamicLinker->broadcast(AcRx::kLoadDwgMsg);
    return document;
}

void AcApDocManager::close(AcApDocument* document) {
    const auto at = std::find_if(documents_.begin(), documents_.end(),
                                 [&](const auto& d) { return d.get() == document; });
    if (at == documents_.end()) return;
    const auto copy = reactors_;
    for (AcApDocManagerReactor* reactor : copy) reactor->documentToBeDestroyed(document);
    acrxDynamicLinker->broadcast(AcRx::kUnloadDwgMsg);
    host::screen().forget(document->database());
    if (current_ == document) {
        current_ = nullptr;
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    }
    documents_.erase(at);
    if (!current_ && !documents_.empty()) setCurDocument(documents_.back().get());
}

AcApDocManager* acDocManagerPtr() {
    static AcApDocManager manager;
    return &manager;
}
AcApDocument* curDoc() { return acDocManagerPtr()->curDocument(); }
