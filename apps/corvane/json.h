// JSON as text, indented by two blanks, in the order in which it is written.
#pragma once
#include <string>
#include <string_view>

namespace app {

class JsonWriter {
public:
    // Each value stands under a key in objects, under none (an empty one) in lists.
    void beginObject(std::string_view key = {}) { open(key, '{'); }
    void endObject() { close('}'); }
    void beginList(std::string_view key = {}) { open(key, '['); }
    void endList() { close(']'); }
    void text(std::string_view key, std::string_view value);
    void whole(std::string_view key, long value);
    void real(std::string_view key, double value);
    void truth(std::string_view key, bool value);
    void null(std::string_view key);
    // All that was written, with a line end.
    std::string take();

private:
    void open(std::string_view key, char bracket);
    void close(char bracket);
    void place(std::string_view key);
    void quote(std::string_view value);
    std::string out_;
    int depth_ = 0;
    bool first_ = true; // nothing stands in the innermost bracket yet
};

} // namespace app
