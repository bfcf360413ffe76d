// Files of loaded engagements: whether they are the ones that were read, and which ones bodies and terrain are made of.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "engagementlist.h"
#include "environmentvariable.h"
#include "etxyz.h"
#include "filewatch.h"
#include "modelfiles.h"
#include "rows.h"
#include "trajectorytext.h"

using namespace sorvane;

namespace {
struct LoadedFilesTest : testing::Test {
    QTemporaryDir folder;

    QString write(const QString& name, const QByteArray& text) const {
        const QString path = folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        return writeFile(path, text);
    }
};

TEST_F(LoadedFilesTest, AStampTellsFilesOfOneNameApart) {
    const QString path = write("a", "one");
    const auto setTime = [&](long nanoseconds) {
        const timespec times[2] = {{0, UTIME_OMIT}, {1000, nanoseconds}};
        ASSERT_EQ(::utimensat(AT_FDCWD, qPrintable(path), times, 0), 0);
    };
    setTime(5);
    const FileStamp first = fileStamp(path);
    EXPECT_TRUE(first.exists());
    EXPECT_EQ(fileStamp(path), first);
    setTime(6);
    EXPECT_NE(fileStamp(path), first) << "the time in nanoseconds";
    write("a", "four");
    setTime(5);
    EXPECT_NE(fileStamp(path), first) << "the size";
    const QString other = write("b", "two");
    ASSERT_EQ(std::rename(qPrintable(other), qPrintable(path)), 0);
    setTime(5);
    EXPECT_NE(fileStamp(path), first) << "another file of the same size and time";
    EXPECT_FALSE(fileStamp(folder.filePath("missing")).exists());
}

TEST_F(LoadedFilesTest, EachModelFileBelongsToItsPartsOfTheEngagement) {
    const EnvironmentVariable root("PELSAR_DATA", folder.filePath("data/").toStdString());
    etxyz engagement;
    engagement.targetBrdfPath = folder.filePath("jet.brdf");
    engagement.targetGeometryBase = folder.filePath("jet");
    engagement.targetSignatureBase = folder.filePath("jet_b1");
    engagement.threatModelBase = folder.filePath("missile");
    engagement.threatSignatureBase = folder.filePath("missile_b1");
    engagement.terrainTopoPath = folder.filePath("ground/hill.top");
    engagement.terrainRadPath = folder.filePath("radiances/hill.rad");
    for (const auto& [file, parts] : Rows<const char*, QString>{
             {"jet.brdf", "target  "},
             {"jet.vnl", "target  "},
             {"jet.sff-txt", "target  "},
             {"jet_b1.rad", "target  "},
             {"jet_b1.atm", "target threat "},
             {"missile_b1.brdf", " threat "},
             {"missile.vnl", " threat "},
             {"missile.sff-txt", " threat "},
             {"missile_b1.rad", " threat "},
             {"ground/hill.top", "  terrain"},
             {"radiances/hill.rad", "  terrain"},
             {"ground/hill.cls", "  terrain"},
             {"ground/hill2.cls", "  "},
             {"ground/hill.xml", "  terrain"},
             {"ground/any", "  terrain"}, // a description names files as it likes
             {"data/openglshaders/any.frag", "target threat terrain"}}) {
        const ModelFiles before = modelFilesOf(engagement);
        write(file, "new");
        const ModelFiles now = modelFilesOf(engagement);
        const QStringList readAgain = {
            now.target == before.target ? "" : "target", now.threat == before.threat ? "" : "threat",
            now.terrain == before.terrain ? "" : "terrain"};
        EXPECT_EQ(readAgain.join(' '), parts) << file;
    }
}

TEST_F(LoadedFilesTest, AFileThatChangedWhileItWasReadIsToldOf) {
    EngagementList list([](std::unique_ptr<etxyz>) {});
    QStringList told;
    const FileWatch watch(list, [&](const QStringList& paths) { told << paths; });
    const QString path = writeTrajectoryUntil(folder.filePath("a"), 5.0);
    const QString same = writeTrajectoryUntil(folder.filePath("b"), 5.0);
    EngagementReading reading = readEngagement(path);
    writeTrajectoryUntil(path, 15.0);
    list.add(path, std::move(reading));
    list.add(same, readEngagement(same));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !told.isEmpty(); }, 2000));
    EXPECT_EQ(told, QStringList{path});
    list.remove(std::prev(list.end())->id());
    writeTrajectoryUntil(same, 15.0);
    EXPECT_FALSE(QTest::qWaitFor([&] { return told.contains(same); }, 600)) << "nobody's file any more";
}

TEST_F(LoadedFilesTest, ASeriesIsSettledOnce) {
    EngagementList list([](std::unique_ptr<etxyz>) {});
    QList<std::pair<std::size_t, bool>> settled; // engagements, and whether some are new
    QObject::connect(&list, &EngagementList::settled, [&](bool hasNew) { settled << std::pair(list.size(), hasNew); });
    const QString path = writeTrajectoryUntil(folder.filePath("a"), 5.0);
    const auto add = [&] {
        list.add(path, readEngagement(path));
    };
    add();
    {
        EngagementList::Series series(list);
        add();
        add();
        series.settle();
        series.settle();
        add();
    }
    {
        const EngagementList::Series series(list);
        for (const LoadedEngagement& loaded : list)
            list.replace(loaded.id(), readEngagement(path));
    }
    EXPECT_EQ(settled, (QList<std::pair<std::size_t, bool>>{{1, true}, {3, true}, {4, true}, {4, false}}));
}

// Bodies need the GL context to end; so nothing may end but through the function that has it current.
TEST_F(LoadedFilesTest, WhateverLeavesTheListEndsOnceWhenNobodyUsesIt) {
    QList<const etxyz*> ended;
    QList<const etxyz*> inUse;
    const QString path = writeTrajectoryUntil(folder.filePath("a"), 5.0);
    {
        EngagementList list([&](std::unique_ptr<etxyz> data) {
            EXPECT_FALSE(inUse.contains(data.get()));
            ended << data.get();
        });
        const auto use = [&](const LoadedEngagement& engagement) {
            inUse << &engagement.data();
        };
        QObject::connect(&list, &EngagementList::added, use);
        QObject::connect(&list, &EngagementList::replaced, [&](const LoadedEngagement& engagement) {
            EXPECT_EQ(inUse.size(), 1);
            EXPECT_TRUE(ended.isEmpty());
            inUse = {&engagement.data()};
        });
        QObject::connect(&list, &EngagementList::aboutToBeRemoved, [&](const LoadedEngagement& engagement) {
            inUse.removeAll(&engagement.data());
        });
        list.add(path, readEngagement(path));
        const LoadedEngagement& loaded = *list.begin();
        const EngagementId id = loaded.id();
        EXPECT_EQ(loaded.facts().events.back().time, 5.0);
        writeTrajectoryUntil(path, 7.0);
        list.replace(id, readEngagement(path));
        EXPECT_EQ(ended.size(), 1);
        EXPECT_EQ(loaded.id(), id);
        EXPECT_EQ(loaded.facts().events.back().time, 7.0);
        list.replace(id, {.stamp = {}, .data = nullptr, .modelFiles = {}});
        EXPECT_EQ(loaded.facts().events.back().time, 7.0);
        EXPECT_FALSE(loaded.stamp().exists());
        list.add(path, readEngagement(path));
        EXPECT_NE(list.begin()->id(), std::next(list.begin())->id());
        list.remove(id);
        EXPECT_EQ(ended.size(), 2);
    }
    EXPECT_EQ(ended.size(), 3);
    EXPECT_TRUE(inUse.isEmpty());
}
} // namespace
