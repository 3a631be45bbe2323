// Result buffers: making, copying, releasing and building them from arguments. Their way from and
// to groups is in chain.cpp.
#include "host/db/resbuf.h"

#include <cstdarg>
#include <cstring>
#include <cwchar>

#include "host/db/groups.h"

namespace host {

namespace {
ResultKind kindOfCode(int code) {
    switch (groupType(code)) {
    case GroupType::real: {
        const bool point = (code >= 10 && code <= 18) || (code >= 110 && code <= 119) ||
                           (code >= 210 && code <= 219) || (code >= 1010 && code <= 1013);
        return point ? ResultKind::point : ResultKind::real;
    }
    case GroupType::boolean:
    case GroupType::int16: return ResultKind::shortInt;
    case GroupType::int32: return ResultKind::longInt;
    case GroupType::int64: return ResultKind::int64;
    case GroupType::bytes: return ResultKind::binary;
    case GroupType::handle:
        return code == 5 || code == 105 || code == 1005 ? ResultKind::handle : ResultKind::name;
    case GroupType::text: break;
    }
    return ResultKind::text;
}
} // namespace

ResultKind resultKind(int restype) {
    switch (restype) {
    case RTREAL:
    case RTANG:
    case RTORINT: return ResultKind::real;
    case RTPOINT:
    case RT3DPOINT: return ResultKind::point;
    case RTSHORT: return ResultKind::shortInt;
    case RTLONG: return ResultKind::longInt;
    case RTSTR:
    case RTDXF0:
    case -4: return ResultKind::text;
    case RTENAME:
    case RTPICKS:
    case -1:
    case -2: return ResultKind::name;
    default: break;
    }
    return restype >= 0 && restype <= 1071 ? kindOfCode(restype) : ResultKind::none;
}

namespace {
bool ownsText(const resbuf& b) {
    const ResultKind kind = resultKind(b.restype);
    return kind == ResultKind::text || kind == ResultKind::handle;
}
} // namespace

resbuf* copyChain(const resbuf* chain) {
    resbuf* first = nullptr;
    resbuf** link = &first;
    for (; chain; chain = chain->rbnext) {
        resbuf* copy = acutNewRb(chain->restype);
        copy->resval = chain->resval;
        if (ownsText(*chain)) {
            copy->resval.rstring = nullptr;
            if (chain->resval.rstring) acutNewString(chain->resval.rstring, copy->resval.rstring);
        } else if (resultKind(chain->restype) == ResultKind::binary && chain->resval.rbinary.buf) {
            const auto length = size_t(chain->resval.rbinary.clen);
            copy->resval.rbinary.buf = new char[length + 1];
            std::memcpy(copy->resval.rbinary.buf, chain->resval.rbinary.buf, length);
        }
        *link = copy;
        link = &copy->rbnext;
    }
    return first;
}

} // namespace host

resbuf* acutNewRb(int restype) {
    auto* buffer = new resbuf;
    buffer->restype = static_cast<short>(restype);
    if (host::resultKind(restype) == ResultKind::binary) buffer->resval.rbinary = {};
    return buffer;
}

int acutRelRb(resbuf* chain) {
    while (chain) {
        if (host::ownsText(*chain))
            delete[] chain->resval.rstring;
        else if (host::resultKind(chain->restype) == ResultKind::binary)
            delete[] chain->resval.rbinary.buf;
        delete std::exchange(chain, chain->rbnext);
    }
    return RTNORM;
}

int acutNewString(const ACHAR* text, ACHAR*& copy) {
    const std::wstring_view from = text ? text : L"";
    copy = new ACHAR[from.size() + 1];
    std::wmemcpy(copy, from.data(), from.size());
    copy[from.size()] = 0;
    return RTNORM;
}

void acutDelString(ACHAR*& text) { delete[] std::exchange(text, nullptr); }

void acutDelBuffer(void*& buffer) { delete[] static_cast<char*>(std::exchange(buffer, nullptr)); }

resbuf* acutBuildList(int restype, ...) {
    host::ResbufChain list;
    resbuf* last = nullptr;
    va_list arguments;
    va_start(arguments, restype);
    bool known = true;
    for (int type = restype; type != 0 && type != RTNONE; type = va_arg(arguments, int)) {
        const ResultKind kind = host::resultKind(type);
        const bool bare = type == RTNIL || type == RTT || type == RTLB || type == RTLE || type == RTDOTE ||
                          type == RTVOID || type == -3;
        if (!(known = bare || (kind != ResultKind::none && kind != ResultKind::binary))) break;
        resbuf* buffer = acutNewRb(type);
        (last ? last->rbnext : *list.address()) = buffer;
        last = buffer;
        switch (kind) {
        case ResultKind::real: buffer->resval.rreal = va_arg(arguments, double); break;
        case ResultKind::point: ads_point_set(va_arg(arguments, const double*), buffer->resval.rpoint); break;
        case ResultKind::shortInt: buffer->resval.rint = static_cast<short>(va_arg(arguments, int)); break;
        case ResultKind::longInt: buffer->resval.rlong = va_arg(arguments, int); break;
        case ResultKind::int64: buffer->resval.mnInt64 = va_arg(arguments, std::int64_t); break;
        case ResultKind::name:
            ads_name_set(va_arg(arguments, const std::int64_t*), buffer->resval.rlname);
            break;
        case ResultKind::text:
        case ResultKind::handle:
            acutNewString(va_arg(arguments, const ACHAR*), buffer->resval.rstring);
            break;
        default: break;
        }
    }
    va_end(arguments);
    return known ? list.release() : nullptr;
}
