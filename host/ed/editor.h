// The editor's plain functions: prompts, entity picks, system variables, coordinate systems,
// commands from code, output. They speak to the front end of the running host (frontend.h).
// Results are RTNORM, RTNONE for Enter, RTKWORD for a keyword, RTCAN for Esc, RTERROR else.
#pragma once
#include <string>
#include <vector>

#include "host/db/adesk.h"
#include "host/db/objectid.h"
#include "host/db/resbuf.h"

// Bits of acedInitGet.
enum {
    RSG_NONULL = 1,
    RSG_NOZERO = 2,
    RSG_NONEG = 4,
    RSG_NOLIM = 8,
    RSG_DASH = 32,
    RSG_2D = 64,
    RSG_OTHER = 128
};

// Rules for the next prompt alone. Keywords are parted by blanks; each is answered by its capital letters
// or any longer beginning; from a "_" on stand the language-independent names in the same order.
int acedInitGet(int bits, const ACHAR* keywords);

// Coordinates are those of the current UCS. `base` draws a rubber band and serves relative answers; it may be
// null.
int acedGetPoint(const ads_point base, const ACHAR* prompt, ads_point result);
int acedGetCorner(const ads_point base, const ACHAR* prompt, ads_point result);
int acedGetDist(const ads_point base, const ACHAR* prompt, ads_real* result);
int acedGetAngle(const ads_point base, const ACHAR* prompt, ads_real* result); // radians, relative to ANGBASE
int acedGetOrient(const ads_point base, const ACHAR* prompt, ads_real* result); // radians
int acedGetReal(const ACHAR* prompt, ads_real* result);
int acedGetInt(const ACHAR* prompt, int* result);
int acedGetShort(const ACHAR* prompt, short* result); // -32768 to 32767
// `blanks` nonzero: the answer may hold blanks and ends with the line. At most 511 characters.
int acedGetString(int blanks, const ACHAR* prompt, std::wstring& result);
int acedGetString(int blanks, const ACHAR* prompt, ACHAR* result, size_t size = 512);
int acedGetKword(const ACHAR* prompt, std::wstring& keyword);
int acedGetKword(const ACHAR* prompt, ACHAR* keyword, size_t size = 512);
// What stood behind the last RTKWORD: the keyword in full, or with RSG_OTHER the text as typed.
int acedGetInput(ACHAR* text, size_t size = 512);
int acedGetInput(std::wstring& text);
// A file's path: a prompt in scripts. Flag 1: for saving.
int acedGetFileD(const ACHAR* title, const ACHAR* initial, const ACHAR* extensions, int flags,
                 resbuf* result);

// One entity and the point it was picked at. RTERROR when nothing is there (ERRNO 7) or for Enter (ERRNO 52).
int acedEntSel(const ACHAR* prompt, ads_name entity, ads_point point);
// The innermost entity under the pick: `matrix` leads from its block's coordinates to the world's, `blocks`
// is a chain of the references around it, innermost first (RTENAME), or null; the caller releases it.
int acedNEntSelP(const ACHAR* prompt, ads_name entity, ads_point point, int pickFlag, ads_real matrix[4][4],
                 resbuf** blocks);

// System variables by their names. acedGetVar's strings belong to the caller (acutDelString).
int acedGetVar(const ACHAR* name, resbuf* result);
int acedSetVar(const ACHAR* name, const resbuf* value);

// Between coordinate systems: RTSHORT 0 world, 1 UCS, 2 display, 3 paper; RTENAME an entity's own, RT3DPOINT
// that of a normal. `isVector` nonzero: directions.
int acedTrans(const ads_point from, const resbuf* fromSystem, const resbuf* toSystem, int isVector,
              ads_point to);

// Runs a command with answers given as type-value pairs up to RTNONE; returns when it has ended. RTERROR when
// the command is unknown or was cancelled; an empty answer is RTSTR L"".
int acedCommandS(int restype, ...);
int acedCmdS(const resbuf* answers);

// Text to the command line; %s is wide text (host rules of formatting). Returns RTNORM.
int acutPrintf(const ACHAR* format, ...);
int acedPrompt(const ACHAR* text);
int acedAlert(const ACHAR* text);

// A line on the screen that belongs to no drawing, until the screen is drawn anew or the view changes. UCS
// coordinates. Colours 1 to 255, 0 for the ground's, -1 for one that inverts what is there. RTERROR for
// others.
int acedGrDraw(const ads_point from, const ads_point to, int color, int highlight);
// Without an entity the whole screen, and the lines of acedGrDraw are gone. With one: mode 1 draws it again,
// 3 highlights it, 4 ends that.
int acedRedraw(const ads_name entity, int mode);
void acedUpdateDisplay();
// Lets time pass in front of somebody who watches; scripts don't wait.
void Sleep(unsigned milliseconds);
int acedVports2VportTableRecords();
int acedUsrBrk(); // nonzero when the user has asked to stop

// Values under names that scripts reach as !NAME.
int acedPutSym(const ACHAR* name, const resbuf* value);
int acedGetSym(const ACHAR* name, resbuf** value);

bool acedIsMenuGroupLoaded(const ACHAR* group);
// Expressions that the host runs when it is idle; here the menu expressions are understood, all others are
// kept for the front end to show.
int ads_queueexpr(const ACHAR* expression);
namespace host {
// All expressions queued so far, oldest first.
const std::vector<std::wstring>& queuedExpressions();
} // namespace host
const ACHAR* acedGetAppName(); // the path of the module whose code runs
enum { kMessageOk = 0, kMessageYesNo = 4, kAnswerOk = 1, kAnswerYes = 6, kAnswerNo = 7 };
// A message box: written into the transcript by the script front end. Returns the button.
int MessageBoxW(void* owner, const wchar_t* text, const wchar_t* caption, unsigned style);
int AfxMessageBox(const wchar_t* text, unsigned style = 0);
