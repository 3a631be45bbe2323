// Patterns: circles, squares, copies of templates or of the characters of their texts. A pattern is chosen
// and measured first, as numbers; it becomes an entity when it is kept.
#pragma once
#include <string>
#include <vector>

#include "core/editable_block.h"
#include "scatter/random/generator.h"
#include "scatter/random/params.h"

namespace corvane::scatter {

// The characters that a text template is scattered by: those that the text shows, blanks and line ends left
// out. Codes such as "%%c" are one character each; none for objects that are no texts.
std::vector<std::wstring> CharactersOf(const AcDbEntity& entity);

// An entity that copies are made of, and where its middle is.
struct Prototype {
    std::unique_ptr<AcDbEntity> entity; // null when it can't be moved
    AcGePoint3d middle;
    bool measured = false; // it has extents
    double width = 0, height = 0;
};
Prototype MakePrototype(std::unique_ptr<AcDbEntity> entity);

// A pattern as numbers. `prototype` is null for circles, squares, and where there is nothing to copy.
struct Pattern {
    const Prototype* prototype = nullptr;
    AcGePoint3d centre;
    double scale = 1;
    double angle = 0; // radians about Z, at the centre
};

struct PatternBox {
    double width = 0, height = 0;
    bool known = false;
};

class PatternMaker {
public:
    // `byCharacters`: texts are scattered character by character. Templates that can't be opened or copied
    // give nothing when they are drawn.
    PatternMaker(AcDbDatabase* database, const ScatterParams& params, bool byCharacters);

    bool empty() const; // no template to make patterns of
    // Draws the scale, then the template, then the character, each only where there is a choice to make.
    Pattern Choose(const AcGePoint3d& centre, Generator& random) const;
    // False for sizes of 0 or less, sizes and places beyond all numbers, and templates that can't be copied.
    bool CanMake(const Pattern& pattern) const;
    // Extents without making the entity, where that can be told exactly.
    PatternBox BoxOf(const Pattern& pattern) const;
    // With the drawing's defaults; null when the entity can't be transformed so.
    std::unique_ptr<AcDbEntity> Make(const Pattern& pattern) const;
    // The diagonal of the largest template's extents.
    double LargestDiagonal() const;

private:
    struct Template {
        Prototype whole;
        std::vector<Prototype> characters;
    };
    void add(AcDbObjectId id, bool byCharacters);
    std::unique_ptr<AcDbEntity> makeCircle(const Pattern& pattern) const;
    std::unique_ptr<AcDbEntity> makeSquare(const Pattern& pattern) const;
    std::unique_ptr<AcDbEntity> makeCopy(const Pattern& pattern) const;

    AcDbDatabase* database_;
    PatternType type_;
    double baseSize_, scaleMin_, scaleMax_;
    bool sizeRandom_;
    std::vector<Template> templates_;
};

} // namespace corvane::scatter
