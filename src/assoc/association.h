// Blocks that follow curves: when a curve changes, the blocks that were made from it are made anew at the end
// of the command, in this drawing and after it was saved and opened again.
//
//   curve changed -> persistent reactor (the notify object) and transient reactor -> queue of the drawing
//   end of a command -> the queue is worked off: curve -> its blocks -> each made anew, once
//
// This is the pattern; a kind of block gives its names and how it is read and built. What the drawing keeps
// of it is in association_index.h.
#pragma once
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <unordered_set>
#include <vector>

#include "assoc/association_index.h"
#include "core/host/editor.h"

namespace corvane {

class Association;

// The one object of a drawing that hears of changed curves through their persistent reactors. It files
// nothing of its own: that it is there is all it has to tell. Derived classes are those that drawings know by
// name.
class NotifyObject : public AcDbObject {
public:
    explicit NotifyObject(Association& association) : association_(association) {}
    void openedForModify(const AcDbObject*) override {}
    void modified(const AcDbObject* curve) override;

private:
    Association& association_;
};

// What a kind of block is to its association.
struct AssociationKind {
    const wchar_t* notifyEntry;
    const wchar_t* indexEntry;
    AcDbObject* (*makeNotify)();
    // The curves that the block reference follows; nothing when it is none of this kind, or no longer one.
    std::optional<std::vector<AcDbObjectId>> (*curvesOf)(AcDbObjectId block);
    // Makes the block's content anew and calls Follow again. A failure leaves it as it is.
    bool (*rebuild)(AcDbObjectId block);
    // True: when a curve with the transient reactor changes and the document can be locked, the blocks are
    // made anew inside the notification.
    bool atOnce = false;
};

class Association {
public:
    explicit Association(const AssociationKind& kind);
    ~Association();
    Association(const Association&) = delete;
    Association& operator=(const Association&) = delete;

    // From now on the block follows these curves, in memory and in the drawing.
    void Follow(AcDbObjectId block, std::span<const AcDbObjectId> curves);
    // Takes all reactors off and forgets what is in memory; what stands in drawings stays.
    void Detach();

    // For the reactors: the curve goes into its drawing's queue, unless this association is at work itself.
    void CurveChanged(const AcDbObject* curve);
    // For the transient reactor of a kind that rebuilds at once.
    void CurveChangedHere(const AcDbObject* curve);
    // At the end of a command: works off the queues of all drawings whose documents can be locked.
    void Flush();

private:
    // A drawing's own lists. One list for all drawings, loaded once, would leave blocks of a second open
    // drawing standing still.
    struct Lists {
        AcDbDatabase* database;
        bool loaded = false;
        std::map<AcDbObjectId, std::vector<AcDbObjectId>> blocks{}; // by curve; all of these have the reactor
        std::vector<AcDbObjectId> queue{};
        std::unordered_set<AcDbObjectId> queued{};
    };
    class CurveReactor;
    class CommandReactor;
    class DrawingReactor;

    Lists& listsOf(AcDbDatabase* database);
    void forget(const AcDbDatabase* database);
    void watchCommands();
    void load(Lists& lists);
    void scan(Lists& lists);
    void note(Lists& lists, AcDbObjectId curve, AcDbObjectId block);
    void drop(Lists& lists, AcDbObjectId curve, AcDbObjectId block);
    std::vector<AcDbObjectId> followers(Lists& lists, AcDbObjectId curve);
    void work(Lists& lists, const std::vector<AcDbObjectId>& curves);

    const AssociationKind kind_;
    const AssociationIndex index_;
    std::vector<std::unique_ptr<Lists>> drawings_;
    std::unique_ptr<CurveReactor> curveReactor_;
    std::unique_ptr<CommandReactor> commandReactor_;
    std::unique_ptr<DrawingReactor> drawingReactor_;
    bool busy_ = false, watching_ = false;
};

} // namespace corvane
