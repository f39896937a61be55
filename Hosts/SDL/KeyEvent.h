#pragma once

namespace zanto {

/// A key press, independent of the window library.
struct KeyEvent {
    enum class Key {
        Character, ///< a printable key: see `character`
        Escape,
        Return, ///< either of the two keys
        Tab,
        Backspace,
        Delete,
        Left,
        Right,
        Up,
        Down,
        Home,
        End,
        PageUp,
        PageDown,
    };

    Key key = Key::Character;
    /// The character of the key in the current keyboard layout without modifiers: letters in lower
    /// case, keys of the number pad as digits. 0 unless `key` is `Character`.
    char32_t character = 0;
    bool hasShift = false;
    bool hasControl = false;
    bool hasAlt = false;
    /// The system key, which carries a logo on most keyboards.
    bool hasCommand = false;
    /// Whether this is a repetition while the key is held down.
    bool isRepeat = false;
};

} // namespace zanto
