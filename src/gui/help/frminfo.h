#pragma once

#include <memory>

#include "help/HelpSearch.h"
#include "help/HelpSheet.h"
#include "kit/Screen.h"

class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QSplitter;
class QStackedWidget;

namespace kelvo {

class IllustrationView;
class NoteEdit;
class PageButton;
class ReadingView;

/// The help sheet: advice for the present topic with its illustration, the analyst's note pad below it, and a search
/// over all sheets and notes. An introduction, or the help of the hardware setup, stands here without a pad.
class frminfo : public Screen {
    Q_OBJECT
 public:
    explicit frminfo(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;
    void OnUnload() override;

 protected:
    void OnEscape() override;
    void OnFrameClose() override { Back(); }
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void BuildMenus();
    QLayout* Head();
    QWidget* Advice();
    QWidget* Pad();
    void ShowPage();
    void Zoom(double zoom);
    void ShowSecond();
    void Search(const QString& query);
    void OpenHit(const QListWidgetItem* item);
    void LeaveSearch();
    void Print();
    void Back();
    void MainMenu();
    bool Leave();

    HelpSheet sheet_;
    UnsavedWork::Registration unsaved_;
    std::unique_ptr<HelpSearch> search_;
    std::vector<HelpHit> hits_;
    bool left_ = false;  ///< the pad has been put away by the sheet's own way out
    double zoom_ = 1;

    QLabel* heading_ = nullptr;
    QLineEdit* txtfind_ = nullptr;
    QStackedWidget* upper_ = nullptr;
    ReadingView* reading_ = nullptr;
    QListWidget* found_ = nullptr;
    IllustrationView* picture_ = nullptr;
    PageButton* Image1_ = nullptr;
    QPushButton* next_ = nullptr;
    QPushButton* chapter_ = nullptr;
    QSplitter* parts_ = nullptr;
    QWidget* pad_ = nullptr;
    NoteEdit* txtinfo_ = nullptr;
    QPushButton* cmdmenu_ = nullptr;
};

}  // namespace kelvo
