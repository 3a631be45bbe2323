// Entities of unknown kinds show the picture that stands beside them: drawing calls in binary form.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <numbers>

#include "host/db/database.h"
#include "host/db/kept.h"
#include "host/ent/register.h"

namespace {

using std::numbers::pi;

// Builds a picture, record by record.
class Drawing {
public:
    Drawing& record(std::int32_t call, const std::string& data) {
        records_ += word(std::int32_t(data.size()) + 8) + word(call) + data;
        return *this;
    }
    std::string bytes() const { return word(std::int32_t(records_.size()) + 8) + word(1) + records_; }

    static std::string word(std::int32_t value) { return little(std::uint32_t(value), 4); }
    static std::string reals(std::initializer_list<double> values) {
        std::string out;
        for (double value : values) out += little(std::bit_cast<std::uint64_t>(value), 8);
        return out;
    }
    static std::string polyline(std::initializer_list<double> values) {
        return word(std::int32_t(values.size() / 3)) + reals(values);
    }

private:
    static std::string little(std::uint64_t value, int size) {
        std::string out;
        for (int i = 0; i < size; ++i) out += char(value >> 8 * i & 0xFF);
        return out;
    }
    std::string records_;
};

class KeptPictures : public ::testing::Test {
protected:
    KeptPictures() { host::registerEntityClasses(); }
    // The box of an entity with that picture, which its groups hold in chunks of 20 bytes.
    Acad::ErrorStatus measure(const std::string& picture, AcDbExtents& box) {
        host::KeptEntity entity("THING");
        host::GroupList& kept = entity.tailForWrite().kept;
        kept.append(host::Group::ofText(100, "AcDbEntity"));
        kept.append(host::Group::ofInteger(160, std::int64_t(picture.size())));
        for (size_t at = 0; at < picture.size(); at += 20)
            kept.append(host::Group::ofBytes(310, std::string_view(picture).substr(at, 20)));
        return entity.getGeomExtents(box);
    }
    void expectBox(const std::string& caption, const Drawing& drawing, const AcGePoint3d& low,
                   const AcGePoint3d& high) {
        AcDbExtents box;
        ASSERT_EQ(measure(drawing.bytes(), box), Acad::eOk) << caption;
        EXPECT_LE(box.minPoint().distanceTo(low), 2e-3) << caption;
        EXPECT_LE(box.maxPoint().distanceTo(high), 2e-3) << caption;
    }
};

const std::string kSegment = Drawing::polyline({1, 2, 3, 4, 6, 5});

} // namespace

TEST_F(KeptPictures, EveryCallIsDrawnWhereItSays) {
    expectBox("polyline", Drawing().record(6, kSegment), {1, 2, 3}, {4, 6, 5});
    expectBox("polyline with a normal", Drawing().record(32, kSegment + Drawing::reals({0, 0, 1})), {1, 2, 3},
              {4, 6, 5});
    expectBox("circle", Drawing().record(2, Drawing::reals({5, 5, 0, 2, 0, 0, 1})), {3, 3, 0}, {7, 7, 0});
    expectBox("arc",
              Drawing().record(4, Drawing::reals({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, pi}) + Drawing::word(0)),
              {-1, 0, 0}, {1, 1, 0});
    expectBox("circle through three", Drawing().record(3, Drawing::reals({1, 0, 0, 0, 1, 0, -1, 0, 0})),
              {-1, -1, 0}, {1, 1, 0});
    // Rows of the matrix one after the other: twice as large, and moved.
    expectBox("matrix",
              Drawing()
                  .record(29, Drawing::reals({2, 0, 0, 10, 0, 2, 0, 20, 0, 0, 2, 0, 0, 0, 0, 1}))
                  .record(6, kSegment)
                  .record(31, ""),
              {12, 24, 6}, {18, 32, 10});
    const std::string face = Drawing::word(3) + Drawing::reals({0, 0, 0, 3, 0, 0, 0, 4, 0}) +
                             Drawing::word(4) + Drawing::word(3) + Drawing::word(0) + Drawing::word(1) +
                             Drawing::word(2);
    expectBox("shell", Drawing().record(9, face), {0, 0, 0}, {3, 4, 0});
}

TEST_F(KeptPictures, WhatIsUnknownIsPassedOver) {
    expectBox("unknown call between",
              Drawing().record(51, Drawing::word(7)).record(22, Drawing::word(0)).record(6, kSegment),
              {1, 2, 3}, {4, 6, 5});
}

// A picture may end anywhere and count what it likes; what stands before is drawn.
TEST_F(KeptPictures, BrokenPicturesEndWhereTheyBreak) {
    const Drawing good = Drawing().record(6, kSegment);
    const std::string rows[] = {
        Drawing().record(6, kSegment).record(6, Drawing::word(2000000000)).bytes(),
        Drawing().record(6, kSegment).record(8, Drawing::word(65536) + Drawing::word(65536)).bytes(),
        Drawing().record(6, kSegment).record(2, Drawing::reals({0, 0, 0, std::nan(""), 0, 0, 1})).bytes(),
        good.bytes() + Drawing::word(-5) + Drawing::word(6),
        good.bytes() + Drawing::word(1000) + Drawing::word(6),
        Drawing().record(6, kSegment).record(11, Drawing::reals({0, 0, 0}) + "unending text").bytes(),
    };
    for (const std::string& picture : rows) {
        AcDbExtents box;
        ASSERT_EQ(measure(picture, box), Acad::eOk);
        EXPECT_LE(box.maxPoint().distanceTo({4, 6, 5}), 1e-9);
    }
    AcDbExtents box;
    for (const std::string& empty : {std::string(), std::string(3, '\0'), Drawing().record(31, "").bytes()})
        EXPECT_EQ(measure(empty, box), Acad::eInvalidExtents);
}

// Leaders run through their points to the landing and on along the dogleg.
TEST_F(KeptPictures, MultileadersWithoutAPictureShowTheirLines) {
    host::KeptEntity entity("MULTILEADER");
    host::GroupList groups;
    groups.append(host::Group::ofText(100, "AcDbMLeader"));
    groups.append(host::Group::ofText(300, "CONTEXT_DATA{"));
    groups.append(host::Group::ofText(302, "LEADER{"));
    for (const auto& [code, value] : {std::pair(10, 40.0), {20, 20.0}, {11, 3.0}, {21, 4.0}, {40, 10.0}})
        groups.append(host::Group::ofReal(code, value));
    groups.append(host::Group::ofText(304, "LEADER_LINE{"));
    for (const auto& [code, value] : {std::pair(10, 30.0), {20, 35.0}, {10, 10.0}, {20, 15.0}})
        groups.append(host::Group::ofReal(code, value));
    for (int end : {305, 303, 301}) groups.append(host::Group::ofText(end, "}"));
    entity.setGroups(groups);
    AcDbExtents box;
    ASSERT_EQ(entity.getGeomExtents(box), Acad::eOk);
    EXPECT_LE(box.minPoint().distanceTo({10, 15, 0}), 1e-9);
    EXPECT_LE(box.maxPoint().distanceTo({46, 35, 0}), 1e-9);
}
