// Running the built program as a user does, in a folder of its own that is gone afterwards.
#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace apptest {

struct Outcome {
    int status = -1; // negative: the signal that ended it
    std::string output, errors;
};

class Workplace {
public:
    Workplace();
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    // The words of the command line as a shell reads them; runs in the folder, with `input` as standard
    // input. "DATA" stands for the folder of sample drawings.
    Outcome run(const std::string& words, const std::string& input = {}) const;
    // The shell's command for it, settings folder and all.
    std::string command(const std::string& words) const;

    void write(const std::string& name, const std::string& text) const;
    std::string read(const std::string& name) const;
    // Names in the folder, sorted.
    std::vector<std::string> files() const;
    std::filesystem::path path() const { return folder_ / "work"; }

private:
    std::filesystem::path folder_;
};

} // namespace apptest
