// How times, lengths, speeds and angles are written.
#include "measuretext.h"

#include <gtest/gtest.h>

#include "rows.h"

using namespace sorvane;

TEST(MeasureText, WritesTheDigitsThatCountAndTheUnit) {
    for (const auto& [text, expected] : Rows<QString, const char*>{
             {timeText(1.23456), "1.235 s"},
             {timeText(-0.0), "0.000 s"},
             {timeText(0.05), "0.050 s"},
             {timeText(0.00125), "0.00125 s"},
             {timeText(-1e-12), "0.000 s"},
             {lengthText(12.3449, LengthUnit::Unstated), "12.34 units"},
             {lengthText(-123456.78, LengthUnit::Feet), "-123456.8 ft"},
             {lengthText(0.0043219, LengthUnit::Metres), "0.004322 m"},
             {lengthText(5e-9, LengthUnit::Metres), "5e-09 m"},
             {lengthText(-0.0, LengthUnit::Metres), "0.0 m"},
             {speedText(7.0, LengthUnit::Metres), "7.0 m/s"},
             {angleText(-0.04), "0.0°"},
             {angleText(179.96), "180.0°"}})
        EXPECT_EQ(text, QString::fromUtf8(expected));
    EXPECT_EQ(metresPer(LengthUnit::Feet), 0.3048);
    EXPECT_EQ(metresPer(LengthUnit::Metres), 1.0);
    EXPECT_EQ(metresPer(LengthUnit::Unstated), 1.0);
}

TEST(MeasureText, TakesTheUnitFromTheEndOfAName) {
    for (const auto& [name, value, shortName, text] : Rows<const char*, double, const char*, const char*>{
             {"range_ft", 2.0, "range", "2.000 ft"},
             {"range_units", 200.0, "range", "200.0 units"},
             {"closing_speed_m_per_s", 2.0, "closing_speed", "2.0 m/s"},
             {"closing_speed_units_per_s", -2.0, "closing_speed", "-2.0 units/s"},
             {"step_s", 0.1, "step", "0.100 s"},
             {"step_s", 0.00012343, "step", "0.0001234 s"},
             {"step_s", 0.0, "step", "0.000 s"},
             {"aspect_deg", 45.0, "aspect", "45.0°"},
             {"sky_W_per_cm2_sr", 0.00123456, "sky", "0.001235 W/cm²/sr"},
             {"share", 1.0 / 3.0, "share", "0.3333333"}}) {
        const NamedMeasure measure = namedMeasure(name, value);
        EXPECT_EQ(measure.name, shortName);
        EXPECT_EQ(measure.text, QString::fromUtf8(text)) << name;
    }
}
