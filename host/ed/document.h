// Documents: the open drawings with their locks, and which of them is current.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "host/db/database.h"
#include "host/db/rx.h"
#include "host/ed/input_point.h"

namespace AcAp {
enum DocLockMode {
    kNone = 0x00,
    kAutoWrite = 0x01,
    kNotLocked = 0x02,
    kWrite = 0x04,
    kProtectedAutoWrite = 0x14,
    kRead = 0x20,
    kXWrite = 0x40
};
}

class AcApDocument : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcApDocument)
public:
    explicit AcApDocument(std::unique_ptr<AcDbDatabase> database);
    ~AcApDocument() override;
    AcDbDatabase* database() const { return database_.get(); }
    const ACHAR* fileName() const;
    const ACHAR* docTitle() const; // the file's name, or that of a new drawing, such as "Drawing2.dxf"
    AcAp::DocLockMode lockMode(bool includeMyLocks = false) const;
    bool isQuiescent() const; // no command runs in it
    AcEdInputPointManager* inputPointManager() { return &inputPoints_; }
    // Exchanges the drawing: opening another file in the same document.
    void setDatabase(std::unique_ptr<AcDbDatabase> database);

private:
    friend class AcApDocManager;
    std::unique_ptr<AcDbDatabase> database_;
    AcEdInputPointManager inputPoints_;
    std::vector<AcAp::DocLockMode> locks_;
    mutable std::wstring title_;
    int number_ = 1; // in the name of a new drawing
};

class AcApDocManagerReactor : public AcRxObject {
public:
    virtual void documentCreated(AcApDocument*) {}
    virtual void documentToBeDestroyed(AcApDocument*) {}
    virtual void documentBecameCurrent(AcApDocument*) {}
    virtual void documentLockModeChanged(AcApDocument*, AcAp::DocLockMode, AcAp::DocLockMode,
                                         AcAp::DocLockMode, const ACHAR*) {}
};

class AcApDocumentIterator {
public:
    explicit AcApDocumentIterator(std::vector<AcApDocument*> documents) : documents_(std::move(documents)) {}
    bool done() const { return at_ >= documents_.size(); }
    void step() { ++at_; }
    AcApDocument* document() const { return done() ? nullptr : documents_[at_]; }

private:
    std::vector<AcApDocument*> documents_;
    size_t at_ = 0;
};

class AcApDocManager : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcApDocManager)
public:
    AcApDocument* curDocument() const { return current_; }
    AcApDocument* mdiActiveDocument() const { return current_; }
    AcApDocument* document(const AcDbDatabase* database) const;
    AcApDocumentIterator* newAcApDocumentIterator() const; // the caller deletes it
    Acad::ErrorStatus setCurDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kNone,
                                     bool activate = false);
    // eLockConflict when the document is locked by someone else in a way that excludes `mode`.
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite,
                                   const ACHAR* globalCommand = nullptr, const ACHAR* localCommand = nullptr,
                                   bool prompt = true);
    Acad::ErrorStatus unlockDocument(AcApDocument* document);
    bool isApplicationContext() const;
    void addReactor(AcApDocManagerReactor* reactor);
    void removeReactor(AcApDocManagerReactor* reactor);
    // For front ends: takes a drawing in as a document and makes it current; modules hear kLoadDwgMsg.
    AcApDocument* add(std::unique_ptr<AcDbDatabase> database);
    void close(AcApDocument* document);

    // In the order of their opening.
    std::vector<AcApDocument*> documents() const;

private:
    std::vector<std::unique_ptr<AcApDocument>> documents_;
    std::vector<AcApDocManagerReactor*> reactors_;
    AcApDocument* current_ = nullptr;
};
AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
AcApDocument* curDoc();
