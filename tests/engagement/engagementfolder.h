// A folder with the files that an engagement goes by, and trajectory texts that name them.
#pragma once

#include <cstdlib>
#include <string>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

// Also the data root while it lives, with the stock atmosphere in it.
class EngagementFolder {
public:
    EngagementFolder() {
        qputenv("PELSAR_DATA", QFile::encodeName(root()));
        write("tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003.atm", atmosphere(10));
    }
    ~EngagementFolder() { qunsetenv("PELSAR_DATA"); }
    EngagementFolder(const EngagementFolder&) = delete;
    EngagementFolder& operator=(const EngagementFolder&) = delete;

    QString root() const { return folder_.path() + '/'; }
    QString path(const QString& name) const { return folder_.filePath(name); }

    // Returns the path.
    QString write(const QString& name, const QByteArray& contents = "x") const {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
            std::abort();
        return path(name);
    }

    // An atmosphere file whose solar azimuth, in degrees, tells it from others.
    static QByteArray atmosphere(int azimuth) {
        return "1 2 3\n1 2 3 4 5 6 7 8 30 " + QByteArray::number(azimuth) + "\n1 2 3 4\n";
    }

    // The header's twelve lines.
    QByteArrayList header = {"a.top",  "a.rad", "s.rad", "1 2 3", "4 5 6", "g.vnl",
                             "b.brdf", "",      "red",   "7",     "id",    "2.5"};

    // The header and two records.
    QByteArray trajectory() const {
        return header.join('\n') + "\n0 0 1 2 3 4 5 6\n7 8 9 10 11 12\n0 0 13 14 15\n1.5 0\n\n\n";
    }

private:
    QTemporaryDir folder_;
};
