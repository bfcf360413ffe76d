// Writes trajectory files for tests.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>

struct TestFlare {
    int id = 1;
    double x = 0.0;
    double y = 0.0;
    double z = -100.0;
    double scalar = 1.0e7;
    double radius = 5.0; // of the drawn sphere
};

struct TestSample {
    double time = 0.0;
    double target[3] = {0.0, 0.0, -1000.0};
    double threat[3] = {0.0, 0.0, -500.0};
    double gyro[3] = {0.0, 0.0, 0.0};
    QList<TestFlare> flares = {};
};

// Twelve header lines that name no existing file, with the colour name (line 9) and the seeker's field of view (line
// 12).
inline QByteArray trajectoryHeader(const QByteArray& colourName = "white", const QByteArray& fieldOfView = "1.5") {
    return "/nowhere/t.top\n/nowhere/t.rad\n/nowhere/tgt_b0001.rad\n1 2 3\n4 5 6\n/nowhere/tgt.vnl\n/nowhere/tgt.brdf\n"
           "unused\n" +
           colourName + "\n7\nsomebody\n" + fieldOfView + "\n";
}

inline QByteArray trajectoryRecord(const TestSample& sample) {
    const auto triple = [](const double(&v)[3]) {
        return QByteArray::number(v[0], 'g', 12) + ' ' + QByteArray::number(v[1], 'g', 12) + ' ' +
               QByteArray::number(v[2], 'g', 12);
    };
    QByteArray text = QByteArray::number(sample.time, 'g', 12) + ' ' + QByteArray::number(sample.flares.size()) + ' ' +
                      triple(sample.target) + " 0 0 0\n" + triple(sample.threat) + " 0 0 0\n0 0 " +
                      triple(sample.gyro) + '\n';
    for (const TestFlare& flare : sample.flares)
        text += QByteArray::number(flare.id) + " 0 " + QByteArray::number(flare.x) + ' ' + QByteArray::number(flare.y) +
                ' ' + QByteArray::number(flare.z) + ' ' + QByteArray::number(flare.scalar) + " 0 0 0 " +
                QByteArray::number(flare.radius) + " 0 0 1\n";
    return text;
}

// A file of these bytes at `path`; returns the path.
inline QString writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write(bytes);
    return path;
}

// Empty where there is no such file.
inline QByteArray contentsOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A trajectory through the samples at `path`; returns the path.
inline QString
writeTrajectory(const QString& path, const QList<TestSample>& samples, const QByteArray& header = trajectoryHeader()) {
    QByteArray text = header;
    for (const TestSample& sample : samples)
        text += trajectoryRecord(sample);
    return writeFile(path, text);
}

// Two samples: at 0 s and at `end` seconds.
inline QString writeTrajectoryUntil(const QString& path, double end) {
    TestSample last;
    last.time = end;
    last.target[0] = 100.0;
    last.threat[0] = 50.0;
    return writeTrajectory(path, {TestSample{}, last});
}
