// The trajectory that the benchmarks load: 300,000 samples with four flares each, about 150 MB.
#include "longtrajectory.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {
constexpr int kFlareCount = 4;

class Line {
public:
    explicit Line(QByteArray& text) : text_(text) {}
    ~Line() { text_.back() = '\n'; }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    Line& number(double value, int decimals) {
        char digits[64];
        const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals).ptr;
        text_.append(digits, end - digits).append(' ');
        return *this;
    }

private:
    QByteArray& text_;
};

// A circling climb that a pursuer follows, flares falling behind: numbers that move through all their digits.
void appendSample(QByteArray& text, int index) {
    const double t = index * 1.0e-4;
    const double turn = 0.21 * t;
    const double x = 3100.0 * std::cos(turn);
    const double y = 3100.0 * std::sin(turn);
    const double z = -1250.0 - 17.3 * t;
    const double degrees = 57.29577951308232 * turn;
    Line(text)
        .number(t, 4)
        .number(kFlareCount, 0)
        .number(x, 3)
        .number(y, 3)
        .number(z, 3)
        .number(8.0 * std::sin(t), 4)
        .number(3.1, 4)
        .number(degrees, 4);
    const double behind = 2400.0 - 77.0 * t;
    Line(text)
        .number(x - behind, 3)
        .number(y - 0.3 * behind, 3)
        .number(z + 0.1 * behind, 3)
        .number(11.0 * std::cos(3.0 * t), 4)
        .number(-2.0 * std::sin(t), 4)
        .number(degrees - 4.0, 4);
    Line(text).number(0, 0).number(0, 0).number(std::sin(5.0 * t), 5).number(std::cos(4.0 * t), 5).number(t / 3.0, 5);
    for (int flare = 0; flare < kFlareCount; ++flare) {
        const double age = t + 0.7 * flare;
        const double glow = 900.0 * std::exp(-0.05 * age);
        Line(text)
            .number(100 + flare, 0)
            .number(1, 0)
            .number(x - 31.0 * age, 3)
            .number(y - 12.0 * age, 3)
            .number(z + 4.9 * age * age, 3)
            .number(glow / 1000.0, 4)
            .number(1.0 + 0.01 * age, 4)
            .number(0.5 * age, 4)
            .number(0.25 * age, 4)
            .number(glow, 3)
            .number(0.6 * glow, 3)
            .number(0.4 * glow, 3)
            .number(3, 0);
    }
}

class Files {
public:
    Files() {
        qputenv("PELSAR_DATA", folder_.path().toUtf8());
        QDir(folder_.path()).mkdir(QStringLiteral("tgt4004"));
        write(
            folder_.filePath(QStringLiteral("tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003.atm")),
            [](QFile& f) { f.write("1 2 3\n1 2 3 4 5 6 7 8 9 10\n1 2 3 4\n"); });
        write(plain(), [](QFile& file) {
            file.write("none.top\nnone.rad\nnone.rad\n1 1 1\n0 0 0\nnone.vnl\nnone.brdf\n-\ncyan\n0\nnone\n2.5\n");
            QByteArray text;
            for (int i = 0; i < kSampleCount; ++i) {
                appendSample(text, i);
                if (text.size() > 1'000'000 || i + 1 == kSampleCount) {
                    file.write(text);
                    text.clear();
                }
            }
        });
    }

    QString plain() const { return folder_.filePath(QStringLiteral("ETXYZ.OUT.1")); }

    QString compressed() const {
        const QString path = plain() + QStringLiteral(".Z");
        if (!QFile::exists(path)) {
            QProcess compress;
            compress.setStandardOutputFile(path);
            compress.start(QStringLiteral("compress"), {QStringLiteral("-c"), plain()});
            if (!compress.waitForFinished(-1) || compress.exitCode() != 0)
                qFatal("compress failed");
        }
        return path;
    }

private:
    template <class Write> static void write(const QString& path, Write writeContents) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("%s can't be written", qPrintable(path));
        writeContents(file);
        if (!file.flush())
            qFatal("%s: %s", qPrintable(path), qPrintable(file.errorString()));
    }

    QTemporaryDir folder_;
};

const Files& files() {
    static const Files files;
    return files;
}
} // namespace

QString longTrajectory() {
    return files().plain();
}

QString compressedTrajectory() {
    return files().compressed();
}
