// Reactors that aren't objects of the drawing: they listen while the program runs.
#pragma once
#include "host/db/object.h"

// Hears of the objects it was added to. The moments: openedForModify before the first change
// after an open for write, the others at the close that ends it, goodbye when the object leaves memory.
class AcDbObjectReactor : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcDbObjectReactor)
public:
    virtual void cancelled(const AcDbObject*) {}
    virtual void copied(const AcDbObject*, const AcDbObject*) {}
    virtual void erased(const AcDbObject*, Adesk::Boolean = true) {}
    virtual void goodbye(const AcDbObject*) {}
    virtual void openedForModify(const AcDbObject*) {}
    virtual void modified(const AcDbObject*) {}
    virtual void subObjModified(const AcDbObject*, const AcDbObject*) {}
    virtual void modifyUndone(const AcDbObject*) {}
    virtual void modifiedXData(const AcDbObject*) {}
    virtual void unappended(const AcDbObject*) {}
    virtual void reappended(const AcDbObject*) {}
    virtual void objectClosed(const AcDbObjectId) {}
};

// Hears of all objects of a drawing.
class AcDbDatabaseReactor : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcDbDatabaseReactor)
public:
    virtual void objectAppended(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectUnAppended(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectReAppended(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectOpenedForModify(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectModified(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectErased(const AcDbDatabase*, const AcDbObject*, Adesk::Boolean = true) {}
    virtual void headerSysVarWillChange(const AcDbDatabase*, const ACHAR*) {}
    virtual void headerSysVarChanged(const AcDbDatabase*, const ACHAR*, Adesk::Boolean) {}
    virtual void goodbye(const AcDbDatabase*) {}
};
