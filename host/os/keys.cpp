// Held keys and their names.
#include "host/os/keys.h"

#include <algorithm>
#include <array>

namespace host {
namespace {

struct Name {
    std::string_view text;
    bool HeldKeys::*flag;
};

constexpr std::array<Name, 5> kNames{{{"ctrl", &HeldKeys::ctrl},
                                      {"shift", &HeldKeys::shift},
                                      {"alt", &HeldKeys::alt},
                                      {"space", &HeldKeys::space},
                                      {"escape", &HeldKeys::escape}}};

bool same(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return (x >= 'A' && x <= 'Z' ? x + 32 : x) == y; });
}

} // namespace

HeldKeys& heldKeys() {
    static HeldKeys keys;
    return keys;
}

bool keyHeld(Key key) {
    const HeldKeys& keys = heldKeys();
    switch (key) {
    case Key::shift: return keys.shift;
    case Key::ctrl: return keys.ctrl;
    case Key::alt: return keys.alt;
    case Key::space: return keys.space;
    case Key::escape: return keys.escape;
    }
    return false;
}

std::optional<HeldKeys> parseKeys(std::string_view text) {
    HeldKeys keys;
    if (same(text, "none")) return keys;
    while (true) {
        const std::size_t plus = text.find('+');
        const std::string_view part = text.substr(0, plus);
        const auto name =
            std::find_if(kNames.begin(), kNames.end(), [&](const Name& n) { return same(part, n.text); });
        if (name == kNames.end()) return std::nullopt;
        keys.*(name->flag) = true;
        if (plus == std::string_view::npos) return keys;
        text.remove_prefix(plus + 1);
    }
}

std::string keysText(const HeldKeys& keys) {
    std::string out;
    for (const Name& name : kNames) {
        if (!(keys.*(name.flag))) continue;
        if (!out.empty()) out += '+';
        out += name.text;
    }
    return out.empty() ? "none" : out;
}

} // namespace host
