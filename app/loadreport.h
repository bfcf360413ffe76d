// Tells which files could not be loaded as they stand there, and why.
#pragma once

#include <vector>

#include <QString>
#include <QStringList>

class etxyz;

namespace sorvane {
class LoadNotice;

// On standard error file by file; over the view, files that have a reason in common share a line.
class LoadReport {
public:
    explicit LoadReport(LoadNotice& notice);

    // The file has been loaded; `loaded` is null when it gave no engagement.
    void tell(const QString& path, const etxyz* loaded);

private:
    struct Reason {
        QString text;
        QString firstFile;
        qsizetype files = 0;
    };

    void add(const QString& file, const QString& text);
    QStringList lines() const;

    LoadNotice& notice_;
    std::vector<Reason> reasons_; // since the notice was cleared
};
} // namespace sorvane
