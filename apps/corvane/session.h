// The host as this program uses it: started, with a front end, the module and one drawing; and put away
// in order at the end.
#pragma once
#include <memory>
#include <string>

#include "host/db/database.h"
#include "host/ed/document.h"
#include "host/ed/frontend.h"

namespace app {

class Session {
public:
    // Starts the host. The front end must outlive the session; null stands for a silent one.
    explicit Session(host::FrontEnd* frontEnd = nullptr);
    // Closes the drawings and unloads the module.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // The module beside the program, or the one that CORVANE_MODULE names; `language` may be empty. False,
    // and told, when it can't be loaded.
    bool loadModule(const std::string& language);
    void open(std::unique_ptr<AcDbDatabase> database);
    // The current drawing; commands may have made another one current.
    AcDbDatabase& drawing() const { return *curDoc()->database(); }

private:
    std::wstring module_;
};

} // namespace app
