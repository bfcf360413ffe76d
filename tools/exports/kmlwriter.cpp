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

// KML's order is opacity, blue, green, red.
QString colourText(const MapColour& colour) {
    return QString::asprintf("ff%02x%02x%02x", colour.blue, colour.green, colour.red);
}

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
        for (const MapBody& body : kMapBodies)
            writeStyle(body);
        for (const MapBody& body : kMapBodies)
            writeBody(body);
        xml_.writeEndDocument();
    }

private:
    void writeStyle(const MapBody& body) {
        xml_.writeStartElement(QStringLiteral("Style"));
        xml_.writeAttribute(QStringLiteral("id"), QString::fromLatin1(body.id));
        xml_.writeStartElement(QStringLiteral("LineStyle"));
        xml_.writeTextElement(QStringLiteral("color"), colourText(body.colour));
        xml_.writeTextElement(QStringLiteral("width"), QStringLiteral("2"));
        xml_.writeEndElement();
        xml_.writeEndElement();
    }

    void writeBody(const MapBody& body) {
        const QString name = QString::fromLatin1(body.name);
        xml_.writeStartElement(QStringLiteral("Folder"));
        xml_.writeTextElement(QStringLiteral("name"), name);
        startPlacemark(name + QStringLiteral(" path"), body);
        writePath(body);
        xml_.writeEndElement();
        startPlacemark(name + QStringLiteral(" over time"), body);
        writeTrack(body);
        xml_.writeEndElement();
        xml_.writeEndElement();
    }

    void startPlacemark(const QString& name, const MapBody& body) {
        xml_.writeStartElement(QStringLiteral("Placemark"));
        xml_.writeTextElement(QStringLiteral("name"), name);
        xml_.writeTextElement(QStringLiteral("styleUrl"), u'#' + QString::fromLatin1(body.id));
    }

    void writePath(const MapBody& body) {
        xml_.writeStartElement(QStringLiteral("LineString"));
        writeAltitudeMode();
        xml_.writeStartElement(QStringLiteral("coordinates"));
        for (const Sample& sample : engagement_.samples)
            xml_.writeCharacters(coordinates(engagement_.frame.positionOf(sample.*body.position), ',') + u'\n');
        xml_.writeEndElement();
        xml_.writeEndElement();
    }

    void writeTrack(const MapBody& body) {
        xml_.writeStartElement(kGoogle, QStringLiteral("Track"));
        writeAltitudeMode();
        for (const Sample& sample : engagement_.samples) {
            const WorldTime time = worldTimeAfter(engagement_.epoch, sample.time).value_or(engagement_.epoch);
            xml_.writeTextElement(QStringLiteral("when"), QString::fromStdString(worldTimeText(time)));
        }
        for (const Sample& sample : engagement_.samples)
            xml_.writeTextElement(
                kGoogle, QStringLiteral("coord"),
                coordinates(engagement_.frame.positionOf(sample.*body.position), ' '));
        xml_.writeEndElement();
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
