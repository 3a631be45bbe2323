// Reading a command line by a table of options. Every option has a long name; "--name value" and
// "--name=value" are the same, "--" ends the options, "-" is an argument like any other.
#pragma once
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace app {

struct Option {
    const char* name;     // with its dashes: "--output"
    const char* letter;   // the short form with its dash, or ""
    const char* argument; // what it takes, as help shows it; "" for a switch
    const char* help;
};

class Arguments {
public:
    // `error` says what is wrong with the command line, and what would have been accepted.
    static Arguments parse(std::span<const std::string> words, std::span<const Option> options,
                           std::string& error);

    bool has(const char* option) const;
    std::string value(const char* option) const; // of the last one given; empty when none was
    std::vector<std::string> values(const char* option) const;
    const std::vector<std::string>& positional() const { return positional_; }

private:
    std::vector<std::pair<std::string, std::string>> given_; // by long name, in order
    std::vector<std::string> positional_;
};

} // namespace app
