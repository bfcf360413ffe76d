// Signatures as polar plots.
#include "signatureplot.h"

#include <cmath>

#include "shortestnumber.h"

namespace sorvane {
namespace {
PolarCurve curveOf(
    const SignatureMap& map, std::size_t row, const QString& name, int colour, double (*of)(const SignatureParts&)) {
    PolarCurve curve{name, {}, colour, false};
    for (std::size_t i = 0; i < map.grid.azimuthCount(); ++i)
        curve.values.push_back(of(map.at(row, i).intensity));
    return curve;
}

double total(const SignatureParts& parts) {
    return parts.total();
}
} // namespace

PolarDocument polarOf(const std::vector<NamedSignature>& signatures, double elevationDegrees) {
    PolarDocument document;
    if (signatures.empty())
        return document;
    const SignatureGrid& grid = signatures.front().map.grid;
    const QString what = std::isfinite(grid.range()) ? QStringLiteral("apparent intensity from %1 units (W/sr)")
                                                           .arg(QString::fromStdString(shortestText(grid.range())))
                                                     : QStringLiteral("radiant intensity (W/sr)");
    const std::size_t row = grid.rowNearest(elevationDegrees);
    const QString where =
        QStringLiteral("elevation %1°").arg(QString::fromStdString(shortestText(grid.elevation(row))));
    if (signatures.size() > 1) {
        document.title = what + QStringLiteral(", ") + where;
        for (std::size_t i = 0; i < signatures.size(); ++i)
            document.curves.push_back(curveOf(
                signatures[i].map, row, QString::fromStdString(signatures[i].name), static_cast<int>(i), total));
        return document;
    }
    const SignatureMap& map = signatures.front().map;
    document.title = QStringLiteral("%1: %2, %3").arg(QString::fromStdString(signatures.front().name), what, where);
    struct Part {
        const char* name;
        double (*of)(const SignatureParts&);
    };
    constexpr Part kParts[] = {
        {"total", total},
        {"own emission",
         [](const SignatureParts& p) {
             return p.own;
         }},
        {"sun",
         [](const SignatureParts& p) {
             return p.sun;
         }},
        {"sky and earth",
         [](const SignatureParts& p) {
             return p.skyAndEarth;
         }},
        {"other facets",
         [](const SignatureParts& p) {
             return p.otherFacets;
         }},
    };
    for (const Part& part : kParts)
        document.curves.push_back(
            curveOf(map, row, QString::fromLatin1(part.name), static_cast<int>(document.curves.size()), part.of));
    return document;
}
} // namespace sorvane
