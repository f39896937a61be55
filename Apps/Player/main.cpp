#include "Apps/Player/CommandLine.h"
#include "Apps/Player/Message.h"
#include "Apps/Player/Play.h"
#include "Apps/Player/Render.h"
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
        return static_cast<int>(ExitCode::NoGraphics); // the library has logged it
    } catch (const std::exception& failure) {
        tell(failure.what());
        return static_cast<int>(ExitCode::NoGraphics);
    }
}
