// Words of resource scripts.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host::rc {

struct Token {
    enum class Kind { word, number, text, comma, bar, plus, minus, open, close, end } kind = Kind::end;
    std::wstring text{}; // of a word or a text in quotes
    long long number = 0;
    int line = 1;
    bool startsLine = false;
};

struct Complaint {
    int line;
    std::string what;
};

// Cuts the script into tokens; names from `#define NAME number` come as their numbers. Comments and other
// lines with # are left out. What can't be read is complained about and left out.
std::vector<Token> tokens(std::string_view utf8, std::vector<Complaint>& complaints);

} // namespace host::rc
