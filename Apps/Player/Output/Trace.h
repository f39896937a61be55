#pragma once

#include "Platform/Foundation/Result.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <memory>
#include <string>
#include <string_view>

class ZNTDisplayViewController;

/// Writes events as JSON lines, in order, each with its virtual time in seconds.
///
/// Thread: main.
class Trace {
public:
    /// With an empty path, the trace discards everything. Errors: Unreadable.
    [[nodiscard]] static platform::Result<std::unique_ptr<Trace>> create(const std::string& path);

    /// Writes a call of a controller hook with its named arguments.
    void hook(std::string_view name, const nlohmann::ordered_json& arguments = {});
    /// Writes a log line of the library.
    void log(std::string_view text);
    /// Writes the state of the frame that was just rendered to an image.
    void frame(std::string_view name, const ZNTDisplayViewController& controller, int presented);

private:
    explicit Trace(std::ofstream file) : file_(std::move(file)) {}
    void write(const nlohmann::ordered_json& record);

    std::ofstream file_;
};
