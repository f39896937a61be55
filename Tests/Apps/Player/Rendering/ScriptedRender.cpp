#include "Tests/Apps/Player/Rendering/ScriptedRender.h"

#include <sstream>
#include <stdexcept>
#include <utility>

using nlohmann::json;

ExitCode ScriptedRender::renderScript(const std::string& script, double scale) {
    RenderCommand command;
    command.size = {160, 90};
    command.scale = scale;
    return renderScript(script, std::move(command));
}

ExitCode ScriptedRender::renderScript(const std::string& script, RenderCommand command) {
    command.output = folder_.pathOf("out");
    command.actionsFile = folder_.addText("script.jsonl", script);
    command.traceFile = folder_.pathOf("trace.jsonl");
    return render(command);
}

std::vector<json> ScriptedRender::trace() const {
    std::vector<json> records;
    std::istringstream lines(folder_.read("trace.jsonl"));
    for (std::string line; std::getline(lines, line);)
        records.push_back(json::parse(line));
    return records;
}

json ScriptedRender::view(const std::string& picture) const {
    for (const json& record : trace()) {
        if (record.value("frame", "") == picture)
            return record["views"].at(0);
    }
    throw std::runtime_error("the trace knows no " + picture);
}

platform::ImagePtr ScriptedRender::picture(const std::string& name) const {
    return platform::Image::imageWithContentsOfFile(folder_.pathOf("out/" + name));
}
