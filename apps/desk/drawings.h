// The open drawings as the window handles them: reading, saving and closing with their questions, the tabs
// and the list of recent files. Commands open and close drawings, too; this one hears of it.
#pragma once
#include <functional>
#include <memory>
#include <string>

#include "apps/desk/drawing_tabs.h"
#include "host/ed/document.h"
#include "host/ed/editor_reactor.h"

class QWidget;

namespace desk {

class Drawings final : private AcApDocManagerReactor, private AcEditorReactor {
public:
    // `window` is what questions stand before; `tell` prints on the command line.
    Drawings(QWidget* window, std::function<void(const std::wstring&)> tell);
    ~Drawings() override;
    Drawings(const Drawings&) = delete;
    Drawings& operator=(const Drawings&) = delete;

    std::function<void(AcDbDatabase* database)> onClosing;

    // The drawing of a file; an empty one for "", and, told, when it can't be read. Not yet a document.
    std::unique_ptr<AcDbDatabase> read(const std::string& path);
    // To its own file, or to one that the user is asked for. False, told, when it was not saved.
    bool save(AcApDocument& document);
    // Asks about unsaved changes and saves if that is wanted; false when the user wants to stay.
    bool mayClose(AcApDocument& document);
    bool mayCloseAll();
    // Without a question. There is always a drawing to work on: behind the last an empty one is begun.
    void close(AcApDocument& document);
    // Takes away the empty drawing that the program began with, once a file was opened beside it.
    void dropUnused();

    std::vector<TabLook> tabs() const;
    int current() const;
    AcApDocument* at(int tab) const; // null when there is none

private:
    void documentCreated(AcApDocument* document) override;
    void documentToBeDestroyed(AcApDocument* document) override;
    void saveComplete(AcDbDatabase* database, const ACHAR* path) override;

    QWidget* window_;
    std::function<void(const std::wstring&)> tell_;
    AcApDocument* first_ = nullptr; // while it is the empty one of the start
    bool opened_ = false;           // a file, since the last look
};

} // namespace desk
