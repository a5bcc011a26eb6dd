#pragma once

#include <QTimer>
#include <array>

#include "calibration/PointForm.h"
#include "calibration/PointReading.h"
#include "kit/Screen.h"
#include "link/LiveReading.h"

class QAction;
class QLabel;
class QPushButton;

namespace kelvo {

class EntryBox;
class FormBinder;

/// Takes one calibration point: the potential, the concentration in any of three units and, with the first point,
/// the temperature. `PointForm` decides, on line together with `PointReading`; the setup shows it once for each point.
class fmpaidat : public Screen {
    Q_OBJECT
 public:
    explicit fmpaidat(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;
    void OnUnload() override { Timer1_.stop(); }
    /// The tick of `Timer1`, on line; a test calls it.
    void Tick();

 protected:
    /// What has been typed goes by "Cancel" alone: Escape and the frame lead to it.
    void OnEscape() override;

 private:
    QWidget* Boxes();
    void BuildMenu();
    void StartTicks();
    void ShowForm();
    void ShowReading();
    void Ok();
    void Cancel();

    PointForm form_;
    LiveReading live_;
    PointReading reading_;
    QTimer Timer1_;
    FormBinder* binder_;
    std::array<EntryBox*, 6> txtbox_{};
    QLabel* lblPrompt_ = nullptr;
    QLabel* labelmsg_ = nullptr;
    QLabel* lblCntDown_ = nullptr;
    QLabel *Label1_ = nullptr, *Label5_ = nullptr, *Label8_ = nullptr, *Label9_ = nullptr, *Label10_ = nullptr;
    QPushButton *cmdok_ = nullptr, *cmdcancel_ = nullptr;
    QAction* editAsd_ = nullptr;
};

}  // namespace kelvo
