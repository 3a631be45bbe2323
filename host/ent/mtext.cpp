// Multi-line text: data, formatting codes and form in files.
#include "host/ent/filing.h"
#include "host/ent/text.h"
#include "host/os/text.h"

HOST_DEFINE_CLASS(AcDbMText, AcDbEntity, L"MTEXT")

namespace {
// Files cut long contents into pieces of 250 characters; all but the last come first, as group 3.
constexpr size_t kPiece = 250;
} // namespace

Acad::ErrorStatus AcDbMText::setLocation(const AcGePoint3d& location) {
    HOST_SET_FINITE(location_, location);
}
Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
    if (!host::finite(direction) || direction.isZeroLength()) return Acad::eInvalidInput;
    HOST_SET(direction_, direction.normal());
}
double AcDbMText::rotation() const {
    const AcGeVector3d inPlane = AcGeMatrix3d::worldToPlane(normal_) * direction_;
    return std::atan2(inPlane.y, inPlane.x);
}
Acad::ErrorStatus AcDbMText::setRotation(double angle) {
    if (!std::isfinite(angle)) return Acad::eInvalidInput;
    HOST_SET(direction_,
             AcGeMatrix3d::planeToWorld(normal_) * AcGeVector3d(std::cos(angle), std::sin(angle), 0));
}
Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& normal) {
    HOST_SET(normal_, host::unitNormal(normal));
}
ACHAR* AcDbMText::contents() const {
    ACHAR* copy = nullptr;
    acutNewString(contents_.c_str(), copy);
    return copy;
}
Acad::ErrorStatus AcDbMText::setContents(const ACHAR* text) {
    if (!text) return Acad::eNullPtr;
    HOST_SET(contents_, text);
}
Acad::ErrorStatus AcDbMText::setWidth(double width) {
    if (!std::isfinite(width) || width < 0) return Acad::eInvalidInput;
    HOST_SET(width_, width);
}
Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
    if (!std::isfinite(height) || height <= 0) return Acad::eInvalidInput;
    HOST_SET(height_, height);
}
Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint point) { HOST_SET(attachment_, point); }
Acad::ErrorStatus AcDbMText::setTextStyle(AcDbObjectId style) { HOST_SET(style_, style); }

std::wstring AcDbMText::plainText() const {
    std::wstring plain;
    for (size_t i = 0; i < contents_.size(); ++i) {
        const wchar_t c = contents_[i];
        if (c == L'{' || c == L'}') continue;
        if (c == L'^' && i + 1 < contents_.size()) {
            const wchar_t next = contents_[++i];
            if (next == L'J' || next == L'I')
                plain += next == L'J' ? L'\n' : L'\t';
            else if (next == L' ')
                plain += L'^';
            continue;
        }
        if (c != L'\\' || i + 1 == contents_.size()) {
            plain += c;
            continue;
        }
        const wchar_t code = contents_[++i];
        switch (code) {
        case L'P':
        case L'N':
        case L'X': plain += L'\n'; break;
        case L'~': plain += L' '; break;
        case L'\\':
        case L'{':
        case L'}': plain += code; break;
        case L'L':
        case L'l':
        case L'O':
        case L'o':
        case L'K':
        case L'k': break;
        case L'U':
            if (i + 5 < contents_.size() && contents_[i + 1] == L'+') {
                plain += wchar_t(std::wcstoul(contents_.substr(i + 2, 4).c_str(), nullptr, 16));
                i += 5;
            }
            break;
        case L'S': // a stacked fraction up to the semicolon: shown as it reads
            for (++i; i < contents_.size() && contents_[i] != L';'; ++i)
                plain += contents_[i] == L'^' || contents_[i] == L'#' ? L'/' : contents_[i];
            break;
        default: // font, height, colour, alignment...: a code with a value up to the semicolon
            while (i < contents_.size() && contents_[i] != L';') ++i;
        }
    }
    return plain;
}

bool AcDbMText::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbMText")) {
        switch (group.code) {
        case 1:
        case 3: contents_ += group.wide(); return true;
        case 7: style_ = context.textStyle(group.text); return true;
        case 40: height_ = group.real; return true;
        case 41: width_ = group.real; return true;
        case 42:
        case 43: return true; // the extents at the time of saving: measured anew
        case 44: lineSpacing_ = group.real; return true;
        case 50: rotationRead_ = host::toRadians(group.real), rotationGiven_ = true; return true;
        case 71:
            if (group.integer < 1 || group.integer > 9)
                return context.repaired("text with an unknown attachment: taken as top left"), true;
            return attachment_ = AttachmentPoint(group.integer), true;
        case 72: flow_ = int(group.integer); return true;
        case 73: lineSpacingStyle_ = int(group.integer); return true;
        case 11:
            rotationGiven_ = false;
            direction_ = {group.real, 0, 0};
            return true; // the last of angle and direction counts
        default:
            if (host::takeTriple(group, 10, location_) || host::takeTriple(group, 11, direction_) ||
                host::takeTriple(group, 210, normal_))
                return true;
        }
    }
    return AcDbEntity::inGroup(group, context);
}

void AcDbMText::inDone(host::ReadContext& context) {
    normal_ = host::unitNormal(normal_);
    if (rotationGiven_)
        direction_ = AcGeMatrix3d::planeToWorld(normal_) *
                     AcGeVector3d(std::cos(rotationRead_), std::sin(rotationRead_), 0);
    else if (!host::finite(direction_) || direction_.length() < 1e-12)
        direction_ = AcGeVector3d::kXAxis;
    if (style_.isNull()) style_ = context.textStyle("Standard");
}

void AcDbMText::outGroups(host::GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass("AcDbMText");
    writer.point(10, location_);
    writer.real(40, height_);
    writer.real(41, width_);
    writer.integer(71, attachment_);
    writer.integer(72, flow_);
    size_t from = 0;
    for (; contents_.size() - from > kPiece; from += kPiece) writer.text(3, contents_.substr(from, kPiece));
    writer.text(1, contents_.substr(from));
    writer.recordName(7, style_);
    writer.normal(210, normal_);
    writer.vector(11, direction_);
    writer.integer(73, lineSpacingStyle_);
    writer.real(44, lineSpacing_);
}
