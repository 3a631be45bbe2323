// Single-line text, its attribute kinds, and multi-line text.
#pragma once
#include "host/db/entity.h"
#include "host/db/symboltable.h"
#include "host/ent/filed_point.h"
#include "host/gi/text_metrics.h"

class AcDbText : public AcDbEntity {
    HOST_DB_CLASS(AcDbText)
public:
    AcDbText() = default;
    AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style = {}, double height = 0,
             double rotation = 0);
    AcGePoint3d position() const { return position_; } // world coordinates; the left end of the baseline
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    AcGePoint3d alignmentPoint() const { return alignment_; }
    Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
    bool isDefaultAlignment() const { return horizontal_ == AcDb::kTextLeft && vertical_ == AcDb::kTextBase; }
    AcDb::TextHorzMode horizontalMode() const { return horizontal_; }
    Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
    AcDb::TextVertMode verticalMode() const { return vertical_; }
    Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
    // Sets the position from the alignment point and the text's extents.
    Acad::ErrorStatus adjustAlignment(const AcDbDatabase* database = nullptr);
    const ACHAR* textStringConst() const { return text_.c_str(); }
    ACHAR* textString() const; // a copy, freed with acutDelString
    Acad::ErrorStatus setTextString(const ACHAR* text);
    AcDbObjectId textStyle() const { return style_; }
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    double height() const { return height_; }
    Acad::ErrorStatus setHeight(double height);
    double rotation() const { return rotation_; } // radians
    Acad::ErrorStatus setRotation(double angle);
    double oblique() const { return oblique_; }
    Acad::ErrorStatus setOblique(double angle);
    double widthFactor() const { return widthFactor_; }
    Acad::ErrorStatus setWidthFactor(double factor);
    double thickness() const { return thickness_; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return normal_; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    host::TextFace face() const; // of the style, as this text sets it
    // Everything that shows, of an attribute too.
    void takeFrom(const AcDbText& other) {
        AcDbText::operator=(other), text_ = std::wstring(other.shownText());
    }
    bool isMirroredInX() const { return generation_ & 2; }
    bool isMirroredInY() const { return generation_ & 4; }
    Acad::ErrorStatus mirrorInX(bool mirrored);
    Acad::ErrorStatus mirrorInY(bool mirrored);

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void inDone(host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    // Files put the vertical mode behind a second marker; attributes behind their own.
    virtual void outSecond(host::GroupWriter& writer) const;
    virtual int verticalModeCode() const { return 73; }
    // What is shown: attribute definitions show their tag.
    virtual const std::wstring& shownText() const { return text_; }
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                        const AcGePoint3d& last, AcGePoint3dArray& points) const override;

private:
    std::wstring text_;
    host::FiledPoint position_, alignment_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    AcDbObjectId style_;
    double height_ = 2.5, rotation_ = 0, oblique_ = 0, widthFactor_ = 1, thickness_ = 0;
    AcDb::TextHorzMode horizontal_ = AcDb::kTextLeft;
    AcDb::TextVertMode vertical_ = AcDb::kTextBase;
    int generation_ = 0;
    bool namelessStyle_ = false;  // the file names its style with an empty text
    bool alignmentFiled_ = false; // files may hold an alignment point that the justification makes no use of
};

class AcDbAttribute : public AcDbText {
    HOST_DB_CLASS(AcDbAttribute)
public:
    const std::wstring& tagConst() const { return tag_; }
    Acad::ErrorStatus setTag(const ACHAR* tag); // upper-cased, blanks refused
    bool isInvisible() const { return attributeFlags_ & 1; }
    bool isConstant() const { return attributeFlags_ & 2; }
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outSecond(host::GroupWriter& writer) const override;
    int verticalModeCode() const override { return 74; }

protected:
    std::wstring tag_;
    int attributeFlags_ = 0;
};

class AcDbAttributeDefinition : public AcDbAttribute {
    HOST_DB_CLASS(AcDbAttributeDefinition)
public:
    const std::wstring& promptConst() const { return prompt_; }
    Acad::ErrorStatus setPrompt(const ACHAR* prompt);
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outSecond(host::GroupWriter& writer) const override;

protected:
    const std::wstring& shownText() const override { return tag_; }

private:
    std::wstring prompt_;
};

class AcDbMText : public AcDbEntity {
    HOST_DB_CLASS(AcDbMText)
public:
    enum AttachmentPoint {
        kTopLeft = 1,
        kTopCenter,
        kTopRight,
        kMiddleLeft,
        kMiddleCenter,
        kMiddleRight,
        kBottomLeft,
        kBottomCenter,
        kBottomRight
    };
    AcGePoint3d location() const { return location_; }
    Acad::ErrorStatus setLocation(const AcGePoint3d& location);
    AcGeVector3d direction() const { return direction_; }
    Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
    double rotation() const; // radians, in the plane of the normal
    Acad::ErrorStatus setRotation(double angle);
    AcGeVector3d normal() const { return normal_; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    const std::wstring& contentsRaw() const { return contents_; } // with its formatting codes
    ACHAR* contents() const;
    std::wstring plainText() const; // lines parted by \n
    Acad::ErrorStatus setContents(const ACHAR* text);
    double width() const { return width_; } // of the column; 0: no wrapping
    Acad::ErrorStatus setWidth(double width);
    double textHeight() const { return height_; }
    Acad::ErrorStatus setTextHeight(double height);
    AttachmentPoint attachment() const { return attachment_; }
    Acad::ErrorStatus setAttachment(AttachmentPoint point);
    AcDbObjectId textStyle() const { return style_; }
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    double lineSpacingFactor() const { return lineSpacing_; }
    // The lines as they are set, each from the start of its baseline.
    struct Line {
        std::wstring text;
        AcGePoint3d position;
    };
    std::vector<Line> lines() const;

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void inDone(host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                        const AcGePoint3d& last, AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const override;

private:
    AcGePoint3d location_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis, direction_ = AcGeVector3d::kXAxis;
    std::wstring contents_;
    AcDbObjectId style_;
    double height_ = 2.5, width_ = 0, lineSpacing_ = 1;
    AttachmentPoint attachment_ = kTopLeft;
    int flow_ = 1, lineSpacingStyle_ = 1;
    double rotationRead_ = 0;
    bool rotationGiven_ = false;
};
