// Result buffers: chains of typed values that xdata, filters, xrecords and the editor's older
// functions pass about. Strings and binary chunks belong to the buffer.
#pragma once
#include <utility>

#include "host/db/adesk.h"
#include "host/db/objectid.h"

struct ads_binary {
    short clen = 0;
    char* buf = nullptr;
};
union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    ACHAR* rstring;
    std::int64_t rlname[2];
    Adesk::Int32 rlong;
    std::int64_t mnInt64;
    ads_binary rbinary;
    ads_u_val() : rpoint{0, 0, 0} {}
};
struct resbuf {
    resbuf* rbnext = nullptr;
    short restype = 0;
    ads_u_val resval;
};

// What kind of value a group code or a result type carries.
enum class ResultKind { none, real, point, shortInt, longInt, int64, text, name, handle, binary };
namespace host {
ResultKind resultKind(int restype);
} // namespace host

// A fresh buffer of that type; never null. Strings are null until set.
resbuf* acutNewRb(int restype);
// Releases the whole chain; RTNORM. Null is fine.
int acutRelRb(resbuf* chain);
// A chain from type-value pairs that end in 0 (or RTNONE): texts as const wchar_t*, reals as double, points
// as const double*, integers as int, names as const ads_name. Null when a type is unknown.
resbuf* acutBuildList(int restype, ...);
// Copies text into a buffer's string; RTNORM.
int acutNewString(const ACHAR* text, ACHAR*& copy);
void acutDelString(ACHAR*& text);
void acutDelBuffer(void*& buffer);

namespace host {
// A deep copy of a chain.
resbuf* copyChain(const resbuf* chain);
// Owns a chain for the length of a scope.
class ResbufChain {
public:
    explicit ResbufChain(resbuf* chain = nullptr) : chain_(chain) {}
    ~ResbufChain() { acutRelRb(chain_); }
    ResbufChain(const ResbufChain&) = delete;
    ResbufChain& operator=(const ResbufChain&) = delete;
    resbuf* get() const { return chain_; }
    resbuf** address() { return &chain_; }
    resbuf* release() { return std::exchange(chain_, nullptr); }

private:
    resbuf* chain_;
};
} // namespace host
