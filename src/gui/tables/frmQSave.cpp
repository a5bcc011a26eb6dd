#include "tables/frmQSave.h"

#include <QtWidgets>

#include "core/Dialogs.h"
#include "core/StatusMessages.h"
#include "devices/QtProgress.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"
#include "tables/FindBar.h"
#include "tables/Reports.h"
#include "tables/ResultsPresenter.h"
#include "tables/RowReplicates.h"
#include "tables/RowUncertainty.h"
#include "tables/TableExport.h"
#include "tables/TableFollower.h"
#include "tables/TableOrder.h"
#include "tables/TablePresenter.h"
#include "tables/frmQSaveModel.h"

namespace kelvo {
namespace {

/// The box of a sample number: Enter goes on to the next row, so that a scanner fills the column.
class NumberDelegate : public QStyledItemDelegate {
 public:
    explicit NumberDelegate(QTableView* view) : QStyledItemDelegate(view), view_(view) {}
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const override {
        EntryBox* box = EntryBox::Words(parent);
        box->setObjectName(QStringLiteral("txtNumber"));
        box->setAccessibleName(QStringLiteral("Sample number"));
        box->setMaxLength(static_cast<int>(SampleList::LongestName));
        return box;
    }
    bool eventFilter(QObject* editor, QEvent* event) override {
        const auto* key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
        if (key == nullptr || (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter))
            return QStyledItemDelegate::eventFilter(editor, event);
        auto* box = static_cast<QWidget*>(editor);
        emit commitData(box);
        emit closeEditor(box);
        const QModelIndex now = view_->currentIndex();
        if (now.row() + 1 < view_->model()->rowCount()) view_->setCurrentIndex(now.siblingAtRow(now.row() + 1));
        return true;
    }

 private:
    QTableView* view_;
};

/// Place of a caption or a text of the head: row, column and columns taken up.
struct Place {
    int row, col, span;
};

struct HeadPlaces {
    std::array<Place, 11> label;
    std::array<Place, 8> text;
};

constexpr HeadPlaces IseHead = {
    {{{0, 0, 1},
      {1, 0, 1},
      {0, 2, 1},
      {1, 2, 1},
      {2, 2, 1},
      {0, 4, 1},
      {3, 0, 2},
      {4, 0, 2},
      {3, 2, 2},
      {4, 2, 2},
      {1, 4, 1}}},
    {{{0, 1, 1}, {1, 1, 1}, {0, 3, 1}, {1, 3, 1}, {2, 3, 1}, {0, 5, 1}, {2, 4, 2}, {1, 5, 1}}}};
constexpr HeadPlaces PhHead = {
    {{{1, 0, 1},
      {2, 0, 1},
      {3, 0, 1},
      {1, 2, 1},
      {2, 2, 1},
      {3, 2, 1},
      {0, 4, 1},
      {0, 0, 2},
      {0, 2, 2},
      {1, 4, 2},
      {2, 4, 1}}},
    {{{1, 1, 1}, {2, 1, 1}, {3, 1, 1}, {1, 3, 1}, {2, 3, 1}, {3, 3, 1}, {0, 5, 1}, {2, 5, 1}}}};

/// A box whose text has several lines spans the rows below it in the ISE head.
constexpr int StandardsBox = 1;

constexpr int BoxMargin = 3;  ///< pixels around the text of a box; captions stand level with it
constexpr int TwipsAPixel = 15;
constexpr int NarrowColumn = 100;  ///< twips below which a column is not shown

const char* const RemarksBelow = "A remark goes with the rows in italics; it is told here for the row in hand.";

QString Lines(const std::string& text) {
    return Shortened(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

}  // namespace

frmQSave::frmQSave(AppContext& context) : Screen(context, ScreenCode::frmQSave, "frmQSave", Kind::Working) {
    setWindowTitle(QStringLiteral("Data Table"));
    model_ = new TableModel(context.table.Shown(), this);
    BuildMenus();
    Body()->addWidget(BuildHead());
    Body()->addWidget(BuildGrid(), 1);
    find_ = new FindBar;
    connect(find_, &FindBar::Wanted, this, &frmQSave::FindNext);
    connect(find_, &FindBar::Closed, this, [this] {
        find_->hide();
        Grid1_->setFocus(Qt::OtherFocusReason);
    });
    Body()->addWidget(find_);
    Body()->setSpacing(10);
}

const DataTable& frmQSave::Table() const {
    return context_.table.Shown();
}

void frmQSave::BuildMenus() {
    auto* file = AddMenu("mnuF", QStringLiteral("&File"));
    mnuFile_ = {AddItem(file, "mnuFile", 0, QStringLiteral("&Open")),
                AddItem(file, "mnuFile", 1, QStringLiteral("&Close")),
                AddItem(file, "mnuFile", 2, QStringLiteral("&Print"))};
    mnuFile_[0]->setShortcut(QKeySequence::Open);
    mnuFile_[2]->setShortcut(QKeySequence::Print);
    connect(mnuFile_[0], &QAction::triggered, this, [this] { Busily([this] { context_.table.Open(); }); });
    connect(mnuFile_[1], &QAction::triggered, this, [this] { context_.table.Close(); });
    connect(mnuFile_[2], &QAction::triggered, this, &frmQSave::Print);

    mnuShortHead_ = AddItem(file, "mnuShortHead", -1, QStringLiteral("&Short Head"));
    connect(mnuShortHead_, &QAction::triggered, this, [this] { Busily([this] { context_.table.ReadShortHead(); }); });

    auto* copies = AddMenu("mnuExport", QStringLiteral("&Export"));
    auto* csv = AddItem(copies, "mnuExportTo", 0, QStringLiteral("&CSV"));
    auto* xlsx = AddItem(copies, "mnuExportTo", 1, QStringLiteral("&XLSX"));
    auto* copy = AddItem(copies, "mnuCopy", -1, QStringLiteral("C&opy Cells"));
    copy->setShortcut(QKeySequence::Copy);
    connect(csv, &QAction::triggered, this, [this] { Export(ExportCsv); });
    connect(xlsx, &QAction::triggered, this, [this] { Export(ExportXlsx); });
    connect(copy, &QAction::triggered, this, &frmQSave::Copy);

    auto* look = AddMenu("mnuLook", QStringLiteral("&View"));
    auto* find = AddItem(look, "mnuFind", 0, QStringLiteral("&Find..."));
    auto* next = AddItem(look, "mnuFind", 1, QStringLiteral("Find &Next"));
    auto* before = AddItem(look, "mnuFind", 2, QStringLiteral("Find &Previous"));
    auto* sort = AddItem(look, "mnuSort", 0, QStringLiteral("&Sort by this Column"));
    auto* own = AddItem(look, "mnuSort", 1, QStringLiteral("&Own Order"));
    find->setShortcut(QKeySequence::Find);
    next->setShortcut(QKeySequence(Qt::Key_F3));
    before->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F3));
    connect(find, &QAction::triggered, this, [this] { find_->Ask(); });
    connect(next, &QAction::triggered, this, [this] { FindNext(true); });
    connect(before, &QAction::triggered, this, [this] { FindNext(false); });
    connect(sort, &QAction::triggered, this, [this] { SortBy(Grid1_->currentIndex().column()); });
    connect(own, &QAction::triggered, this, [this] { SortBy(-1); });

    auto* row = AddMenu("mnuRow", QStringLiteral("&Row"));
    mnuStrike_ = AddItem(row, "mnuStrike", -1, QStringLiteral("Strike &Out..."));
    mnuTakeBack_ = AddItem(row, "mnuTakeBack", -1, QStringLiteral("&Take Back"));
    mnuResults_ = AddItem(row, "mnuResults", -1, QStringLiteral("&Results..."));
    row->addSeparator();
    auto* list = AddItem(row, "mnuSampleList", 0, QStringLiteral("Sample &List..."));
    mnuSkip_ = AddItem(row, "mnuSampleList", 1, QStringLiteral("&Skip Sample"));
    mnuLeft_ = AddItem(row, "mnuSampleList", 2, QStringLiteral("&What Is Left"));
    mnuEnd_ = AddItem(row, "mnuSampleList", 3, QStringLiteral("&End List"));
    row->addSeparator();
    auto* controls = AddItem(row, "mnuControls", -1, QStringLiteral("&Control Samples..."));
    connect(controls, &QAction::triggered, this, [this] { context_.table.AskControls(); });
    connect(list, &QAction::triggered, this, [this] { Busily([this] { context_.table.OpenSampleList(); }); });
    connect(mnuSkip_, &QAction::triggered, this, [this] {
        Busily([this] {
            context_.table.SkipSample();
            TellNextSample();
        });
    });
    connect(mnuEnd_, &QAction::triggered, this, [this] { Busily([this] { context_.table.EndSampleList(); }); });
    connect(mnuLeft_, &QAction::triggered, this, &frmQSave::ShowLeft);
    mnuStrike_->setShortcut(QKeySequence::Delete);
    mnuResults_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
    connect(mnuStrike_, &QAction::triggered, this, [this] { Strike(true); });
    connect(mnuTakeBack_, &QAction::triggered, this, [this] { Strike(false); });
    connect(mnuResults_, &QAction::triggered, this, [this] { context_.screens.Show(ScreenCode::frmResults); });

    auto* back = Named(Menus()->addAction(QStringLiteral("&Back")), "mnuBack");
    connect(back, &QAction::triggered, this, &frmQSave::Back);
    AddHelpMenu();
}

QWidget* frmQSave::BuildHead() {
    auto* head = new QWidget;
    head_ = new QGridLayout(head);
    head_->setContentsMargins(0, 0, 0, 0);
    head_->setHorizontalSpacing(8);
    head_->setVerticalSpacing(4);
    for (std::size_t i = 0; i < Label1_.size(); ++i) {
        Label1_[i] = Named(new QLabel, "Label1", static_cast<int>(i));
        Label1_[i]->setTextFormat(Qt::PlainText);
        Label1_[i]->setContentsMargins(0, BoxMargin, 0, 0);
    }
    for (std::size_t i = 0; i < txtData_.size(); ++i) {
        auto* box = Named(new QPlainTextEdit, "txtData", static_cast<int>(i));
        box->setReadOnly(true);
        box->setTabChangesFocus(true);
        box->setFrameShape(QFrame::NoFrame);
        box->setLineWrapMode(QPlainTextEdit::NoWrap);
        box->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        // A text longer than its box has a bar below it, and the box is higher by that much.
        connect(box->horizontalScrollBar(), &QScrollBar::rangeChanged, this, [this] { FitHeads(); });
        box->setTabStopDistance(fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
        box->document()->setDocumentMargin(BoxMargin);
        box->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("24/11/2026 20:49 ")));
        txtData_[i] = box;
    }
    PlaceHead();
    return head;
}

void frmQSave::PlaceHead() {
    const HeadPlaces& places = phHead_ ? PhHead : IseHead;
    const auto put = [this](QWidget* widget, const Place& place, int rows) {
        head_->removeWidget(widget);
        head_->addWidget(widget, place.row, place.col, rows, place.span, Qt::AlignTop);
    };
    const auto rows = [this](std::size_t i) { return !phHead_ && i == StandardsBox ? 2 : 1; };
    for (std::size_t i = 0; i < Label1_.size(); ++i)
        put(Label1_[i], places.label[i], rows(i));
    for (std::size_t i = 0; i < txtData_.size(); ++i)
        put(txtData_[i], places.text[i], rows(i));
    // The caption of the three lines of standards wraps to stand beside them.
    Label1_[StandardsBox]->setWordWrap(!phHead_);
    const int narrow =
        phHead_ ? 0 : Label1_[StandardsBox]->fontMetrics().horizontalAdvance(QStringLiteral("Stanard (ppm)  "));
    Label1_[StandardsBox]->setMinimumWidth(narrow);
    Label1_[StandardsBox]->setMaximumWidth(phHead_ ? QWIDGETSIZE_MAX : narrow);
    for (int col = 0; col < 6; ++col)
        head_->setColumnStretch(col, col % 2 == 0 ? 0 : col == 1 ? 3 : 2);
}

QTableView* frmQSave::BuildGrid() {
    Grid1_ = Named(new QTableView, "Grid1");
    Grid1_->setModel(model_);
    Grid1_->setAccessibleName(QStringLiteral("Data Table"));
    // Sample numbers alone are typed here, by hand or by a scanner that ends with Enter.
    Grid1_->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::DoubleClicked);
    Grid1_->setItemDelegate(new NumberDelegate(Grid1_));
    model_->TakeNumbers([this](int row) { return context_.table.NumberIsOpen(row); },
                        [this](int row, const std::string& number) { return context_.table.TypeNumber(row, number); });
    Grid1_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    Grid1_->setAlternatingRowColors(true);
    Grid1_->setTabKeyNavigation(false);
    Grid1_->setWordWrap(false);
    Grid1_->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Grid1_->horizontalHeader()->setSectionsClickable(true);
    connect(Grid1_->horizontalHeader(), &QHeaderView::sectionClicked, this, &frmQSave::SortBy);
    Grid1_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    Grid1_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    Grid1_->horizontalHeader()->setHighlightSections(false);
    Grid1_->setContextMenuPolicy(Qt::ActionsContextMenu);
    Grid1_->addAction(findChild<QAction*>(QStringLiteral("mnuCopy")));
    Grid1_->viewport()->installEventFilter(this);
    connect(Grid1_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmQSave::ShowFoot);
    return Grid1_;
}

void frmQSave::OnLoad() {
    context_.table.Load();
    context_.table.Listen(this);
    TableReset();
}

void frmQSave::OnActivate() {
    if (!context_.table.Loaded()) context_.table.Load();
    ShowMenus();
    ShowTopRow();
    Grid1_->setFocus(Qt::OtherFocusReason);
}

void frmQSave::OnUnload() {
    context_.screens.Close(ScreenCode::frmResults);
    context_.table.Listen(nullptr);
    context_.table.Unload();
}

void frmQSave::OnFrameClose() {
    Busily([this] { context_.table.CloseByFrame(); });
}

void frmQSave::Back() {
    context_.table.Back();
}

void frmQSave::Print() {
    if (context_.printing == nullptr) return;
    Busily([this] {
        QtProgress progress(this, tr("Printing the table."));
        context_.table.PrintShown(*context_.printing, progress);
    });
}

void frmQSave::Export(bool (*way)(StateOf<const Paths, const TableState, StatusMessages>, const DataTable&, Prompts&,
                                  FileChooser&, Progress&)) {
    Busily([this, way] {
        QtProgress progress(this, tr("Exporting the table."));
        // A copy: what waits is done meanwhile.
        const DataTable table = Table();
        way(state_, table, context_.prompts, context_.files, progress);
    });
}

void frmQSave::Copy() {
    const QItemSelection selection = Grid1_->selectionModel()->selection();
    if (selection.isEmpty()) return;
    QString copied = model_->Copied(selection);
    const RowReplicates replicates = ReplicatesOf(Table(), SelectedRows());
    // Cells alone stay cells: the summary goes along with rows, not with a single column of them.
    const auto covers = [&](int col) {
        return std::any_of(selection.begin(), selection.end(), [&](const QItemSelectionRange& range) {
            return range.left() <= col && col <= range.right();
        });
    };
    if (!replicates.cells.empty() && covers(replicates.firstCol) && covers(replicates.lastCol))
        copied += u'\n' + ToQt(replicates.cells);
    QGuiApplication::clipboard()->setText(copied);
}

void frmQSave::Strike(bool out) {
    std::string told;
    Busily([&] {
        told = out ? StrikeRows(context_.table, SelectedRows(), context_.prompts)
                   : TakeRowsBack(context_.table, SelectedRows());
    });
    told.empty() ? ShowFoot() : SetStatus(told);
}

void frmQSave::TellNextSample() {
    state_.Get<StatusMessages>().StatusMessage = context_.table.NextSample() + ".";
}

void frmQSave::ShowLeft() {
    constexpr std::size_t Most = 20;
    const std::vector<std::string> left = context_.table.Samples().Left();
    std::string text = context_.table.NextSample() + ".\n";
    for (std::size_t i = 0; i < std::min(left.size(), Most); ++i)
        text += "\n" + left[i];
    if (left.size() > Most) text += "\n... and " + std::to_string(left.size() - Most) + " more";
    context_.prompts.Message(text, "Sample List");
}

void frmQSave::TellFollower() {
    if (auto* follower = dynamic_cast<TableFollower*>(context_.screens.Find(ScreenCode::frmResults)))
        follower->TableChanged();
}

void frmQSave::hideEvent(QHideEvent* event) {
    Screen::hideEvent(event);
    // It shows the rows of this screen; behind a hidden one it would stand alone.
    if (!event->spontaneous()) context_.screens.Close(ScreenCode::frmResults);
}

std::vector<int> frmQSave::SelectedRows() const {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : Grid1_->selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(model_->TableRow(row));
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void frmQSave::ShowFoot() {
    const std::vector<int> rows = SelectedRows();
    std::string line;
    if (rows.size() == 1)
        line = TextBeside(Table(), rows[0]);
    else if (rows.size() > 1)
        line = ReplicatesOf(Table(), rows).line;
    else if (HasRemarks(Table()))
        line = RemarksBelow;
    // A remark on the last step stays until there is something to say about rows in hand.
    if ((line.empty() || rows.empty()) && StatusText() != foot_) return;
    foot_ = line;
    SetStatus(line);
}

void frmQSave::Busily(const std::function<void()>& step) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    step();
    QGuiApplication::restoreOverrideCursor();
    SetStatus(std::exchange(state_.Get<StatusMessages>().StatusMessage, {}));
    foot_.clear();
    if (StatusText().empty()) ShowFoot();
    ShowMenus();
}

void frmQSave::ShowMenus() {
    for (std::size_t i = 0; i < mnuFile_.size(); ++i)
        mnuFile_[i]->setEnabled(context_.table.MenuEnabled[i] && (i != 2 || context_.printing != nullptr));
    mnuShortHead_->setEnabled(context_.table.HasShortHead());
    for (QAction* action : {mnuStrike_, mnuTakeBack_, mnuResults_})
        action->setEnabled(HasResults(Table()));
    for (QAction* action : {mnuSkip_, mnuLeft_})
        action->setEnabled(!context_.table.Samples().Done());
    mnuEnd_->setEnabled(!context_.table.Samples().Empty());
}

void frmQSave::ShowHead() {
    const bool ph = Table().HeadKind == DataTable::Head::Ph;
    if (ph != phHead_) {
        phHead_ = ph;
        PlaceHead();
    }
    for (std::size_t i = 0; i < Label1_.size(); ++i) {
        Label1_[i]->setText(Shortened(Table().Label1[i]));
        Label1_[i]->setVisible(!Table().Label1[i].empty());
    }
    for (std::size_t i = 0; i < txtData_.size(); ++i) {
        txtData_[i]->setPlainText(Lines(Table().txtData[i]));
        txtData_[i]->setAccessibleName(Label1_[i == 7 ? 10 : i]->text());
    }
    FitHeads();
}

void frmQSave::FitHeads() {
    for (std::size_t i = 0; i < txtData_.size(); ++i) {
        const int lines = !phHead_ && i == StandardsBox ? 3 : phHead_ && (i == 2 || i == 5) ? 2 : 1;
        const QScrollBar* bar = txtData_[i]->horizontalScrollBar();
        const int below = bar->maximum() > 0 ? bar->sizeHint().height() : 0;
        txtData_[i]->setFixedHeight(lines * txtData_[i]->fontMetrics().lineSpacing() + 8 + below);
    }
}

void frmQSave::FitColumns() {
    int total = 0;
    for (const int width : Table().ColWidths)
        total += width < NarrowColumn ? 0 : width;
    if (total == 0) return;
    // A grid that shows its first column has the numbers of the rows there.
    Grid1_->verticalHeader()->setVisible(Table().ColWidths.front() < NarrowColumn);
    const double room = Grid1_->viewport()->width();
    const double scale = std::max(1.0 / TwipsAPixel, room / total);
    const QFontMetrics metrics = Grid1_->horizontalHeader()->fontMetrics();
    for (int col = 0; col < model_->columnCount() && col < static_cast<int>(Table().ColWidths.size()); ++col) {
        const int twips = Table().ColWidths[static_cast<std::size_t>(col)];
        Grid1_->setColumnHidden(col, twips < NarrowColumn);
        const QString head = model_->headerData(col, Qt::Horizontal, Qt::DisplayRole).toString();
        const int least = metrics.horizontalAdvance(head) + 16;
        Grid1_->setColumnWidth(col, std::max(least, static_cast<int>(twips * scale)));
    }
}

void frmQSave::ShowTopRow() {
    if (model_->Sorted()) return;
    if (Table().TopRow > 1) Grid1_->scrollTo(model_->index(Table().TopRow - 1, 1), QAbstractItemView::PositionAtTop);
    // The newest sample is whole in sight on every display, whatever the top row.
    if (!context_.table.ShowsFile() && model_->rowCount() > 0)
        Grid1_->scrollTo(model_->index(model_->rowCount() - 1, 1), QAbstractItemView::EnsureVisible);
}

void frmQSave::SortBy(int col) {
    // The header turns its own mark with the click and cannot be asked.
    const bool again = model_->SortColumn() == col;
    const bool descending = again && !model_->SortedDescending();
    // The third time brings the table's own order back.
    if (again && !descending) col = -1;
    Busily([this, col, descending] {
        model_->SortBy(col, descending);
        if (col < 0) return;
        Grid1_->horizontalHeader()->setSortIndicator(col, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
        state_.Get<StatusMessages>().StatusMessage =
            "Sorted by " + FromQt(model_->headerData(col, Qt::Horizontal, Qt::DisplayRole).toString()) +
            " to look at; the table keeps its own order, which is saved and printed.";
    });
    Grid1_->horizontalHeader()->setSortIndicatorShown(col >= 0);
}

void frmQSave::FindNext(bool forward) {
    if (find_->Text().isEmpty()) return find_->Ask();
    const QModelIndex now = Grid1_->currentIndex();
    const CellPlace after = now.isValid() ? CellPlace{model_->TableRow(now.row()), now.column()} : CellPlace{0, 0};
    const auto found = FindCell(Table(), model_->Order(), FromQt(find_->Text()), after, forward);
    SetStatus(found ? std::string() : "\"" + FromQt(find_->Text()) + "\" is not in the table.");
    if (!found) return;
    const QModelIndex cell = model_->index(model_->ViewRow(found->first), found->second);
    Grid1_->setCurrentIndex(cell);
    Grid1_->scrollTo(cell);
}

void frmQSave::OnEscape() {
    if (!find_->isVisible()) return Back();
    find_->hide();
    Grid1_->setFocus(Qt::OtherFocusReason);
}

void frmQSave::resizeEvent(QResizeEvent* event) {
    Screen::resizeEvent(event);
    FitColumns();
}

bool frmQSave::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Grid1_->viewport() && event->type() == QEvent::Resize) {
        FitColumns();
        // Who looks at the newest row keeps it in sight, once the view has taken its new size.
        const QScrollBar* bar = Grid1_->verticalScrollBar();
        if (bar->value() == bar->maximum())
            QMetaObject::invokeMethod(
                Grid1_, [this] { ShowTopRow(); }, Qt::QueuedConnection);
    }
    return Screen::eventFilter(watched, event);
}

void frmQSave::RowAdded(int row) {
    model_->RowAdded(row);
    Grid1_->horizontalHeader()->setSortIndicatorShown(model_->Sorted());
    if (isVisible()) ShowTopRow();
    TellFollower();
}

void frmQSave::RowsRemoved(int first, int count) {
    model_->RowsRemoved(first, count);
    TellFollower();
}

void frmQSave::RowChanged(int row) {
    model_->RowChanged(row);
    TellFollower();
}

void frmQSave::TableReset() {
    model_->TableReset(context_.table.Shown());
    Grid1_->horizontalHeader()->setSortIndicatorShown(false);
    ShowHead();
    FitColumns();
    ShowMenus();
    ShowFoot();
    TellFollower();
}

}  // namespace kelvo
