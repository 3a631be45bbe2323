// Runtime classes: every host object knows its class, classes form a tree and are found by
// name. Features add classes of their own while the program runs. Also the registry of
// named services (the command stack, the dynamic linker).
#pragma once
#include <string_view>

#include "host/db/adesk.h"

class AcRxClass;
class AcRxService;

class AcRxObject {
public:
    virtual ~AcRxObject();
    virtual AcRxClass* isA() const;
    // True when this object's class is `cls` or derived from it.
    bool isKindOf(const AcRxClass* cls) const;
    virtual AcRxObject* clone() const;
    static AcRxClass* desc();
    static AcRxObject* cast(const AcRxObject* o) { return const_cast<AcRxObject*>(o); }
};

using AppNameChangeFuncPtr = void (*)(const AcRxClass*, ACHAR*&, int);
using AcRxConstructor = AcRxObject* (*)();

// One runtime class. Built-in classes live for the whole run; those made by newAcRxClass can be
// taken away again with deleteAcRxClass.
class AcRxClass : public AcRxObject {
public:
    AcRxClass* isA() const override;
    static AcRxClass* desc();
    static AcRxClass* cast(const AcRxObject* o);

    const ACHAR* name() const { return name_.c_str(); }
    // The name by which drawing files know the class; empty when objects of it are never filed.
    const ACHAR* dxfName() const { return dxfName_.c_str(); }
    const ACHAR* appName() const { return appName_.c_str(); }
    AcRxClass* myParent() const { return parent_; }
    int proxyFlags() const { return proxyFlags_; }
    void getClassVersion(int& dwgVersion, int& maintenanceVersion) const;
    bool isDerivedFrom(const AcRxClass* other) const;
    // A fresh object of the class, or null for an abstract class.
    AcRxObject* create() const { return constructor_ ? constructor_() : nullptr; }
    // True for classes that a module registered, whose data goes through the public filers.
    bool isCustom() const { return custom_; }

    AcRxClass(const ACHAR* name, const ACHAR* dxfName, AcRxClass* parent, AcRxConstructor constructor,
              bool custom = false);

private:
    friend AcRxClass* newAcRxClass(const ACHAR*, const ACHAR*, int, int, int, AcRxConstructor, const ACHAR*,
                                   const ACHAR*);
    std::wstring name_, dxfName_, appName_;
    AcRxClass* parent_;
    AcRxConstructor constructor_;
    int dwgVersion_ = 33, maintenanceVersion_ = 0, proxyFlags_ = 0;
    bool custom_;
};

// Registers a class under `name` below the class named `parent`. Returns the class; the one that
// is already there when the name is taken; null when the parent is unknown.
AcRxClass* newAcRxClass(const ACHAR* name, const ACHAR* parent, int dwgVersion = 33,
                        int maintenanceVersion = 0, int proxyFlags = 0, AcRxConstructor constructor = nullptr,
                        const ACHAR* dxfName = nullptr, const ACHAR* appName = nullptr);
// Takes a registered class away. Objects of it are kept in their drawings as data.
void deleteAcRxClass(AcRxClass* cls);
// The class of that name, or null.
AcRxClass* acrxFindAcRxClass(const ACHAR* name);
// Makes the classes registered since the last call known to all open drawings: objects that were
// kept for want of their class come to life. Returns the number of classes.
int acrxBuildClassHierarchy();

namespace host {
// The class that files objects under this DXF name, or null.
AcRxClass* findClassByDxfName(std::string_view dxfName);
// Called after every acrxBuildClassHierarchy; the database listens here to revive kept objects.
void setClassHierarchyListener(void (*listener)());
// Grows with every registration and removal of a class.
unsigned classGeneration();
} // namespace host

// Named services, under the names in the ACRX_* constants.
class AcRxDictionary : public AcRxObject {
public:
    virtual AcRxObject* at(const ACHAR* key) const = 0;
    virtual AcRxObject* atPut(const ACHAR* key, AcRxObject* object) = 0;
    virtual AcRxObject* remove(const ACHAR* key) = 0;
};
AcRxDictionary* acrxSysRegistry();
#define ACRX_COMMAND_DOCK L"AcEdCommandStack"
#define ACRX_DYNAMIC_LINKER L"DynamicLinker"

// In a class body: runtime class and cast.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                                          \
public:                                                                                                      \
    AcRxClass* isA() const override;                                                                         \
    static AcRxClass* gpDesc;                                                                                \
    static AcRxClass* desc();                                                                                \
    static CLASS* cast(const AcRxObject* o) {                                                                \
        return o && o->isKindOf(CLASS::desc()) ? const_cast<CLASS*>(static_cast<const CLASS*>(o)) : nullptr; \
    }

// In one source file, for a class of a module that is registered by CLASS::rxInit().
#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS, PARENT)                                                           \
    AcRxClass* CLASS::gpDesc = nullptr;                                                                      \
    AcRxClass* CLASS::desc() { return gpDesc; }                                                              \
    AcRxClass* CLASS::isA() const { return CLASS::desc(); }

// In one source file of the host: a built-in class. DXF is its name in drawing files, or L"".
#define HOST_DEFINE_CLASS(CLASS, PARENT, DXF)                                                                \
    AcRxClass* CLASS::gpDesc = nullptr;                                                                      \
    AcRxClass* CLASS::desc() {                                                                               \
        static AcRxClass cls(L"" #CLASS, DXF, PARENT::desc(),                                                \
                             [] { return static_cast<AcRxObject*>(new CLASS); });                            \
        return gpDesc = &cls;                                                                                \
    }                                                                                                        \
    AcRxClass* CLASS::isA() const { return CLASS::desc(); }
#define HOST_DEFINE_ABSTRACT_CLASS(CLASS, PARENT)                                                            \
    AcRxClass* CLASS::gpDesc = nullptr;                                                                      \
    AcRxClass* CLASS::desc() {                                                                               \
        static AcRxClass cls(L"" #CLASS, L"", PARENT::desc(), nullptr);                                      \
        return gpDesc = &cls;                                                                                \
    }                                                                                                        \
    AcRxClass* CLASS::isA() const { return CLASS::desc(); }
