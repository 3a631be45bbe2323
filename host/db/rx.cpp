// Runtime classes and the registry of services. Built-in classes come to be at their first use;
// the database makes sure that its own and those under them are there (database_classes.cpp).
#include "host/db/rx.h"

#include <algorithm>
#include <map>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/os/text.h"

namespace {

struct ClassRegistry {
    std::unordered_map<std::wstring, AcRxClass*> byName;
    std::unordered_map<std::string, AcRxClass*> byDxfName;
    std::vector<std::unique_ptr<AcRxClass>> custom;
    // Classes taken away: objects of theirs may still stand in somebody's hands.
    std::vector<std::unique_ptr<AcRxClass>> retired;
    void (*listener)() = nullptr;
    unsigned generation = 0;

    void enter(AcRxClass* cls) {
        byName.emplace(cls->name(), cls);
        if (*cls->dxfName()) byDxfName.emplace(host::utf8(cls->dxfName()), cls);
        ++generation;
    }
};

ClassRegistry& classes() {
    static ClassRegistry registry;
    return registry;
}

class ServiceDictionary final : public AcRxDictionary {
public:
    AcRxObject* at(const ACHAR* key) const override {
        const auto found = key ? services_.find(key) : services_.end();
        return found == services_.end() ? nullptr : found->second;
    }
    AcRxObject* atPut(const ACHAR* key, AcRxObject* object) override {
        return key ? std::exchange(services_[key], object) : nullptr;
    }
    AcRxObject* remove(const ACHAR* key) override {
        AcRxObject* former = at(key);
        if (key) services_.erase(key);
        return former;
    }

private:
    std::map<std::wstring, AcRxObject*> services_;
};

} // namespace

AcRxObject::~AcRxObject() = default;
AcRxClass* AcRxObject::isA() const { return desc(); }
AcRxObject* AcRxObject::clone() const { return nullptr; }
bool AcRxObject::isKindOf(const AcRxClass* cls) const {
    const AcRxClass* own = isA();
    return own && own->isDerivedFrom(cls);
}
AcRxClass* AcRxObject::desc() {
    static AcRxClass cls(L"AcRxObject", L"", nullptr, nullptr);
    return &cls;
}

// A class that is named in files but can't make objects stands for kept data: it is nobody's to find.
AcRxClass::AcRxClass(const ACHAR* name, const ACHAR* dxfName, AcRxClass* parent, AcRxConstructor constructor,
                     bool custom)
    : name_(name), dxfName_(dxfName ? dxfName : L""), parent_(parent), constructor_(constructor),
      custom_(custom) {
    if (!custom_ && (constructor_ || dxfName_.empty())) classes().enter(this);
}

AcRxClass* AcRxClass::desc() {
    static AcRxClass cls(L"AcRxClass", L"", AcRxObject::desc(), nullptr);
    return &cls;
}
AcRxClass* AcRxClass::isA() const { return desc(); }
AcRxClass* AcRxClass::cast(const AcRxObject* o) {
    return o && o->isKindOf(desc()) ? const_cast<AcRxClass*>(static_cast<const AcRxClass*>(o)) : nullptr;
}

void AcRxClass::getClassVersion(int& dwgVersion, int& maintenanceVersion) const {
    dwgVersion = dwgVersion_;
    maintenanceVersion = maintenanceVersion_;
}

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
    for (const AcRxClass* cls = this; cls; cls = cls->parent_)
        if (cls == other) return other != nullptr;
    return false;
}

AcRxClass* newAcRxClass(const ACHAR* name, const ACHAR* parent, int dwgVersion, int maintenanceVersion,
                        int proxyFlags, AcRxConstructor constructor, const ACHAR* dxfName,
                        const ACHAR* appName) {
    if (!name || !*name || !parent) return nullptr;
    if (AcRxClass* present = acrxFindAcRxClass(name)) return present;
    AcRxClass* base = acrxFindAcRxClass(parent);
    if (!base) return nullptr;
    auto cls = std::make_unique<AcRxClass>(name, dxfName, base, constructor, true);
    cls->dwgVersion_ = dwgVersion;
    cls->maintenanceVersion_ = maintenanceVersion;
    cls->proxyFlags_ = proxyFlags;
    cls->appName_ = appName ? appName : L"";
    classes().enter(cls.get());
    return classes().custom.emplace_back(std::move(cls)).get();
}

void deleteAcRxClass(AcRxClass* cls) {
    auto& registry = classes();
    const auto mine = std::find_if(registry.custom.begin(), registry.custom.end(),
                                   [&](const auto& own) { return own.get() == cls; });
    if (mine == registry.custom.end()) return;
    registry.byName.erase(cls->name());
    if (const auto filed = registry.byDxfName.find(host::utf8(cls->dxfName()));
        filed != registry.byDxfName.end() && filed->second == cls)
        registry.byDxfName.erase(filed);
    ++registry.generation;
    registry.retired.push_back(std::move(*mine));
    registry.custom.erase(mine);
    // Now, not at the next building of the tree: the module's code may be gone by then.
    if (registry.listener) registry.listener();
}

AcRxClass* acrxFindAcRxClass(const ACHAR* name) {
    const auto found = name ? classes().byName.find(name) : classes().byName.end();
    return found == classes().byName.end() ? nullptr : found->second;
}

int acrxBuildClassHierarchy() {
    if (classes().listener) classes().listener();
    return int(classes().byName.size());
}

AcRxDictionary* acrxSysRegistry() {
    static ServiceDictionary registry;
    return &registry;
}

namespace host {
AcRxClass* findClassByDxfName(std::string_view dxfName) {
    const auto found = classes().byDxfName.find(std::string(dxfName));
    return found == classes().byDxfName.end() ? nullptr : found->second;
}
void setClassHierarchyListener(void (*listener)()) { classes().listener = listener; }
unsigned classGeneration() { return classes().generation; }
} // namespace host
