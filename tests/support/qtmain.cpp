// Main of the test programs that open windows: an application as the viewer makes it, then the tests.
#include <gtest/gtest.h>

#include <clocale>

#include <GL/freeglut.h>

#include <QApplication>
#include <QSurfaceFormat>

#include "surfaceformat.h"

using namespace sorvane;

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS(); // needs no display
    QSurfaceFormat::setDefaultFormat(viewSurfaceFormat());
    qputenv("SORVANE_NO_SETTINGS", "1");
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    glutInit(&argc, argv);
    return RUN_ALL_TESTS();
}
