#pragma once

/// What the process holds at this moment, as the kernel counts it.
[[nodiscard]] double residentKib();
[[nodiscard]] int threadCount();
[[nodiscard]] int openFileCount();
/// Of those files.
[[nodiscard]] int openSocketCount();
