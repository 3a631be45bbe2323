// The public filers: how objects of a module's own classes write themselves and come back.
// The drawing's own classes use host/db/groups.h, which keeps unknown data; a class of a module
// sees its own groups through AcDbDxfFiler, and undo, clone and copy go through AcDbDwgFiler.
#pragma once
#include <deque>
#include <string>
#include <variant>
#include <vector>

#include "host/db/adesk.h"
#include "host/db/groups.h"
#include "host/db/resbuf.h"

namespace AcDb {
enum FilerType { kFileFiler = 0, kCopyFiler = 1, kUndoFiler = 2, kBagFiler = 3, kIdFiler = 8 };
}

class AcDbDwgFiler {
public:
    virtual ~AcDbDwgFiler() = default;
    virtual Acad::ErrorStatus filerStatus() const = 0;
    virtual void resetFilerStatus() = 0;
    virtual AcDb::FilerType filerType() const = 0;

    virtual Acad::ErrorStatus writeItem(const ACHAR* text) = 0;
    virtual Acad::ErrorStatus writeItem(double value) = 0;
    virtual Acad::ErrorStatus writeItem(Adesk::Int16 value) = 0;
    virtual Acad::ErrorStatus writeItem(Adesk::Int32 value) = 0;
    virtual Acad::ErrorStatus writeItem(Adesk::Int64 value) = 0;
    virtual Acad::ErrorStatus writeItem(bool value) = 0;
    virtual Acad::ErrorStatus writeItem(const AcDbObjectId& id) = 0;
    virtual Acad::ErrorStatus writeItem(const AcGePoint3d& point) = 0;
    virtual Acad::ErrorStatus writeItem(const AcGeVector3d& vector) = 0;
    virtual Acad::ErrorStatus readItem(std::wstring& text) = 0;
    virtual Acad::ErrorStatus readItem(ACHAR** text) = 0; // the caller frees with acutDelString
    virtual Acad::ErrorStatus readItem(double* value) = 0;
    virtual Acad::ErrorStatus readItem(Adesk::Int16* value) = 0;
    virtual Acad::ErrorStatus readItem(Adesk::Int32* value) = 0;
    virtual Acad::ErrorStatus readItem(Adesk::Int64* value) = 0;
    virtual Acad::ErrorStatus readItem(bool* value) = 0;
    virtual Acad::ErrorStatus readItem(AcDbObjectId* id) = 0;
    virtual Acad::ErrorStatus readItem(AcGePoint3d* point) = 0;
    virtual Acad::ErrorStatus readItem(AcGeVector3d* vector) = 0;
};

class AcDbDxfFiler {
public:
    virtual ~AcDbDxfFiler() = default;
    virtual Acad::ErrorStatus filerStatus() const = 0;
    virtual void resetFilerStatus() = 0;
    virtual AcDb::FilerType filerType() const = 0;

    // Reading: the next group as a result buffer (points as one group). eEndOfFile at the end.
    virtual Acad::ErrorStatus readResBuf(resbuf* group) = 0;
    // Gives the last group back, so that the next read returns it again.
    virtual Acad::ErrorStatus pushBackItem() = 0;
    virtual bool atEOF() = 0;
    // True when the next group is the marker of that subclass, which is then passed over.
    virtual bool atSubclassData(const ACHAR* marker) = 0;

    virtual Acad::ErrorStatus writeItem(int code, const ACHAR* text) = 0;
    virtual Acad::ErrorStatus writeItem(int code, double value) = 0;
    virtual Acad::ErrorStatus writeItem(int code, Adesk::Int16 value) = 0;
    virtual Acad::ErrorStatus writeItem(int code, Adesk::Int32 value) = 0;
    virtual Acad::ErrorStatus writeItem(int code, bool value) = 0;
    virtual Acad::ErrorStatus writeItem(int code, const AcDbObjectId& id) = 0;
    virtual Acad::ErrorStatus writeItem(int code, const AcGePoint3d& point) = 0;
    virtual Acad::ErrorStatus writeItem(int code, const AcGeVector3d& vector) = 0;
    virtual Acad::ErrorStatus writeItem(const resbuf& group) = 0;
};

namespace host {

// Everything that was written, in order; reads it back from the start.
class MemoryFiler final : public AcDbDwgFiler {
public:
    using Item =
        std::variant<std::wstring, double, std::int64_t, bool, AcDbObjectId, AcGePoint3d, AcGeVector3d>;
    explicit MemoryFiler(AcDb::FilerType type = AcDb::kUndoFiler) : type_(type) {}
    void rewind() { next_ = 0, status_ = Acad::eOk; }

    Acad::ErrorStatus filerStatus() const override { return status_; }
    void resetFilerStatus() override { status_ = Acad::eOk; }
    AcDb::FilerType filerType() const override { return type_; }
    Acad::ErrorStatus writeItem(const ACHAR* text) override;
    Acad::ErrorStatus writeItem(double value) override;
    Acad::ErrorStatus writeItem(Adesk::Int16 value) override;
    Acad::ErrorStatus writeItem(Adesk::Int32 value) override;
    Acad::ErrorStatus writeItem(Adesk::Int64 value) override;
    Acad::ErrorStatus writeItem(bool value) override;
    Acad::ErrorStatus writeItem(const AcDbObjectId& id) override;
    Acad::ErrorStatus writeItem(const AcGePoint3d& point) override;
    Acad::ErrorStatus writeItem(const AcGeVector3d& vector) override;
    Acad::ErrorStatus readItem(std::wstring& text) override;
    Acad::ErrorStatus readItem(ACHAR** text) override;
    Acad::ErrorStatus readItem(double* value) override;
    Acad::ErrorStatus readItem(Adesk::Int16* value) override;
    Acad::ErrorStatus readItem(Adesk::Int32* value) override;
    Acad::ErrorStatus readItem(Adesk::Int64* value) override;
    Acad::ErrorStatus readItem(bool* value) override;
    Acad::ErrorStatus readItem(AcDbObjectId* id) override;
    Acad::ErrorStatus readItem(AcGePoint3d* point) override;
    Acad::ErrorStatus readItem(AcGeVector3d* vector) override;

private:
    template <class T> Acad::ErrorStatus take(T& out);
    std::vector<Item> items_;
    size_t next_ = 0;
    AcDb::FilerType type_;
    Acad::ErrorStatus status_ = Acad::eOk;
};

// Reads the groups of one object for a class of a module. Texts and binary chunks in the buffers belong
// to the filer and stand as long as it does.
class GroupListFiler final : public AcDbDxfFiler {
public:
    GroupListFiler(const GroupList& groups, ReadContext& context);
    Acad::ErrorStatus filerStatus() const override { return status_; }
    void resetFilerStatus() override { status_ = Acad::eOk; }
    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    Acad::ErrorStatus readResBuf(resbuf* group) override;
    Acad::ErrorStatus pushBackItem() override;
    bool atEOF() override;
    bool atSubclassData(const ACHAR* marker) override;
    Acad::ErrorStatus writeItem(int, const ACHAR*) override { return Acad::eFilerError; }
    Acad::ErrorStatus writeItem(int, double) override { return Acad::eFilerError; }
    Acad::ErrorStatus writeItem(int, Adesk::Int16) override { return Acad::eFilerError; }
    Acad::ErrorStatus writeItem(int, Adesk::Int32) override { return Acad::eFilerError; }
    Acad::ErrorStatus writeItem(int, bool) override { return Acad::eFilerError; }
    Acad::ErrorStatus writeItem(int, const AcDbObjectId&) override { return Acad::eFilerError; }
    Acad::ErrorStatus writeItem(int, const AcGePoint3d&) override { return Acad::eFilerError; }
    Acad::ErrorStatus writeItem(int, const AcGeVector3d&) override { return Acad::eFilerError; }
    Acad::ErrorStatus writeItem(const resbuf&) override { return Acad::eFilerError; }

private:
    std::vector<Group> groups_;
    std::deque<std::wstring> texts_;
    ReadContext& context_;
    size_t next_ = 0, previous_ = 0;
    Acad::ErrorStatus status_ = Acad::eOk;
};

// Passes what a class of a module writes on to the file being written.
class GroupWriterFiler final : public AcDbDxfFiler {
public:
    explicit GroupWriterFiler(GroupWriter& writer) : writer_(writer) {}
    Acad::ErrorStatus filerStatus() const override { return Acad::eOk; }
    void resetFilerStatus() override {}
    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    Acad::ErrorStatus readResBuf(resbuf*) override { return Acad::eFilerError; }
    Acad::ErrorStatus pushBackItem() override { return Acad::eFilerError; }
    bool atEOF() override { return true; }
    bool atSubclassData(const ACHAR*) override { return false; }
    Acad::ErrorStatus writeItem(int code, const ACHAR* text) override;
    Acad::ErrorStatus writeItem(int code, double value) override;
    Acad::ErrorStatus writeItem(int code, Adesk::Int16 value) override;
    Acad::ErrorStatus writeItem(int code, Adesk::Int32 value) override;
    Acad::ErrorStatus writeItem(int code, bool value) override;
    Acad::ErrorStatus writeItem(int code, const AcDbObjectId& id) override;
    Acad::ErrorStatus writeItem(int code, const AcGePoint3d& point) override;
    Acad::ErrorStatus writeItem(int code, const AcGeVector3d& vector) override;
    Acad::ErrorStatus writeItem(const resbuf& group) override;

private:
    GroupWriter& writer_;
};

} // namespace host
