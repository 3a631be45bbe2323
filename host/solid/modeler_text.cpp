// Lines, records and their fields.
#include "host/solid/modeler_text.h"

#include "host/os/numbers.h"

namespace host {
namespace {

constexpr int kHeaderLines = 3, kHistorySince = 700;

std::vector<std::string_view> wordsOf(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    std::vector<std::string_view> words;
    size_t at = text.find_first_not_of(kBlanks);
    while (at != text.npos) {
        const size_t end = std::min(text.find_first_of(kBlanks, at), text.size());
        words.push_back(text.substr(at, end - at));
        at = text.find_first_not_of(kBlanks, end);
    }
    return words;
}

ModelerRecord recordOf(std::string_view text, int version) {
    ModelerRecord record;
    std::vector<std::string_view> words = wordsOf(text);
    // Records may begin with their own number.
    if (!words.empty() && words[0].size() > 1 && words[0][0] == '-' && parseInteger(words[0].substr(1)))
        words.erase(words.begin());
    if (words.empty()) return record;
    record.kind = words[0];
    record.fields.assign(words.begin() + 1, words.end());
    for (const std::string_view field : record.fields)
        if (field.size() > 1 && field[0] == '$')
            if (const auto index = parseInteger(field.substr(1))) record.pointers.push_back(int(*index));
    const size_t common = version >= kHistorySince ? 2 : 1;
    record.pointers.erase(record.pointers.begin(),
                          record.pointers.begin() + long(std::min(common, record.pointers.size())));
    return record;
}

} // namespace

std::string plainModelerText(std::string_view line) {
    std::string plain;
    for (size_t i = 0; i < line.size(); ++i) {
        const auto c = static_cast<unsigned char>(line[i]);
        if (c == '^' && i + 1 < line.size() && line[i + 1] == ' ')
            plain += 'A', ++i; // a letter that would be a control character
        else
            plain += c > ' ' && c < 0x7F ? char(0x9F - c) : char(c);
    }
    return plain;
}

ModelerText readModelerText(const GroupList& groups) {
    ModelerText modeler;
    int lines = 0;
    size_t body = 0;
    for (const Group group : groups) {
        if (group.code != 1 && group.code != 3) continue;
        if (group.code == 1) {
            modeler.text += '\n';
            if (lines++ == kHeaderLines) body = modeler.text.size();
        }
        modeler.text += plainModelerText(group.text);
    }
    if (body == 0) return modeler;
    const auto head = wordsOf(modeler.text);
    modeler.version = int(parseInteger(head.empty() ? "" : head[0]).value_or(0));
    const std::string_view all = modeler.text;
    for (size_t end = all.find('#', body); end != all.npos; end = all.find('#', body)) {
        modeler.records.push_back(recordOf(all.substr(body, end - body), modeler.version));
        body = end + 1;
    }
    return modeler;
}

} // namespace host
