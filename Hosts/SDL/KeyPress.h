#pragma once

/// A key that went down, as a program sees it whatever the window library calls it.
struct KeyPress {
    enum class Key {
        Character, ///< a printable one: see `character`
        Escape,
        Return, ///< either of them
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
    /// What the keyboard's present layout has on the key without modifiers, letters in lower case,
    /// the number pad's digits as digits; 0 unless `key` says Character.
    char32_t character = 0;
    bool hasShift = false;
    bool hasControl = false;
    bool hasAlt = false;
    /// The key with a system's mark on it.
    bool hasCommand = false;
    /// The key is being held, and this is not its first press.
    bool isRepeat = false;
};
