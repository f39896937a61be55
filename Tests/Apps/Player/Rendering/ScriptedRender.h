#pragma once

#include "Apps/Player/Rendering/Render.h"
#include "Platform/Imaging/Image.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

/// Renders the built-in panorama at 160 × 90 points with a script, into the folder "out".
class ScriptedRender : public ::testing::Test {
protected:
    [[nodiscard]] ExitCode renderScript(const std::string& script, double scale = 1);
    /// Any other command line than the usual one; script, trace and output are filled in.
    [[nodiscard]] ExitCode renderScript(const std::string& script, RenderCommand command);

    /// Every record of the trace.
    [[nodiscard]] std::vector<nlohmann::json> trace() const;
    /// What the trace says of the main view in a picture.
    [[nodiscard]] nlohmann::json view(const std::string& picture) const;
    [[nodiscard]] platform::ImagePtr picture(const std::string& name) const;

    tests::TemporaryFolder folder_;
};
