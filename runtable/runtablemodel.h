// The rows of a set as a table reads them: a page at a time.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <QAbstractTableModel>
#include <QColor>

#include "columntext.h"
#include "runquery.h"

namespace sorvane {
// Keeps the paths of the rows in their order, and of the rows themselves only the pages that were looked at last.
class RunTableModel : public QAbstractTableModel {
public:
    explicit RunTableModel(QObject* parent);

    // What rows are read from. Without rows until there are paths.
    void setQuery(std::optional<RunQuery> query);
    void setPaths(std::vector<std::string> paths);
    const std::vector<std::string>& paths() const { return paths_; }
    // Of the query, "path" first.
    const std::vector<std::string>& columns() const { return columns_; }
    // The row of a path, or -1.
    int rowOf(const std::string& path) const;

    // Rows that stand out, one for each row; none when it is empty. A selection of as many rows would be walked through
    // for every cell that is painted.
    void setMarks(std::vector<std::uint8_t> marks);
    const std::vector<std::uint8_t>& marks() const { return marks_; }
    void setMarkColour(const QColor& colour) { markColour_ = colour; }
    // The row of this path is bold; none when it is empty.
    void setFollowed(std::function<bool(const std::string& path)> isFollowed) { isFollowed_ = std::move(isFollowed); }
    void showFollowed();

    // How many pages have been read since the start, for measuring.
    int pagesRead() const { return pagesRead_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    using Row = std::optional<std::vector<RunValue>>; // nothing where it is gone
    struct Page {
        int number = -1;
        int lastUse = 0;
        std::vector<Row> rows;
    };

    const Row& row(int number) const;
    void forgetPages();
    QVariant text(int row, int column, bool isWhole) const;

    std::optional<RunQuery> query_;
    std::vector<std::string> columns_;
    std::vector<ColumnTitle> titles_;
    std::vector<std::string> paths_;
    std::size_t commonFolder_ = 0; // letters that all paths begin with
    std::vector<std::uint8_t> marks_;
    QColor markColour_;
    std::function<bool(const std::string&)> isFollowed_;
    mutable std::array<Page, 16> pages_;
    mutable int uses_ = 0;
    mutable int pagesRead_ = 0;
};
} // namespace sorvane
