#pragma once

/// What the program tells its caller.
enum class ExitCode : int {
    Done = 0,
    WrongUse = 1,
    ContentNotOpened = 2,
    NoGraphics = 3,
};
