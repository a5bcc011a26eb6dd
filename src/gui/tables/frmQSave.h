#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "kit/Screen.h"
#include "tables/DataTable.h"

class QAction;
class QGridLayout;
class QLabel;
class QPlainTextEdit;
class QTableView;

namespace kelvo {

class FindBar;
class Progress;
class TableModel;

/// "Data Table": the head of the one data table and its grid. `TablePresenter` does the work; this shows what
/// stands. The grid has no editing.
class frmQSave : public Screen, private DataTable::Listener {
    Q_OBJECT
 public:
    explicit frmQSave(AppContext& context);

    void OnLoad() override;
    void OnActivate() override;
    void OnUnload() override;

 protected:
    void OnEscape() override;
    void OnFrameClose() override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    /// What is on show: the working table or a file looked at.
    const DataTable& Table() const;
    void BuildMenus();
    QWidget* BuildHead();
    QTableView* BuildGrid();
    void PlaceHead();
    void ShowHead();
    /// Heights of the boxes of the head.
    void FitHeads();
    /// Looks at the rows in the order of a column: ascending, again descending, again (or -1) in the table's own.
    void SortBy(int col);
    void FindNext(bool forward);
    void FitColumns();
    void ShowTopRow();
    void ShowMenus();
    void Copy();
    /// The status line at the foot: the interval of the row in hand, or the replicates of the rows selected.
    void ShowFoot();
    std::vector<int> SelectedRows() const;
    /// Strikes the selected rows out, or takes them back.
    void Strike(bool out);
    /// Says which sample of the list comes next, and all that are left.
    void TellNextSample();
    void ShowLeft();
    /// The window of results, where there is one, has something new to show.
    void TellFollower();
    void Back();
    void Print();
    void Export(bool (*way)(StateOf<const Paths, const TableState, StatusMessages>, const DataTable&, Prompts&,
                            FileChooser&, Progress&));
    /// Runs a step under the busy cursor and shows what it has to remark.
    void Busily(const std::function<void()>& step);

    // --- DataTable::Listener ---------------------------------------------------------------------------------
    void RowAdded(int row) override;
    void RowsRemoved(int first, int count) override;
    void RowChanged(int row) override;
    void TableReset() override;

    TableModel* model_;
    QGridLayout* head_ = nullptr;
    std::array<QLabel*, 11> Label1_{};
    std::array<QPlainTextEdit*, 8> txtData_{};
    QTableView* Grid1_ = nullptr;
    FindBar* find_ = nullptr;
    std::array<QAction*, 3> mnuFile_{};
    QAction *mnuShortHead_ = nullptr, *mnuStrike_ = nullptr, *mnuTakeBack_ = nullptr, *mnuResults_ = nullptr;
    QAction *mnuSkip_ = nullptr, *mnuLeft_ = nullptr, *mnuEnd_ = nullptr;
    bool phHead_ = false;
    std::string foot_;  ///< what the status line says of rows, empty when it says something else
};

}  // namespace kelvo
