#pragma once

#include "Platform/Foundation/Result.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <memory>
#include <string>
#include <string_view>

class ZNTDisplayViewController;

/// Writes what happens as JSON lines, in order, each with its virtual second.
///
/// Thread: main.
class Trace {
public:
    /// An empty path gives a trace that drops everything. Errors: Unreadable.
    [[nodiscard]] static platform::Result<std::unique_ptr<Trace>> create(const std::string& path);

    /// A hook of the controller with its arguments by name.
    void hook(std::string_view name, const nlohmann::ordered_json& arguments = {});
    /// A log line of the library.
    void log(std::string_view text);
    /// The frame that was just drawn into a picture.
    void frame(std::string_view name, const ZNTDisplayViewController& controller, int presented);

private:
    explicit Trace(std::ofstream file) : file_(std::move(file)) {}
    void write(const nlohmann::ordered_json& record);

    std::ofstream file_;
};
