// The atmosphere file.
#include "atmosphere.h"

#include "numbertext.h"

namespace sorvane {
std::string atmosphereText(const AtmosphereValues& values) {
    // Three numbers that nobody uses: here the bounds of the band in micrometres and the visibility in kilometres.
    std::string text = "3.000 5.000 23.000\n";
    // Of these ten fields only the last two are used: 180 degrees minus the sun's zenith angle, and its azimuth. The
    // others are here the day of the year, the hour, its minutes, two model numbers, and a line of sight.
    text += "172 14 30.000 2 1 0.000 45.000 3000.000 ";
    appendFixed(text, 180.0 - values.solarZenith);
    text += ' ';
    appendFixed(text, values.solarAzimuth);
    text += '\n';

    appendFixed(text, values.diffuseEarthRadiance);
    text += ' ';
    appendFixed(text, values.diffuseSkyRadiance);
    text += ' ';
    appendFixed(text, values.directSolarRadiance);
    text += ' ';
    appendFixed(text, values.signatureBearing);
    text += '\n';
    return text;
}
} // namespace sorvane
