#pragma once

#include <QTimer>

#include "kit/Screen.h"
#include "link/SampleReadingPresenter.h"

class QAction;
class QLabel;
class QPushButton;

namespace kelvo {

class EntryBox;

/// "Data Reading...": takes sample readings for the screen that shows it. `SampleReadingPresenter` decides.
class frmPtset : public Screen {
    Q_OBJECT
 public:
    explicit frmPtset(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;
    void OnUnload() override { Timer1_.stop(); }
    /// The tick of `Timer1`; a test calls it.
    void Tick();

 protected:
    void OnEscape() override { Cancel(); }

 private:
    void BuildMenu();
    void ShowReading();
    void Ok();
    void Cancel();

    SampleReadingPresenter reading_;
    QTimer Timer1_;
    EntryBox* Text1_;
    QLabel* Label1_;
    QLabel* lblCntDown_;
    QPushButton* ok_;
};

}  // namespace kelvo
