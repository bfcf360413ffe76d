// Loading an engagement: header fields, fallbacks, bands, threat names, and files that are none.
#include "etxyz.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <QLocale>

#include "decimalcommalocale.h"
#include "engagementfolder.h"
#include "rows.h"
#include "threatnames.h"

using namespace sorvane;

namespace {
class Loading : public testing::Test {
protected:
    // Loads the folder's trajectory, from a file of the given name.
    void load(const QString& name = QStringLiteral("ETXYZ.OUT.1")) {
        engagement = std::make_unique<etxyz>();
        engagement->LoadETXYZ(folder.write(name, folder.trajectory()));
    }

    // Makes the four target files that `signatureBase` names exist, and the header name them.
    void giveTarget(const QString& signatureBase) {
        folder.header[2] = folder.write(signatureBase + ".rad").toUtf8();
        folder.write(signatureBase + ".atm", EngagementFolder::atmosphere(77));
        folder.header[5] = folder.write("body.vnl").toUtf8();
        folder.header[6] = folder.write("body.brdf").toUtf8();
    }

    EngagementFolder folder;
    std::unique_ptr<etxyz> engagement;
};
} // namespace

TEST_F(Loading, KeepsTheHeaderWhenItsFilesExist) {
    giveTarget("body_b0003_x");
    folder.header[0] = folder.write("t.top").toUtf8();
    folder.header[1] = folder.write("t.rad").toUtf8();
    folder.header[8] = "  dark \t cyan ";
    folder.header[9] = "-12 34";
    folder.header[10] = "Bullet";
    folder.header[11] = "3.75 degrees";
    folder.header[3] = "#\n1.5 x 3";
    load();
    const etxyz& e = *engagement;
    EXPECT_EQ(e.terrainTopoPath, folder.path("t.top"));
    EXPECT_EQ(e.terrainRadPath, folder.path("t.rad"));
    EXPECT_EQ(std::to_array(e.terrainTripleA), std::to_array({1.5F, 0.0F, 3.0F}));
    EXPECT_EQ(std::to_array(e.terrainTripleB), std::to_array({4.0F, 5.0F, 6.0F}));
    EXPECT_EQ(e.targetSignatureBase, folder.path("body_b0003_x"));
    EXPECT_EQ(e.targetGeometryBase, folder.path("body"));
    EXPECT_EQ(e.targetBrdfPath, folder.path("body.brdf"));
    EXPECT_EQ(e.headerText9, "dark cyan");
    EXPECT_EQ(e.headerInt10, -12);
    EXPECT_EQ(e.threatId, "Bullet");
    EXPECT_EQ(e.fieldOfView, 3.75F);
    EXPECT_EQ(e.band, "3");
    EXPECT_EQ(e.threatModelBase, folder.root() + "tgt0451/tgt0451");
    EXPECT_EQ(e.threatSignatureBase, folder.root() + "tgt0451/tgt0451_b0003");
    EXPECT_EQ(e.atm->solarAzimuth(), 77.0F);
    EXPECT_TRUE(e.target && e.threat && e.terrain);
    EXPECT_EQ(e.keyframes.keys(), QList<double>({0.0, 1.5}));
    EXPECT_FALSE(e.areHardbodiesInitialized());
    engagement->InitHardbodies();
    EXPECT_TRUE(e.areHardbodiesInitialized());
}

TEST_F(Loading, ReplacesTheTerrainWhenEitherFileIsMissing) {
    const QByteArray present = folder.write("t.top").toUtf8();
    for (const auto& [topo, rad] : {std::pair{present, QByteArray("none")}, {"none", present}, {"", ""}}) {
        folder.header[0] = topo;
        folder.header[1] = rad;
        load();
        EXPECT_EQ(engagement->terrainTopoPath, folder.root() + "ter0010/ter0010.top");
        EXPECT_EQ(engagement->terrainRadPath, folder.root() + "ter0010/ter0010_w0001_t1500_b0001.rad");
        EXPECT_EQ(std::to_array(engagement->terrainTripleA), std::to_array({6.6F, 6.6F, 1.0F}));
        EXPECT_EQ(std::to_array(engagement->terrainTripleB), std::to_array({-10000.0F, -10000.0F, -2.0F}));
    }
}

TEST_F(Loading, TakesTheStockTargetWhenOneFileIsMissing) {
    for (const char* missing : {"body_b0003.rad", "body_b0003.atm", "body.vnl", "body.brdf"}) {
        giveTarget("body_b0003");
        QFile::remove(folder.path(missing));
        load();
        const QString stock = folder.root() + "tgt4004/tgt4004";
        EXPECT_EQ(engagement->targetBrdfPath, stock + "_b0001_mat0004.brdf") << missing;
        EXPECT_EQ(engagement->targetGeometryBase, stock);
        EXPECT_EQ(engagement->targetSignatureBase, stock + "_b0001_mat0004_ter0010_w0001_t1500_rad0003");
        EXPECT_EQ(engagement->band, "1");
        EXPECT_EQ(engagement->threatSignatureBase, folder.root() + "tgt0450/tgt0450_b0001");
        EXPECT_EQ(engagement->atm->solarAzimuth(), 10.0F);
    }
}

TEST_F(Loading, TakesTheBandFromTheSignatureName) {
    for (const auto& [name, band] : Rows<const char*, const char*>{
             {"s_b0003_x", "3"},
             {"s_b000x_b0002", "x"},
             {"s_band5_x", "5"},
             {"s_b000", "4"},
             {"s_band7_b0002", "2"},
             {"s_b0003_vis_x", "6"},
             {"s_nir", "1"},
             {"s_midir_vis", "4"},
             {"s_nir_midir_vis", "1"},
             {"s_b0003_visx", "3"},
             {"s_b0003_VIS", "3"}}) {
        giveTarget(name);
        load();
        EXPECT_EQ(engagement->band, band) << name;
    }
}

TEST_F(Loading, ReadsTheFieldOfViewWithADefault) {
    for (const auto& [line, degrees] : Rows<QByteArray, float>{
             {"abc", 1.5F}, {"0", 0.0F}, {"", 1.5F}, {"nan", 1.5F}, {"1e39", 1.5F}, {"2 x", 2.0F}}) {
        folder.header[11] = line;
        load();
        EXPECT_EQ(engagement->fieldOfView, degrees) << line.constData();
    }
}

TEST_F(Loading, CutsTheLastFourCharactersWhateverTheyAre) {
    folder.header[2] = "rad";
    folder.header[5] = "";
    // Bases become empty, so that files named by an extension alone are asked for in the working folder.
    load();
    EXPECT_EQ(engagement->band, "1");
    EXPECT_EQ(engagement->targetGeometryBase, folder.root() + "tgt4004/tgt4004");
}

TEST_F(Loading, AcceptsAHeaderWithoutRecords) {
    for (qsizetype lines = 0; lines <= 12; ++lines) {
        engagement = std::make_unique<etxyz>();
        engagement->LoadETXYZ(folder.write("short", folder.header.first(lines).join('\n')));
        EXPECT_TRUE(engagement->keyframes.isEmpty());
        EXPECT_EQ(engagement->fieldOfView, lines == 12 ? 2.5F : 1.5F);
        EXPECT_EQ(engagement->threatId, lines >= 11 ? "id" : "");
    }
    folder.header.append(""); // a blank first line of data ends it as well
    load();
    EXPECT_EQ(engagement->headerText9, "red");
    EXPECT_TRUE(engagement->keyframes.isEmpty());
}

TEST_F(Loading, FindsFilesOfAnyName) {
    for (const char* name : {"with blank", "quote'\"$(x)", "Umläut", "lower.z", "-dash", ".Zx"}) {
        load(QString::fromUtf8(name));
        EXPECT_EQ(engagement->keyframes.size(), 2) << name;
    }
}

TEST_F(Loading, LeavesAnEngagementEmptyWithoutARegularFile) {
    ASSERT_EQ(::mkfifo(folder.path("fifo").toUtf8().constData(), 0600), 0);
    ASSERT_EQ(::mkfifo(folder.path("fifo.Z").toUtf8().constData(), 0600), 0);
    ASSERT_TRUE(QDir(folder.root()).mkdir("folder.Z"));
    QFile::setPermissions(folder.write("unreadable", folder.trajectory()), {});
    QStringList names = {"", "missing", "missing.Z", "fifo", "fifo.Z", "folder.Z", "tgt4004"};
    if (::geteuid() != 0) // to whom nothing is unreadable
        names.append("unreadable");
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    for (const QString& name : names) {
        etxyz e;
        e.LoadETXYZ(name.isEmpty() ? name : folder.path(name));
        EXPECT_TRUE(e.keyframes.isEmpty()) << name.toStdString();
        EXPECT_FALSE(e.target || e.threat || e.terrain || e.atm) << name.toStdString();
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(Loading, ReadsNothingFromBinaryOrHugeFiles) {
    QByteArray binary;
    for (int i = 0; i < 100'000; ++i)
        binary.append(static_cast<char>(i * 37 >> 3));
    ASSERT_TRUE(QFile::resize(folder.write("sparse"), qint64{1} << 26));
    for (const QString& path : {folder.write("binary", binary), folder.path("sparse")}) {
        etxyz e;
        e.LoadETXYZ(path);
        EXPECT_LE(e.keyframes.size(), 1);
    }
}

TEST_F(Loading, ReadsDecimalPointsUnderADecimalCommaLocale) {
    QLocale::setDefault(QLocale(QLocale::German));
    folder.header[11] = "2.25";
    const DecimalCommaLocale locale;
    load();
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(engagement->fieldOfView, 2.25F);
    EXPECT_EQ(engagement->keyframes.lastKey(), 1.5);
}

TEST(ThreatNames, KnowOneIdentifierByName) {
    EXPECT_EQ(getThreatName("Bullet"), "tgt0451/tgt0451");
    for (const char* other : {"bullet", "Bullet ", "", "Missile"})
        EXPECT_EQ(getThreatName(other), "tgt0450/tgt0450") << other;
    EXPECT_TRUE(loadThreatNames().isEmpty());
}
