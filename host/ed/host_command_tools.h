// What the host's own commands share: their handlers' names, the objects they select, the plane they
// draw in, and how they write numbers. Not for features.
#pragma once
#include <functional>
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
void rotateCommand();
void scaleCommand();
void mirrorCommand();
void stretchCommand();
void explodeCommand();
void offsetCommand();
void polylineEditCommand();
void ellipseCommand();
void splineCommand();
void blockCommand();
void insertCommand();
void purgeCommand();
void clipCommand();
void metafileOutCommand();
void metafileInCommand();
void ucsCommand();
void planCommand();
void viewCommand();
void newCommand();
void openCommand();
void closeCommand();
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
// The matrix that an object is to be moved by.
using MatrixFor = std::function<AcGeMatrix3d(const AcDbEntity&)>;
MatrixFor sameFor(const AcGeMatrix3d& matrix);
// Of the kinds that a matrix can't move, one line tells how many.
void tellUnmoved(size_t count);
// From a base point to a second one, or the coordinates of the first when Enter follows it.
std::optional<AcGeVector3d> askDisplacement(); // in world coordinates
void transformAll(const std::vector<AcDbObjectId>& ids, const MatrixFor& matrix);
// Moved copies in the current space, in the order of their sources.
std::vector<AcDbObjectId> copyAll(const std::vector<AcDbObjectId>& ids, const MatrixFor& matrix);
void eraseAll(const std::vector<AcDbObjectId>& ids);
// Puts the entity into the current space with the drawing's current layer, colour and the like.
AcDbObjectId addToDrawing(std::unique_ptr<AcDbEntity> entity);
// Puts the entity, as it is, into the block or space that holds `beside`.
AcDbObjectId addBeside(std::unique_ptr<AcDbEntity> entity, AcDbObjectId beside);
// Yes or no; `byDefault` for Enter and nothing for Esc.
std::optional<bool> askYesNo(const wchar_t* prompt, bool byDefault);

// The XY plane of the UCS as planar entities see it: their own coordinates have its normal.
struct DrawingPlane {
    AcGeVector3d normal;
    AcGeMatrix3d fromWorld;
    DrawingPlane();
    AcGePoint3d own(const AcGePoint3d& ucs) const; // of the entity
    double ownAngle(double ucsAngle) const;        // radians
};

// Where a block is put, as the user tells it.
struct Placing {
    AcGePoint3d point; // UCS
    double x = 1, y = 1, angle = 0;
};
std::optional<Placing> askPlacing(); // nothing for Esc
// A reference to the block in the current space; null when that can't take it.
AcDbObjectId placeBlock(AcDbObjectId block, const Placing& placing);

// With as many decimals as LUPREC says.
std::wstring shown(double value);
std::wstring shown(const AcGePoint3d& point);

} // namespace host
