// Writes an engagement as KML 2.2.
#include "kmlwriter.h"

#include <cstdio>

#include <QIODevice>
#include <QXmlStreamWriter>

namespace sorvane {
namespace {
// Lets Qt's writers write to a stream.
class StreamDevice final : public QIODevice {
public:
    explicit StreamDevice(std::ostream& stream) : stream_(stream) { open(WriteOnly | Unbuffered); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 length) override {
        stream_.write(data, length);
        return stream_ ? length : -1;
    }

private:
    std::ostream& stream_;
};

// Longitude, latitude and altitude to about a tenth of a millimetre.
QString coordinates(const GeodeticPosition& position, char separator) {
    char text[128];
    const int length = std::snprintf(
        text, sizeof text, "%.9f%c%.9f%c%.4f", position.longitudeDegrees, separator, position.latitudeDegrees,
        separator, position.height);
    return QString::fromLatin1(text, length);
}

// To a millionth of a degree.
QString anglesText(const MapAngles& angles) {
    return QString::asprintf("%.6f %.6f %.6f", angles.headingDegrees, angles.tiltDegrees, angles.rollDegrees);
}

// KML's order is opacity, blue, green, red.
QString colourText(const MapColour& colour) {
    return QString::asprintf("ff%02x%02x%02x", colour.blue, colour.green, colour.red);
}

QString timeText(WorldTime time) {
    return QString::fromStdString(worldTimeText(time));
}

constexpr const char* kFlareStyle = "flare";

class KmlWriter {
public:
    KmlWriter(QIODevice* device, const PlacedEngagement& engagement) : xml_(device), engagement_(engagement) {}

    void write() {
        xml_.setAutoFormatting(true);
        xml_.setAutoFormattingIndent(1);
        xml_.writeStartDocument();
        xml_.writeStartElement(QStringLiteral("kml"));
        xml_.writeDefaultNamespace(QStringLiteral("http://www.opengis.net/kml/2.2"));
        xml_.writeNamespace(kGoogle, QStringLiteral("gx"));
        xml_.writeStartElement(QStringLiteral("Document"));
        xml_.writeTextElement(QStringLiteral("name"), QString::fromStdString(engagement_.name));
        writeTimeSpan(0, engagement_.samples().size() - 1);
        for (const MapBody& body : kMapBodies)
            writeStyle(body.id, body.colour);
        if (engagement_.flight.tracks().size() > 0)
            writeStyle(kFlareStyle, kFlareColour);
        for (const MapBody& body : kMapBodies)
            writeBody(body);
        if (engagement_.flight.tracks().size() > 0)
            writeFlares();
        xml_.writeEndDocument();
    }

private:
    void writeTimeSpan(std::size_t firstSample, std::size_t lastSample) {
        xml_.writeStartElement(QStringLiteral("TimeSpan"));
        xml_.writeTextElement(QStringLiteral("begin"), timeText(engagement_.timeOn(firstSample)));
        xml_.writeTextElement(QStringLiteral("end"), timeText(engagement_.timeOn(lastSample)));
        xml_.writeEndElement();
    }

    void writeStyle(const char* id, const MapColour& colour) {
        xml_.writeStartElement(QStringLiteral("Style"));
        xml_.writeAttribute(QStringLiteral("id"), QString::fromLatin1(id));
        xml_.writeStartElement(QStringLiteral("LineStyle"));
        xml_.writeTextElement(QStringLiteral("color"), colourText(colour));
        xml_.writeTextElement(QStringLiteral("width"), QStringLiteral("2"));
        xml_.writeEndElement();
        xml_.writeEndElement();
    }

    void writeBody(const MapBody& body) {
        const QString name = QString::fromLatin1(body.name);
        xml_.writeStartElement(QStringLiteral("Folder"));
        xml_.writeTextElement(QStringLiteral("name"), name);
        startPlacemark(name + QStringLiteral(" path"), body.id);
        writePath(body);
        xml_.writeEndElement();
        startPlacemark(name + QStringLiteral(" over time"), body.id);
        writeTrack(body);
        xml_.writeEndElement();
        xml_.writeEndElement();
    }

    void writeFlares() {
        xml_.writeStartElement(QStringLiteral("Folder"));
        xml_.writeTextElement(QStringLiteral("name"), QStringLiteral("Flares"));
        for (std::size_t track = 0; track < engagement_.flight.tracks().size(); ++track)
            for (const FlareBurn& burn : burnsOf(engagement_.flight, track))
                writeFlare(QString::fromStdString(flareName(engagement_.flight, track)), burn);
        xml_.writeEndElement();
    }

    void writeFlare(const QString& name, const FlareBurn& burn) {
        xml_.writeStartElement(QStringLiteral("Placemark"));
        xml_.writeTextElement(QStringLiteral("name"), name);
        writeTimeSpan(burn.firstSample, burn.outSample);
        writeStyleUrl(kFlareStyle);
        startTrack();
        forEachPlace(engagement_, burn, [&](double seconds, const GeodeticPosition&) { writeWhen(seconds); });
        forEachPlace(engagement_, burn, [&](double, const GeodeticPosition& position) { writeCoordinates(position); });
        xml_.writeEndElement();
        xml_.writeEndElement();
    }

    void startPlacemark(const QString& name, const char* style) {
        xml_.writeStartElement(QStringLiteral("Placemark"));
        xml_.writeTextElement(QStringLiteral("name"), name);
        writeStyleUrl(style);
    }

    void writePath(const MapBody& body) {
        xml_.writeStartElement(QStringLiteral("LineString"));
        writeAltitudeMode();
        xml_.writeStartElement(QStringLiteral("coordinates"));
        forEachPlace(engagement_, body.position, [&](const Sample&, const GeodeticPosition& position) {
            xml_.writeCharacters(coordinates(position, ',') + u'\n');
        });
        xml_.writeEndElement();
        xml_.writeEndElement();
    }

    void writeTrack(const MapBody& body) {
        startTrack();
        forEachPlace(
            engagement_, body.position, [&](const Sample& sample, const GeodeticPosition&) { writeWhen(sample.time); });
        forEachPlace(engagement_, body.position, [&](const Sample&, const GeodeticPosition& position) {
            writeCoordinates(position);
        });
        forEachPlace(engagement_, body.position, [&](const Sample& sample, const GeodeticPosition& position) {
            const Axes axes = engagement_.frame.turned(modelAxes(sample.*body.attitude));
            xml_.writeTextElement(
                kGoogle, QStringLiteral("angles"), anglesText(mapAnglesOf(axes, horizonAt(position))));
        });
        xml_.writeEndElement();
    }

    void startTrack() {
        xml_.writeStartElement(kGoogle, QStringLiteral("Track"));
        writeAltitudeMode();
    }

    void writeWhen(double seconds) {
        xml_.writeTextElement(QStringLiteral("when"), timeText(engagement_.timeOf(seconds)));
    }

    void writeCoordinates(const GeodeticPosition& position) {
        xml_.writeTextElement(kGoogle, QStringLiteral("coord"), coordinates(position, ' '));
    }

    void writeStyleUrl(const char* style) {
        xml_.writeTextElement(QStringLiteral("styleUrl"), u'#' + QString::fromLatin1(style));
    }

    void writeAltitudeMode() { xml_.writeTextElement(QStringLiteral("altitudeMode"), QStringLiteral("absolute")); }

    static inline const QString kGoogle = QStringLiteral("http://www.google.com/kml/ext/2.2");
    QXmlStreamWriter xml_;
    const PlacedEngagement& engagement_;
};
} // namespace

void writeKml(std::ostream& out, const PlacedEngagement& engagement) {
    StreamDevice device(out);
    KmlWriter(&device, engagement).write();
}
} // namespace sorvane
