// Reading a command line by a table of options.
#include "apps/corvane/arguments.h"

#include <algorithm>

namespace app {
namespace {

const Option* find(std::span<const Option> options, const std::string& word) {
    const auto at = std::find_if(options.begin(), options.end(), [&](const Option& option) {
        return word == option.name || (*option.letter && word == option.letter);
    });
    return at == options.end() ? nullptr : &*at;
}

std::string accepted(std::span<const Option> options) {
    std::string list;
    for (const Option& option : options) list += (list.empty() ? "" : ", ") + std::string(option.name);
    return list;
}

// A word parted into option and value: "--name=value", or "-cvalue" with the letter in front.
struct Parted {
    std::string name, value;
    bool hasValue = false;
};
Parted parted(const std::string& word) {
    if (word.starts_with("--")) {
        const size_t equals = word.find('=');
        if (equals == word.npos) return {word, "", false};
        return {word.substr(0, equals), word.substr(equals + 1), true};
    }
    if (word.size() > 2) return {word.substr(0, 2), word.substr(2), true};
    return {word, "", false};
}

} // namespace

Arguments Arguments::parse(std::span<const std::string> words, std::span<const Option> options,
                           std::string& error) {
    Arguments result;
    bool optionsEnded = false;
    for (size_t i = 0; i < words.size() && error.empty(); ++i) {
        const std::string& word = words[i];
        if (optionsEnded || word.size() < 2 || word[0] != '-') {
            result.positional_.push_back(word);
            continue;
        }
        if (word == "--") {
            optionsEnded = true;
            continue;
        }
        Parted part = parted(word);
        const Option* option = find(options, part.name);
        if (!option) {
            error = "unknown option " + word + "; accepted are " + accepted(options);
        } else if (!*option->argument && part.hasValue) {
            error = std::string(option->name) + " takes no value";
        } else if (*option->argument && !part.hasValue && i + 1 == words.size()) {
            error = std::string(option->name) + " needs a value: " + option->name + " " + option->argument;
        } else {
            if (*option->argument && !part.hasValue) part.value = words[++i];
            result.given_.emplace_back(option->name, part.value);
        }
    }
    return result;
}

bool Arguments::has(const char* option) const {
    return std::any_of(given_.begin(), given_.end(), [&](const auto& one) { return one.first == option; });
}

std::string Arguments::value(const char* option) const {
    const std::vector<std::string> all = values(option);
    return all.empty() ? std::string() : all.back();
}

std::vector<std::string> Arguments::values(const char* option) const {
    std::vector<std::string> all;
    for (const auto& [name, value] : given_)
        if (name == option) all.push_back(value);
    return all;
}

} // namespace app
