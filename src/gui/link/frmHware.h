#pragma once

#include <array>

#include "kit/Screen.h"
#include "link/HardwarePresenter.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;

namespace kelvo {

class EntryBox;

/// "Hardware Configuration": which electrodes and sensors stand on the two channels, what temperature is assumed
/// without a sensor, the detected ion, the reference electrode, and who measures. `HardwarePresenter` decides.
class frmHware : public Screen {
    Q_OBJECT
 public:
    explicit frmHware(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;

 protected:
    void OnEscape() override { Exit(); }

 private:
    QGroupBox* Frame(int index, const QString& caption);
    QWidget* ChannelColumn();
    QWidget* SettingsColumn();
    void AddElectrode(QGridLayout* grid, int row, int check, int number, const QString& caption);
    QGroupBox* TemperatureFrame();
    QGroupBox* IsabFrame();
    QGroupBox* GeneralFrame();
    void BuildMenus();
    void ConnectSignals();

    /// Takes every box into the form, and shows every box as the form has it.
    void ReadWidgets();
    void ShowForm();
    void ShowDate();
    void IonChosen(int index);
    void PortChosen();
    void Enter(int box);
    void Back();
    void Exit();

    HardwarePresenter presenter_;
    bool HwareReady_ = false;
    std::array<QCheckBox*, 5> Chkchl_{};
    std::array<EntryBox*, 3> txtNum_{};
    std::array<QLabel*, 3> Label1_{};
    std::array<EntryBox*, 6> txtC_{};
    std::array<QLabel*, 5> lblC_{};
    std::array<QGroupBox*, 6> Fram_{};
    QGroupBox* isabFrame_ = nullptr;
    EntryBox* txtISAB_ = nullptr;
    EntryBox* txtOp_ = nullptr;
    QComboBox* cmbIon_ = nullptr;
    QComboBox* cmbPort_ = nullptr;
    QComboBox* CmbFormat_ = nullptr;
    QLabel* Label2_ = nullptr;
    QCheckBox* chkPrt_ = nullptr;
};

}  // namespace kelvo
