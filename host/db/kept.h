// Objects of classes that nobody has registered, and of kinds that the host has no own class
// for: kept whole, group by group, and written as they came. When a module registers the class,
// such an object comes to life (reviveKeptObjects).
#pragma once
#include "host/db/entity.h"

namespace host {

class KeptObject : public AcDbObject {
public:
    explicit KeptObject(std::string dxfName) : dxfName_(std::move(dxfName)) {}
    // A class of its own for every name, below AcDbObject, so that selection and counts tell kinds apart.
    AcRxClass* isA() const override;
    std::string dxfName() const override { return dxfName_; }
    const GroupList& groups() const { return groups_; }
    void setGroups(GroupList groups) { groups_ = std::move(groups); }
    // Takes every group. A reader may hand in the markers (100) too; then also those with nothing
    // behind them are kept.
    bool inGroup(const Group& group, ReadContext& context) override;
    void outGroups(GroupWriter& writer) const override;
    std::unique_ptr<AcDbObject> snapshot() const override {
        return std::unique_ptr<AcDbObject>(new KeptObject(*this));
    }
    void restore(const AcDbObject& from) override;

private:
    std::string dxfName_;
    std::string marker_; // of the last group, while a file is read
    GroupList groups_;   // everything behind the owner, with its subclass markers
};

class KeptEntity : public AcDbEntity {
public:
    explicit KeptEntity(std::string dxfName) : dxfName_(std::move(dxfName)) {}
    AcRxClass* isA() const override;
    std::string dxfName() const override { return dxfName_; }
    // The groups behind those of AcDbEntity, with their subclass markers.
    const GroupList& groups() const { return groups_; }
    void setGroups(GroupList groups) { groups_ = std::move(groups); }
    // Parts that follow in the file up to SEQEND.
    void addPart(AcDbObjectId part) { parts_.push_back(part); }
    // The block named by group 2 of dimensions and tables: what the entity looks like.
    AcDbObjectId referencedBlock() const override;
    bool inGroup(const Group& group, ReadContext& context) override;
    void outGroups(GroupWriter& writer) const override;
    void ownedParts(std::vector<AcDbObjectId>& parts) const override {
        parts.insert(parts.end(), parts_.begin(), parts_.end());
    }
    std::unique_ptr<AcDbObject> snapshot() const override {
        return std::unique_ptr<AcDbObject>(new KeptEntity(*this));
    }
    void restore(const AcDbObject& from) override;
    bool addOwnedPart(AcDbObjectId part) override { return addPart(part), true; }
    AcRxObject* clone() const override; // null for one with parts

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

private:
    std::string dxfName_, marker_;
    GroupList groups_;
    std::vector<AcDbObjectId> parts_;
};

// What kept entities look like; the entity classes set it at start-up.
class KeptPicture {
public:
    virtual ~KeptPicture() = default;
    virtual void draw(const KeptEntity& entity, AcGiWorldDraw* context) = 0;
    // False when there is nothing to measure.
    virtual bool extents(const KeptEntity& entity, AcDbExtents& box) = 0;
};
void setKeptPicture(KeptPicture* picture); // null: kept entities show nothing

// Turns kept objects whose class is registered now into objects of that class, and objects of
// removed classes back into kept ones. Runs after every acrxBuildClassHierarchy.
void reviveKeptObjects(AcDbDatabase& database);

} // namespace host
