// Symbol tables and their records other than blocks: layers, linetypes, text styles, dimension
// styles, views, coordinate systems, viewports, registered applications. Names are found
// without regard to case and keep the case they were made with.
#pragma once
#include <unordered_map>

#include "host/db/color.h"
#include "host/db/object.h"
#include "host/ge/point2d.h"

class AcDbSymbolTable;

class AcDbSymbolTableRecord : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord)
public:
    const std::wstring& name() const { return name_; }
    Acad::ErrorStatus getName(const ACHAR*& name) const { return name = name_.c_str(), Acad::eOk; }
    Acad::ErrorStatus getName(ACHAR*& copy) const; // freed with acutDelString
    // eDuplicateRecordName when the table has the name, eInvalidInput for an empty one or one with
    // <>/\":;?*|=` in it.
    virtual Acad::ErrorStatus setName(const ACHAR* name);
    bool isDependent() const { return flags_ & 16; }
    int flags() const { return flags_; }
    Acad::ErrorStatus setFlags(int flags);

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;
    std::string dxfName() const override;

protected:
    AcDbSymbolTableRecord() = default;
    AcDbSymbolTableRecord(const AcDbSymbolTableRecord&) = default;
    AcDbSymbolTableRecord& operator=(const AcDbSymbolTableRecord&) = default;
    // The marker of the record's own class, such as "AcDbLayerTableRecord".
    virtual const char* marker() const = 0;
    virtual void outOwn(host::GroupWriter& writer) const = 0;
    friend class AcDbSymbolTable;
    std::wstring name_;
    int flags_ = 0;
};

class AcDbSymbolTableIterator {
public:
    AcDbSymbolTableIterator(const AcDbSymbolTable* table, bool skipErased);
    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forward = true, bool skipDeleted = true);
    Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
    template <class T>
    Acad::ErrorStatus getRecord(T*& record, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const {
        AcDbObjectId id;
        if (auto es = getRecordId(id); es != Acad::eOk) return es;
        return acdbOpenObject(record, id, mode, openErased);
    }

private:
    std::vector<AcDbObjectId> ids_;
    long at_ = 0;
};

class AcDbSymbolTable : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable)
public:
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id, bool getErased = false) const;
    template <class T>
    Acad::ErrorStatus getAt(const ACHAR* name, T*& record, AcDb::OpenMode mode,
                            bool openErased = false) const {
        AcDbObjectId id;
        if (auto es = getAt(name, id, openErased); es != Acad::eOk) return es;
        return acdbOpenObject(record, id, mode, openErased);
    }
    bool has(const ACHAR* name) const;
    bool has(AcDbObjectId id) const;
    // The record joins the drawing and stays open for write. On failure it stays the caller's.
    Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
    Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);
    // The caller deletes the iterator.
    Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    // In the order they were added, erased ones too.
    const std::vector<AcDbObjectId>& records() const { return records_; }
    // Puts a record that stands in the drawing already into the list; readers use it.
    void adopt(AcDbObjectId record, const std::wstring& name);
    AcRxObject* clone() const override { return nullptr; }

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;
    std::string dxfName() const override;
    // The table's name in files, such as "LAYER".
    virtual const char* tableName() const = 0;

protected:
    AcDbSymbolTable() = default;
    AcDbSymbolTable(const AcDbSymbolTable&) = default;
    AcDbSymbolTable& operator=(const AcDbSymbolTable&) = default;
    friend class AcDbSymbolTableRecord;
    virtual Acad::ErrorStatus prepareName(AcDbSymbolTableRecord&) { return Acad::eOk; }
    void renamed(AcDbObjectId record, const std::wstring& from, const std::wstring& to);
    virtual bool uniqueNames() const { return true; }

private:
    std::vector<AcDbObjectId> records_;
    std::unordered_map<std::wstring, AcDbObjectId> byName_; // by folded name
};

// One table class: the name in files is given with it.
#define HOST_SYMBOL_TABLE(CLASS, FILE_NAME)                                                                  \
    class CLASS : public AcDbSymbolTable {                                                                   \
        HOST_DB_CLASS(CLASS)                                                                                 \
    public:                                                                                                  \
        const char* tableName() const override { return FILE_NAME; }                                         \
    };
HOST_SYMBOL_TABLE(AcDbLayerTable, "LAYER")
HOST_SYMBOL_TABLE(AcDbLinetypeTable, "LTYPE")
HOST_SYMBOL_TABLE(AcDbTextStyleTable, "STYLE")
HOST_SYMBOL_TABLE(AcDbDimStyleTable, "DIMSTYLE")
HOST_SYMBOL_TABLE(AcDbViewTable, "VIEW")
HOST_SYMBOL_TABLE(AcDbUCSTable, "UCS")
HOST_SYMBOL_TABLE(AcDbRegAppTable, "APPID")
// Holds several records of one name: the tiles of the screen.
class AcDbViewportTable : public AcDbSymbolTable {
    HOST_DB_CLASS(AcDbViewportTable)
public:
    const char* tableName() const override { return "VPORT"; }

protected:
    bool uniqueNames() const override { return false; }
};

class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
    HOST_DB_CLASS(AcDbLayerTableRecord)
public:
    bool isOff() const { return off_; }
    Acad::ErrorStatus setIsOff(bool off);
    bool isFrozen() const { return flags_ & 1; }
    Acad::ErrorStatus setIsFrozen(bool frozen);
    bool isLocked() const { return flags_ & 4; }
    Acad::ErrorStatus setIsLocked(bool locked);
    bool isPlottable() const { return plottable_; }
    Acad::ErrorStatus setIsPlottable(bool plottable);
    AcCmColor color() const { return color_; }
    Acad::ErrorStatus setColor(const AcCmColor& color);
    AcDbObjectId linetypeObjectId() const { return linetype_; }
    Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId id);
    AcDb::LineWeight lineWeight() const { return lineWeight_; }
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);

    bool inGroup(const host::Group& group, host::ReadContext& context) override;

protected:
    const char* marker() const override { return "AcDbLayerTableRecord"; }
    void outOwn(host::GroupWriter& writer) const override;

private:
    AcCmColor color_ = [] {
        AcCmColor c;
        c.setColorIndex(7);
        return c;
    }();
    AcDbObjectId linetype_;
    AcDb::LineWeight lineWeight_ = AcDb::kLnWtByLwDefault;
    bool off_ = false, plottable_ = true;
    bool plottingStated_ = false, weightStated_ = false; // by the file
};

class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
    HOST_DB_CLASS(AcDbLinetypeTableRecord)
public:
    // One piece of the pattern. Length: above 0 a dash, below a gap, 0 a dot; drawing units before scaling.
    struct Dash {
        double length = 0;
        int shapeFlags = 0;   // 0 none, 2 text, 4 shape, 1 absolute rotation
        host::GroupList rest; // the piece's further groups, as they stood
    };
    const std::wstring& comments() const { return comments_; }
    Acad::ErrorStatus setComments(const ACHAR* text);
    double patternLength() const { return patternLength_; }
    int numDashes() const { return int(dashes_.size()); }
    double dashLengthAt(int index) const;
    // Replaces the pattern by plain dashes.
    Acad::ErrorStatus setPattern(const std::vector<double>& lengths);
    const std::vector<Dash>& dashes() const { return dashes_; }

    bool inGroup(const host::Group& group, host::ReadContext& context) override;

protected:
    const char* marker() const override { return "AcDbLinetypeTableRecord"; }
    void outOwn(host::GroupWriter& writer) const override;

private:
    std::wstring comments_;
    double patternLength_ = 0;
    std::vector<Dash> dashes_;
};

class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
    HOST_DB_CLASS(AcDbTextStyleTableRecord)
public:
    const std::wstring& fileName() const { return file_; }
    const std::wstring& bigFontFileName() const { return bigFont_; }
    Acad::ErrorStatus setFileName(const ACHAR* file);
    Acad::ErrorStatus setBigFontFileName(const ACHAR* file);
    // Typeface of a TrueType font, kept in files as xdata of ACAD; empty when the file name rules.
    Acad::ErrorStatus font(std::wstring& typeface, bool& bold, bool& italic) const;
    double textSize() const { return size_; } // 0: not fixed
    Acad::ErrorStatus setTextSize(double size);
    double xScale() const { return xScale_; }
    Acad::ErrorStatus setXScale(double scale);
    double obliquingAngle() const; // radians
    Acad::ErrorStatus setObliquingAngle(double angle);
    bool isShapeFile() const { return flags_ & 1; }
    bool isVertical() const { return flags_ & 4; }
    int generation() const { return generation_; } // 2 backward, 4 upside down

    bool inGroup(const host::Group& group, host::ReadContext& context) override;

protected:
    const char* marker() const override { return "AcDbTextStyleTableRecord"; }
    void outOwn(host::GroupWriter& writer) const override;

private:
    std::wstring file_ = L"txt", bigFont_;
    double size_ = 0, xScale_ = 1, lastHeight_ = 2.5;
    double oblique_ = 0; // degrees, as files have it
    int generation_ = 0;
};

// A viewport of model space; the screen's state is in those named "*Active".
class AcDbViewportTableRecord : public AcDbSymbolTableRecord {
    HOST_DB_CLASS(AcDbViewportTableRecord)
public:
    AcGePoint2d centerPoint() const { return center_; } // in the view's own plane
    Acad::ErrorStatus setCenterPoint(const AcGePoint2d& center);
    double height() const { return height_; }
    Acad::ErrorStatus setHeight(double height);
    double width() const { return height_ * aspect_; }
    Acad::ErrorStatus setWidth(double width);
    AcGeVector3d viewDirection() const { return direction_; }
    Acad::ErrorStatus setViewDirection(const AcGeVector3d& direction);
    AcGePoint3d target() const { return target_; }
    Acad::ErrorStatus setTarget(const AcGePoint3d& target);
    double viewTwist() const; // radians
    Acad::ErrorStatus setViewTwist(double angle);
    double lensLength() const { return lens_; }
    bool perspectiveEnabled() const { return viewMode_ & 1; }

    bool inGroup(const host::Group& group, host::ReadContext& context) override;

protected:
    const char* marker() const override { return "AcDbViewportTableRecord"; }
    void outOwn(host::GroupWriter& writer) const override;

private:
    AcGePoint2d lowerLeft_{0, 0}, upperRight_{1, 1}, center_{210, 148.5};
    AcGeVector3d direction_ = AcGeVector3d::kZAxis;
    AcGePoint3d target_;
    double height_ = 297, aspect_ = 1.777, lens_ = 50;
    double twist_ = 0; // degrees, as files have it
    int viewMode_ = 0;
};

// A coordinate system with a name.
class AcDbUCSTableRecord : public AcDbSymbolTableRecord {
    HOST_DB_CLASS(AcDbUCSTableRecord)
public:
    AcGePoint3d origin() const { return origin_; }
    AcGeVector3d xAxis() const { return xAxis_; }
    AcGeVector3d yAxis() const { return yAxis_; }
    Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
    Acad::ErrorStatus setXAxis(const AcGeVector3d& axis);
    Acad::ErrorStatus setYAxis(const AcGeVector3d& axis);

    bool inGroup(const host::Group& group, host::ReadContext& context) override;

protected:
    const char* marker() const override { return "AcDbUCSTableRecord"; }
    void outOwn(host::GroupWriter& writer) const override;

private:
    AcGePoint3d origin_;
    AcGeVector3d xAxis_ = AcGeVector3d::kXAxis, yAxis_ = AcGeVector3d::kYAxis;
};

// A view with a name.
class AcDbViewTableRecord : public AcDbSymbolTableRecord {
    HOST_DB_CLASS(AcDbViewTableRecord)
public:
    AcGePoint2d centerPoint() const { return center_; } // in the view's own plane
    double height() const { return height_; }
    double width() const { return width_; }
    AcGePoint3d target() const { return target_; }
    AcGeVector3d viewDirection() const { return direction_; }
    double viewTwist() const; // radians
    Acad::ErrorStatus setCenterPoint(const AcGePoint2d& center);
    Acad::ErrorStatus setHeight(double height);
    Acad::ErrorStatus setWidth(double width);
    Acad::ErrorStatus setTarget(const AcGePoint3d& target);
    Acad::ErrorStatus setViewDirection(const AcGeVector3d& direction);
    Acad::ErrorStatus setViewTwist(double angle);

    bool inGroup(const host::Group& group, host::ReadContext& context) override;

protected:
    const char* marker() const override { return "AcDbViewTableRecord"; }
    void outOwn(host::GroupWriter& writer) const override;

private:
    AcGePoint2d center_;
    AcGePoint3d target_;
    AcGeVector3d direction_ = AcGeVector3d::kZAxis;
    double height_ = 1, width_ = 1;
    double twist_ = 0; // degrees, as files have it
    double lens_ = 50, front_ = 0, back_ = 0;
    int viewMode_ = 0;
};

// Tables whose records are kept as they came, but for name and flags.
#define HOST_PLAIN_RECORD(CLASS)                                                                             \
    class CLASS : public AcDbSymbolTableRecord {                                                             \
        HOST_DB_CLASS(CLASS)                                                                                 \
    protected:                                                                                               \
        const char* marker() const override { return #CLASS; }                                               \
        void outOwn(host::GroupWriter&) const override {}                                                    \
    };
HOST_PLAIN_RECORD(AcDbDimStyleTableRecord)
HOST_PLAIN_RECORD(AcDbRegAppTableRecord)

// Registers an application for xdata in the working database: RTNORM, also when it is registered;
// RTERROR for a name that can't be one.
int acdbRegApp(const ACHAR* application);
