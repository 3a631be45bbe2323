// A monitor at work for as long as it is wanted.
#pragma once
#include "core/host/editor.h"
#include "core/host/interaction.h"

namespace corvane::deform {

// While one lives the monitor hears where the cursor goes over the current document; ok() is false when there
// is none.
class InputListening {
public:
    explicit InputListening(AcEdInputPointMonitor& monitor) : monitor_(monitor), document_(curDoc()) {
        if (document_ && document_->inputPointManager()->addPointMonitor(&monitor_) != Acad::eOk)
            document_ = nullptr;
    }
    ~InputListening() {
        if (document_) document_->inputPointManager()->removePointMonitor(&monitor_);
    }
    InputListening(const InputListening&) = delete;
    InputListening& operator=(const InputListening&) = delete;
    bool ok() const { return document_ != nullptr; }

private:
    AcEdInputPointMonitor& monitor_;
    AcApDocument* document_;
};

} // namespace corvane::deform
