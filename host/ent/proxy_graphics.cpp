// Reading the drawing calls of a picture, one record a call: its size, its number, its data; all
// little-endian, texts padded to whole words.
#include "host/ent/proxy_graphics.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

#include "host/gi/textstyle.h"
#include "host/os/codepage.h"
#include "host/os/text.h"

namespace host {
namespace {

enum Call {
    kCircle = 2,
    kCircle3 = 3,
    kArc = 4,
    kArc3 = 5,
    kPolyline = 6,
    kPolygon = 7,
    kMesh = 8,
    kShell = 9,
    kText = 10,
    kText2 = 11,
    kXline = 12,
    kRay = 13,
    kColor = 14,
    kFill = 20,
    kTrueColor = 22,
    kLineWeight = 23,
    kLinetypeScale = 24,
    kThickness = 25,
    kPushMatrix = 29,
    kPushMatrix2 = 30,
    kPopMatrix = 31,
    kPolylineWithNormal = 32,
    kWideText = 36,
    kWideText2 = 38
};

// Values from bytes; zeros behind their end, which ok() tells.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
    bool ok() const { return ok_; }
    size_t left() const { return bytes_.size() - at_; }
    std::int32_t integer() { return std::bit_cast<std::int32_t>(std::uint32_t(word(4))); }
    double real() {
        const double value = std::bit_cast<double>(word(8));
        ok_ = ok_ && std::isfinite(value);
        return ok_ ? value : 0;
    }
    AcGePoint3d point() {
        const double x = real(), y = real();
        return {x, y, real()};
    }
    AcGeVector3d vector() { return point().asVector(); }
    std::string_view take(size_t count) {
        ok_ = ok_ && count <= left();
        if (!ok_) return {};
        return bytes_.substr(std::exchange(at_, at_ + count), count);
    }
    std::vector<AcGePoint3d> points(std::int64_t count) {
        constexpr std::int64_t kPointSize = 24;
        ok_ = ok_ && count >= 0 && count <= std::int64_t(left()) / kPointSize;
        std::vector<AcGePoint3d> all(ok_ ? size_t(count) : 0);
        for (AcGePoint3d& p : all) p = point();
        return all;
    }
    std::wstring narrow() {
        std::string text;
        for (std::string_view one = take(1); ok_ && one[0] != 0; one = take(1)) text += one[0];
        pad();
        return wide(CodePage("ANSI_1252").decode(text));
    }
    std::wstring utf16() {
        std::wstring text;
        for (std::uint64_t unit = word(2); ok_ && unit != 0; unit = word(2)) text += wchar_t(unit);
        pad();
        return text;
    }

private:
    std::uint64_t word(size_t size) {
        const std::string_view part = take(size);
        std::uint64_t value = 0;
        for (size_t i = part.size(); i-- > 0;) value = value << 8 | std::uint8_t(part[i]);
        return value;
    }
    void pad() { at_ = std::min(bytes_.size(), (at_ + 3) / 4 * 4); }
    std::string_view bytes_;
    size_t at_ = 0;
    bool ok_ = true;
};

class Player {
public:
    explicit Player(AcGiWorldDraw& context)
        : geometry_(context.geometry()), traits_(context.subEntityTraits()) {}
    ~Player() {
        while (pushed_-- > 0) geometry_.popModelTransform();
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    bool drawn() const { return drawn_; }

    // False when the record's data end too early.
    bool play(int call, Bytes data) {
        switch (call) {
        case kColor:
        case kFill:
        case kTrueColor:
        case kLineWeight:
        case kLinetypeScale:
        case kThickness: return setTrait(call, data);
        case kPushMatrix:
        case kPushMatrix2: return pushMatrix(data);
        case kPopMatrix:
            if (pushed_ > 0) --pushed_, geometry_.popModelTransform();
            return true;
        case kText:
        case kWideText: return text(data, call == kWideText);
        case kText2:
        case kWideText2: return styledText(data, call == kWideText2);
        default: return playShape(call, data);
        }
    }

private:
    bool setTrait(int call, Bytes& data) {
        const bool isReal = call == kLinetypeScale || call == kThickness;
        const double real = isReal ? data.real() : 0;
        const std::int32_t value = isReal ? 0 : data.integer();
        if (!data.ok()) return false;
        switch (call) {
        case kColor:
            if (value >= 0 && value <= 256) traits_.setColor(Adesk::UInt16(value));
            break;
        case kTrueColor: setColor(std::uint32_t(value)); break;
        case kFill: traits_.setFillType(value == kAcGiFillAlways ? kAcGiFillAlways : kAcGiFillNever); break;
        case kLineWeight: traits_.setLineWeight(AcDb::LineWeight(value)); break;
        case kLinetypeScale: traits_.setLineTypeScale(real); break;
        default: traits_.setThickness(real);
        }
        return true;
    }

    // The high byte tells how the rest is meant.
    void setColor(std::uint32_t value) {
        enum { kByLayer = 0xC0, kByBlock = 0xC1, kRgb = 0xC2, kIndex = 0xC3 };
        switch (value >> 24) {
        case kByLayer: return traits_.setColor(256);
        case kByBlock: return traits_.setColor(0);
        case kIndex: return traits_.setColor(Adesk::UInt16(value & 0xFF));
        case kRgb: {
            AcCmColor color;
            color.setRGB(Adesk::UInt8(value >> 16), Adesk::UInt8(value >> 8), Adesk::UInt8(value));
            return traits_.setTrueColor(color);
        }
        default: return;
        }
    }

    bool pushMatrix(Bytes& data) {
        AcGeMatrix3d matrix;
        for (auto& row : matrix.entry)
            for (double& value : row) value = data.real();
        if (!data.ok()) return false;
        geometry_.pushModelTransform(matrix);
        return ++pushed_, true;
    }

    bool playShape(int call, Bytes& data) {
        switch (call) {
        case kCircle: {
            const AcGePoint3d center = data.point();
            const double radius = data.real();
            const AcGeVector3d normal = data.vector();
            return data.ok() && done(geometry_.circle(center, radius, normal));
        }
        case kArc: {
            const AcGePoint3d center = data.point();
            const double radius = data.real();
            const AcGeVector3d normal = data.vector(), start = data.vector();
            const double sweep = data.real();
            return data.ok() && done(geometry_.circularArc(center, radius, normal, start, sweep));
        }
        case kCircle3:
        case kArc3: {
            const auto p = data.points(3);
            if (!data.ok()) return false;
            return done(call == kArc3 ? geometry_.circularArc(p[0], p[1], p[2])
                                      : geometry_.circle(p[0], p[1], p[2]));
        }
        case kXline:
        case kRay: {
            const auto p = data.points(2);
            if (!data.ok()) return false;
            return done(call == kRay ? geometry_.ray(p[0], p[1]) : geometry_.xline(p[0], p[1]));
        }
        default: return playPoints(call, data);
        }
    }

    bool playPoints(int call, Bytes& data) {
        if (call != kPolyline && call != kPolygon && call != kPolylineWithNormal && call != kMesh &&
            call != kShell)
            return true;
        const std::int64_t first = data.integer(), columns = call == kMesh ? data.integer() : 1;
        const auto points = data.points(first * columns);
        if (!data.ok()) return false;
        const auto count = Adesk::UInt32(points.size());
        switch (call) {
        case kPolygon: return done(geometry_.polygon(count, points.data()));
        case kMesh: return done(geometry_.mesh(Adesk::UInt32(first), Adesk::UInt32(columns), points.data()));
        case kShell: return shell(points, data);
        default: return done(geometry_.polyline(count, points.data()));
        }
    }

    bool shell(const std::vector<AcGePoint3d>& points, Bytes& data) {
        const std::int32_t size = data.integer();
        if (!data.ok() || size < 0 || size_t(size) > data.left() / sizeof(Adesk::Int32)) return false;
        std::vector<Adesk::Int32> faces(static_cast<size_t>(size));
        for (Adesk::Int32& one : faces) one = data.integer();
        return done(geometry_.shell(Adesk::UInt32(points.size()), points.data(), Adesk::UInt32(faces.size()),
                                    faces.data()));
    }

    bool text(Bytes& data, bool isWide) {
        const AcGePoint3d start = data.point();
        const AcGeVector3d normal = data.vector(), along = data.vector();
        const double height = data.real(), width = data.real(), oblique = data.real();
        const std::wstring message = isWide ? data.utf16() : data.narrow();
        if (!data.ok()) return false;
        return done(geometry_.text(start, normal, along, height, width, oblique, message.c_str()));
    }

    bool styledText(Bytes& data, bool isWide) {
        const AcGePoint3d start = data.point();
        const AcGeVector3d normal = data.vector(), along = data.vector();
        const std::wstring message = isWide ? data.utf16() : data.narrow();
        data.integer(); // the length, which the text shows itself
        const bool raw = data.integer() != 0;
        const double height = data.real(), width = data.real(), oblique = data.real(), tracking = data.real();
        enum { kBackward, kUpsideDown, kVertical, kUnderlined, kOverlined, kFlags };
        bool flags[kFlags] = {};
        for (bool& flag : flags) flag = data.integer() != 0;
        if (!data.ok()) return false;
        if (isWide)
            data.take(4 * sizeof(Adesk::Int32)), data.utf16(); // the typeface, which the file tells too
        const std::wstring file = isWide ? data.utf16() : data.narrow();
        const std::wstring bigFile = isWide ? data.utf16() : data.narrow();
        const AcGiTextStyle style(file.c_str(), bigFile.c_str(), height, width, oblique, tracking,
                                  flags[kBackward], flags[kUpsideDown], flags[kVertical], flags[kOverlined],
                                  flags[kUnderlined]);
        return done(geometry_.text(start, normal, along, message.c_str(), -1, raw, style));
    }

    bool done(Adesk::Boolean) { return drawn_ = true; }

    AcGiWorldGeometry& geometry_;
    AcGiSubEntityTraits& traits_;
    int pushed_ = 0;
    bool drawn_ = false;
};

} // namespace

std::string proxyGraphics(const GroupList& groups) {
    std::string picture;
    size_t wanted = 0;
    for (const Group group : groups) {
        const bool isCount = (group.code == 92 || group.code == 160) && group.integer > 0;
        if (isCount && picture.empty()) wanted = size_t(group.integer);
        if (group.code == 310 && group.type == GroupType::bytes && picture.size() < wanted)
            picture += group.text;
    }
    return picture;
}

bool drawProxyGraphics(std::string_view picture, AcGiWorldDraw& context) {
    constexpr size_t kHead = 8; // of the whole: size and count; of a record: size and number
    Player player(context);
    for (size_t at = kHead; at + kHead <= picture.size();) {
        Bytes head(picture.substr(at, kHead));
        const std::int32_t size = head.integer();
        const int call = head.integer();
        if (size < std::int32_t(kHead) || size_t(size) > picture.size() - at) break;
        if (!player.play(call, Bytes(picture.substr(at + kHead, size_t(size) - kHead)))) break;
        if (context.regenAbort()) break;
        at += size_t(size);
    }
    return player.drawn();
}

} // namespace host
