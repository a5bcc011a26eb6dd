#pragma once

#include <QTimer>
#include <array>
#include <memory>

#include "kit/Screen.h"
#include "ph/RecordingPresenter.h"

class QAction;
class QLabel;

namespace kelvo {

class EntryBox;
class PictureView;

/// Continuous recording: the graph, the values of the last point, the times, and the menus of the run.
/// `RecordingPresenter` does the work; this shows what stands and wakes it when a tick is due.
class frmPHMe : public Screen, private RecordingHost {
    Q_OBJECT
 public:
    explicit frmPHMe(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;

    RecordingPresenter& Recording() { return *recording_; }
    /// Takes what has fallen due, as the timer does.
    void Tick();

 protected:
    void OnEscape() override;
    void OnFrameClose() override;
    void mousePressEvent(QMouseEvent* event) override;

 private:
    // --- building (frmPHMeBuild.cpp) -------------------------------------------------------------------------------
    void BuildMenus();
    void BuildFileMenu();
    void BuildOptionMenu();
    void BuildExportMenu();
    QWidget* BuildBoxes();
    QWidget* BuildLive();
    /// An entry that does a step of the recording and shows what came of it.
    void Does(QAction* action, void (RecordingPresenter::*step)());

    // --- host of the recording ---------------------------------------------------------------------------------------
    void ShowSetup() override;
    void ShowMenu() override;
    void ShowTable() override;
    void EndProgram() override;
    void StopLink() override;
    LookedAtFile FileLookedAt() const override;
    bool Ending() const override;

    static RecordingInputs InputsOf(AppContext& context);
    void ShowFace();
    void ShowLive();
    void TellTroubles();
    void Arm();
    void Print(int index);

    std::unique_ptr<RecordingPresenter> recording_;
    UnsavedWork::Registration unsaved_;
    QTimer Timer1_, Second_;
    PictureView* picPH_ = nullptr;
    QLabel *lblLive_ = nullptr, *lblScale_ = nullptr, *Label3_ = nullptr, *Label4_ = nullptr;
    std::array<EntryBox*, 5> txtTT_{};
    std::array<QLabel*, 5> labtitle_{};
    QAction *mnuF_ = nullptr, *mnuStart_ = nullptr, *mnuStop_ = nullptr, *mnuWhole_ = nullptr;
    std::array<QAction*, 6> mnuFile_{};
    std::array<QAction*, 5> mnupH_{};
};

}  // namespace kelvo
