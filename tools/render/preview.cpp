// Draws trajectory files into a movie and a picture: what `./dev run` shows without a display, before the whole
// companion command is built.
#include <exception>
#include <string>
#include <vector>

#include "rendering.h"

using namespace sorvane;

namespace {
ExitStatus drawPreview(const std::string& directory, std::vector<std::string> files, Streams& streams) {
    constexpr double kPictureSeconds = 9.0; // near the demonstration's closest approach
    RenderRequest request;
    request.files = std::move(files);
    request.view = ViewTarget;
    request.scene.showTerrain = true;
    request.output = directory + "/engagement.avi";
    if (const ExitStatus status = render(request, false, streams); status != ExitStatus::Success)
        return status;
    request.output = directory + "/engagement.png";
    request.atSeconds = kPictureSeconds;
    return render(request, false, streams);
}
} // namespace

int main(int argc, char** argv) {
    StandardStreams standard;
    Streams streams = standard.streams();
    try {
        if (argc >= 3)
            return static_cast<int>(drawPreview(argv[1], {argv + 2, argv + argc}, streams));
        streams.err << "usage: preview DIR FILES…" << std::endl;
    } catch (const std::exception& fault) {
        streams.err << "preview: " << fault.what() << std::endl;
    }
    return static_cast<int>(ExitStatus::Failed);
}
