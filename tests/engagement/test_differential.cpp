// The fast reader of records against the plain one, on texts made at random from everything that makes lines odd.
#include "trajectoryreader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include <QBuffer>

#include "devices.h"
#include "identical.h"
#include "linebylinereader.h"

using namespace sorvane;

namespace {
constexpr int kTexts = 4000;

class TextMaker {
public:
    explicit TextMaker(unsigned int seed) : random_(seed) {}

    QByteArray make() {
        QByteArray text;
        const bool isTidy = chance(0.3);
        oddness_ = isTidy ? 0.002 : 0.08;
        const int records = below(6);
        for (int i = 0; i < records; ++i) {
            const int flares = below(4);
            line(text, 8, chance(oddness_) ? "1000000000" : QByteArray::number(flares));
            line(text, 6);
            line(text, 5);
            for (int flare = 0; flare < flares; ++flare)
                line(text, 13);
        }
        if (chance(0.3))
            text.truncate(below(static_cast<int>(text.size()) + 1));
        for (int i = chance(0.3) ? below(5) : 0; i > 0 && !text.isEmpty(); --i)
            text[below(static_cast<int>(text.size()))] = static_cast<char>(below(256));
        return text;
    }

    int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random_); }

private:
    bool chance(double probability) { return std::bernoulli_distribution(probability)(random_); }

    template <std::size_t n> QByteArray oneOf(const QByteArray (&choices)[n]) { return choices[below(n)]; }

    QByteArray number() {
        const double value = std::ldexp(std::uniform_real_distribution<double>(-1.0, 1.0)(random_), below(30));
        switch (below(6)) {
        case 0:
            return QByteArray::number(below(200) - 100);
        case 1:
            return QByteArray::number(value, 'g', 17);
        case 2:
            return QByteArray::number(value, 'e', below(12));
        case 3:
            return QByteArray::number(std::ldexp(value, below(2100) - 1080), 'e', below(25));
        default:
            return QByteArray::number(value, 'f', below(9));
        }
    }

    QByteArray word() {
        static const QByteArrayList odd =
            QByteArray("+1 1. .5 -.5 +.5 1e400 -1e400 1e-400 -1e-400 0x10 inf -inf nan infinity NaN 5abc -0 -0.0 00012 "
                       "1,5 1d5 1f 1e5 1e 1e+ 1e+-5 + - . --1 1.2.3 1_0 1'0 %5 (1) # 3 1e39 1e-46 0e999999 -0e5 "
                       "0.1e-320 2147483648 3.40282347e38 1e0000005 123456789012345 1234567890123456 "
                       "-12345678.12345678 0.000000000000000000000001 \x01+5 5\x1F 5\x7F \xC3\xA4 1\xFF \xD9\xA1 "
                       "\xE2\x88\x92+5")
                .split(' ');
        return chance(oddness_) ? odd[below(static_cast<int>(odd.size()))] : number();
    }

    QByteArray blank() {
        static const QByteArray odd[] = {"  ",       "\t",       "\v",           "\f", "\r",   " \r ",
                                         "\xC2\xA0", "\xC2\x85", "\xE2\x80\x83", "",   "\x1C", QByteArray(1, '\0')};
        return chance(oddness_) ? oneOf(odd) : QByteArray(" ");
    }

    QByteArray lineEnd() {
        static const QByteArray odd[] = {
            "\r\n",    "\r", "\n\n", "", "\n#\n", "\n# 1 2 3\r\n", "\n #\n", "\n\xEF\xBB\xBF", "\n\xEF\xBB\xBF#\n",
            "\n\r#\n", " \n"};
        return chance(oddness_) ? oneOf(odd) : QByteArray("\n");
    }

    void line(QByteArray& text, int words, const QByteArray& secondWord = {}) {
        if (chance(oddness_))
            text += blank();
        if (chance(oddness_))
            words = below(16);
        for (int i = 0; i < words; ++i) {
            if (i > 0)
                text += blank();
            text += i == 1 && !secondWord.isEmpty() ? secondWord : word();
        }
        text += lineEnd();
    }

    std::mt19937 random_;
    double oddness_ = 0.0;
};
} // namespace

TEST(FastAndPlainReader, GiveTheSameBitForBit) {
    TextMaker maker(20240229);
    qsizetype samples = 0;
    for (int i = 0; i < kTexts; ++i) {
        const QByteArray text = maker.make();
        QBuffer buffer;
        buffer.setData(text);
        buffer.open(QIODevice::ReadOnly | QIODevice::Text);
        const QMap<double, keyframe> plain = readRecordsLineByLine(&buffer, false);
        samples += plain.size();
        buffer.seek(0);
        buffer.setTextModeEnabled(true);
        const QByteArray shown = text.toPercentEncoding(" \n");
        ASSERT_TRUE(identical(readRecords(&buffer, false), plain)) << shown.constData();
        const int bytesPerRead = 1 + maker.below(40);
        for (auto* reader : {readRecords, readRecordsLineByLine}) {
            TrickleDevice device(text, bytesPerRead);
            ASSERT_TRUE(identical(reader(&device, false), plain)) << shown.constData();
        }
    }
    EXPECT_GT(samples, kTexts) << "the texts should hold something to read";
}
