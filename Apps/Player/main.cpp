#include "Apps/Player/Rendering/Render.h"
#include "Apps/Player/Terminal/CommandLine.h"
#include "Apps/Player/Terminal/Message.h"
#include "Apps/Player/Window/Play.h"
#include "Platform/Foundation/Assertion.h"

#include <exception>

namespace {

struct RunCommand {
    ExitCode operator()(ExitCode code) const { return code; }
    ExitCode operator()(const RenderCommand& command) const { return render(command); }
    ExitCode operator()(const PlayCommand& command) const { return play(command); }
};

} // namespace

int main(int argc, char** argv) {
    try {
        return static_cast<int>(std::visit(RunCommand{}, parseCommandLine(argc, argv)));
    } catch (const platform::AssertionFailure&) {
        return static_cast<int>(ExitCode::NoGraphics); // the library has logged the failure
    } catch (const std::exception& failure) {
        tell(failure.what());
        return static_cast<int>(ExitCode::NoGraphics);
    }
}
