// Finds and reads the files of a body that a command line names by its geometry.
#include "namedbody.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "brdffile.h"
#include "filekind.h"
#include "loaderguard.h"
#include "radfile.h"

namespace sorvane {
namespace {
namespace fs = std::filesystem;

// In the order of their names.
std::vector<std::string> candidates(const fs::path& geometry, const std::string& extension, const std::string& band) {
    const std::string begin = geometry.stem().string() + "_";
    std::vector<std::string> found;
    std::error_code ignored;
    const fs::path folder = geometry.has_parent_path() ? geometry.parent_path() : fs::path(".");
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() == "." + extension && name.starts_with(begin) &&
            (band.empty() || name.find("_b000" + band) != std::string::npos))
            found.push_back((geometry.parent_path() / name).string());
    }
    std::ranges::sort(found);
    return found;
}

Outcome<std::string> findBeside(
    const std::string& geometry, const char* extension, const char* option, const char* what, const std::string& band) {
    fs::path same = geometry;
    same.replace_extension(extension);
    if (band.empty() && fs::exists(same))
        return same.string();
    const std::vector<std::string> found = candidates(geometry, extension, band);
    if (found.size() == 1)
        return found.front();
    const std::string choice = std::string("; ") + option + (band.empty() ? " or --band says which" : " says which");
    if (found.empty())
        return Problem(geometry + ": no " + what + " lies beside it" + choice);
    return Problem(
        geometry + ": " + std::to_string(found.size()) + " " + what + "s lie beside it, such as " +
        fs::path(found.front()).filename().string() + " and " + fs::path(found.back()).filename().string() + choice);
}
} // namespace

Outcome<SignatureFiles> findBodyFiles(const std::string& geometry, const BodyChoice& choice) {
    std::error_code ignored;
    if (!fs::exists(geometry, ignored))
        return Problem(geometry + ": does not exist");
    if (fileKindOf(geometry) != FileKind::Geometry)
        return Problem(geometry + ": is no geometry file");
    SignatureFiles files{choice.reflectance, geometry, choice.radiance, choice.rotors};
    const auto find = [&](std::string& path, const char* extension, const char* option, const char* what) {
        if (!path.empty())
            return true;
        Outcome<std::string> found = findBeside(geometry, extension, option, what, choice.band);
        path = found ? *found : found.problem().text;
        return static_cast<bool>(found);
    };
    if (!find(files.reflectance, BrdfFile::kExtension, "--reflectance", "reflectance file"))
        return Problem(files.reflectance);
    if (!find(files.radiance, RadFile::kExtension, "--radiance", "radiance file"))
        return Problem(files.radiance);
    return files;
}

Outcome<SignatureBody> readBody(const SignatureFiles& files) {
    SignatureBody body;
    bool isRead = false;
    const LoaderOutcome outcome = runLoader([&] { isRead = body.load(files); });
    if (isRead && outcome.hasReturned())
        return body;
    const std::string reason = outcome.messages.empty() ? "its files can't be read" : outcome.messages.back().text;
    return Problem(files.geometry + ": " + reason);
}
} // namespace sorvane
