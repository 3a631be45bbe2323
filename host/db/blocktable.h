// Blocks: named collections of entities. Model space and the layouts' spaces are blocks too.
#pragma once
#include <map>

#include "host/db/entity.h"
#include "host/db/symboltable.h"

#define ACDB_MODEL_SPACE L"*Model_Space"
#define ACDB_PAPER_SPACE L"*Paper_Space"

class AcDbBlockTableRecord;

class AcDbBlockTableRecordIterator {
public:
    AcDbBlockTableRecordIterator(const AcDbBlockTableRecord* record, bool atBeginning, bool skipDeleted);
    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forward = true, bool skipDeleted = true);
    Acad::ErrorStatus getEntityId(AcDbObjectId& id) const;
    Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const;

private:
    const AcDbBlockTableRecord* record_;
    long at_ = 0;
};

class AcDbBlockTable : public AcDbSymbolTable {
    HOST_DB_CLASS(AcDbBlockTable)
public:
    const char* tableName() const override { return "BLOCK_RECORD"; }

protected:
    // "*U", "*D", "*T" ... become the next free anonymous name.
    Acad::ErrorStatus prepareName(AcDbSymbolTableRecord& record) override;

private:
    std::map<wchar_t, Adesk::UInt64> highest_; // number given so far, by letter
    size_t scanned_ = 0;                       // records that `highest_` knows of
};

class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
    HOST_DB_CLASS(AcDbBlockTableRecord)
public:
    // The entity joins the drawing and stays open for write. On failure it stays the caller's:
    // eAlreadyInDb, eNullEntityPointer, eWasOpenForRead and the like for a record not open for write.
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
    // Takes resident entities over from their present owners, in the order given.
    Acad::ErrorStatus assumeOwnershipOf(const AcDbObjectIdArray& entities);
    // The caller deletes the iterator.
    Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    AcGePoint3d origin() const { return origin_; }
    Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
    const std::wstring& comments() const { return comments_; }
    Acad::ErrorStatus setComments(const ACHAR* text);
    bool isAnonymous() const;
    bool isLayout() const { return !layout_.isNull(); }
    bool isFromExternalReference() const { return blockFlags_ & 4; }
    bool isFromOverlayReference() const { return blockFlags_ & 8; }
    bool hasAttributeDefinitions() const;
    AcDbObjectId getLayoutId() const { return layout_; }
    Acad::ErrorStatus setLayoutId(AcDbObjectId layout);
    bool isModelSpace() const;
    bool isPaperSpace() const; // any layout but the model's
    // The block references that draw this record, in the order of their handles, erased ones left out.
    Acad::ErrorStatus getBlockReferenceIds(AcDbObjectIdArray& ids, bool directOnly = true,
                                           bool forceValidity = false) const;

    // In drawing order, erased ones too.
    const std::vector<AcDbObjectId>& entities() const { return entities_; }
    // Puts an entity that stands in the drawing already at the end; readers use it.
    void adopt(AcDbObjectId entity) { entities_.push_back(entity); }
    void reserve(size_t count) { entities_.reserve(count); }
    // The file's BLOCK and ENDBLK objects.
    AcDbObjectId blockBegin() const { return begin_; }
    AcDbObjectId blockEnd() const { return end_; }
    void setBlockBegin(AcDbObjectId id) { begin_ = id; }
    void setBlockEnd(AcDbObjectId id) { end_ = id; }
    // Makes both; for a record that has just come into its table.
    void addMarks();
    int blockFlags() const { return blockFlags_; }
    void setBlockFlags(int flags) { blockFlags_ = flags; }
    const std::wstring& xrefPath() const { return xrefPath_; }
    void setXrefPath(const std::wstring& path) { xrefPath_ = path; }

    // For undo of an append: the place where the entity stood, and back there.
    size_t takeOut(AcDbObjectId entity);
    void putIn(AcDbObjectId entity, size_t position);

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;
    AcRxObject* clone() const override { return nullptr; }

protected:
    const char* marker() const override { return "AcDbBlockTableRecord"; }
    void outOwn(host::GroupWriter&) const override {}
    void subErase(Adesk::Boolean erasing) override;

private:
    friend class AcDbBlockBegin;
    std::vector<AcDbObjectId> entities_;
    AcDbObjectId begin_, end_, layout_;
    AcGePoint3d origin_;
    std::wstring comments_, xrefPath_;
    int blockFlags_ = 0; // the BLOCK object's 70: 1 anonymous, 2 attributes, 4 and 8 external
    int insertUnits_ = 0, explodable_ = 1, scaleUniformly_ = 0;
};

// The marks round a block's entities in files. The record holds what they tell; they keep their
// handle, layer and whatever else stood there.
class AcDbBlockBegin : public AcDbEntity {
    HOST_DB_CLASS(AcDbBlockBegin)
public:
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    // Gives the record what the groups said; it is the owner, or found by the block's name.
    void inDone(host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

private:
    struct Told {
        std::string name;
        std::wstring comments, xrefPath;
        AcGePoint3d origin;
        int flags = 0;
    };
    std::shared_ptr<Told> told_; // while a file is read
};
class AcDbBlockEnd : public AcDbEntity {
    HOST_DB_CLASS(AcDbBlockEnd)
public:
    void outGroups(host::GroupWriter& writer) const override;
};
// Ends a polyline's vertices or a reference's attributes in files.
class AcDbSequenceEnd : public AcDbEntity {
    HOST_DB_CLASS(AcDbSequenceEnd)
};
