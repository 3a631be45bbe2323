// Selection sets: made by prompts, modes and filters; named by numbers.
#pragma once
#include "host/db/adesk.h"
#include "host/db/resbuf.h"

// mode: null asks the user; L"X" the whole drawing, L"I" what is selected already, L"P" the previous, L"L"
// the last object, L"W" "C" with two points, L"WP" "CP" "F" with a chain of points in pt1, L"_:S" a single
// pick, L"_:L" without objects on locked layers, ":$" with prompts in pt1 (two strings). filter: a chain of
// type-value pairs; see matchesFilter. RTNORM with a set to be freed, RTERROR when nothing was selected,
// RTCAN for Esc.
int acedSSGet(const ACHAR* mode, const void* pt1, const void* pt2, const resbuf* filter, ads_name set);
int acedSSFree(const ads_name set);
int acedSSLength(const ads_name set, Adesk::Int32* length);
int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity);
// Adds an entity; with a null entity makes an empty set, with a null set a set of that entity.
int acedSSAdd(const ads_name entity, const ads_name set, ads_name result);
int acedSSDel(const ads_name entity, const ads_name set);
int acedSSMemb(const ads_name entity, const ads_name set); // RTNORM when it is in the set
// What is selected (with grips) before a command; a null set clears.
int acedSSSetFirst(const ads_name gripSet, const ads_name pickSet);
int acedSSGetFirst(resbuf** gripSet, resbuf** pickSet);

class AcDbEntity;
namespace host {
// True when the entity passes: every test holds. Groups 0 (kind) and 2, 6, 7, 8 take wildcard patterns parted
// by commas; -4 takes "<and" "<or" "<xor" "<not" with their ends, in either case, and the comparisons "="
// "!=" "/=" "<>" "<" "<=" ">" ">="
// "&" "&=" "*" (for points parted by commas) before a number or point; 62, 60, 67, 370 and other numbers
// compare by value; -3 or 1001 the application names of xdata.
bool matchesFilter(const AcDbEntity& entity, const resbuf* filter);
} // namespace host
