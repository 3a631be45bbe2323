// Reading the nested lists of a multileader: the context, in it the leaders, in these their lines.
#include "host/ent/multileader_picture.h"

#include <vector>

#include "host/db/database.h"
#include "host/ent/filing.h"
#include "host/ent/text.h"

namespace host {
namespace {

class Multileader {
public:
    explicit Multileader(const GroupList& groups) {
        for (const Group group : groups)
            if (!mark(group)) take(group);
    }
    const std::vector<std::vector<AcGePoint3d>>& lines() const { return lines_; }

    // The text as one of many lines; without contents when there is none.
    void fill(AcDbMText& text) const {
        text.setLocation(place_);
        text.setNormal(normal_);
        text.setDirection(along_);
        text.setTextHeight(height_);
        text.setWidth(width_);
        text.setAttachment(AcDbMText::AttachmentPoint(attachment_));
        text.setContents(text_.c_str());
    }

private:
    enum class Place { outside, context, leader, line };

    // Takes what opens and closes lists; false for data.
    bool mark(const Group& group) {
        if (group.is(300, "CONTEXT_DATA{")) return at_ = Place::context, true;
        if (group.is(302, "LEADER{")) return beginLeader(), true;
        if (group.is(304, "LEADER_LINE{")) return lines_.emplace_back(), at_ = Place::line, true;
        if (group.is(305, "}")) return at_ = Place::leader, true;
        if (group.is(303, "}")) return endLeader(), true;
        if (group.is(301, "}")) return at_ = Place::outside, true;
        return false;
    }
    void beginLeader() {
        at_ = Place::leader;
        first_ = lines_.size();
        landing_ = {}, dogleg_ = {}, length_ = 0;
    }
    // All lines of a leader run to its landing and along its dogleg.
    void endLeader() {
        for (size_t i = first_; i < lines_.size(); ++i) {
            lines_[i].push_back(landing_);
            if (length_ > 0 && dogleg_.length() > 0)
                lines_[i].push_back(landing_ + dogleg_.normal() * length_);
        }
        at_ = Place::context;
    }
    void take(const Group& group) {
        switch (at_) {
        case Place::context: return takeContext(group);
        case Place::leader:
            if (group.code == 40) length_ = group.real;
            takeTriple(group, 10, landing_) || takeTriple(group, 11, dogleg_);
            return;
        case Place::line:
            if (group.code == 10) lines_.back().emplace_back();
            if (!lines_.back().empty()) takeTriple(group, 10, lines_.back().back());
            return;
        case Place::outside: return;
        }
    }
    void takeContext(const Group& group) {
        switch (group.code) {
        case 304: text_ = group.wide(); return;
        case 41: height_ = group.real; return;
        case 43: width_ = group.real; return;
        case 171:
            if (group.integer >= 1 && group.integer <= 3) attachment_ = int(group.integer);
            return;
        default:
            takeTriple(group, 11, normal_) || takeTriple(group, 12, place_) || takeTriple(group, 13, along_);
        }
    }

    Place at_ = Place::outside;
    std::vector<std::vector<AcGePoint3d>> lines_;
    size_t first_ = 0; // of the lines of the leader at hand
    AcGePoint3d landing_, place_;
    AcGeVector3d dogleg_, normal_ = AcGeVector3d::kZAxis, along_ = AcGeVector3d::kXAxis;
    double length_ = 0, height_ = 0, width_ = 0;
    int attachment_ = 1;
    std::wstring text_;
};

} // namespace

bool drawMultileader(const KeptEntity& entity, AcGiWorldDraw& context) {
    const Multileader leader(entity.groups());
    bool drawn = false;
    for (const auto& line : leader.lines())
        if (line.size() > 1)
            context.geometry().polyline(Adesk::UInt32(line.size()), line.data()), drawn = true;
    AcDbMText text;
    leader.fill(text);
    if (text.contentsRaw().empty() || !(text.textHeight() > 0)) return drawn;
    if (AcDbDatabase* drawing = entity.database())
        text.setTextStyle(drawing->find(AcDbTextStyleTable::desc(), L"Standard"));
    text.worldDraw(&context);
    return true;
}

} // namespace host
