// Logical lines: comments, white space, text, ends, bounds, and waiting for a process.
#include "linereading.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QProcess>

#include "devices.h"

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
    const struct {
        QByteArray bytes;
        QStringList lines;
    } cases[] = {
        {"", {}},
        {"\n", {""}},
        {"a\n\nb", {"a", "", "b"}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"  a \t b\v\fc  \n", {"a b c"}},
        {"#x\na\n#y\n#z\nb\n#w", {"a", "b"}},
        {" #x\n", {"#x"}},
        {"\r#x\n", {"#x"}},
        {"a\rb\n", {"a b"}},
        {"a\rb", {"a b"}},
        {QByteArray("a\0b\nc\n", 6), {"a", "c"}},
        {QByteArray("\0#\n#\0a\n", 7), {""}},
        {"a\xC2\xA0"
         "b\n",
         {"a b"}},
        {"Stra\xC3\x9F"
         "e\n",
         {QString::fromUtf16(u"Straße")}},
        {"a\xFF"
         "b\n",
         {QString::fromUtf16(u"a\xFFFD"
                             u"b")}},
        {"\xEF\xBB\xBF#x\na", {"a"}},
    };
    for (const auto& [bytes, lines] : cases)
        EXPECT_EQ(linesOf(bytes), lines) << bytes.toPercentEncoding().constData();
}

TEST(ReadUncommented, TellsABlankLineFromTheEnd) {
    QBuffer buffer;
    buffer.setData(" \n#");
    buffer.open(QIODevice::ReadOnly | QIODevice::Text);
    EXPECT_FALSE(atEnd(&buffer, false));
    const QString blank = readUncommented(&buffer, false);
    EXPECT_TRUE(blank.isEmpty());
    EXPECT_FALSE(blank.isNull());
    EXPECT_FALSE(atEnd(&buffer, false));
    EXPECT_TRUE(readUncommented(&buffer, false).isNull());
    EXPECT_TRUE(atEnd(&buffer, false));
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
    PieceDevice device({"a", "b", "\nc d\n", "#\n", "e"});
    EXPECT_EQ(readUncommented(&device, true), "ab");
    EXPECT_EQ(device.waits, QList<int>(3, 30000));
    EXPECT_FALSE(atEnd(&device, true));
    EXPECT_EQ(readUncommented(&device, true), "c d");
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
