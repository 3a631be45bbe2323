// Templates made ready, and entities of patterns.
#include "scatter/random/pattern.h"

#include <cmath>
#include <cwctype>

#include "core/host/entities.h"

namespace corvane::scatter {
namespace {

bool isBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n'; }

// The length of the code "%%..." at the start of the text; 0 when there is none.
size_t codeLength(std::wstring_view text) {
    if (text.size() < 3 || !text.starts_with(L"%%")) return 0;
    size_t digits = 2;
    while (digits < std::min<size_t>(text.size(), 5) && std::iswdigit(wint_t(text[digits]))) ++digits;
    return std::max<size_t>(digits, 3);
}
// Underlines and their like show nothing of their own.
bool isSwitch(std::wstring_view code) {
    return std::wstring_view(L"uUoOkK").find(code[2]) != std::wstring_view::npos;
}

std::vector<std::wstring> charactersOfLine(std::wstring_view text) {
    std::vector<std::wstring> characters;
    while (!text.empty()) {
        const size_t code = codeLength(text), length = std::max<size_t>(code, 1);
        if (code ? !isSwitch(text) : !isBlank(text[0])) characters.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return characters;
}
std::vector<std::wstring> charactersOfPlain(const std::wstring& text) {
    std::vector<std::wstring> characters;
    for (const wchar_t c : text)
        if (!isBlank(c)) characters.emplace_back(1, c);
    return characters;
}

bool setCharacter(AcDbEntity& entity, const std::wstring& character) {
    if (auto* text = AcDbText::cast(&entity))
        return text->setTextString(character.c_str()) == Acad::eOk &&
               (text->isDefaultAlignment() || text->adjustAlignment() == Acad::eOk);
    auto* text = AcDbMText::cast(&entity);
    const bool code = std::wstring_view(L"\\{}").find(character[0]) != std::wstring_view::npos;
    return text && text->setContents((code ? L"\\" + character : character).c_str()) == Acad::eOk;
}

std::unique_ptr<AcDbEntity> copyOf(const AcDbEntity& entity) {
    std::unique_ptr<AcRxObject> copy(entity.clone());
    auto* known = AcDbEntity::cast(copy.get());
    if (!known) return nullptr;
    copy.release();
    return std::unique_ptr<AcDbEntity>(known);
}

// Of entities without extents.
AcGePoint3d ownPlace(const AcDbEntity& entity) {
    if (const auto* circle = AcDbCircle::cast(&entity)) return circle->center();
    if (const auto* ellipse = AcDbEllipse::cast(&entity)) return ellipse->center();
    if (const auto* reference = AcDbBlockReference::cast(&entity)) return reference->position();
    if (const auto* text = AcDbText::cast(&entity)) return text->position();
    if (const auto* text = AcDbMText::cast(&entity)) return text->location();
    return AcGePoint3d::kOrigin;
}

} // namespace

std::vector<std::wstring> CharactersOf(const AcDbEntity& entity) {
    if (const auto* text = AcDbText::cast(&entity)) return charactersOfLine(text->textStringConst());
    if (const auto* text = AcDbMText::cast(&entity)) return charactersOfPlain(text->plainText());
    return {};
}

Prototype MakePrototype(std::unique_ptr<AcDbEntity> entity) {
    Prototype prototype;
    AcDbExtents box;
    prototype.measured = entity->getGeomExtents(box) == Acad::eOk;
    if (prototype.measured) {
        const AcGeVector3d size = box.maxPoint() - box.minPoint();
        prototype.middle = box.minPoint() + size / 2;
        prototype.width = size.x;
        prototype.height = size.y;
    } else {
        prototype.middle = ownPlace(*entity);
    }
    if (entity->transformBy(AcGeMatrix3d::kIdentity) == Acad::eOk) prototype.entity = std::move(entity);
    return prototype;
}

PatternMaker::PatternMaker(AcDbDatabase* database, const ScatterParams& params, bool byCharacters)
    : database_(database), type_(params.pattern), baseSize_(params.baseSize), scaleMin_(params.scaleMin),
      scaleMax_(params.scaleMax), sizeRandom_(params.sizeRandom) {
    if (type_ == PatternType::templates)
        for (const AcDbObjectId id : params.templates) add(id, byCharacters);
}

void PatternMaker::add(AcDbObjectId id, bool byCharacters) {
    AcDbObjectPointer<AcDbEntity> opened(id, AcDb::kForRead);
    auto copy = opened ? copyOf(*opened) : nullptr;
    if (!copy) return;
    Template made;
    if (byCharacters)
        for (const std::wstring& character : CharactersOf(*opened)) {
            auto one = copyOf(*opened);
            made.characters.push_back(one && setCharacter(*one, character) ? MakePrototype(std::move(one))
                                                                           : Prototype());
        }
    made.whole = MakePrototype(std::move(copy));
    templates_.push_back(std::move(made));
}

bool PatternMaker::empty() const { return type_ == PatternType::templates && templates_.empty(); }

Pattern PatternMaker::Choose(const AcGePoint3d& centre, Generator& random) const {
    Pattern pattern{nullptr, centre, 1, 0};
    if (sizeRandom_) pattern.scale = random.Between(scaleMin_, scaleMax_);
    if (templates_.empty()) return pattern;
    const Template& chosen = templates_[random.Index(templates_.size())];
    pattern.prototype = &chosen.whole;
    if (chosen.characters.empty()) return pattern;
    const Prototype& character = chosen.characters[random.Index(chosen.characters.size())];
    if (character.entity) pattern.prototype = &character;
    return pattern;
}

bool PatternMaker::CanMake(const Pattern& pattern) const {
    const AcGePoint3d& p = pattern.centre;
    if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) return false;
    if (type_ == PatternType::templates) return pattern.prototype && pattern.prototype->entity;
    const double size = pattern.scale * baseSize_;
    return size > 0 && std::isfinite(size);
}

PatternBox PatternMaker::BoxOf(const Pattern& pattern) const {
    const double size = pattern.scale * baseSize_;
    if (type_ == PatternType::circle) return {size, size, true};
    if (type_ == PatternType::square) {
        const double side = size * (std::abs(std::cos(pattern.angle)) + std::abs(std::sin(pattern.angle)));
        return {side, side, true};
    }
    const Prototype& p = *pattern.prototype;
    return {pattern.scale * p.width, pattern.scale * p.height, p.measured && pattern.angle == 0};
}

std::unique_ptr<AcDbEntity> PatternMaker::Make(const Pattern& pattern) const {
    if (!CanMake(pattern)) return nullptr;
    auto entity = type_ == PatternType::circle   ? makeCircle(pattern)
                  : type_ == PatternType::square ? makeSquare(pattern)
                                                 : makeCopy(pattern);
    if (entity) entity->setDatabaseDefaults(database_);
    return entity;
}

std::unique_ptr<AcDbEntity> PatternMaker::makeCircle(const Pattern& pattern) const {
    return std::make_unique<AcDbCircle>(pattern.centre, AcGeVector3d::kZAxis,
                                        pattern.scale * baseSize_ * 0.5);
}

std::unique_ptr<AcDbEntity> PatternMaker::makeSquare(const Pattern& pattern) const {
    const double half = pattern.scale * baseSize_ * 0.5;
    const double c = half * std::cos(pattern.angle), s = half * std::sin(pattern.angle);
    const AcGePoint3d& p = pattern.centre;
    auto square = std::make_unique<AcDbPolyline>();
    std::vector<AcDbPolyline::Vertex> corners;
    for (const auto& [x, y] : {std::pair(-1, -1), {1, -1}, {1, 1}, {-1, 1}})
        corners.push_back({{p.x + x * c - y * s, p.y + x * s + y * c}, 0, -1, -1});
    if (square->setVertices(std::move(corners)) != Acad::eOk) return nullptr;
    square->setElevation(p.z);
    square->setClosed(true);
    return square;
}

std::unique_ptr<AcDbEntity> PatternMaker::makeCopy(const Pattern& pattern) const {
    auto copy = copyOf(*pattern.prototype->entity);
    AcGeMatrix3d matrix = AcGeMatrix3d::translation(pattern.centre - pattern.prototype->middle);
    if (pattern.scale != 1) matrix.preMultBy(AcGeMatrix3d::scaling(pattern.scale, pattern.centre));
    if (pattern.angle != 0)
        matrix.preMultBy(AcGeMatrix3d::rotation(pattern.angle, AcGeVector3d::kZAxis, pattern.centre));
    return copy && copy->transformBy(matrix) == Acad::eOk ? std::move(copy) : nullptr;
}

double PatternMaker::LargestDiagonal() const {
    double largest = 0;
    for (const Template& one : templates_)
        largest = std::max(largest, std::hypot(one.whole.width, one.whole.height));
    return largest;
}

} // namespace corvane::scatter
