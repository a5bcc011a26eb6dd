#include "tables/frmResults.h"

#include <QtWidgets>

#include "core/Progress.h"
#include "core/StatusMessages.h"
#include "devices/QtProgress.h"
#include "kit/EntryBox.h"
#include "kit/PictureView.h"
#include "kit/ScreenManager.h"
#include "tables/Reports.h"
#include "tables/TableExport.h"
#include "tables/TablePresenter.h"
#include "text/Number.h"

namespace kelvo {
namespace {

/// Rows come once a second at the most; what is added at once is worked out once. Results of a long table are worked
/// out the more seldom the longer that takes: a twentieth of the time at most goes into it.
constexpr int LaterMs = 100, Share = 20;
constexpr int LeastHeight = 560, LeastListRows = 4;
/// Twips of the picture of bars: six parts of a budget.
constexpr float BarsShown = 3300;

template <typename Table>
Table* Grid(const char* name, const QString& accessible, int leastRows) {
    auto* grid = Named(new Table, name);
    grid->setAccessibleName(accessible);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
    grid->setAlternatingRowColors(true);
    grid->setTabKeyNavigation(false);
    grid->setWordWrap(false);
    grid->verticalHeader()->hide();
    grid->verticalHeader()->setDefaultSectionSize(grid->fontMetrics().height() + 8);
    grid->horizontalHeader()->setHighlightSections(false);
    grid->horizontalHeader()->setStretchLastSection(true);
    grid->setMinimumHeight((leastRows + 1) * (grid->fontMetrics().height() + 8) + 4);
    return grid;
}

Qt::Alignment AlignmentOf(int col, const std::string& text) {
    return Qt::AlignVCenter | (col > 0 && CellNumber(text) ? Qt::AlignRight : Qt::AlignLeft);
}

void Fill(QTableWidget* grid, const Cells& cells) {
    QStringList heads;
    for (const std::string& head : cells.heads)
        heads << ToQt(head);
    grid->setColumnCount(static_cast<int>(heads.size()));
    grid->setHorizontalHeaderLabels(heads);
    grid->setRowCount(static_cast<int>(cells.rows.size()));
    for (std::size_t row = 0; row < cells.rows.size(); ++row) {
        for (std::size_t col = 0; col < cells.rows[row].size(); ++col) {
            auto* item = new QTableWidgetItem(ToQt(cells.rows[row][col]));
            item->setTextAlignment(AlignmentOf(static_cast<int>(col), cells.rows[row][col]));
            grid->setItem(static_cast<int>(row), static_cast<int>(col), item);
        }
    }
    grid->resizeColumnsToContents();
}

}  // namespace

/// The list of results: a line is put into words when it is looked at.
class ResultsModel : public QAbstractTableModel {
 public:
    ResultsModel(const std::vector<ReportedResult>& results, QObject* parent)
        : QAbstractTableModel(parent), results_(results) {}

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(ResultHeads().size());
    }
    QVariant headerData(int section, Qt::Orientation way, int role) const override {
        if (way != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return ToQt(ResultHeads()[static_cast<std::size_t>(section)]);
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole && role != Qt::TextAlignmentRole && role != Qt::ToolTipRole) return {};
        if (index.row() != lineOf_) {
            lineOf_ = index.row();
            line_ = ResultLine(results_[static_cast<std::size_t>(index.row())]);
        }
        const std::string& text = line_[static_cast<std::size_t>(index.column())];
        if (role == Qt::TextAlignmentRole) return QVariant::fromValue(AlignmentOf(index.column(), text));
        return ToQt(text);
    }
    /// The results have been worked out anew.
    void Renew() {
        beginResetModel();
        rows_ = static_cast<int>(results_.size());
        lineOf_ = -1;
        endResetModel();
    }

 private:
    const std::vector<ReportedResult>& results_;
    int rows_ = 0;
    mutable int lineOf_ = -1;  ///< the line that was asked for last
    mutable std::vector<std::string> line_;
};

frmResults::frmResults(AppContext& context)
    : Screen(context, ScreenCode::frmResults, "frmResults", Kind::Working),
      results_(context.state, context.table, context.prompts, context.files) {
    setWindowTitle(QStringLiteral("Results"));
    BuildMenus();
    lblHeading_ = Named(new QLabel, "lblHeading");
    lblHeading_->setAccessibleName(QStringLiteral("Results of"));
    Body()->setSpacing(8);
    Body()->addWidget(lblHeading_);
    Body()->addWidget(BuildSamples(), 3);
    auto* lower = new QHBoxLayout;
    lower->setSpacing(14);
    lower->addWidget(BuildRows(), 2);
    lower->addWidget(BuildBudget(), 3);
    Body()->addLayout(lower, 4);
    Body()->parentWidget()->setMinimumHeight(LeastHeight);
    later_ = new QTimer(this);
    later_->setSingleShot(true);
    later_->setInterval(LaterMs);
    connect(later_, &QTimer::timeout, this, &frmResults::ShowAll);
}

void frmResults::BuildMenus() {
    auto* file = AddMenu("mnuRFile", QStringLiteral("&File"));
    auto* csv = AddItem(file, "mnuRExport", 0, QStringLiteral("Export &CSV"));
    auto* xlsx = AddItem(file, "mnuRExport", 1, QStringLiteral("Export &XLSX"));
    auto* json = AddItem(file, "mnuRExport", 2, QStringLiteral("Export &JSON"));
    auto* print = AddItem(file, "mnuRPrint", -1, QStringLiteral("&Print"));
    auto* close = AddItem(file, "mnuRClose", -1, QStringLiteral("C&lose"));
    auto* edit = AddMenu("mnuREdit", QStringLiteral("&Edit"));
    auto* copy = AddItem(edit, "mnuRCopy", -1, QStringLiteral("&Copy Results"));
    mnuStrike_ = AddItem(edit, "mnuRStrike", -1, QStringLiteral("&Leave Row Out..."));
    mnuTakeBack_ = AddItem(edit, "mnuRTakeBack", -1, QStringLiteral("&Take Row Back"));
    print->setShortcut(QKeySequence::Print);
    copy->setShortcut(QKeySequence::Copy);
    mnuStrike_->setShortcut(QKeySequence::Delete);
    print->setEnabled(context_.printing != nullptr);
    AddHelpMenu();
    connect(csv, &QAction::triggered, this, [this] { Export(".csv"); });
    connect(xlsx, &QAction::triggered, this, [this] { Export(".xlsx"); });
    connect(json, &QAction::triggered, this, [this] { Export(".json"); });
    connect(print, &QAction::triggered, this, &frmResults::Print);
    connect(close, &QAction::triggered, this, &frmResults::OnEscape);
    connect(copy, &QAction::triggered, this, [this] {
        QGuiApplication::clipboard()->setText(ToQt(ResultsText(results_.Results())));
        SetStatus("The results have been copied.");
    });
    connect(mnuStrike_, &QAction::triggered, this, [this] { Strike(true); });
    connect(mnuTakeBack_, &QAction::triggered, this, [this] { Strike(false); });
}

QWidget* frmResults::BuildSamples() {
    samples_ = Grid<QTableView>("grdResults", QStringLiteral("Results, one a sample"), LeastListRows);
    model_ = new ResultsModel(results_.Results(), samples_);
    samples_->setModel(model_);
    connect(samples_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& now) {
        if (showing_ || !now.isValid()) return;
        results_.Select(now.row());
        ShowSample();
    });
    return samples_;
}

QWidget* frmResults::BuildRows() {
    auto* frame = new QWidget;
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    rows_ = Grid<QTableWidget>("grdRows", QStringLiteral("Rows of the sample"), LeastListRows);
    connect(rows_, &QTableWidget::itemSelectionChanged, this, [this] {
        if (!showing_) ShowSample();
    });
    column->addWidget(rows_, 1);
    auto* boxes = new QGridLayout;
    const std::array<const char*, 3> names = {"Dilution factor:", "Blank:", "Its standard deviation:"};
    for (std::size_t i = 0; i < corrections_.size(); ++i) {
        const int row = static_cast<int>(i);
        auto* label = Named(new QLabel(QString::fromLatin1(names[i])), "lblCorrection", row);
        corrections_[i] = Named(EntryBox::Number(), "txtCorrection", row);
        corrections_[i]->setAccessibleName(label->text());
        label->setBuddy(corrections_[i]);
        boxes->addWidget(label, row, 0);
        boxes->addWidget(corrections_[i], row, 1);
        connect(corrections_[i], &EntryBox::Entered, this, [this, i] {
            Correct();
            corrections_[(i + 1) % corrections_.size()]->setFocus(Qt::TabFocusReason);
        });
        connect(corrections_[i], &EntryBox::FocusLost, this, &frmResults::Correct);
    }
    boxes->setColumnStretch(2, 1);
    column->addLayout(boxes);
    return frame;
}

QWidget* frmResults::BuildBudget() {
    auto* frame = new QWidget;
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    lblLine_ = Named(new QLabel, "lblResult");
    lblMade_ = Named(new QLabel, "lblMade");
    lblLine_->setAccessibleName(QStringLiteral("Result"));
    lblMade_->setAccessibleName(QStringLiteral("Remarks on the result"));
    QFont bold = lblLine_->font();
    bold.setBold(true);
    lblLine_->setFont(bold);
    for (QLabel* label : {lblLine_, lblMade_}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        column->addWidget(label);
    }
    plot_ = Named(new PictureView(bars_, nullptr, BarsWidth, BarsShown), "picBudget");
    plot_->setAccessibleName(QStringLiteral("Uncertainty budget"));
    plot_->SetWords(
        [this] { return results_.InHand() != nullptr ? BudgetWords(*results_.InHand()) : results_.Heading(); });
    plot_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    column->addWidget(plot_, 1);
    return frame;
}

void frmResults::OnLoad() {
    ShowAll();
}

void frmResults::OnActivate() {
    Screen* owner = context_.screens.Find(ScreenCode::frmQSave);
    if (owner != nullptr && windowHandle() != nullptr) windowHandle()->setTransientParent(owner->windowHandle());
    ShowAll();
    samples_->setFocus(Qt::OtherFocusReason);
}

void frmResults::TableChanged() {
    if (!later_->isActive()) later_->start();
}

void frmResults::OnEscape() {
    context_.screens.Close(Code());
}

void frmResults::ShowAll() {
    const QScopedValueRollback showing(showing_, true);
    QElapsedTimer took;
    took.start();
    results_.Refresh();
    lblHeading_->setText(ToQt(results_.Heading()));
    const int left = samples_->horizontalScrollBar()->value();
    model_->Renew();
    samples_->resizeColumnsToContents();
    if (results_.InHand() != nullptr) samples_->setCurrentIndex(model_->index(results_.Place(), 0));
    samples_->horizontalScrollBar()->setValue(left);
    later_->setInterval(std::max(LaterMs, Share * static_cast<int>(took.elapsed())));
    ShowSample();
}

void frmResults::ShowSample() {
    const QScopedValueRollback showing(showing_, true);
    const ReportedResult* result = results_.InHand();
    static const ReportedResult none;
    const int row = rows_->currentRow();
    Fill(rows_, result != nullptr ? RowCells(*result) : Cells{RowCells(none).heads, {}});
    if (result != nullptr && row >= 0) rows_->setCurrentCell(std::min(row, rows_->rowCount() - 1), 0);
    for (int i = 0; result != nullptr && i < rows_->rowCount(); ++i) {
        const bool struck = !result->rows[static_cast<std::size_t>(i)].struck.empty();
        for (int col = 0; struck && col + 1 < rows_->columnCount(); ++col) {
            QFont font = rows_->font();
            font.setStrikeOut(true);
            rows_->item(i, col)->setFont(font);
        }
    }
    const int at = rows_->currentRow();
    const bool struck = result != nullptr && at >= 0 && !result->rows[static_cast<std::size_t>(at)].struck.empty();
    mnuStrike_->setEnabled(result != nullptr && at >= 0 && !struck);
    mnuTakeBack_->setEnabled(struck);
    lblLine_->setText(result != nullptr ? ToQt("Sample " + result->sample + ": " + result->Line()) : QString());
    lblMade_->setText(result != nullptr ? ToQt(result->words) : QString());
    lblMade_->setVisible(!lblMade_->text().isEmpty());
    const auto number = [](double value, double unless) { return value == unless ? std::string() : TrimStr(value); };
    const std::array<std::string, 3> texts = {number(result != nullptr ? result->dilution : 1, 1),
                                              number(result != nullptr ? result->blank : 0, 0),
                                              number(result != nullptr ? result->blankDeviation : 0, 0)};
    for (std::size_t i = 0; i < corrections_.size(); ++i) {
        corrections_[i]->setEnabled(result != nullptr);
        if (!corrections_[i]->hasFocus() || corrections_[i]->Text().empty()) corrections_[i]->SetText(texts[i]);
    }
    bars_ = result != nullptr ? BudgetBars(result->budget, "There is no budget: " + result->Line()) : DisplayList();
    plot_->update();
}

void frmResults::Refreshed(const std::string& told) {
    ShowAll();
    SetStatus(told);
}

void frmResults::Strike(bool out) {
    Refreshed(out ? results_.Strike(rows_->currentRow()) : results_.TakeBack(rows_->currentRow()));
}

void frmResults::Correct() {
    const ReportedResult* result = results_.InHand();
    if (result == nullptr || showing_) return;
    const auto value = [this](std::size_t i, double none) {
        const std::string text = Trim(corrections_[i]->Text());
        return text.empty() ? none : CellNumber(text).value_or(-1);
    };
    if (value(0, 1) == result->dilution && value(1, 0) == result->blank && value(2, 0) == result->blankDeviation)
        return;
    const std::string told =
        results_.Correct(corrections_[0]->Text(), corrections_[1]->Text(), corrections_[2]->Text());
    Refreshed(told);
}

void frmResults::Print() {
    if (context_.printing == nullptr) return;
    QtProgress progress(this, tr("Printing the results."));
    results_.Print({*context_.printing, context_.prompts, context_.clock, progress});
    if (!state_.Get<StatusMessages>().StatusMessage.empty()) TakeStatusMessage();
}

void frmResults::Export(const char* extension) {
    results_.Export(extension);
    if (!state_.Get<StatusMessages>().StatusMessage.empty()) TakeStatusMessage();
}

}  // namespace kelvo
