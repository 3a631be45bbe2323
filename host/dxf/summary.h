// What is in a drawing, in numbers: for people who want to know before they open it.
#pragma once
#include <string>
#include <vector>

#include "host/db/database.h"

namespace host {

struct DrawingSummary {
    struct Count {
        std::string name;
        long count = 0;
    };
    struct Block {
        std::string name;
        long entities = 0, references = 0;
    };
    AcDb::AcDbDwgVersion version = AcDb::kDHL_Unknown; // of the file it came from
    int units = 0;                                     // $INSUNITS
    std::string unitName;                              // "millimetres"; "none" for 0
    long entities = 0;               // in spaces and blocks, with attributes, without vertices
    std::vector<Count> kinds;        // by name in files, sorted
    std::vector<Count> layers;       // every layer of the drawing, sorted
    std::vector<Block> blocks;       // without the spaces, sorted
    std::vector<Count> applications; // objects that carry their xdata, sorted
    bool hasExtents = false;
    AcGePoint3d minimum, maximum; // of model space, in drawing units
};

DrawingSummary summarise(AcDbDatabase& database);

} // namespace host
