// Classes are found by their names in files, vertices by the polyline they belong to.
#include "host/dxf/factory.h"

#include "host/db/kept.h"
#include "host/db/symboltable.h"

namespace host {
namespace {

std::unique_ptr<AcDbObject> made(AcRxClass* cls) {
    return std::unique_ptr<AcDbObject>(cls ? AcDbObject::cast(cls->create()) : nullptr);
}

bool isEntity(const AcRxClass* cls) { return cls && cls->isDerivedFrom(AcDbEntity::desc()); }

std::unique_ptr<AcDbObject> ofClass(const wchar_t* className, std::string_view name) {
    if (auto object = made(acrxFindAcRxClass(className))) return object;
    return std::make_unique<KeptEntity>(std::string(name));
}

} // namespace

// Objects of modules' classes are kept at first; the database brings them to life afterwards, when
// everything they may ask for is there.
AcRxClass* EntityFactory::classOf(std::string_view name) {
    if (const auto known = classes_.find(name); known != classes_.end()) return known->second;
    AcRxClass* cls = findClassByDxfName(name);
    if (cls && cls->isCustom()) cls = nullptr;
    classes_.emplace(name, cls);
    return cls;
}

std::unique_ptr<AcDbObject> EntityFactory::entity(std::string_view name) {
    AcRxClass* cls = classOf(name);
    if (isEntity(cls))
        if (auto object = made(cls)) return object;
    return std::make_unique<KeptEntity>(std::string(name));
}

std::unique_ptr<AcDbObject> EntityFactory::object(std::string_view name) {
    AcRxClass* cls = classOf(name);
    const bool fits = cls && !isEntity(cls) && !cls->isDerivedFrom(AcDbSymbolTable::desc()) &&
                      !cls->isDerivedFrom(AcDbSymbolTableRecord::desc());
    if (fits)
        if (auto object = made(cls)) return object;
    return std::make_unique<KeptObject>(std::string(name));
}

std::unique_ptr<AcDbObject> EntityFactory::polyline(const PolylineTraits& traits) {
    constexpr int kIs3d = 8, kMesh = 16, kPolyface = 64;
    if (traits.marker == "AcDbPolyFaceMesh" || (traits.flags & kPolyface))
        return ofClass(L"AcDbPolyFaceMesh", "POLYLINE");
    if (traits.marker == "AcDbPolygonMesh" || (traits.flags & kMesh))
        return ofClass(L"AcDbPolygonMesh", "POLYLINE");
    const bool inSpace = traits.marker == "AcDb3dPolyline" || (traits.flags & kIs3d);
    return ofClass(inSpace ? L"AcDb3dPolyline" : L"AcDb2dPolyline", "POLYLINE");
}

std::unique_ptr<AcDbObject> EntityFactory::vertex(const AcDbObject& polyline,
                                                  const std::function<PolylineTraits()>& traits) {
    constexpr int kMeshVertex = 64, kFace = 128;
    const std::wstring name = polyline.isA()->name();
    if (name == L"AcDb2dPolyline") return ofClass(L"AcDb2dVertex", "VERTEX");
    if (name == L"AcDb3dPolyline") return ofClass(L"AcDb3dPolylineVertex", "VERTEX");
    if (name == L"AcDbPolygonMesh") return ofClass(L"AcDbPolygonMeshVertex", "VERTEX");
    if (name != L"AcDbPolyFaceMesh") return std::make_unique<KeptEntity>("VERTEX");
    const PolylineTraits own = traits();
    const bool face = own.marker == "AcDbFaceRecord" || (own.flags & (kFace | kMeshVertex)) == kFace;
    return ofClass(face ? L"AcDbFaceRecord" : L"AcDbPolyFaceMeshVertex", "VERTEX");
}

} // namespace host
