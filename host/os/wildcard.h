// Name patterns as selection filters and table searches use them.
#pragma once

#include <string_view>

namespace host {

// Whether the text matches the pattern, by the host's rules:
//   #  one digit          @  one letter       .  one character that is neither
//   ?  any one character  *  any run, also none
//   [abc] [a-z]  one of   [~abc]  none of     ~pattern  anything but the pattern
//   ,  parts two patterns, either may match   `  the next character as it stands
// A reversed range in brackets is read the right way round; an unclosed bracket is a plain character.
// Upper and lower case count as the same when `foldCase` is set. Runs in O(text * pattern).
bool wildcardMatch(std::wstring_view text, std::wstring_view pattern, bool foldCase = true);

} // namespace host
