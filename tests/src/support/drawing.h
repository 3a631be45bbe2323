// A drawing to try commands on: an empty document, scripts run on it, and what they leave.
#pragma once
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "core/command_table.h"
#include "core/host/editor.h"
#include "core/host/entities.h"
#include "host/dxf/dxf.h"
#include "host/ed/interpreter.h"
#include "host/ed/script.h"
#include "host/ed/startup.h"
#include "host/os/locale.h"
#include "host/os/registry.h"

namespace support {

class Drawing {
public:
    Drawing() {
        // Settings of tests live and die with the process, away from the user's.
        static const std::string home = [] {
            std::string name = (std::filesystem::temp_directory_path() / "corvane-tests-XXXXXX").string();
            return std::string(mkdtemp(name.data()));
        }();
        host::setUserRegistry(home + "/settings.ini");
        host::setRequestedLanguage("zh");
        host::startHost();
        static const bool registered = [] {
            return host::setFrontEnd(nullptr), corvane::RegisterCommands(), true;
        }();
        (void)registered;
        document_ = acDocManagerPtr()->add(std::make_unique<AcDbDatabase>(true));
    }
    ~Drawing() { acDocManagerPtr()->close(document_); }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    AcDbDatabase& database() const { return *document_->database(); }

    // Runs the script; gives the transcript.
    std::string run(const std::wstring& script) {
        std::string transcript;
        host::ScriptFrontEnd frontEnd(script, [&](const std::string& text) { transcript += text; });
        host::setFrontEnd(&frontEnd);
        outcome = host::commandLoop();
        ranDry = frontEnd.ranDry();
        host::setFrontEnd(nullptr);
        return transcript;
    }

    template <class Entity> AcDbObjectId add(std::unique_ptr<Entity> entity) {
        entity->setDatabaseDefaults(&database());
        AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(Acad::eOk, space->appendAcDbEntity(id, entity.get()));
        entity.release()->close();
        return id;
    }
    AcDbObjectId addPolyline(const std::vector<AcGePoint2d>& points, bool closed = false) {
        auto polyline = std::make_unique<AcDbPolyline>();
        for (const AcGePoint2d& p : points) polyline->addVertexAt(polyline->numVerts(), p);
        polyline->setClosed(closed);
        return add(std::move(polyline));
    }
    AcDbObjectId add3dPolyline(const AcGePoint3dArray& points, bool closed = false) {
        return add(std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, points, closed));
    }
    AcDbObjectId add2dPolyline(const AcGePoint3dArray& points, AcDb::Poly2dType type = AcDb::k2dSimplePoly,
                               bool closed = false) {
        return add(std::make_unique<AcDb2dPolyline>(type, points, 0.0, closed));
    }

    // The entities of model space that aren't erased.
    std::vector<AcDbObjectId> entities() const {
        std::vector<AcDbObjectId> live;
        AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForRead);
        for (const AcDbObjectId id : space->entities())
            if (!id.isErased()) live.push_back(id);
        return live;
    }
    // The only entity, as this class; fails the test when there are more or it is another kind.
    template <class Entity> AcDbObjectId only() const {
        const auto live = entities();
        EXPECT_EQ(1u, live.size());
        EXPECT_TRUE(!live.empty() && live[0].objectClass()->isDerivedFrom(Entity::desc()));
        return live.empty() ? AcDbObjectId() : live[0];
    }
    std::string bytes() const { return host::drawingBytes(database()); }

    host::LoopOutcome outcome;
    bool ranDry = false;

private:
    AcApDocument* document_;
};

} // namespace support
