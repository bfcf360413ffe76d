// Tells which files could not be loaded as they stand there, and why.
#include "loadreport.h"

#include <algorithm>

#include <QFile>
#include <QFileInfo>

#include "loadingproblems.h"
#include "loadnotice.h"
#include "messages.h"

namespace sorvane {
LoadReport::LoadReport(LoadNotice& notice) : notice_(notice) {
    notice_.onCleared([this] { reasons_.clear(); });
}

void LoadReport::tell(const QString& path, const etxyz* loaded) {
    const std::vector<std::string> problems = problemsOfLoading(QFile::encodeName(path).toStdString(), loaded);
    for (const std::string& problem : problems) {
        printErrorMessage("new_sorvane: %s: %s", qPrintable(path), problem.c_str());
        add(QFileInfo(path).fileName(), QString::fromStdString(problem));
    }
    if (!problems.empty())
        notice_.setLines(lines());
}

void LoadReport::add(const QString& file, const QString& text) {
    const auto same = std::ranges::find(reasons_, text, &Reason::text);
    if (same == reasons_.end())
        reasons_.push_back({text, file, 1});
    else
        ++same->files;
}

QStringList LoadReport::lines() const {
    QStringList lines;
    for (const Reason& reason : reasons_) {
        const QString others = reason.files > 1 ? QStringLiteral(" and %1 more").arg(reason.files - 1) : QString();
        lines << QStringLiteral("%1%2: %3").arg(reason.firstFile, others, reason.text);
    }
    return lines;
}
} // namespace sorvane
