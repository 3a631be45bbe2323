// Copies of drawings with unsaved changes, for the case that the program ends without saving them. Each
// running program keeps a folder of its own under the user's configuration folder, with a lock that tells
// whether the program still runs; a clean end takes the folder away.
#pragma once
#include <QLockFile>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/ed/document.h"

namespace desk {

class Autosave {
public:
    explicit Autosave(std::string folder); // of all programs
    ~Autosave();
    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;

    // Writes a copy of each drawing whose unsaved changes have no copy yet, and takes away those of drawings
    // that were saved or closed. Each file is written whole or not at all. What went wrong; empty when all is
    // well. Not while a command runs.
    std::string save();
    // The drawing is closed, with its changes saved or given up.
    void forget(const AcDbDatabase* database);

    // A copy that a program left which ended without a clean end.
    struct Left {
        std::string copy;
        std::wstring path, title; // of the drawing; no path: it was new
        AcDb::AcDbDwgVersion version = AcDb::kDHL_Unknown;
        std::unique_ptr<AcDbDatabase> read(std::string& error) const; // null with the reason
    };
    // Found at the first call and kept from other programs until forgotten or kept for later.
    std::vector<Left> leftBehind();
    void forgetLeft();   // their files go
    void keepForLater(); // another start will find them

private:
    struct Copy {
        int number;
        unsigned long changes; // that the copy holds
    };
    std::string fileOf(const Copy& copy, const char* ending) const;
    std::string write(AcApDocument& document, const Copy& copy);
    void remove(const Copy& copy);
    bool takeFolder();

    std::string all_, own_;
    std::unique_ptr<QLockFile> lock_;
    std::map<const AcDbDatabase*, Copy> copies_;
    int last_ = 0;
    struct Session { // of another program
        std::string folder;
        std::unique_ptr<QLockFile> lock;
    };
    std::vector<Session> left_;
};

} // namespace desk
