#pragma once

/// The resources that the process holds now, as the kernel counts them.
[[nodiscard]] double residentKib();
[[nodiscard]] int threadCount();
[[nodiscard]] int openFileCount();
/// Those of the open files that are sockets.
[[nodiscard]] int openSocketCount();
