// Trajectories that `compress` made, through `uncompress`.
#include "etxyz.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/wait.h>

#include <QProcess>

#include "engagementfolder.h"
#include "identical.h"
#include "rows.h"

using namespace sorvane;

namespace {
class Compressed : public testing::Test {
protected:
    // What `compress` makes of the text.
    QByteArray compressed(const QByteArray& text) const {
        QProcess process;
        process.setStandardInputFile(folder.write("text", text));
        process.start("compress", {"-c", "-f"});
        process.waitForFinished();
        return process.readAllStandardOutput();
    }

    static bool childIsLeft() { return ::waitpid(-1, nullptr, WNOHANG) != -1 || errno != ECHILD; }

    EngagementFolder folder;
};
} // namespace

TEST_F(Compressed, FilesLoadLikePlainOnes) {
    QByteArray text = folder.trajectory();
    for (int i = 2; i < 3000; ++i) {
        const QByteArray time = QByteArray::number(2 + i * 0.01);
        text += time + " 1 1 2 3 4 5 6\n# comment\n7 8 9\n0 0 1 " + time + "\n1 1 " + time + " 4 5 6 7 8 9 1 2 3 3\n";
    }
    etxyz plain;
    plain.LoadETXYZ(folder.write("plain", text));
    ASSERT_EQ(plain.keyframes.size(), 3000);
    const QByteArray bytes = compressed(text);
    ASSERT_TRUE(bytes.startsWith("\x1F\x9D"));
    for (const char* name : {"a.Z", "with blank.Z", "quote'\"$(x).Z", "Umläut.Z"}) {
        etxyz e;
        e.LoadETXYZ(folder.write(QString::fromUtf8(name), bytes));
        EXPECT_TRUE(identical(e.keyframes, plain.keyframes)) << name;
        EXPECT_EQ(e.headerText9, "red");
        EXPECT_FALSE(childIsLeft());
    }
    folder.write("-c.Z", bytes);
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.root()));
    etxyz e;
    e.LoadETXYZ("-c.Z");
    QDir::setCurrent(before);
    EXPECT_TRUE(identical(e.keyframes, plain.keyframes));
}

TEST_F(Compressed, FilesThatAreDamagedGiveWhatIsDelivered) {
    QByteArray text = folder.trajectory();
    for (int i = 2; i < 20'000; ++i)
        text += QByteArray::number(i) + " 0\n\n\n";
    const QByteArray whole = compressed(text);
    for (const auto& [bytes, atLeast, atMost] : Rows<QByteArray, qsizetype, qsizetype>{
             {"", 0, 0},
             {"\x1F", 0, 0},
             {folder.trajectory(), 0, 0},
             {whole.left(3), 0, 0},
             {whole.left(whole.size() / 2), 1000, 19'000}}) {
        etxyz e;
        e.LoadETXYZ(folder.write("damaged.Z", bytes));
        EXPECT_GE(e.keyframes.size(), atLeast);
        EXPECT_LE(e.keyframes.size(), atMost);
        EXPECT_FALSE(childIsLeft());
    }
    // Data that go on behind the end of the records leave no process behind either.
    etxyz e;
    e.LoadETXYZ(folder.write("early.Z", compressed(folder.trajectory() + "\n" + QByteArray(20'000'000, '\n'))));
    EXPECT_EQ(e.keyframes.size(), 2);
    EXPECT_FALSE(childIsLeft());
}

TEST_F(Compressed, FilesGiveNothingWithoutTheProgram) {
    const QString path = folder.write("a.Z", compressed(folder.trajectory()));
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    etxyz e;
    e.LoadETXYZ(path);
    qputenv("PATH", before);
    EXPECT_TRUE(e.keyframes.isEmpty());
    EXPECT_FALSE(e.terrain);
}
