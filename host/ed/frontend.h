// The front end: who answers the editor's prompts. One is set at start-up: the script one, the
// interactive prompt, or the desk.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "host/db/objectid.h"
#include "host/ge/point3d.h"

class AcEdJig;

namespace host {

// What the editor asks for.
// What a prompt for a file is after.
struct FileWish {
    std::wstring title, initial;
    std::wstring extensions; // without dots, parted by semicolons; empty: any
    bool saving = false;
};

struct PromptRequest {
    enum class Kind {
        command,
        point,
        corner,
        distance,
        angle,
        integer,
        real,
        text,
        line,
        keyword,
        entity,
        nestedEntity,
        objects,
        file,
        dialog // an action on the dialog that is open, see dialog_action.h
    };
    Kind kind = Kind::command;
    std::wstring text;                  // as shown, may begin with a line end
    std::vector<std::wstring> keywords; // as shown, in order
    std::optional<AcGePoint3d> base;    // UCS
    int bits = 0;                       // of acedInitGet
    std::optional<FileWish> file;       // of prompts for a file
    bool blanksEnd = true;              // a blank ends the answer (texts with blanks: false)
    // The cursor matters: answers may be picked, and scripts may move it and hold keys before they answer.
    bool pointing() const;
};

// How it was answered. Texts are as typed; the editor reads them (points, keywords, numbers, selections).
struct PromptReply {
    enum class Kind { text, enter, cancel, point, entity, exhausted };
    Kind kind = Kind::enter;
    std::wstring text;
    AcGePoint3d point;   // point and entity: UCS
    AcDbObjectId entity; // entity
    int line = 0;        // of the script it stands in, from 1; 0 when it was typed
};

struct MessageBox {
    std::wstring text, caption;
    unsigned style = 0; // kMessageOk, kMessageYesNo
};

class FrontEnd {
public:
    virtual ~FrontEnd() = default;
    // Asks once. `exhausted` when no answer will ever come.
    virtual PromptReply ask(const PromptRequest& request) = 0;
    // Whether the first prompt without an answer ends the command; else the command hears of an Esc.
    virtual bool unwindsWhenExhausted() const { return false; }
    // Text for the command line window, as it comes: without line ends of its own.
    virtual void print(const std::wstring& text) = 0;
    virtual int messageBox(const MessageBox& box) = 0;
    // Opens a file or address in the user's viewer; scripts say in one line what would have been opened.
    virtual void open(const std::wstring& target) = 0;
    // Work done so far, 0 to 1, with a caption; false when the user wants it stopped.
    virtual bool progress(const std::wstring& caption, double share) = 0;
    virtual void redraw() {}
    // Time for somebody who watches; scripts don't wait.
    virtual void wait(unsigned milliseconds) { (void)milliseconds; }
    virtual bool interactive() const { return false; }
};

FrontEnd& frontEnd();
// The front end in use until the next call; null puts the silent one (every prompt exhausted) in place.
void setFrontEnd(FrontEnd* frontEnd);

} // namespace host
