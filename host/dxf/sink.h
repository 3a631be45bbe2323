// Where a drawing being written goes: groups become bytes, text or binary, in chunks of memory.
#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/db/groups.h"
#include "host/dxf/strings.h"

namespace host::dxf {

class GroupSink : public GroupWriter {
public:
    explicit GroupSink(TextEncoder encoder) : encoder_(std::move(encoder)) { open(); }
    // All that was written, in order.
    std::vector<std::string_view> chunks();
    size_t bytes() const { return closed_ + current_.size(); }
    // Values that the form of file couldn't hold and that were cut.
    long cut() const { return cut_; }

protected:
    // Room for one more group; starts a new chunk when this one is full.
    std::string& room() {
        if (current_.size() >= kChunk) close();
        return current_;
    }
    TextEncoder encoder_;
    long cut_ = 0;

private:
    static constexpr size_t kChunk = size_t(1) << 20;
    void open() { current_.reserve(kChunk + 4096); }
    void close();
    std::string current_;
    std::vector<std::string> full_;
    size_t closed_ = 0;
};

// Two lines a group: the code, right-aligned to three places, and the value.
class TextSink : public GroupSink {
public:
    using GroupSink::GroupSink;
    void write(const Group& group) override;
};

// The sentinel, then code and value in their binary widths; codes of one byte for R12 and before.
class BinarySink : public GroupSink {
public:
    // `first`: the sentinel stands before the first group.
    BinarySink(TextEncoder encoder, bool shortCodes, bool first);
    void write(const Group& group) override;

private:
    void code(std::string& out, int code);
    void integer(std::string& out, const Group& group);
    void chunk(std::string& out, const Group& group);
    bool shortCodes_;
};

} // namespace host::dxf
