// Small drawings as text, and what the tests ask of a drawing.
#pragma once
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "host/db/database.h"
#include "host/dxf/dxf.h"

namespace dxftest {

using Codes = std::vector<std::pair<int, std::string>>;

inline std::string text(const Codes& groups, const std::string& lineEnd = "\n") {
    std::string out;
    for (const auto& [code, value] : groups) out += std::to_string(code) + lineEnd + value + lineEnd;
    return out;
}

// A whole file with these groups in the section ENTITIES.
inline std::string drawing(const Codes& entities, const std::string& version = "AC1015") {
    Codes all = {{0, "SECTION"}, {2, "HEADER"},  {9, "$ACADVER"}, {1, version},
                 {0, "ENDSEC"},  {0, "SECTION"}, {2, "ENTITIES"}};
    all.insert(all.end(), entities.begin(), entities.end());
    all.insert(all.end(), {{0, "ENDSEC"}, {0, "EOF"}});
    return text(all);
}

inline Codes manyLines(int count) {
    Codes groups;
    for (int i = 0; i < count; ++i)
        groups.insert(groups.end(), {{0, "LINE"}, {8, "0"}, {10, std::to_string(i)}});
    return groups;
}

inline std::filesystem::path drawingsFolder() {
    return std::filesystem::path(CORVANE_TEST_DATA) / "drawings";
}

inline std::vector<std::filesystem::path> sampleDrawings() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(drawingsFolder()))
        if (entry.path().extension() == ".dxf") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

inline std::string contents(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// A drawing read from bytes.
struct Read {
    AcDbDatabase database{false};
    host::ReadReport report;
    explicit Read(const std::string& bytes, const host::ReadOptions& options = {})
        : report(host::readDrawingBytes(bytes, "test.dxf", database, options)) {}

    std::vector<const AcDbEntity*> entities(AcDbObjectId space) const {
        std::vector<const AcDbEntity*> found;
        const auto* block = AcDbBlockTableRecord::cast(space.isNull() ? nullptr : space.cell()->object);
        if (!block) return found;
        for (AcDbObjectId id : block->entities()) found.push_back(AcDbEntity::cast(id.cell()->object));
        return found;
    }
    std::vector<const AcDbEntity*> model() const { return entities(database.modelSpaceId()); }
    bool noted(const std::string& part) const {
        for (const auto& note : report.notes)
            if (note.sentence.find(part) != std::string::npos) return true;
        return false;
    }
};

} // namespace dxftest
