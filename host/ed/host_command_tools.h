// What the host's own commands share: their handlers' names, the objects they select, the plane they
// draw in, and how they write numbers. Not for features.
#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/db/database.h"
#include "host/ed/editor.h"
#include "host/ge/matrix3d.h"

namespace host {

void undoCommand();
void uCommand();
void redoCommand();
void setVariableCommand();
void helpCommand();
void lineCommand();
void polylineCommand();
void circleCommand();
void arcCommand();
void pointCommand();
void textCommand();
void eraseCommand();
void moveCommand();
void copyCommand();
void listCommand();
void zoomCommand();
void layerCommand();
void quickSaveCommand();
void saveAsCommand();
void quitCommand();

AcDbDatabase& drawing();

// A point in UCS coordinates; what else came instead of one is in the status.
struct AskedPoint {
    int status = RTNONE;
    AcGePoint3d point;
    explicit operator bool() const { return status == RTNORM; }
};
AskedPoint askPoint(const wchar_t* prompt, const AcGePoint3d* base = nullptr,
                    const wchar_t* keywords = nullptr, int bits = 0);
// The keyword behind the last RTKWORD.
std::wstring chosenKeyword();

// The objects the user selects; those on locked layers are left out, and it is told how many. Empty when
// nothing was selected.
std::vector<AcDbObjectId> askObjects(bool forChange);
// Puts the entity into the current space with the drawing's current layer, colour and the like.
AcDbObjectId addToDrawing(std::unique_ptr<AcDbEntity> entity);

// The XY plane of the UCS as planar entities see it: their own coordinates have its normal.
struct DrawingPlane {
    AcGeVector3d normal;
    AcGeMatrix3d fromWorld;
    DrawingPlane();
    AcGePoint3d own(const AcGePoint3d& ucs) const; // of the entity
    double ownAngle(double ucsAngle) const;        // radians
};

// With as many decimals as LUPREC says.
std::wstring shown(double value);
std::wstring shown(const AcGePoint3d& point);

} // namespace host
