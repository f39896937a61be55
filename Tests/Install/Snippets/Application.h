#pragma once

// What the snippets of docs/embedding.md take as given: the library's headers, and functions that
// every application has its own way of.

#include <HVViewer/ZantoPlayerFramework.h>
#include <Hosts/Embedded/EmbeddedHost.h>
#include <Platform/Imaging/ImageEncoder.h>

#include <cstdio>
#include <memory>
#include <optional>
#include <string>

void* lookUp(const char* name);
void wakeLoop();
void swap();
/// Whether to go on.
bool waitForEvent(std::optional<platform::Instant> longest);
