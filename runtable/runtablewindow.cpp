// The window of a set's runs: their table, a condition, and plots that select rows.
#include "runtablewindow.h"

#include <algorithm>
#include <utility>

#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

namespace sorvane {
namespace {
constexpr int kTypingPause = 400;  // milliseconds after which a condition counts
constexpr int kChangesPause = 100; // milliseconds in which what is loaded may change once more
constexpr int kMarkAlpha = 90;
// What the plots show at the start, by the beginnings of names.
constexpr const char* kCounted = "closest_approach_";
constexpr const char* kAcross = "closest_approach_aspect";

QString grouped(std::size_t number) {
    return QLocale(QLocale::English).toString(static_cast<qulonglong>(number));
}

void chooseBeginning(QComboBox& box, const QString& beginning) {
    for (int i = 0; i < box.count(); ++i)
        if (box.itemData(i).toString().startsWith(beginning))
            return box.setCurrentIndex(i);
}

PlottedColumn plotted(const QComboBox& box, const RunQuestion& question, const std::vector<RunColumn>& columns) {
    const std::string name = box.currentData().toString().toStdString();
    const auto place = static_cast<std::size_t>(std::ranges::find(question.columns, name) - question.columns.begin());
    PlottedColumn column{box.currentText(), {}, {}};
    if (place < columns.size()) {
        column.values = columns[place].values;
        column.labels = columns[place].labels;
    }
    return column;
}
} // namespace

RunTableWindow::RunTableWindow(QWidget* viewer, RunTableSource source)
    : QWidget(viewer, Qt::Window), source_(std::move(source)), model_(new RunTableModel(this)),
      table_(new RunTableView(
          this, {[this](int row) { follow(row); }, [this] { source_.toggleGhosts(); },
                 [this] {
                     brush(std::nullopt);
                 }})),
      typing_(new QTimer(this)), changing_(new QTimer(this)),
      asking_([this](Outcome<RunAnswer> answer) { take(std::move(answer)); }) {
    setObjectName(QStringLiteral("runTable"));
    setWindowTitle(QStringLiteral("Runs"));
    table_->setModel(model_);
    model_->setFollowed(source_.isFollowed);
    status_ = new QLabel(this);
    status_->setObjectName(QStringLiteral("runTableStatus"));
    status_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const parts = new QSplitter(this);
    parts->addWidget(table_);
    parts->addWidget(makePlots());
    parts->setStretchFactor(0, 3);
    parts->setStretchFactor(1, 2);
    parts->setSizes({720, 440});
    parts->setChildrenCollapsible(false);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(makeTop());
    layout->addWidget(parts, 1);
    layout->addWidget(status_);
    typing_->setSingleShot(true);
    typing_->setInterval(kTypingPause);
    connect(typing_, &QTimer::timeout, this, [this] { ask(); });
    changing_->setSingleShot(true);
    changing_->setInterval(kChangesPause);
    connect(changing_, &QTimer::timeout, this, [this] {
        if (isVisible() && isStale_)
            openSet();
    });
    connect(table_->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, [this] { ask(); });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, condition_, [this] {
        condition_->setFocus();
        condition_->selectAll();
    });
    table_->setFocus();
    useTheme();
}

RunTableWindow::~RunTableWindow() = default;

QWidget* RunTableWindow::makeTop() {
    auto* const top = new QWidget(this);
    auto* const layout = new QHBoxLayout(top);
    layout->setContentsMargins(0, 0, 0, 0);
    sets_ = new QComboBox(top);
    sets_->setObjectName(QStringLiteral("runSets"));
    sets_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    sets_->addItem(QStringLiteral("Loaded engagements"), QString());
    sets_->addItem(QStringLiteral("Open a database…"));
    connect(sets_, &QComboBox::activated, this, [this](int place) {
        if (place == sets_->count() - 1)
            return chooseAnotherDatabase();
        database_ = sets_->itemData(place).toString();
        openSet();
    });
    auto* const label = new QLabel(QStringLiteral("&Condition"), top);
    condition_ = new QLineEdit(top);
    condition_->setObjectName(QStringLiteral("runCondition"));
    condition_->setPlaceholderText(QStringLiteral("such as miss_distance < 5 AND decoyed = 0"));
    condition_->setToolTip(QStringLiteral("An SQL expression over the columns; a column's title says its name.\n"
                                          "The ending that tells the unit may be left out."));
    condition_->setClearButtonEnabled(true);
    label->setBuddy(condition_);
    connect(condition_, &QLineEdit::textEdited, typing_, qOverload<>(&QTimer::start));
    connect(condition_, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text.isEmpty()) // by its button, too
            typing_->start();
    });
    connect(condition_, &QLineEdit::returnPressed, this, [this] {
        ask();
        table_->setFocus();
    });
    toCondition_ = new QPushButton(QStringLiteral("Only brushed rows"), top);
    toCondition_->setObjectName(QStringLiteral("runOnlyBrushed"));
    toCondition_->setToolTip(QStringLiteral("Makes a condition of what is brushed"));
    connect(toCondition_, &QPushButton::clicked, this, [this] { filterToBrush(); });
    layout->addWidget(sets_);
    layout->addWidget(label);
    layout->addWidget(condition_, 1);
    layout->addWidget(toCondition_);
    return top;
}

QComboBox* RunTableWindow::makeColumnBox(const char* name) {
    auto* const box = new QComboBox(this);
    box->setObjectName(QLatin1String(name));
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(10);
    connect(box, &QComboBox::activated, this, [this] {
        brush_.reset();
        ask();
    });
    return box;
}

QWidget* RunTableWindow::makePlots() {
    auto* const plots = new QWidget(this);
    auto* const layout = new QVBoxLayout(plots);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto addRow = [&](std::initializer_list<std::pair<const char*, QComboBox*>> boxes) {
        auto* const row = new QHBoxLayout;
        for (const auto& [text, box] : boxes) {
            row->addWidget(new QLabel(QLatin1String(text), plots));
            row->addWidget(box, 1);
        }
        layout->addLayout(row);
    };
    histogram_ = new HistogramPlot(plots);
    histogram_->setObjectName(QStringLiteral("runHistogram"));
    scatter_ = new ScatterPlot(plots);
    scatter_->setObjectName(QStringLiteral("runScatter"));
    counted_ = makeColumnBox("runCounted");
    across_ = makeColumnBox("runAcross");
    up_ = makeColumnBox("runUp");
    addRow({{"Histogram of", counted_}});
    layout->addWidget(histogram_, 1);
    addRow({{"Scatter of", up_}, {"over", across_}});
    layout->addWidget(scatter_, 1);
    const auto name = [](const QComboBox* box) {
        return box->currentData().toString();
    };
    histogram_->onBrushed([this, name](const std::optional<QRectF>& area) {
        brush(area ? std::optional(RunBrush::over(*histogram_, name(counted_), *area)) : std::nullopt);
    });
    scatter_->onBrushed([this, name](const std::optional<QRectF>& area) {
        brush(area ? std::optional(RunBrush::over(*scatter_, name(across_), name(up_), *area)) : std::nullopt);
    });
    return plots;
}

void RunTableWindow::showLoaded() {
    sets_->setCurrentIndex(0);
    database_.clear();
    openSet();
}

void RunTableWindow::showDatabase(const QString& path) {
    int place = sets_->findData(path);
    if (place < 0) {
        place = sets_->count() - 1;
        sets_->insertItem(place, QFileInfo(path).fileName(), path);
        sets_->setItemData(place, path, Qt::ToolTipRole);
    }
    sets_->setCurrentIndex(place);
    database_ = path;
    openSet();
}

void RunTableWindow::loadedHaveChanged() {
    if (!database_.isEmpty())
        return;
    isStale_ = true;
    if (!changing_->isActive())
        changing_->start();
}

bool RunTableWindow::isSettled() const {
    return !isStale_ && !asking_.isAsking() && !typing_->isActive();
}

void RunTableWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (isStale_)
        openSet();
}

void RunTableWindow::chooseAnotherDatabase() {
    sets_->setCurrentIndex(std::max(sets_->findData(database_), 0));
    const QString path = QFileDialog::getOpenFileName(
        this, QStringLiteral("Open runs"), {}, QStringLiteral("Databases of runs (*.sqlite);;All files (*)"));
    if (!path.isEmpty())
        showDatabase(path);
}

void RunTableWindow::openSet() {
    isStale_ = false;
    const std::vector<std::string> before = model_->columns();
    const Outcome<std::string> name =
        database_.isEmpty() ? source_.loaded() : Outcome<std::string>(QFile::encodeName(database_).toStdString());
    Outcome<RunQuery> query = name ? RunQuery::open(*name) : Outcome<RunQuery>(name.problem());
    problem_ = query ? QString() : QString::fromStdString(query.problem().text);
    name_ = query ? *name : std::string();
    brush_.reset();
    all_ = 0;
    setWindowTitle(
        database_.isEmpty() ? QStringLiteral("Runs: loaded engagements")
                            : QStringLiteral("Runs: %1").arg(QFileInfo(database_).fileName()));
    asking_.forget();
    if (table_->currentIndex().isValid())
        current_ = model_->paths()[static_cast<std::size_t>(table_->currentIndex().row())];
    model_->setQuery(query ? std::optional(*std::move(query)) : std::nullopt);
    if (model_->columns() != before)
        listColumns();
    if (name_.empty()) {
        showPlots({});
        return tell();
    }
    ask();
}

// The columns are others: the user's choices among them begin anew.
void RunTableWindow::listColumns() {
    for (QComboBox* const box : {counted_, across_, up_}) {
        const QString chosen = box->currentData().toString();
        box->clear();
        for (const std::string& column : model_->columns())
            if (column != "path" && column != "fault")
                box->addItem(columnTitle(column).inOneLine(), QString::fromStdString(column));
        chooseBeginning(*box, QLatin1String(box == across_ ? kAcross : kCounted));
        if (const int place = box->findData(chosen); place >= 0)
            box->setCurrentIndex(place);
    }
    const QSignalBlocker blocker(table_->horizontalHeader());
    table_->horizontalHeader()->setSortIndicator(0, Qt::AscendingOrder);
    table_->arrange(model_->columns());
    areColumnsNew_ = true;
}

void RunTableWindow::ask() {
    typing_->stop();
    if (name_.empty())
        return;
    const QHeaderView& titles = *table_->horizontalHeader();
    const auto sorted = static_cast<std::size_t>(std::max(titles.sortIndicatorSection(), 0));
    RunQuestion question;
    question.where = condition_->text().trimmed().toStdString();
    question.order = model_->columns()[std::min(sorted, model_->columns().size() - 1)];
    question.isDescending = titles.sortIndicatorOrder() == Qt::DescendingOrder;
    for (const QComboBox* const box : {counted_, across_, up_})
        question.columns.push_back(box->currentData().toString().toStdString());
    std::erase(question.columns, std::string());
    question_ = std::move(question);
    asking_.ask(name_, question_);
    tell();
}

void RunTableWindow::take(Outcome<RunAnswer> answer) {
    problem_ = answer ? QString() : QString::fromStdString(answer.problem().text);
    if (!answer)
        return tell(); // what was on show stays
    const QModelIndex current = table_->currentIndex();
    const std::string path =
        current.isValid() ? model_->paths()[static_cast<std::size_t>(current.row())] : std::exchange(current_, {});
    all_ = answer->all;
    model_->setPaths(std::move(answer->paths));
    if (areColumnsNew_ && model_->rowCount() > 0) {
        table_->fitColumns();
        areColumnsNew_ = false;
    }
    const int row = path.empty() ? -1 : model_->rowOf(path);
    if (model_->rowCount() > 0)
        table_->setCurrentIndex(model_->index(std::max(row, 0), std::max(current.column(), 0)));
    showPlots(answer->columns);
    tell();
}

void RunTableWindow::showPlots(const std::vector<RunColumn>& columns) {
    histogram_->setColumn(plotted(*counted_, question_, columns));
    scatter_->setColumns(plotted(*across_, question_, columns), plotted(*up_, question_, columns));
    showMarks();
}

void RunTableWindow::follow(int row) {
    const std::string& path = model_->paths()[static_cast<std::size_t>(row)];
    const std::optional<Problem> problem = source_.follow(path, database_);
    problem_ = problem ? QString::fromStdString(problem->text) : QString();
    tell();
}

void RunTableWindow::brush(std::optional<RunBrush> brush) {
    brush_ = std::move(brush);
    showMarks();
    const std::vector<std::uint8_t>& marks = model_->marks();
    const auto first = std::ranges::find(marks, std::uint8_t{1});
    if (first != marks.end())
        table_->scrollTo(model_->index(static_cast<int>(first - marks.begin()), 0));
    tell();
}

void RunTableWindow::showMarks() {
    std::vector<std::uint8_t> marks = brush_ ? brush_->marks() : std::vector<std::uint8_t>();
    histogram_->setMarks(marks);
    scatter_->setMarks(marks);
    model_->setMarks(std::move(marks));
    toCondition_->setEnabled(brush_.has_value());
}

void RunTableWindow::filterToBrush() {
    const QString before = condition_->text().trimmed();
    const QString brushed = brush_->condition();
    condition_->setText(before.isEmpty() ? brushed : QStringLiteral("(%1) AND %2").arg(before, brushed));
    brush_.reset();
    ask();
}

void RunTableWindow::tell() {
    const std::size_t shown = model_->paths().size();
    const QString runs = grouped(all_) + (all_ == 1 ? QStringLiteral(" run") : QStringLiteral(" runs"));
    QString text = shown == all_ ? runs : QStringLiteral("%1 of %2").arg(grouped(shown), runs);
    if (const auto marked = std::ranges::count(model_->marks(), std::uint8_t{1}); brush_)
        text += QStringLiteral(", %1 brushed").arg(grouped(static_cast<std::size_t>(marked)));
    if (asking_.isAsking())
        text += QStringLiteral(" …");
    if (!problem_.isEmpty())
        text = problem_;
    status_->setText(text);
    QPalette colours = palette();
    if (!problem_.isEmpty()) {
        const bool isDark = colours.color(QPalette::Window).lightness() < 128;
        colours.setColor(QPalette::WindowText, isDark ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB0, 0x00, 0x20));
    }
    status_->setPalette(colours);
}

void RunTableWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && scatter_ != nullptr)
        useTheme();
}

void RunTableWindow::useTheme() {
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    const PlotTheme& theme = isDark ? darkPlotTheme() : lightPlotTheme();
    histogram_->setTheme(theme);
    scatter_->setTheme(theme);
    QColor mark = theme.curve(1);
    mark.setAlpha(kMarkAlpha);
    model_->setMarkColour(mark);
    tell();
}
} // namespace sorvane
