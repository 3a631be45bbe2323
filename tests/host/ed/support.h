// A document to try the editor on: scripts that run commands in it or answer prompts, and what they
// leave. Settings live in a folder of their own.
#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/db/database.h"
#include "host/ed/document.h"
#include "host/ed/editor.h"
#include "host/ed/interpreter.h"
#include "host/ed/script.h"
#include "host/ed/selection.h"
#include "host/ent/conics.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"

namespace edtest {

// Away from the user's settings; the same folder in the whole process.
const std::string& settingsFolder();

class Bench {
public:
    Bench();
    ~Bench();
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    AcDbDatabase& database() const { return *document_->database(); }
    AcApDocument* document() const { return document_; }

    // Runs commands; the transcript.
    std::string run(const std::wstring& script);
    // Calls `ask` with the script's answers for its prompts; the transcript.
    template <class Ask> std::string answer(const std::wstring& script, Ask ask) {
        std::string transcript;
        host::ScriptFrontEnd frontEnd(script, [&](const std::string& text) { transcript += text; });
        host::setFrontEnd(&frontEnd);
        ask();
        ranDry = frontEnd.ranDry();
        unread = frontEnd.unreadLine().has_value();
        host::setFrontEnd(nullptr);
        return transcript;
    }

    AcDbObjectId add(std::unique_ptr<AcDbEntity> entity);
    AcDbObjectId addLine(const AcGePoint3d& from, const AcGePoint3d& to);
    AcDbObjectId addCircle(const AcGePoint3d& center, double radius);
    AcDbObjectId addLayer(const wchar_t* name);
    void putOnLayer(AcDbObjectId entity, const wchar_t* layer);
    // Those of the current space that aren't erased, in drawing order.
    std::vector<AcDbObjectId> entities() const;
    // The last of them as this class, open for read.
    template <class Entity> AcDbObjectPointer<Entity> last() const {
        return AcDbObjectPointer<Entity>(entities().empty() ? AcDbObjectId() : entities().back(),
                                         AcDb::kForRead);
    }
    std::string bytes() const;

    host::LoopOutcome outcome;
    bool ranDry = false, unread = false;

private:
    AcApDocument* document_;
};

inline testing::AssertionResult near(const AcGePoint3d& a, const AcGePoint3d& b, double within = 1e-9) {
    if (a.distanceTo(b) <= within) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "(" << a.x << ", " << a.y << ", " << a.z << ") is not (" << b.x
                                       << ", " << b.y << ", " << b.z << ")";
}

} // namespace edtest
