// AcEdJig: an entity that follows the cursor until it is placed.
#pragma once
#include "host/db/entity.h"
#include "host/db/rx.h"

class AcEdJig : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcEdJig)
public:
    enum UserInputControls {
        kNullControl = 0,
        kGovernedByOrthoMode = 1,
        kNullResponseAccepted = 2,
        kDontEchoCancelForCtrlC = 4,
        kNoNegativeResponseAccepted = 16,
        kNoZeroResponseAccepted = 32,
        kAccept3dCoordinates = 128,
        kAcceptOtherInputString = 1024,
        kAnyBlankTerminatesInput = 16384
    };
    enum DragStatus { kCancel = -4, kOther = -3, kNull = -2, kNoChange = -6, kNormal = 0, kKW1 = 1 };

    DragStatus drag();
    virtual DragStatus sampler() { return kCancel; }
    virtual Adesk::Boolean update() { return false; }
    virtual AcDbEntity* entity() const { return nullptr; }
    // Appends the jig's entity to the current space and closes it.
    AcDbObjectId append();

    void setDispPrompt(const ACHAR* format, ...);
    void setKeywordList(const ACHAR* keywords) { keywords_ = keywords ? keywords : L""; }
    void setUserInputControls(UserInputControls controls) { controls_ = controls; }
    UserInputControls userInputControls() const { return controls_; }
    DragStatus acquirePoint(AcGePoint3d& point);
    DragStatus acquirePoint(AcGePoint3d& point, const AcGePoint3d& base);
    DragStatus acquireDist(double& distance, const AcGePoint3d& base);
    DragStatus acquireAngle(double& angle, const AcGePoint3d& base);

private:
    std::wstring prompt_, keywords_;
    UserInputControls controls_ = kNullControl;
};
