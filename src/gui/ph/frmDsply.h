#pragma once

#include <QTimer>
#include <array>

#include "kit/AskedToOpen.h"
#include "kit/Screen.h"
#include "ph/LiveDisplay.h"
#include "tables/RowClient.h"

class QAction;
class QGroupBox;
class QLabel;
class QPushButton;

namespace kelvo {

class EntryBox;
class FormBinder;

/// "pH Measurement": pH, mV and temperature of one or two electrodes, live, to be read from two metres. `LiveDisplay`
/// decides.
class frmDsply : public Screen, public AskedToOpen, public RowClient {
    Q_OBJECT
 public:
    /// The live display behind a table is not meant to run.
    void OpenAsked(OpensAsked) override;
    explicit frmDsply(AppContext& context);
    void OnLoad() override;
    void OnUnload() override { Timer1_.stop(); }
    /// The tick of `Timer1`; a test calls it.
    void Tick();

    void RowDone() override;

 protected:
    void OnEscape() override { Back(); }
    void resizeEvent(QResizeEvent* event) override;

 private:
    void BuildMenus();
    QGroupBox* BuildElectrode(int electrode);
    QLabel* Caption(int index, const char* text);
    void ShowDisplay();
    void ShowElectrode(int electrode);
    void FitLetters();

    void OpenTable();
    void Stop();
    void PrintTable();
    void ShowTable();
    void SaveData();
    void Back();
    void Exit();

    LiveDisplay display_;
    FormBinder* binder_;
    QTimer Timer1_;
    std::array<QGroupBox*, 2> groups_{};
    std::array<QLabel*, 8> lbldata_{};
    std::array<QLabel*, 14> lbltxt_{};
    std::array<QLabel*, 2> lblWorth_{}, lblDoubt_{};
    std::array<EntryBox*, 4> txtTempt_{};
    std::array<QPushButton*, 3> cmdDsply_{};
    std::array<QAction*, 5> mnuSetting_{};
};

}  // namespace kelvo
