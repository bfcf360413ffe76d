// The files from which the radiation of a trajectory's target is worked out.
#include "targetfiles.h"

#include <algorithm>

#include <QFile>
#include <QStringList>

#include "engagementfiles.h"

namespace sorvane {
namespace {
struct BandName {
    QChar digit;
    QLatin1StringView word; // between underscores
};
constexpr BandName kBands[] = {
    {u'1', QLatin1StringView("nir")}, {u'4', QLatin1StringView("midir")}, {u'6', QLatin1StringView("vis")}};

QString wordOf(QChar digit) {
    const auto* const band = std::ranges::find(kBands, digit, &BandName::digit);
    return band == std::end(kBands) ? QString() : QString(band->word);
}

// A path in which another band takes the place of the one that it names.
QString inBand(QString path, QChar from, const BandName& to) {
    for (const char* const mark : {"b000", "band"})
        path.replace(QLatin1String(mark) + from, QLatin1String(mark) + to.digit);
    const qsizetype dot = path.lastIndexOf(u'.');
    const QString word = wordOf(from);
    if (word.isEmpty())
        return path;
    QStringList parts = path.left(dot).split(u'_');
    std::ranges::replace(parts, word, QString(to.word));
    return parts.join(u'_') + path.mid(dot);
}

bool namesBand(const QString& path, QChar digit) {
    const QChar other = digit == u'1' ? u'4' : u'1';
    return inBand(path, digit, {other, QLatin1StringView("another")}) != path;
}

std::string bytesOf(const QString& path) {
    return QFile::encodeName(path).toStdString();
}
} // namespace

std::vector<TargetFiles>
targetFilesOf(const TrajectoryFileHeader& header, BandChoice choice, const std::string& rotors) {
    const EngagementFiles named = chooseFiles(header);
    if (named.isStockTarget || named.band.isEmpty())
        return {};
    // A name that tells no band is of none; the digit is then a threat's usual one.
    const QChar own = namesBand(named.targetRadiancePath(), named.band.front()) ? named.band.front() : QChar(u'\0');
    const std::string geometry = bytesOf(named.targetGeometryPath());
    std::vector<TargetFiles> all{
        {own.toLatin1(),
         {bytesOf(named.targetBrdfPath), geometry, bytesOf(named.targetRadiancePath()), rotors},
         bytesOf(named.atmospherePath())}};
    if (choice == BandChoice::Named)
        return all;
    for (const BandName& band : kBands) {
        const QString paths[] = {
            inBand(named.targetBrdfPath, own, band), inBand(named.targetRadiancePath(), own, band),
            inBand(named.atmospherePath(), own, band)};
        const bool areThere = std::ranges::all_of(paths, [](const QString& path) { return QFile::exists(path); });
        if (band.digit != own && areThere && paths[1] != named.targetRadiancePath())
            all.push_back(
                {band.digit.toLatin1(), {bytesOf(paths[0]), geometry, bytesOf(paths[1]), rotors}, bytesOf(paths[2])});
    }
    return all;
}
} // namespace sorvane
