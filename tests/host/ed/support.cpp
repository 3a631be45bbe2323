// The document that tests of the editor work on.
#include "tests/host/ed/support.h"

#include <cstdlib>
#include <filesystem>

#include "host/dxf/dxf.h"
#include "host/ed/startup.h"
#include "host/os/registry.h"

namespace edtest {

const std::string& settingsFolder() {
    static const std::string folder = [] {
        std::string name = (std::filesystem::temp_directory_path() / "corvane-ed-XXXXXX").string();
        return std::string(mkdtemp(name.data()));
    }();
    static const auto removed = std::atexit([] { std::filesystem::remove_all(settingsFolder()); });
    (void)removed;
    return folder;
}

Bench::Bench() {
    host::setUserRegistry(settingsFolder() + "/settings.ini");
    host::startHost();
    document_ = acDocManagerPtr()->add(std::make_unique<AcDbDatabase>(true));
    database().undoLog().clear();
    database().undoLog().markSaved();
}
Bench::~Bench() { acDocManagerPtr()->close(document_); }

std::string Bench::run(const std::wstring& script) {
    return answer(script, [&] { outcome = host::commandLoop(); });
}

AcDbObjectId Bench::add(std::unique_ptr<AcDbEntity> entity) {
    entity->setDatabaseDefaults(&database());
    AcDbObjectPointer<AcDbBlockTableRecord> space(database().currentSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(Acad::eOk, space->appendAcDbEntity(id, entity.get()));
    entity.release()->close();
    return id;
}
AcDbObjectId Bench::addLine(const AcGePoint3d& from, const AcGePoint3d& to) {
    return add(std::make_unique<AcDbLine>(from, to));
}
AcDbObjectId Bench::addCircle(const AcGePoint3d& center, double radius) {
    return add(std::make_unique<AcDbCircle>(center, AcGeVector3d::kZAxis, radius));
}
AcDbObjectId Bench::addLayer(const wchar_t* name) {
    AcDbObjectPointer<AcDbLayerTable> table(database().layerTableId(), AcDb::kForWrite);
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    layer->setName(name);
    AcDbObjectId id;
    EXPECT_EQ(Acad::eOk, table->add(id, layer.get()));
    layer.release()->close();
    return id;
}
void Bench::putOnLayer(AcDbObjectId id, const wchar_t* layer) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    EXPECT_EQ(Acad::eOk, entity->setLayer(layer));
}

std::vector<AcDbObjectId> Bench::entities() const {
    std::vector<AcDbObjectId> live;
    AcDbObjectPointer<AcDbBlockTableRecord> space(database().currentSpaceId(), AcDb::kForRead);
    for (const AcDbObjectId id : space->entities())
        if (id.isValid() && !id.isErased()) live.push_back(id);
    return live;
}
std::string Bench::bytes() const { return host::drawingBytes(database()); }

} // namespace edtest
