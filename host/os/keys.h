// Which keys are held down. The front end sets it; nothing here asks a device.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host {

enum class Key { shift, ctrl, alt, space, escape };

struct HeldKeys {
    bool shift = false, ctrl = false, alt = false, space = false, escape = false;
    bool operator==(const HeldKeys&) const = default;
};

HeldKeys& heldKeys();
bool keyHeld(Key key);

// "ctrl+alt", "shift", "none", without regard to case; nothing when a name is unknown.
std::optional<HeldKeys> parseKeys(std::string_view text);
std::string keysText(const HeldKeys& keys);

} // namespace host
