// The lines of the read-out on what shows under the pointer.
#include "pointedtext.h"

#include "readouttext.h"

namespace sorvane {
namespace {
QString number(double radiance) {
    return QStringLiteral("%1 W/cm²/sr").arg(radiance, 0, 'e', 2);
}

QString withClass(const QString& thing, const std::optional<int>& surfaceClass, int first) {
    return surfaceClass ? QStringLiteral("%1, class %2").arg(thing).arg(*surfaceClass + first) : thing;
}

QString thingText(const Picked& picked) {
    switch (picked.thing) {
    case Picked::Thing::Target:
        return withClass(QStringLiteral("target facet %1").arg(picked.number), picked.surfaceClass, 1);
    case Picked::Thing::Threat:
        return withClass(QStringLiteral("threat facet %1").arg(picked.number), picked.surfaceClass, 1);
    case Picked::Thing::Flare:
        return QStringLiteral("flare %1").arg(picked.number);
    case Picked::Thing::Ground:
        return withClass(QStringLiteral("terrain"), picked.surfaceClass, 0);
    case Picked::Thing::Sky:
        break;
    }
    return QStringLiteral("sky");
}
} // namespace

QStringList pointedLines(const PointedRadiance& pointed) {
    QStringList lines{
        readoutLine("Under pointer", thingText(pointed.picked)), readoutLine("Radiance", number(pointed.radiance))};
    if (pointed.parts)
        lines << readoutLine("  own", number(pointed.parts->own)) << readoutLine("  sun", number(pointed.parts->sun))
              << readoutLine("  sky and earth", number(pointed.parts->skyAndEarth))
              << readoutLine("  other facets", number(pointed.parts->otherFacets));
    return lines;
}
} // namespace sorvane
