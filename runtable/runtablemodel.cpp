// The rows of a set as a table reads them: a page at a time.
#include "runtablemodel.h"

#include <algorithm>

#include <QFont>

namespace sorvane {
namespace {
constexpr int kRowsOfPage = 64;

// The letters up to the last slash that all paths begin with.
std::size_t commonFolder(const std::vector<std::string>& paths) {
    if (paths.empty())
        return 0;
    std::size_t length = paths.front().rfind('/') + 1;
    for (const std::string& path : paths) {
        const auto differ = std::ranges::mismatch(path, paths.front());
        const auto same = static_cast<std::size_t>(differ.in1 - path.begin());
        if (same < length)
            length = same == 0 ? 0 : path.rfind('/', same - 1) + 1;
    }
    return length;
}

bool isText(const RunValue& value) {
    return std::holds_alternative<std::string>(value);
}
} // namespace

RunTableModel::RunTableModel(QObject* parent) : QAbstractTableModel(parent) {}

void RunTableModel::setQuery(std::optional<RunQuery> query) {
    beginResetModel();
    query_ = std::move(query);
    columns_ = query_ ? query_->columns() : std::vector<std::string>();
    titles_.clear();
    for (const std::string& column : columns_)
        titles_.push_back(columnTitle(column));
    paths_.clear();
    marks_.clear();
    forgetPages();
    endResetModel();
}

void RunTableModel::setPaths(std::vector<std::string> paths) {
    beginResetModel();
    paths_ = std::move(paths);
    commonFolder_ = commonFolder(paths_);
    marks_.clear();
    forgetPages();
    endResetModel();
}

int RunTableModel::rowOf(const std::string& path) const {
    const auto found = std::ranges::find(paths_, path);
    return found == paths_.end() ? -1 : static_cast<int>(found - paths_.begin());
}

void RunTableModel::setMarks(std::vector<std::uint8_t> marks) {
    marks_ = std::move(marks);
    if (!paths_.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {Qt::BackgroundRole});
}

void RunTableModel::showFollowed() {
    if (!paths_.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::FontRole});
}

int RunTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(paths_.size());
}

int RunTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant RunTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount())
        return {};
    const auto number = static_cast<std::size_t>(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return text(index.row(), index.column(), role == Qt::ToolTipRole);
    case Qt::TextAlignmentRole: {
        const Row& values = row(index.row());
        const bool isLeft = !values || isText((*values)[static_cast<std::size_t>(index.column())]);
        return static_cast<int>((isLeft ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    }
    case Qt::BackgroundRole:
        return number < marks_.size() && marks_[number] != 0 ? QVariant(markColour_) : QVariant();
    case Qt::FontRole:
        if (index.column() == 0 && isFollowed_ && isFollowed_(paths_[number])) {
            QFont font;
            font.setBold(true);
            return font;
        }
        return {};
    default:
        return {};
    }
}

QVariant RunTableModel::text(int number, int column, bool isWhole) const {
    const auto place = static_cast<std::size_t>(column);
    if (column == 0) {
        const std::string& path = paths_[static_cast<std::size_t>(number)];
        return QString::fromStdString(isWhole ? path : path.substr(commonFolder_));
    }
    const Row& values = row(number);
    if (!values)
        return {};
    return isWhole ? wholeText((*values)[place]) : cellText((*values)[place], titles_[place].unit);
}

QVariant RunTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (section < 0 || orientation == Qt::Vertical)
        return role == Qt::DisplayRole && orientation == Qt::Vertical ? QVariant(section + 1) : QVariant();
    if (section >= columnCount())
        return {};
    const ColumnTitle& title = titles_[static_cast<std::size_t>(section)];
    switch (role) {
    case Qt::DisplayRole:
        return title.inLines();
    case Qt::AccessibleTextRole:
        return title.inOneLine();
    case Qt::TextAlignmentRole: // as that of its first cell
        return rowCount() > 0 ? data(index(0, section), role) : QVariant();
    case Qt::ToolTipRole:
        return columnHelp(columns_[static_cast<std::size_t>(section)]);
    default:
        return {};
    }
}

const RunTableModel::Row& RunTableModel::row(int number) const {
    const int wanted = number / kRowsOfPage;
    auto page = std::ranges::find(pages_, wanted, &Page::number);
    if (page == pages_.end()) {
        page = std::ranges::min_element(pages_, {}, &Page::lastUse);
        page->number = wanted;
        page->rows.clear();
        const int end = std::min((wanted + 1) * kRowsOfPage, rowCount());
        for (int i = wanted * kRowsOfPage; i < end; ++i)
            page->rows.push_back(query_ ? query_->row(paths_[static_cast<std::size_t>(i)]) : std::nullopt);
        ++pagesRead_;
    }
    page->lastUse = ++uses_;
    return page->rows[static_cast<std::size_t>(number - wanted * kRowsOfPage)];
}

void RunTableModel::forgetPages() {
    for (Page& page : pages_)
        page = {};
}
} // namespace sorvane
