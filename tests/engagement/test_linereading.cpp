// Logical lines: comments, white space, text, ends, bounds, and waiting for a process.
#include "linereading.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QProcess>

#include "devices.h"
#include "rows.h"

using namespace sorvane;

namespace {
QStringList allLines(QIODevice& device, bool isProcess = false) {
    QStringList lines;
    for (QString line = readUncommented(&device, isProcess); !line.isNull(); line = readUncommented(&device, isProcess))
        lines.append(line);
    return lines;
}

QStringList linesOf(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly | QIODevice::Text);
    return allLines(buffer);
}

// A process whose waits run out at once.
class ImpatientProcess : public QProcess {
public:
    bool waitForReadyRead(int) override {
        ++waits;
        return QProcess::waitForReadyRead(300);
    }
    int waits = 0;
};
} // namespace

TEST(ReadUncommented, GivesSimplifiedLinesWithoutComments) {
    for (const auto& [bytes, lines] : Rows<QByteArray, QStringList>{
             {"", {}},
             {"\n", {""}},
             {"a\n\nb", {"a", "", "b"}},
             {"a\r\nb\r\n", {"a", "b"}},
             {"  a \t b\v\fc  \n", {"a b c"}},
             {"#x\na\n#y\n#z\nb\n#w", {"a", "b"}},
             {" #x\n", {"#x"}},
             {"a\rb\n", {"a b"}},
             {QByteArray("a\0b\nc\n", 6), {"a", "c"}},
             {QByteArray("\0#\n#\0a\n", 7), {""}},
             {"a\xC2\xA0\x62\n", {"a b"}},
             {"Stra\xC3\x9F\x65\n", {QString::fromUtf16(u"Straße")}},
             {"a\xFF\x62\n", {QString::fromUtf16(u"a\xFFFD\x62")}},
             {"\xEF\xBB\xBF#x\na", {"a"}}})
        EXPECT_EQ(linesOf(bytes), lines) << bytes.toPercentEncoding().constData();
}

TEST(ReadUncommented, DropsWhatALineHoldsBeyondTheBound) {
    const QByteArray longLine(3 * kMaximumLineBytes, 'x');
    const QStringList lines = linesOf(longLine + "\nnext\n" + longLine);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0], QString(kMaximumLineBytes, u'x'));
    EXPECT_EQ(lines[1], "next");
    EXPECT_EQ(lines[2].size(), kMaximumLineBytes);
}

TEST(ReadUncommented, WaitsForWholeLinesOfAProcessAndNotWhenOneIsThere) {
    PieceDevice device({"a", "b", "\n \n", "#\n", "e"});
    EXPECT_EQ(readUncommented(&device, true), "ab");
    EXPECT_EQ(device.waits, QList<int>(3, 30000));
    EXPECT_FALSE(atEnd(&device, true));
    const QString blank = readUncommented(&device, true);
    EXPECT_TRUE(blank.isEmpty() && !blank.isNull()) << "a blank line is not the end";
    EXPECT_EQ(device.waits.size(), 4) << "only for there to be more";
    EXPECT_FALSE(atEnd(&device, true)) << "a comment and a line are still to come";
    EXPECT_EQ(readUncommented(&device, true), "e");
    EXPECT_TRUE(atEnd(&device, true));
    EXPECT_TRUE(readUncommented(&device, true).isNull());
}

TEST(ReadUncommented, TakesAStalledProcessForEnded) {
    ImpatientProcess process;
    process.start("sh", {"-c", "printf 'a\\nb'; exec sleep 60"}, QIODevice::ReadOnly | QIODevice::Text);
    ASSERT_TRUE(process.waitForStarted());
    EXPECT_EQ(allLines(process, true), QStringList({"a", "b"}));
    EXPECT_TRUE(atEnd(&process, true));
    EXPECT_EQ(process.state(), QProcess::NotRunning);
    EXPECT_LE(process.waits, 5);
}
