#pragma once

#include <array>

#include "calibration/CaliSession.h"
#include "kit/Screen.h"
#include "link/SampleReadingPresenter.h"

class QAction;
class QLabel;
class QListWidget;
class QMenu;
class QPlainTextEdit;

namespace kelvo {

class EntryBox;
class FloatingMessage;
class PictureView;
class SampleBoxes;

/// The main ISE screen, in which a calibration lives: graph, list, slope, the sample boxes, and the menus that lead
/// everywhere else. `CaliSession` and `TablePresenter` do the work; this shows what stands.
class fmISEcli : public Screen, public ReadingClient {
    Q_OBJECT
 public:
    explicit fmISEcli(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;

    // --- host of the reading dialog (fmISEcliOnLine.cpp) ------------------------------------------------------------
    bool TakesManySamples() const override { return true; }
    void ShowTemperature(const std::string& celsius, const std::string& fahrenheit) override;
    void ColourTemperature(int colour) override;
    void ShowSecondElectrode(float millivolts, bool correctTemperature) override;
    void ShowNoSecondElectrode() override;
    bool TakeSample(const std::string& millivolts) override;
    void SampleTaken() override { AddTableRow(); }
    void ReadingCancelled() override;

 protected:
    void OnEscape() override;
    void OnFrameClose() override { Exit(); }
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    // --- building (fmISEcliBuild.cpp) -------------------------------------------------------------------------------
    void BuildMenus();
    void BuildFileMenu();
    void BuildOptionMenu();
    void BuildOtherMenus();
    QWidget* SidePanel();
    void PlaceMessage();

    // --- what is shown ---------------------------------------------------------------------------------------
    void ShowEmpty();
    void ShowEntering();
    void ShowCalibrated();
    void ShowSlope(bool shown);
    void ShowList();
    void ShowScales();
    void ToggleMessage();
    void ShowGraph();
    void ShowMeasuring();

    // --- files -----------------------------------------------------------------------------------------------
    void New();
    void OpenCalibration();
    SaveOutcome SaveCalibration();
    /// @return whether the screen may be left: nothing is unsaved, it has been saved, or it has been given up
    bool AskToSave();
    void AskToRecord();
    SaveOutcome SaveAfterEntry();
    /// A remark on the last step behind the one on how the points were paired, which lasts.
    void Tell(const std::string& remark);
    void DropCalibration();
    void OpenTable();
    void SaveTable();
    void Print(int index);
    void Close();
    void Exit();
    void Back();
    void GoToMenu();

    // --- curves ----------------------------------------------------------------------------------------------
    bool HasData();
    void Linear();
    void PartlyLinear();
    void BestCurve();
    void MvScale(int index);
    void LogCScale(int index);
    void Refresh();
    void Average();

    // --- samples ---------------------------------------------------------------------------------------------
    void PotentiometryOpened();
    void StartPotentiometry(int index);
    bool AskTableFile();
    /// Opens the reading dialog beside this screen; ends the reading with its dialog and the link.
    void StartReading();
    void StopReading();
    void SampleEntered();
    bool MarkSample(float e, double logC);
    void AddTableRow();
    void QuickSave();
    void KeepRowsOfOldCurve();

    CaliSession session_;
    PictureView* graph_ = nullptr;
    QWidget* panel_ = nullptr;
    FloatingMessage* lblmsg_ = nullptr;
    QListWidget* lstCli_ = nullptr;
    std::array<EntryBox*, 4> txtslope_{};
    std::array<QLabel*, 4> Labslo1_{};
    QLabel* Labslo2_ = nullptr;
    SampleBoxes* samples_ = nullptr;
    QPlainTextEdit* txtlog_ = nullptr;

    std::array<QAction*, 6> mnuFile_{};
    std::array<QAction*, 2> mnuOpen_{}, mnuSave_{};
    std::array<QAction*, 3> mnuPrint_{};
    QAction* mnuOption_ = nullptr;
    QAction *mnuLinear_ = nullptr, *mnuNonLinear_ = nullptr, *mnuRgrsCli_ = nullptr, *mnuS_ = nullptr;
    std::array<QAction*, 2> mnuScale_{};
    std::array<QAction*, 6> mnumV_{};
    std::array<QAction*, 4> mnuLogC_{};
    QAction *mnuAvg_ = nullptr, *mnuASD_ = nullptr, *mnuView_ = nullptr;
    QAction *mnuRefresh_ = nullptr, *mnupoten_ = nullptr, *mnuRecording_ = nullptr, *mnuQsave_ = nullptr;
    std::array<QAction*, 2> mnuPotentiometry_{};
    QAction *mnumain_ = nullptr, *mnuLog_ = nullptr;
};

}  // namespace kelvo
