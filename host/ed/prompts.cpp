// The prompts for points, numbers, texts and keywords.
#include <cmath>
#include <numbers>

#include "host/ed/editor.h"
#include "host/ed/interpreter.h"
#include "host/ed/message_filter.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/os/keys.h"
#include "host/os/text.h"

namespace host {
namespace {

using Kind = PromptRequest::Kind;

InputRules pending;
std::wstring lastInput;
int unanswered = 0;     // asks in a row that met the end of the answers
int runningDialogs = 0; // one inside another

// A command that asks this often after the last answer will never stop by itself.
constexpr int kMostUnanswered = 32;

enum class Step { again, told, done }; // told: asked again without a further word

// One prompt: asks until an answer serves. `take` gets texts and picked points; it says again for those that
// don't serve, after telling why.
class Prompt {
public:
    Prompt(Kind kind, const ACHAR* text, const ads_point base) : rules_(takeInputRules()) {
        request_.kind = kind;
        request_.text = text ? text : L"";
        request_.bits = rules_.bits;
        for (const Keyword& keyword : rules_.keywords) request_.keywords.push_back(keyword.shown);
        if (base) request_.base = AcGePoint3d(base[X], base[Y], base[Z]);
    }
    void keepBlanks() { request_.blanksEnd = false; }
    void wish(FileWish file) { request_.file = std::move(file); }
    int bits() const { return rules_.bits; }
    const std::optional<AcGePoint3d>& base() const { return request_.base; }

    template <class Take> int run(const wchar_t* otherwise, Take take) {
        for (;;) {
            const PromptReply reply = askFrontEnd(request_);
            if (reply.kind == PromptReply::Kind::cancel) return RTCAN;
            if (reply.kind == PromptReply::Kind::enter) {
                if (!(rules_.bits & RSG_NONULL)) return RTNONE;
                printLine(otherwise);
                continue;
            }
            if (reply.kind == PromptReply::Kind::text) {
                if (const Keyword* keyword = matchKeyword(rules_.keywords, reply.text)) {
                    setLastInput(keyword->global);
                    return RTKWORD;
                }
            }
            const Step step = take(reply);
            if (step == Step::done) return RTNORM;
            if (step == Step::told) continue;
            if (reply.kind == PromptReply::Kind::text && (rules_.bits & RSG_OTHER)) {
                setLastInput(reply.text);
                return RTKWORD;
            }
            printLine(otherwise);
        }
    }

private:
    InputRules rules_;
    PromptRequest request_;
};

// Relative answers start from the prompt's base point, where it has one, else from the last point.
PointFrame frameFrom(const std::optional<AcGePoint3d>& base) {
    PointFrame frame = pointFrame();
    if (base) frame.last = *base;
    return frame;
}

// Points: picked, or typed in the forms of parsePoint, perhaps behind an object snap's name.
class PointReader {
public:
    explicit PointReader(const std::optional<AcGePoint3d>& base) : base_(base) {}
    Step operator()(const PromptReply& reply, AcGePoint3d& result) {
        AcGePoint3d point = reply.point;
        if (reply.kind == PromptReply::Kind::text) {
            if (const int bit = objectSnapBit(reply.text)) return snap_ = bit, Step::told;
            const auto typed = parsePoint(reply.text, frameFrom(base_));
            if (!typed) return Step::again;
            point = typed->world ? worldToUcs(typed->point) : typed->point;
        }
        if (snap_) {
            const auto snapped = snapPoint(std::exchange(snap_, 0), ucsToWorld(point));
            if (!snapped) return printLine(L"\nNothing to snap to at that point."), Step::told;
            point = worldToUcs(*snapped);
        }
        setLastPoint(point);
        // A script's point is a click: the cursor stands there. At a window the mouse stays where it is.
        if (reply.kind == PromptReply::Kind::text && !frontEnd().interactive())
            cursorMoved(ucsToWorld(point));
        return result = point, Step::done;
    }

private:
    std::optional<AcGePoint3d> base_;
    int snap_ = 0;
};

int askPoint(Kind kind, const ads_point base, const ACHAR* text, ads_point result) {
    Prompt prompt(kind, text, base);
    PointReader read(prompt.base());
    AcGePoint3d point;
    const int status = prompt.run(L"\nA point is needed, such as 10,20 or @5<45.",
                                  [&](const PromptReply& reply) { return read(reply, point); });
    if (status == RTNORM)
        result[X] = point.x, result[Y] = point.y, result[Z] = prompt.bits() & RSG_2D ? 0 : point.z;
    return status;
}

// What the zero and negative bits forbid; a sentence, or null when the number serves.
const wchar_t* refusal(double value, int bits) {
    if ((bits & RSG_NOZERO) && value == 0)
        return (bits & RSG_NONEG) ? L"\nThe value must be positive and not zero."
                                  : L"\nThe value must not be zero.";
    if ((bits & RSG_NONEG) && value < 0)
        return (bits & RSG_NOZERO) ? L"\nThe value must be positive and not zero."
                                   : L"\nThe value must not be negative.";
    return nullptr;
}

template <class Value>
int askInteger(const ACHAR* text, Value* result, double low, double high, const wchar_t* otherwise) {
    Prompt prompt(Kind::integer, text, nullptr);
    return prompt.run(otherwise, [&](const PromptReply& reply) {
        const auto number = parseInteger(std::wstring_view(reply.text));
        if (!number || double(*number) < low || double(*number) > high) return Step::again;
        if (const wchar_t* why = refusal(double(*number), prompt.bits())) return printLine(why), Step::told;
        return *result = Value(*number), Step::done;
    });
}

// A number, or the measure of two points: the prompt's base and the picked one, or two picked ones.
int askMeasure(Kind kind, const ads_point base, const ACHAR* text, ads_real* result, const wchar_t* otherwise,
               std::optional<double> (*parse)(const std::wstring&),
               double (*measure)(const AcGePoint3d&, const AcGePoint3d&)) {
    Prompt prompt(kind, text, base);
    PointReader read(prompt.base());
    std::optional<AcGePoint3d> from = prompt.base();
    return prompt.run(otherwise, [&](const PromptReply& reply) {
        std::optional<double> value =
            reply.kind == PromptReply::Kind::text ? parse(reply.text) : std::nullopt;
        AcGePoint3d point;
        const Step step = value ? Step::done : read(reply, point);
        if (step == Step::told) return step;
        if (!value && step == Step::done) {
            if (!from) {
                ads_point first{point.x, point.y, point.z}, second;
                if (acedGetPoint(first, L"\nSpecify second point: ", second) != RTNORM) return Step::again;
                from = point;
                point.set(second[X], second[Y], second[Z]);
            }
            value = measure(*from, point);
        }
        if (!value) return Step::again;
        if (const wchar_t* why = refusal(*value, prompt.bits())) return printLine(why), Step::told;
        return *result = *value, Step::done;
    });
}

double distanceBetween(const AcGePoint3d& a, const AcGePoint3d& b) { return a.distanceTo(b); }
double angleBetween(const AcGePoint3d& a, const AcGePoint3d& b) {
    const double angle = std::atan2(b.y - a.y, b.x - a.x);
    return angle < 0 ? angle + 2 * std::numbers::pi : angle;
}

// Cursor moves, held and pressed keys that scripts put between answers.
bool betweenAnswers(const PromptReply& reply, const std::optional<AcGePoint3d>& base) {
    if (reply.kind != PromptReply::Kind::text) return false;
    const std::wstring text = lower(reply.text);
    if (text.starts_with(L"press ")) {
        if (const auto key = virtualKeyOf(text.substr(6)))
            keyFiltered(*key);
        else
            printLine(L"\nKeys to press are tab, return, space, escape, delete, letters and digits.");
        return true;
    }
    if (text.starts_with(L"keys ")) {
        const auto keys = parseKeys(utf8(text.substr(5)));
        if (keys)
            heldKeys() = *keys;
        else
            printLine(L"\nKeys are shift, ctrl, alt, space, escape, joined by +, or none.");
        return true;
    }
    if (!text.starts_with(L"move ")) return false;
    if (const auto point = parsePoint(text.substr(5), frameFrom(base)))
        cursorMoved(point->world ? point->point : ucsToWorld(point->point));
    else
        printLine(L"\nA point is needed behind move, such as move 10,20.");
    return true;
}

} // namespace

InputRules takeInputRules() { return std::exchange(pending, {}); }
void setLastInput(std::wstring text) { lastInput = std::move(text); }
void printLine(const std::wstring& text) { frontEnd().print(text); }

DialogRuns::DialogRuns() { ++runningDialogs; }
DialogRuns::~DialogRuns() { --runningDialogs; }

PromptReply askFrontEnd(const PromptRequest& request) {
    for (;;) {
        PromptReply reply = frontEnd().ask(request);
        if (reply.kind == PromptReply::Kind::exhausted) {
            noteCancelled();
            const bool unwinds =
                frontEnd().unwindsWhenExhausted() && runningDialogs == 0 && runningCommands() > 0;
            if (unwinds || ++unanswered > kMostUnanswered) {
                unanswered = 0;
                throw CommandUnwound{};
            }
            reply.kind = PromptReply::Kind::cancel;
            return reply;
        }
        unanswered = 0;
        if (reply.kind == PromptReply::Kind::cancel) noteCancelled();
        const bool transparent = reply.kind == PromptReply::Kind::text && reply.text.size() > 1 &&
                                 reply.text[0] == L'\'' && request.kind != PromptRequest::Kind::text &&
                                 request.kind != PromptRequest::Kind::line;
        if (transparent) {
            if (runCommand(reply.text) == CommandResult::unknown)
                printLine(L"\nUnknown command \"" + reply.text + L"\".");
            continue;
        }
        if (request.pointing() && betweenAnswers(reply, request.base)) continue;
        return reply;
    }
}

} // namespace host

using namespace host;

int acedInitGet(int bits, const ACHAR* keywords) {
    pending = {bits, keywords ? parseKeywords(keywords) : std::vector<Keyword>()};
    return RTNORM;
}

int acedGetPoint(const ads_point base, const ACHAR* prompt, ads_point result) {
    return askPoint(Kind::point, base, prompt, result);
}
int acedGetCorner(const ads_point base, const ACHAR* prompt, ads_point result) {
    return askPoint(Kind::corner, base, prompt, result);
}

int acedGetDist(const ads_point base, const ACHAR* prompt, ads_real* result) {
    return askMeasure(Kind::distance, base, prompt, result,
                      L"\nA distance is needed: a number or two points.", parseDistance, distanceBetween);
}
int acedGetOrient(const ads_point base, const ACHAR* prompt, ads_real* result) {
    return askMeasure(Kind::angle, base, prompt, result,
                      L"\nAn angle is needed: a number of degrees or two points.", parseAngle, angleBetween);
}
int acedGetAngle(const ads_point base, const ACHAR* prompt, ads_real* result) {
    const int status = acedGetOrient(base, prompt, result);
    if (status == RTNORM) *result = std::remainder(*result - pointFrame().angleBase, 2 * std::numbers::pi);
    if (status == RTNORM && *result < 0) *result += 2 * std::numbers::pi;
    return status;
}
int acedGetReal(const ACHAR* text, ads_real* result) {
    Prompt prompt(Kind::real, text, nullptr);
    return prompt.run(L"\nA number is needed.", [&](const PromptReply& reply) {
        const auto number = parseDistance(reply.text);
        if (!number) return Step::again;
        if (const wchar_t* why = refusal(*number, prompt.bits())) return printLine(why), Step::told;
        return *result = *number, Step::done;
    });
}
int acedGetInt(const ACHAR* prompt, int* result) {
    return askInteger(prompt, result, -2147483648.0, 2147483647.0, L"\nA whole number is needed.");
}
int acedGetShort(const ACHAR* prompt, short* result) {
    return askInteger(prompt, result, -32768, 32767, L"\nA whole number from -32768 to 32767 is needed.");
}

int acedGetString(int blanks, const ACHAR* text, std::wstring& result) {
    constexpr size_t kLongest = 511;
    Prompt prompt(blanks ? Kind::line : Kind::text, text, nullptr);
    if (blanks) prompt.keepBlanks();
    result.clear();
    const int status = prompt.run(L"\nA text is needed.", [&](const PromptReply& reply) {
        return result = reply.text.substr(0, kLongest), Step::done;
    });
    return status == RTNONE ? RTNORM : status; // Enter is an empty text
}
int acedGetKword(const ACHAR* text, std::wstring& keyword) {
    Prompt prompt(Kind::keyword, text, nullptr);
    keyword.clear();
    const int status =
        prompt.run(L"\nThat is none of the options.", [](const PromptReply&) { return Step::again; });
    if (status != RTKWORD) return status;
    keyword = lastInput;
    return RTNORM;
}
int acedGetInput(std::wstring& text) { return text = lastInput, RTNORM; }

namespace {
int copyOut(int status, const std::wstring& from, ACHAR* to, size_t size) {
    if (size == 0) return RTERROR;
    const size_t length = std::min(from.size(), size - 1);
    from.copy(to, length);
    to[length] = L'\0';
    return status == RTNORM && length < from.size() ? RTINPUTTRUNCATED : status;
}
} // namespace

int acedGetString(int blanks, const ACHAR* prompt, ACHAR* result, size_t size) {
    std::wstring text;
    const int status = acedGetString(blanks, prompt, text);
    return copyOut(status, text, result, size);
}
int acedGetKword(const ACHAR* prompt, ACHAR* keyword, size_t size) {
    std::wstring text;
    const int status = acedGetKword(prompt, text);
    return copyOut(status, text, keyword, size);
}
int acedGetInput(ACHAR* text, size_t size) { return copyOut(RTNORM, lastInput, text, size); }

int acedGetFileD(const ACHAR* title, const ACHAR* initial, const ACHAR* extensions, int flags,
                 resbuf* result) {
    constexpr int kSaving = 1;
    std::wstring text = std::wstring(L"\n") + (title ? title : L"File") +
                        (initial && *initial ? std::wstring(L" <") + initial + L">: " : L": ");
    Prompt prompt(Kind::file, text.c_str(), nullptr);
    prompt.keepBlanks();
    prompt.wish({title ? title : L"", initial ? initial : L"", extensions ? extensions : L"",
                 (flags & kSaving) != 0});
    std::wstring path;
    const int status = prompt.run(L"\nA file's path is needed.",
                                  [&](const PromptReply& reply) { return path = reply.text, Step::done; });
    if (status == RTNONE && initial) path = initial;
    if (status == RTCAN || path.empty()) return RTCAN;
    result->restype = RTSTR;
    return acutNewString(path.c_str(), result->resval.rstring);
}
