// Describes any file that the viewer reads.
#include "fileinfo.h"

#include <filesystem>

#include "bodyinfo.h"
#include "compression.h"
#include "filekind.h"
#include "inputfile.h"
#include "loaderguard.h"
#include "openingproblem.h"
#include "rasterinfo.h"
#include "terraininfo.h"
#include "trajectoryinfo.h"

namespace sorvane {
namespace {
std::optional<Problem>
describe(FileKind kind, const std::string& path, const InfoChoices& choices, InfoRecord& record) {
    const LengthUnit unit = choices.unit;
    switch (kind) {
    case FileKind::Trajectory:
        return describeTrajectory(path, unit, record);
    case FileKind::Geometry:
        return describeGeometry(path, unit, record);
    case FileKind::Reflectance:
        return describeReflectance(path, record);
    case FileKind::BodyRadiance:
        return describeBodyRadiance(path, record);
    case FileKind::FormFactors:
        return describeFormFactors(path, record);
    case FileKind::Atmosphere:
        return describeAtmosphere(path, record);
    case FileKind::Rotor:
        return describeRotors(path, unit, record);
    case FileKind::Raster:
        return describeRaster(path, unit, record);
    case FileKind::TerrainDescription:
        return describeTerrain(path, unit, record);
    case FileKind::ClassToAster:
        return describeClassToAster(path, record);
    case FileKind::ClassToMaterial:
        return describeClassToMaterial(path, record);
    case FileKind::Temperature:
        return describeTemperatures(path, record);
    case FileKind::Band:
        return describeBand(path, record);
    case FileKind::SpectralSample:
        return describeSpectrum(path, choices.band, record);
    case FileKind::Unknown:
        break;
    }
    return problemOfCompression(path).value_or("is none of the files that the viewer reads");
}

void takeOutcome(const LoaderOutcome& outcome, std::optional<Problem> problem, InfoRecord& record) {
    const bool hasMessages = !outcome.messages.empty();
    if (outcome.hasEndedProcess)
        problem = "ends the viewer";
    else if (!outcome.hasReturned())
        problem = outcome.exceptionText;
    if (problem)
        record["error"] = hasMessages ? problem->text + ": " + outcome.messages.back().text : problem->text;
    if (hasMessages) {
        InfoRecord& messages = record["messages"] = InfoRecord::array();
        for (const Message& message : outcome.messages)
            messages.push_back(message.text);
    }
}
} // namespace

InfoRecord describeFile(const std::string& path, const InfoChoices& choices) {
    const bool isStandardInput = path == "-";
    const FileKind kind = isStandardInput ? FileKind::Trajectory : fileKindOf(path);
    InfoRecord record{{"path", path}, {"kind", nameOf(kind)}};
    if (!isStandardInput && openInputFile(path) == nullptr) {
        record["error"] = problemOfOpening(path).text;
        return record;
    }
    std::optional<Problem> problem;
    const LoaderOutcome outcome = runLoader([&] {
        if (!isStandardInput)
            record["size_bytes"] = std::filesystem::file_size(path);
        problem = describe(kind, path, choices, record);
    });
    takeOutcome(outcome, std::move(problem), record);
    return record;
}
} // namespace sorvane
