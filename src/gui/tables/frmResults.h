#pragma once

#include <array>

#include "core/DisplayList.h"
#include "kit/Screen.h"
#include "tables/ResultsPage.h"
#include "tables/ResultsPresenter.h"
#include "tables/TableFollower.h"

class QTableView;
class QTableWidget;
class QTimer;

namespace kelvo {

class EntryBox;
class PictureView;
class ResultsModel;

/// "Results": what the rows of each sample say together, with the budget of its uncertainty. Stays open beside the
/// table screen and follows what that shows.
class frmResults : public Screen, public TableFollower {
    Q_OBJECT
 public:
    explicit frmResults(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;
    void TableChanged() override;

 protected:
    void OnEscape() override;

 private:
    void BuildMenus();
    QWidget* BuildSamples();
    QWidget* BuildRows();
    QWidget* BuildBudget();
    void ShowAll();
    void ShowSample();
    void Refreshed(const std::string& told);
    void Strike(bool out);
    void Correct();
    void Print();
    void Export(const char* extension);

    ResultsPresenter results_;
    QAction *mnuStrike_ = nullptr, *mnuTakeBack_ = nullptr;
    QLabel *lblHeading_ = nullptr, *lblLine_ = nullptr, *lblMade_ = nullptr;
    ResultsModel* model_ = nullptr;
    QTableView* samples_ = nullptr;
    QTableWidget* rows_ = nullptr;
    std::array<EntryBox*, 3> corrections_{};
    DisplayList bars_;
    PictureView* plot_ = nullptr;
    QTimer* later_ = nullptr;
    bool showing_ = false;
};

}  // namespace kelvo
