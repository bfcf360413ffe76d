// Reading the loaded files again, and noticing that they have changed.
#include "encountertrajectory.h"
#include "windowfixture.h"

#include <QDir>

#include "environmentvariable.h"
#include "makedemonstration.h"
#include "messages.h"
#include "rows.h"

using namespace sorvane;

namespace {
struct ReloadTest : WindowTest {
    const QString path = folder.filePath("ETXYZ.OUT.1");

    void reload() { press(Qt::Key_F5); }
    bool tellsOfChange() {
        return QTest::qWaitFor([&] { return notice->text() == "ETXYZ.OUT.1 changed on disk, F5 reloads"; }, 3000);
    }
    void append(double time) const { writeFile(path, contentsOf(path) + trajectoryRecord({.time = time})); }
};

TEST_F(ReloadTest, TakesTheOldPlaceAndKeepsMenuTimeCameraAndView) {
    showWindow();
    reload();
    EXPECT_EQ(notice->text(), "") << "there is nothing to reload";
    loadUntil(10.0, "ETXYZ.OUT.1");
    loadUntil(5.0, "ETXYZ.OUT.2");
    QMenu* const menu = filesMenu->actions().at(1)->menu();
    entry(0, 3)->trigger();
    entry(1, 0)->trigger(); // hidden
    box->setValue(4.0);
    const float eye = view->camera().eye().ElementAt(0);

    writeTrajectoryUntil(path, 20.0);
    writeTrajectoryUntil(folder.filePath("ETXYZ.OUT.2"), 3.0);
    reload();
    EXPECT_EQ(slider->maximum(), 20000);
    EXPECT_EQ(filesMenu->actions().size(), 3);
    EXPECT_EQ(filesMenu->actions().at(1)->menu(), menu);
    EXPECT_EQ(menu->title(), path);
    EXPECT_TRUE(entry(0, 3)->isChecked());
    EXPECT_EQ(entry(1, 0)->text(), "Enable");
    EXPECT_EQ(box->value(), 4.0);
    EXPECT_EQ(view->currentTime(), 4.0);
    EXPECT_EQ(view->viewMode(), ViewTarget);
    EXPECT_EQ(view->camera().eye().ElementAt(0), eye);
    EXPECT_EQ(notice->text(), "Reloaded");
    // The camera follows the new samples: the target now goes from 0 to 100 in 20 s.
    box->setValue(8.0);
    EXPECT_FLOAT_EQ(view->camera().eye().ElementAt(0), eye + 20.0F);

    writeTrajectoryUntil(path, 1.0);
    reload();
    EXPECT_EQ(slider->maximum(), 20000) << "it only grows";
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(ReloadTest, TheScreenShowsTheNewSamples) {
    showWindow();
    action("actionShow_Grid")->setChecked(false);
    TestSample last{.time = 10.0, .target = {0.0, 5.0, -1000.0}, .threat = {0.0, 5.0, -1000.0}};
    const auto save = [&] {
        writeTrajectory(path, {TestSample{}, last});
    };
    const auto pathsOnScreen = [&] { // without the notice, which stands above
        return onScreen(*view).copy(0, view->height() / 4, view->width(), view->height() / 2);
    };
    save();
    window.loadEtxyzFile(path);
    box->setValue(10.0);
    entry(0, 3)->trigger();
    entry(0, 4)->trigger(); // from where the target view stands
    const QImage before = pathsOnScreen();
    last.target[1] = -5.0; // as many samples as before, which is all that the old lines could be told by
    save();
    reload();
    EXPECT_NE(pathsOnScreen(), before);
    last.target[1] = 5.0;
    save();
    reload();
    EXPECT_EQ(pathsOnScreen(), before);

    entry(0, 2)->trigger();
    last.threat[1] = 7.0;
    save();
    reload();
    EXPECT_FLOAT_EQ(view->camera().eye().ElementAt(1), 7.0F) << "the seeker is where the new samples have it";
}

TEST_F(ReloadTest, AFileWithoutSamplesLeavesItsEngagement) {
    showWindow();
    window.loadEtxyzFile(writeTrajectory(path, encounterSamples()));
    writeFile(path, "");
    reload();
    EXPECT_EQ(notice->text(), "Not reloaded: no engagement in ETXYZ.OUT.1");
    press(Qt::Key_C);
    EXPECT_NEAR(box->value(), 5.0, 0.0011);
    EXPECT_FALSE(view->grabFramebuffer().isNull());
    ASSERT_TRUE(QFile::remove(path));
    reload();
    EXPECT_EQ(notice->text(), "Not reloaded: no engagement in ETXYZ.OUT.1");
}

TEST_F(ReloadTest, ReadsBodiesAndTerrainAgainOnlyWhenTheirFilesChanged) {
    const EnvironmentVariable root("PELSAR_DATA", folder.filePath("data/").toStdString());
    ASSERT_TRUE(QDir(folder.path()).mkpath("data/tgt0450"));
    showWindow();
    loadUntil(10.0);
    const auto messagesOfReload = [&] {
        MessageCollection collected;
        reload();
        std::string all;
        for (const Message& message : collected.messages())
            if (message.text.find(".atm") == std::string::npos)
                all += message.text + '\n';
        return all;
    };
    // None of the files is there: whoever looks for one says so.
    EXPECT_EQ(messagesOfReload(), "");
    writeFile(folder.filePath("data/tgt0450/tgt0450_b0001.brdf"), "nonsense\n");
    const std::string messages = messagesOfReload();
    EXPECT_NE(messages, "");
    EXPECT_FALSE(QString::fromStdString(messages).contains("tgt4004")) << "the target's are the same: " << messages;
    EXPECT_EQ(messagesOfReload(), "");
}

// Each of a body's and a terrain's files, changed so that the picture changes, then spoilt, then as it was.
TEST_F(ReloadTest, ReadsEachModelFileAnewOrKeepsWhatThereWas) {
    const QString demo = folder.filePath("demo");
    ASSERT_EQ(makeDemonstration(demo.toStdString()), std::nullopt);
    const EnvironmentVariable root("PELSAR_DATA", (demo + "/data/").toStdString());
    showWindow();
    action("actionShow_Terrain")->setChecked(true);
    window.loadEtxyzFile(demo + "/ETXYZ.OUT.turn");
    box->setValue(9.0);
    entry(0, 3)->trigger();
    view->loadAllTerrain();
    const auto brighter = [](QByteArray bytes) { // radiances are floats: a step of the exponent doubles them
        for (qsizetype i = 84; i + 3 < bytes.size(); i += 4)
            bytes[i + 2] = static_cast<char>(bytes[i + 2] + 0x40);
        return bytes;
    };
    // The file, what of the engagement it belongs to, and what in it is replaced by what.
    for (const auto& [name, part, from, to] : Rows<QString, const char*, const char*, const char*>{
             {"tgt4004/tgt4004_b0001_mat0004.brdf", "target", " 0.", " 0.1"},
             {"tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003.rad", "target", "radiances", "brighter"},
             {"tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003.atm", "target", "1.9", "6.9"},
             {"openglshaders/SandfordRobertson_simple.frag", "target", "0", "0"},
             {"tgt4004/tgt4004.sff-txt", "target", "0", "0"},
             {"ter0010/ter0010_w0001_t1500_b0001_n0001.rad", "terrain", "0", "0"},
             {"ter0010/ter0010.temp", "terrain", " 0.9", " 0.2"}}) {
        SCOPED_TRACE(name.toStdString());
        const QString file = demo + "/data/" + name;
        const QImage before = view->grabFramebuffer();
        const QByteArray whole = contentsOf(file);
        const bool isBrighter = to == std::string("brighter");
        const QByteArray changed = isBrighter ? brighter(whole) : QByteArray(whole).replace(from, to);
        writeFile(file, changed);
        reload();
        EXPECT_EQ(notice->text(), "Reloaded");
        const QImage after = view->grabFramebuffer();
        EXPECT_EQ(after != before, changed != whole);
        writeFile(file, "spoilt");
        reload();
        EXPECT_TRUE(notice->text().startsWith(QString("Not reloaded: the %1 stays as it was, ").arg(part)))
            << qPrintable(notice->text());
        EXPECT_TRUE(notice->text().contains(QFileInfo(file).fileName() + " can't be used: "))
            << qPrintable(notice->text());
        EXPECT_EQ(view->grabFramebuffer(), after);
        reload();
        EXPECT_TRUE(notice->text().startsWith("Not reloaded: ")) << "it still can't be used";
        EXPECT_EQ(view->grabFramebuffer(), after);
        writeFile(file, whole);
        reload();
        EXPECT_EQ(notice->text(), "Reloaded");
        EXPECT_EQ(view->grabFramebuffer(), before);
    }
}

TEST_F(ReloadTest, KeepsABodyWhoseFilesAreGoneAndGivesNewEngagementsWhatHasChanged) {
    const QString demo = folder.filePath("demo");
    ASSERT_EQ(makeDemonstration(demo.toStdString()), std::nullopt);
    const EnvironmentVariable root("PELSAR_DATA", (demo + "/data/").toStdString());
    const QString own = demo + "/own/";
    ASSERT_TRUE(QDir().mkpath(own));
    QByteArray changed = contentsOf(demo + "/ETXYZ.OUT.turn");
    for (const char* const name : {"tgt4004.vnl", "tgt4004_b0001_mat0004.brdf"}) {
        ASSERT_TRUE(QFile::copy(demo + "/data/tgt4004/" + name, own + name));
        changed.replace((demo + "/data/tgt4004/" + name).toUtf8(), (own + name).toUtf8());
    }
    writeFile(path, changed);
    showWindow();
    window.loadEtxyzFile(path);
    box->setValue(9.0);
    entry(0, 3)->trigger();
    const QImage before = view->grabFramebuffer();
    const QString reflectance = own + "tgt4004_b0001_mat0004.brdf";
    const QByteArray whole = contentsOf(reflectance);
    ASSERT_TRUE(QFile::remove(reflectance));
    reload();
    EXPECT_EQ(
        notice->text(), "Not reloaded: the target stays as it was, tgt4004_b0001_mat0004.brdf can't be used: it is no "
                        "longer there");
    EXPECT_EQ(view->grabFramebuffer(), before);

    // A second engagement of the same files, which have changed since the first was loaded.
    writeFile(reflectance, QByteArray(whole).replace(" 0.", " 0.1"));
    window.loadEtxyzFile(path);
    entry(1, 3)->trigger();
    entry(0, 0)->trigger(); // hidden
    EXPECT_NE(view->grabFramebuffer(), before);
}

TEST_F(ReloadTest, TellsOfAChangeOnceUntilItIsReloaded) {
    showWindow();
    loadUntil(10.0);
    QTest::qWait(400);
    EXPECT_FALSE(notice->isVisible());
    append(11.0);
    EXPECT_TRUE(tellsOfChange());
    EXPECT_EQ(slider->maximum(), 10000) << "nothing is loaded by itself";
    notice->setText({});
    append(11.0);
    EXPECT_FALSE(QTest::qWaitFor([&] { return !notice->text().isEmpty(); }, 700)) << "told already";
    reload();
    append(11.0);
    EXPECT_TRUE(tellsOfChange());
}

TEST_F(ReloadTest, NoticesEveryFileThatIsPutInTheOldOnesPlace) {
    showWindow();
    loadUntil(10.0);
    for (const double end : {11.0, 12.0}) {
        const QString edited = writeTrajectoryUntil(folder.filePath("edited"), end);
        ASSERT_EQ(std::rename(qPrintable(edited), qPrintable(path)), 0);
        EXPECT_TRUE(tellsOfChange()) << end;
        reload();
        EXPECT_EQ(slider->maximum(), end * 1000);
    }
    append(12.5); // to the one that stands there now, in its place
    EXPECT_TRUE(tellsOfChange());
    reload();
    ASSERT_TRUE(QFile::remove(path));
    QTest::qWait(400);
    EXPECT_EQ(notice->text(), "Reloaded") << "that it is gone is no change to load";
    writeTrajectoryUntil(path, 13.0);
    EXPECT_TRUE(tellsOfChange());
}

TEST_F(ReloadTest, NamesAFileThatIsLoadedTwiceOnce) {
    showWindow();
    loadUntil(10.0);
    loadUntil(10.0);
    writeFile(path, "");
    reload();
    EXPECT_EQ(notice->text(), "Not reloaded: no engagement in ETXYZ.OUT.1");
    writeTrajectoryUntil(path, 5.0);
    EXPECT_TRUE(tellsOfChange());
    engagements().remove(engagements().begin()->id());
    reload();
    writeFile(path, "");
    EXPECT_TRUE(tellsOfChange()) << "it still is the other one's file";
    reload();
    engagements().clear();
    notice->setText({});
    writeTrajectoryUntil(path, 6.0);
    ASSERT_TRUE(QFile::rename(path, path + ".old") && QFile::copy(path + ".old", path)); // the folder tells of it
    EXPECT_FALSE(QTest::qWaitFor([&] { return !notice->text().isEmpty(); }, 700)) << "nobody's file any more";
}
} // namespace
