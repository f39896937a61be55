#pragma once

/// The program's exit codes.
enum class ExitCode : int {
    Done = 0,
    WrongUse = 1,
    ContentNotOpened = 2,
    NoGraphics = 3,
};
