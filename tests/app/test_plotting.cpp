// The plot window beside the viewer.
#include "windowfixture.h"

#include <cmath>

#include <QInputDialog>

#include "encountertrajectory.h"
#include "plotwindow.h"
#include "signaturebodies.h"
#include "stripplot.h"

using namespace sorvane;

namespace {
struct PlottingTest : WindowTest {
    PlotWindow* plots() { return dynamic_cast<PlotWindow*>(window.findChild<QWidget*>("plotWindow")); }
    void loadPass(const char* name = "ETXYZ.OUT.pass") {
        window.loadEtxyzFile(writeTrajectory(folder.filePath(name), encounterSamples()));
    }
    void openPlots() {
        QTest::keyClick(view, Qt::Key_P);
        ASSERT_NE(plots(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(plots()));
    }
    QPoint at(double time) {
        return {
            static_cast<int>(std::lround(plots()->plot().strip(0).axis(QCPAxis::atBottom)->coordToPixel(time))),
            plots()->plot().strip(0).center().y()};
    }
    double secondsPerPixel() { return plots()->plot().timeAt(1.0) - plots()->plot().timeAt(0.0); }
};

TEST_F(PlottingTest, AClickOnAPlotSetsTheClockAndTheClockMovesItsLine) {
    showWindow();
    loadPass();
    entry(0, 1)->trigger();
    openPlots();
    EXPECT_EQ(plots()->windowTitle(), "Plots: ETXYZ.OUT.pass");
    EXPECT_GE(plots()->geometry().top(), window.geometry().top()) << "below the viewer, as far as the screen goes";
    QTest::mouseClick(&plots()->plot(), Qt::LeftButton, {}, at(6.0));
    EXPECT_NEAR(box->value(), 6.0, secondsPerPixel());
    // The line of now, on the screen.
    const QRgb line = plots()->plot().theme().now.rgb();
    const auto isLineAt = [&](double time) {
        const QImage shown = onScreen(plots()->plot());
        const int y = plots()->plot().strip(1).top() + 6;
        for (int dx = -2; dx <= 2; ++dx)
            if (qAbs(qGray(shown.pixel(at(time).x() + dx, y)) - qGray(line)) < 40)
                return true;
        return false;
    };
    box->setValue(3.0);
    EXPECT_TRUE(isLineAt(3.0));
    box->setValue(8.0);
    EXPECT_TRUE(isLineAt(8.0));
    EXPECT_FALSE(isLineAt(3.0));
    // The viewer's keys work here too; P closes the window again.
    QTest::keyClick(&plots()->plot(), Qt::Key_U);
    EXPECT_EQ(plots()->plot().document().strips[0].unit, "ft");
    QTest::keyClick(&plots()->plot(), Qt::Key_C);
    EXPECT_NEAR(box->value(), 5.0, 1e-3);
    QTest::keyClick(&plots()->plot(), Qt::Key_P);
    EXPECT_FALSE(plots()->isVisible());
}

TEST_F(PlottingTest, FollowsWhatIsFollowedReadAgainAndTakenOut) {
    showWindow();
    openPlots();
    EXPECT_EQ(plots()->plot().stripCount(), 0U) << "nothing is followed yet";
    loadPass();
    EXPECT_EQ(plots()->plot().document().times.end, 10.0);
    loadUntil(4.0, "ETXYZ.OUT.short");
    QTest::keyClick(view, Qt::Key_PageDown);
    EXPECT_EQ(plots()->windowTitle(), "Plots: ETXYZ.OUT.short");
    EXPECT_EQ(plots()->plot().document().times.end, 4.0);
    writeTrajectoryUntil(folder.filePath("ETXYZ.OUT.short"), 7.0);
    QTest::keyClick(view, Qt::Key_F5);
    EXPECT_EQ(plots()->plot().document().times.end, 7.0);
    engagements().clear();
    EXPECT_EQ(plots()->plot().stripCount(), 0U);
}

// A target of 1 W/cm²/sr over 12 square units below the threat, which passes above it 10 units away.
struct RadiationTest : PlottingTest {
    TemporaryDirectory bodies;
    SignatureFiles body;
    QString path = folder.filePath("ETXYZ.OUT.lit");

    void SetUp() override {
        body = writeBody(bodies, "tgt", boxFacets({4.0, 3.0, 2.0}, {0, 0, 0, 0, 1.0F, 0}));
        bodies.write("tgt.atm", "0 0 0\n0 0 0 0 0 0 0 0 90 90\n0 0 0 0\n");
        writeLit(path, encounterSamples());
        showWindow();
    }
    void writeLit(const QString& file, const QList<TestSample>& samples) {
        QByteArray header = trajectoryHeader();
        header.replace("/nowhere/tgt_b0001.rad", body.radiance.c_str());
        header.replace("/nowhere/tgt.vnl", body.geometry.c_str());
        header.replace("/nowhere/tgt.brdf", body.reflectance.c_str());
        for (const TestSample& sample : samples)
            header += trajectoryRecord(sample);
        writeFile(file, header);
    }
    void choose(const char* measure) {
        QMenu menu;
        plots()->fillMenu(menu, std::nullopt);
        for (QAction* const action : menu.actions().front()->menu()->actions())
            if (action->text() == QLatin1String(measure))
                return action->trigger();
        FAIL() << measure;
    }
    // Of the last strip's first curve at 5 s.
    double shown() {
        const PlotDocument& document = plots()->plot().document();
        if (!document.strips.empty())
            for (const PlotPoint& point : document.strips.back().curves.front().points)
                if (point.time == 5.0)
                    return point.value;
        return NAN;
    }
    void answer(const QString& intensity) {
        QMenu menu;
        plots()->fillMenu(menu, std::nullopt);
        for (QAction* const action : menu.actions())
            if (action->text().startsWith("Intensity of flares"))
                action->trigger();
        auto* const dialog = plots()->findChild<QInputDialog*>();
        ASSERT_NE(dialog, nullptr);
        dialog->setTextValue(intensity);
        dialog->accept();
        QCoreApplication::sendPostedEvents(dialog, QEvent::DeferredDelete);
    }
    QString noticed() { return plots()->findChild<QLabel*>("plotNotice")->text(); }
};

TEST_F(RadiationTest, IsWorkedOutBesideTheWindowAndKeptForTheSession) {
    window.loadEtxyzFile(path);
    openPlots();
    choose("target-irradiance");
    EXPECT_TRUE(std::isnan(shown()));
    EXPECT_TRUE(noticed().startsWith("Radiation of ETXYZ.OUT.lit: ")) << noticed().toStdString();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !std::isnan(shown()); }));
    EXPECT_NEAR(shown(), 12.0 / 100.0, 1e-6);
    EXPECT_EQ(noticed(), QString());
    // Read again it is at hand at once; what reads otherwise is worked out anew.
    engagements().clear();
    EXPECT_TRUE(std::isnan(shown()));
    window.loadEtxyzFile(path);
    EXPECT_NEAR(shown(), 12.0 / 100.0, 1e-6);
    writeBody(bodies, "tgt", boxFacets({4.0, 3.0, 2.0}, {0, 0, 0, 0, 0.5F, 0.25F}));
    QTest::keyClick(view, Qt::Key_F5);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown() < 0.1; }));
    EXPECT_NEAR(shown(), 6.0 / 100.0, 1e-6);
}

TEST_F(RadiationTest, FlaresAreAsIntenseAsTheUserSays) {
    window.loadEtxyzFile(path);
    openPlots();
    QTest::keyClick(&plots()->plot(), Qt::Key_U);
    choose("flare-jam-to-signal");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !std::isnan(shown()); }));
    const double target = 12.0 * 30.48 * 30.48; // W/sr, its lengths in feet
    EXPECT_NEAR(shown(), 1e7 / target, 1e-3);
    answer("-3");
    EXPECT_EQ(noticed(), "\"-3\" is not an intensity above 0");
    EXPECT_NEAR(shown(), 1e7 / target, 1e-3);
    answer("2e-7");
    EXPECT_EQ(noticed(), QString());
    EXPECT_NEAR(shown(), 2.0 / target, 1e-9);
    EXPECT_EQ(view->flareUnits().intensity, 2e-7);
    EXPECT_EQ(view->flareUnits().centimetres, 30.48);
    QTest::keyClick(&plots()->plot(), Qt::Key_U);
    EXPECT_EQ(view->flareUnits().intensity, 2e-7) << "whatever the unit of length";
}

TEST_F(RadiationTest, WhatNobodyLooksAtIsGivenUp) {
    QList<TestSample> samples = encounterSamples();
    samples.last().time = 9000.0; // would take minutes
    const QString longOne = folder.filePath("ETXYZ.OUT.long");
    writeLit(longOne, samples);
    window.loadEtxyzFile(longOne);
    openPlots();
    choose("target-irradiance");
    EXPECT_TRUE(noticed().startsWith("Radiation of ETXYZ.OUT.long: ")) << noticed().toStdString();
    window.loadEtxyzFile(path);
    QTest::keyClick(view, Qt::Key_PageDown);
    EXPECT_TRUE(noticed().startsWith("Radiation of ETXYZ.OUT.lit: ")) << noticed().toStdString();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !std::isnan(shown()); }));
    EXPECT_NEAR(shown(), 12.0 / 100.0, 1e-6);
}

TEST_F(RadiationTest, SaysWhatCannotBeMeasured) {
    loadPass();
    openPlots();
    choose("target-irradiance");
    EXPECT_EQ(noticed(), "ETXYZ.OUT.pass: the files of the target can't be used");
    EXPECT_TRUE(std::isnan(shown()));
}

TEST_F(PlottingTest, ShadesTheLoop) {
    showWindow();
    loadPass();
    box->setValue(2.0);
    QTest::keyClick(view, Qt::Key_I);
    box->setValue(6.0);
    QTest::keyClick(view, Qt::Key_O);
    openPlots();
    const auto colourAt = [&](double time) {
        const QImage shown = onScreen(plots()->plot());
        return shown.pixel(at(time).x(), plots()->plot().strip(1).bottom() - 4);
    };
    EXPECT_EQ(colourAt(4.2), colourAt(8.2));
    QTest::keyClick(view, Qt::Key_Backslash);
    EXPECT_NE(colourAt(4.2), colourAt(8.2));
}
} // namespace
