// AcEdJig: drags an entity with the cursor. drag() shows the entity while a prompt waits; each move of the
// cursor asks sampler() for what it means and update() to change the entity.
#pragma once
#include <optional>
#include <string>

#include "host/db/entity.h"

namespace host {
class JigDrag;
}

class AcEdJig : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcEdJig)
public:
    enum DragStatus {
        kNoChange = -6,
        kCancel = -4,
        kOther = -3,
        kNull = -1,
        kNormal = 0,
        kKW1,
        kKW2,
        kKW3,
        kKW4,
        kKW5,
        kKW6,
        kKW7,
        kKW8,
        kKW9
    };
    enum UserInputControls {
        kNoZeroResponseAccepted = 0x40,
        kNoNegativeResponseAccepted = 0x80,
        kNullResponseAccepted = 0x100
    };

    ~AcEdJig() override;
    // Asks until an answer comes. kNormal for a point or number, kKW1 and on for the keywords in their order,
    // kNull for Enter (where accepted), kCancel for Esc; kOther when sampler() acquires nothing. A sampler
    // that gives kCancel itself ends the drag too.
    DragStatus drag();

    // What drag() asks; each is asked for anew before every prompt.
    const std::wstring& dispPrompt() const { return prompt_; }
    void setDispPrompt(const ACHAR* prompt) { prompt_ = prompt ? prompt : L""; }
    void setKeywordList(const ACHAR* keywords) { keywords_ = keywords ? keywords : L""; }
    void setUserInputControls(int controls) { controls_ = controls; }

    // Calls one of the acquire functions below and keeps the value.
    virtual DragStatus sampler() { return kNoChange; }
    // Brings the entity up to the kept value; false when nothing changed.
    virtual Adesk::Boolean update() { return false; }
    virtual AcDbEntity* entity() const { return nullptr; }
    // Adds the entity to the current space of the working drawing, which then owns it, and closes it; null
    // when that fails.
    AcDbObjectId append();

protected:
    AcEdJig() = default;
    AcEdJig(const AcEdJig&) = delete;
    AcEdJig& operator=(const AcEdJig&) = delete;

    // Inside sampler(): what the cursor or the answer gives. Points and bases are in world coordinates,
    // angles in radians from the X axis of the UCS. kNoChange, with the value set all the same, when it is
    // what the call before gave.
    DragStatus acquirePoint(AcGePoint3d& value);
    DragStatus acquirePoint(AcGePoint3d& value, const AcGePoint3d& base);
    DragStatus acquireDist(double& value);
    DragStatus acquireDist(double& value, const AcGePoint3d& base);
    DragStatus acquireAngle(double& value);
    DragStatus acquireAngle(double& value, const AcGePoint3d& base);

private:
    friend class host::JigDrag;
    std::wstring prompt_, keywords_;
    int controls_ = 0;
    host::JigDrag* drag_ = nullptr; // while it runs
};
