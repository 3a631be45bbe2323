// Names to records; what is asked for before it exists gets an id that waits.
#include "host/dxf/names.h"

#include <algorithm>

#include "host/os/text.h"

namespace host::dxf {
namespace {

// Walks through the file with an eye on handles and on the names of table records.
class Surveyor {
public:
    Surveyor(std::string_view bytes, TextDecoder& decoder) : scanner_(bytes), decoder_(decoder) {}

    template <class Record> std::uint64_t run(Record record) {
        Group group;
        while (scanner_.next(group) == Scanner::Step::group) {
            if (group.code == 0) {
                finish(record);
                begin(group.text);
            } else {
                take(group);
            }
        }
        finish(record);
        return highest_;
    }

private:
    void begin(std::string_view kind) {
        what_ = kind;
        handle_ = 0;
        name_.clear();
        if (kind == "ENDTAB" || kind == "ENDSEC") table_ = nullptr;
        if (kind == "SECTION") header_ = false;
    }
    void take(const Group& group) {
        if (group.code == 2 && name_.empty()) {
            if (what_ == "SECTION") header_ = bare(group.text) == "HEADER";
            if (what_ == "TABLE") table_ = tableKind(bare(group.text));
            if (table_ && what_ == table_->name) name_ = decoder_.decode(group.text);
        }
        if (group.type != GroupType::handle || header_) return;
        // References count, too: nothing new may come to stand where one leads.
        if (group.handle() <= kHighestHandle) highest_ = std::max(highest_, group.handle());
        const int handleCode = what_ == "DIMSTYLE" ? 105 : 5;
        if (group.code == handleCode && !handle_) handle_ = group.handle();
    }
    template <class Record> void finish(Record& record) {
        if (!name_.empty()) record(*table_, name_, handle_);
    }

    Scanner scanner_;
    TextDecoder& decoder_;
    std::string_view what_;
    std::string name_;
    std::uint64_t handle_ = 0, highest_ = 0;
    const TableKind* table_ = nullptr;
    bool header_ = false;
};

} // namespace

void NameBook::survey() {
    if (surveyed_) return;
    surveyed_ = true;
    // The stream's current text may live in its decoder, which therefore is not lent.
    TextDecoder decoder = stream_.decoder().fresh();
    const std::uint64_t highest =
        Surveyor(stream_.bytes(), decoder)
            .run([this](const TableKind& kind, std::string_view name, std::uint64_t handle) {
                if (handle && handle <= kHighestHandle)
                    ahead_.try_emplace({&kind, lower(wide(name))}, handle);
            });
    database_.raiseHandseed(highest + 1);
}

AcDbObjectId NameBook::find(const TableKind& kind, std::string_view name) {
    auto& known = known_[&kind];
    if (const auto found = known.find(name); found != known.end()) return found->second;
    const std::wstring wideName = wide(name);
    AcDbObjectId id = database_.find(kind.table(), wideName);
    if (id.isNull()) {
        survey();
        const Key key{&kind, lower(wideName)};
        if (const auto ahead = ahead_.find(key); ahead != ahead_.end())
            id = AcDbObjectId(database_.cellOf(ahead->second, true));
        else if (const auto waits = waiting_.find(key); waits != waiting_.end())
            id = waits->second.id;
        else
            id = freshId();
        waiting_.try_emplace(key, Waiting{wideName, id});
    }
    known.emplace(std::string(name), id);
    return id;
}

// An id under a handle that nobody else will get.
AcDbObjectId NameBook::freshId() {
    const std::uint64_t handle = database_.handseed();
    database_.raiseHandseed(handle + 1);
    return AcDbObjectId(database_.cellOf(handle, true));
}

std::uint64_t NameBook::waitingHandle(const TableKind& kind, const std::wstring& name) {
    const auto found = waiting_.find({&kind, lower(name)});
    return found == waiting_.end() ? 0 : std::uint64_t(found->second.id.handle());
}

std::vector<NameBook::Missing> NameBook::missing() const {
    std::vector<Missing> all;
    for (const auto& [key, waiting] : waiting_)
        if (!waiting.id.isValid()) all.push_back({key.first, waiting.name, waiting.id});
    // In the order in which they were asked for, whatever their names.
    std::sort(all.begin(), all.end(), [](const Missing& a, const Missing& b) { return a.id < b.id; });
    return all;
}

} // namespace host::dxf
