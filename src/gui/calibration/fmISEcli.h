#pragma once

#include <array>
#include <functional>
#include <optional>

#include "calibration/CalibrationPresenter.h"
#include "calibration/StandardsHost.h"
#include "kit/AskedToOpen.h"
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
/// everywhere else. `CalibrationPresenter` and its `SampleForm` decide; this shows what stands.
class fmISEcli : public Screen, public AskedToOpen, public StandardsHost, public CalibrationView, public ReadingClient {
    Q_OBJECT
 public:
    explicit fmISEcli(AppContext& context);
    void OnLoad() override { presenter_.Load(); }
    void OnActivate() override;
    void OnUnload() override;

    // --- view of the presenters ------------------------------------------------------------------------------
    void ShowAll() override;
    void ShowSamples() override;
    void ShowStatusLines(const std::string& lasting, const std::string& message) override;
    void PlaceReadingDialog() override;

    void OpenAsked(OpensAsked what) override {
        what == OpensAsked::Table ? presenter_.OpenTable() : presenter_.OpenCalibration();
    }
    void TakeStandards(const std::vector<StandardEntry>& standards, const StandardsTold& told) override {
        presenter_.TakeStandards(standards, told);
    }

    // --- client of the reading dialog ------------------------------------------------------------------------
    bool TakesManySamples() const override { return true; }
    std::string ReadingPrompt() const override { return presenter_.Samples().ReadingPrompt(); }
    void ShowTemperature(const std::string& celsius, const std::string& fahrenheit) override;
    void ColourTemperature(int colour) override { presenter_.Samples().ColourTemperature(colour); }
    void ShowSecondElectrode(float millivolts, bool correctTemperature) override;
    void ShowNoSecondElectrode() override;
    void ShowReadingState(const ReadingState& state) override;
    bool TakeSample(const std::string& millivolts) override { return presenter_.Samples().TakeRead(millivolts); }
    void ShowLive(std::optional<float> millivolts) override { presenter_.Samples().ShowLive(millivolts); }
    void SampleTaken() override { presenter_.Samples().AddRow(); }
    void ReadingCancelled() override;

 protected:
    void OnEscape() override { presenter_.ToggleMessage(); }
    void OnFrameClose() override { presenter_.Exit(); }
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    using Step = void (CalibrationPresenter::*)();

    // --- building (fmISEcliBuild.cpp) ------------------------------------------------------------------------
    void BuildMenus();
    void BuildFileMenu();
    void BuildOptionMenu();
    void BuildScaleMenus(QMenu* option);
    void BuildOtherMenus();
    QWidget* SidePanel();
    void OnTriggered(QAction* action, Step step);

    void ShowMenus();
    void ShowList();
    void ShowSlope();
    void ShowMessage();
    void PlaceMessage();
    void Print(int index);

    CalibrationPresenter presenter_;
    int messageSet_ = 0;  ///< `FloatingText::set` of the message that has been placed
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
    std::array<QAction*, 2> mnuSave_{};
    QAction *mnuOption_ = nullptr, *mnuS_ = nullptr, *mnuRefresh_ = nullptr, *mnupoten_ = nullptr;
    QAction *mnuLinear_ = nullptr, *mnuNonLinear_ = nullptr, *mnuRgrsCli_ = nullptr, *mnuLowEnd_ = nullptr;
    QAction *mnuStandards_ = nullptr, *mnuDriftNow_ = nullptr;
    std::array<QAction*, 6> mnumV_{};
    std::array<QAction*, 4> mnuLogC_{};
    QAction *mnuRecording_ = nullptr, *mnuQsave_ = nullptr;
};

}  // namespace kelvo
