// The plot window, used with the mouse.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QMenu>
#include <QTest>
#include <QWheelEvent>

#include "plottedpass.h"
#include "plotwindow.h"
#include "stripplot.h"

using namespace sorvane;

namespace {
class PlotWindowTest : public testing::Test {
protected:
    PlotWindowTest() {
        window.resize(700, 500);
        window.show();
    }

    StripPlot& plot() { return window.plot(); }
    QPoint at(double time, std::size_t strip = 0) {
        const QCPAxisRect& rect = plot().strip(strip);
        return {
            static_cast<int>(std::lround(plot().strip(0).axis(QCPAxis::atBottom)->coordToPixel(time))),
            rect.center().y()};
    }
    double secondsPerPixel() { return plot().timeAt(101.0) - plot().timeAt(100.0); }
    std::vector<std::string> titles() {
        std::vector<std::string> names;
        for (const PlotStrip& strip : plot().document().strips)
            names.push_back(strip.title.toStdString());
        return names;
    }
    QAction* entry(QMenu& menu, const QString& text) {
        for (QAction* const action : menu.actions()) {
            if (action->text() == text)
                return action;
            if (action->menu() != nullptr)
                if (QAction* const within = entry(*action->menu(), text))
                    return within;
        }
        return nullptr;
    }
    void choose(const char* text, std::optional<std::size_t> strip = std::nullopt) {
        QMenu menu;
        window.fillMenu(menu, strip);
        QAction* const action = entry(menu, QString::fromUtf8(text));
        ASSERT_NE(action, nullptr) << text;
        ASSERT_TRUE(action->isEnabled()) << text;
        action->trigger();
    }
    void drag(Qt::MouseButton button, const QPoint& from, const QPoint& to) {
        QTest::mousePress(&plot(), button, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, plot().mapToGlobal(to), Qt::NoButton, button, Qt::KeyboardModifiers());
        QCoreApplication::sendEvent(&plot(), &move);
        QTest::mouseRelease(&plot(), button, {}, to);
    }

    PlottedPass pass{{{7, samplesFrom(20, 40)}}};
    PlottedPass other;
    PlotRadiation radiation{nullptr, QStringLiteral("Radiation of pass: 10 %")};
    std::vector<double> wentTo;
    int asked = 0; // for engagements
    std::size_t radiating = 9;
    static constexpr EngagementId kPass{1};
    static constexpr EngagementId kOther{2};
    std::optional<EngagementId> followed = kPass;
    PlotWindow window{
        nullptr,
        {.candidates =
             [] {
                 return std::vector<PlotCandidate>{{kPass, "pass"}, {kOther, "other"}};
             },
         .followed = [this] { return followed; },
         .engagement =
             [this](EngagementId id) {
                 ++asked;
                 return id == kPass ? pass.plotted() : other.plotted("other");
             },
         .radiations =
             [this](const std::vector<EngagementId>& ids) {
                 radiating = ids.size();
                 return std::vector(ids.size(), radiation);
             },
         .flareIntensity = [] { return 1.0; },
         .setFlareIntensity = [](double /*intensity*/) {},
         .goTo =
             [this](double time) {
                 wentTo.push_back(time);
             }}};
};
} // namespace

TEST_F(PlotWindowTest, AClickAndADragGoToATime) {
    QTest::mouseClick(&plot(), Qt::LeftButton, {}, at(3.0));
    ASSERT_THAT(wentTo, testing::SizeIs(1));
    EXPECT_NEAR(wentTo.back(), 3.0, secondsPerPixel());
    drag(Qt::LeftButton, at(3.0), at(7.0, 2));
    EXPECT_NEAR(wentTo.back(), 7.0, secondsPerPixel());
    choose("the closest approach");
    QTest::mouseClick(&plot(), Qt::LeftButton, {}, at(-2.0));
    EXPECT_NEAR(wentTo.back(), 3.0, secondsPerPixel()) << "the clock's time, whatever is 0 on the axis";
}

TEST_F(PlotWindowTest, WheelDragAndDoubleClickZoom) {
    QWheelEvent wheel(at(4.0), plot().mapToGlobal(at(4.0)), {}, {0, 240}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&plot(), &wheel);
    EXPECT_NEAR(plot().times().end - plot().times().begin, 10.0 / 1.25 / 1.25, 1e-9);
    EXPECT_NEAR(plot().timeAt(at(4.0).x()), 4.0, secondsPerPixel());
    QTest::mouseDClick(&plot(), Qt::LeftButton, {}, at(4.0));
    EXPECT_EQ(plot().times().end, 10.0);
    drag(Qt::RightButton, at(6.0), at(2.0));
    EXPECT_NEAR(plot().times().begin, 2.0, 0.05);
    EXPECT_NEAR(plot().times().end, 6.0, 0.05);
    drag(Qt::MiddleButton, at(4.0), at(5.0));
    EXPECT_NEAR(plot().times().begin, 1.0, 0.05);
    // What is plotted anew stays zoomed.
    window.markStale();
    window.refresh();
    EXPECT_NEAR(plot().times().begin, 1.0, 0.05);
    for (int i = 0; i < 200; ++i)
        QCoreApplication::sendEvent(&plot(), &wheel);
    EXPECT_GT(plot().times().end - plot().times().begin, 0.001) << "it ends before nothing can be told apart";
}

TEST_F(PlotWindowTest, ReadsValuesUnderThePointerAndBetweenCursors) {
    EXPECT_EQ(window.overlay().valuesAt(0, 5.0), QStringLiteral("40 units"));
    EXPECT_THAT(window.overlay().valuesAt(2, 3.0).toStdString(), testing::HasSubstr("flare 7 "));
    EXPECT_EQ(window.overlay().valuesAt(0, 10.5), QString());
    EXPECT_EQ(window.overlay().differences(0), QString());
    QTest::mouseClick(&plot(), Qt::LeftButton, Qt::ShiftModifier, at(5.0));
    QTest::mouseClick(&plot(), Qt::LeftButton, Qt::ControlModifier, at(9.0));
    EXPECT_THAT(wentTo, testing::IsEmpty()) << "the clock stays";
    const double difference = window.overlay().differences(0).remove(" units").toDouble();
    EXPECT_NEAR(difference, std::hypot(1200.0, 40.0) - 40.0, 2.0 * 300.0 * secondsPerPixel());
    choose("Remove cursors");
    EXPECT_EQ(window.overlay().cursor(PlotOverlay::A), std::nullopt);
}

TEST_F(PlotWindowTest, RadiationComesLater) {
    const auto* const notice = window.findChild<QLabel*>("plotNotice");
    const auto shown = [&] {
        return window.overlay().valuesAt(4, 5.0);
    };
    EXPECT_FALSE(notice->isVisible());
    EXPECT_EQ(radiating, 0U) << "no measure needs it";
    choose("target-irradiance");
    EXPECT_EQ(radiating, 1U);
    EXPECT_TRUE(notice->isVisible());
    EXPECT_EQ(notice->text(), radiation.text);
    EXPECT_EQ(shown(), QString());
    window.setNotice(QStringLiteral("90 %"));
    EXPECT_EQ(notice->text(), "90 %");
    radiation = {
        std::make_shared<TargetRadiometry>(
            TargetRadiometry::Series{.times = {0, 10}, .areas = {1, 1}, .bands = {{'1', {3.2, 3.2}}}}),
        {}};
    window.markStale();
    window.refresh();
    EXPECT_FALSE(notice->isVisible());
    EXPECT_EQ(shown(), QString::fromUtf8("0.002 W/cm²")) << "at 40 units";
    EXPECT_EQ(pass.measured.radiometry(), nullptr) << "others measure without";
    choose("target-load-factor");
    EXPECT_EQ(notice->text(), "target-load-factor needs the unit of length: press U");
}

TEST_F(PlotWindowTest, StripsAreAddedRemovedAndMoved) {
    using testing::ElementsAre;
    choose("aspect");
    EXPECT_THAT(titles(), ElementsAre("range", "closing-speed", "off-boresight", "flare-band-1", "aspect"));
    choose("Remove closing-speed", 1);
    choose("Move off-boresight up", 1);
    EXPECT_THAT(titles(), ElementsAre("off-boresight", "range", "flare-band-1", "aspect"));
    const int names = plot().strip(0).left() / 2;
    drag(Qt::LeftButton, {names, plot().strip(3).center().y()}, {names, plot().strip(1).center().y()});
    EXPECT_THAT(titles(), ElementsAre("off-boresight", "aspect", "range", "flare-band-1"));
    EXPECT_THAT(wentTo, testing::IsEmpty());
    for (int i = 0; i < 4; ++i)
        choose(("Remove " + titles()[0]).c_str(), 0);
    EXPECT_EQ(plot().stripCount(), 0U);
    QTest::mouseClick(&plot(), Qt::LeftButton, {}, {100, 100});
    choose("Usual measures");
    EXPECT_EQ(plot().stripCount(), 4U);
}

TEST_F(PlotWindowTest, OverlaysOtherEngagements) {
    choose("other");
    ASSERT_THAT(plot().document().strips[0].curves, testing::SizeIs(2));
    EXPECT_EQ(plot().document().strips[0].curves[1].name, QStringLiteral("other: range"));
    const int before = asked;
    window.refresh();
    EXPECT_EQ(asked, before) << "nothing to plot anew";
    followed = kOther; // the overlaid one becomes the followed one
    window.refresh();
    EXPECT_THAT(plot().document().strips[0].curves, testing::SizeIs(1));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Plots: other"));
    followed.reset();
    window.refresh();
    EXPECT_EQ(plot().document().title, QStringLiteral("other")) << "what is overlaid stays";
}

// The line of now is seen where it belongs, and only it is drawn anew.
TEST_F(PlotWindowTest, NowFollowsTheClock) {
    choose("Dark");
    const auto isWhiteAt = [this](double time) {
        const QImage picture = plot().grab().toImage();
        const QPoint place = at(time, 1);
        for (int dx = -1; dx <= 1; ++dx)
            if (picture.pixelColor(place.x() + dx, plot().strip(1).top() + 8).lightness() > 200)
                return true;
        return false;
    };
    window.setNow(6.3);
    EXPECT_TRUE(isWhiteAt(6.3));
    window.setNow(8.1);
    EXPECT_TRUE(isWhiteAt(8.1));
    EXPECT_FALSE(isWhiteAt(6.3));
}
