#pragma once

#include <string>
#include <vector>

#include "calibration/CaliSession.h"
#include "calibration/CalibrationContext.h"
#include "calibration/CalibrationStandards.h"
#include "calibration/QualityPresenter.h"
#include "calibration/SampleForm.h"

namespace kelvo {

/// The calibration screen without its widgets: the states of the screen, its files, its curves and the ways out. The
/// samples are `SampleForm`'s.
class CalibrationPresenter {
 public:
    CalibrationPresenter(const CalibrationContext& context, CalibrationView& view);

    /// The message that lies on the graph.
    struct FloatingText {
        std::string text;
        bool visible = false;
        bool opening = false;  ///< in large type, in the middle
        int set = 0;           ///< counts how often a text was put in: it then takes its own place again
    };

    // --- what is shown ---------------------------------------------------------------------------------------
    const std::string& Title() const { return title_; }
    const FloatingText& Message() const { return message_; }
    /// List, slope and the menus of the data phase are there.
    bool HasList() const { return !list_.empty(); }
    const std::vector<std::string>& List() const { return list_; }
    /// The slope box belongs to the straight line.
    bool SlopeShown() const { return slopeShown_; }
    std::string SlopeBox() const;
    bool RecordingOffered() const { return recording_; }
    /// Rows exist: "Quick Save" and "Save, Data Table" are on offer.
    bool Measuring() const { return HasList() && context_.tableState.TableOpen == 1; }
    SampleForm& Samples() { return samples_; }
    const SampleForm& Samples() const { return samples_; }
    /// The calibration by the settings as they stand, for its page of a report.
    std::shared_ptr<const Calibration> InUse() {
        inUse_.ReadSettings();
        return inUse_.Get();
    }

    // --- coming in -------------------------------------------------------------------------------------------
    void Load();
    /// @return whether a calibration has just been entered: `AskToSave` is to be called once it is on the screen
    bool Activate();
    /// The question about a calibration that is not saved.
    /// @return whether the screen may be left: nothing is unsaved, it has been saved, or it has been given up
    bool AskToSave();

    // --- File ------------------------------------------------------------------------------------------------
    void New();
    void OpenCalibration();
    void SaveCalibration();
    void OpenTable();
    void SaveTable();
    /// "Close" and "Back".
    void Leave();
    void Exit();

    // --- Option and Refresh ----------------------------------------------------------------------------------
    void Linear();
    void PartlyLinear();
    void BestCurve();
    void LowEnd();
    /// Whether the standards have a fit for low concentrations.
    bool LowEndOffered() { return HasList() && inUse_.Get()->quality.lowEnd.has_value(); }
    void MvScale(int index);
    void LogCScale(int index);
    void Average();
    void EditStability();
    void ViewTable() { context_.screens.Show(ScreenCode::frmQSave); }
    void Refresh();
    /// "Calibration Quality" opens beside the screen and follows it.
    void ShowQuality() { context_.screens.Show(ScreenCode::frmQuality); }
    void ShowDriftChecks() { context_.screens.ShowModal(ScreenCode::frmDrift); }
    /// "Standards", which calls `TakeStandards` at its "Ok".
    void ShowStandards() { context_.screens.ShowModal(ScreenCode::frmStandards); }
    /// Which standards count, and what is told of them, kept beside the file where the calibration is in one. When
    /// others count than before the curve is fitted anew, and the samples of the old one go to their file first.
    void TakeStandards(const std::vector<StandardEntry>& standards, const StandardsTold& told);

    // --- the rest of the menu --------------------------------------------------------------------------------
    void PotentiometryOpened();
    void StartPotentiometry(bool onLine);
    void Record();
    void QuickSave() { samples_.QuickSave(); }
    /// A click beside the message, or Escape, switches it off and on; one on it hides it.
    void ToggleMessage();
    void HideMessage();

 private:
    void ShowEmpty();
    void ShowEntering();
    void ShowCalibrated();
    void SetMessage(const char* text, bool opening);
    void SetStatus(const std::string& message) { samples_.SetStatus(message); }
    SaveOutcome Save();
    SaveOutcome SaveAfterEntry();
    void AskToRecord();
    void DropCalibration();
    bool HasData();
    /// The table of another curve closes. Its rows go to a file without a question; when they cannot be written, the
    /// step stops at the question until they are saved or declined.
    void CloseTableOfOldCurve();
    void LeaveTable();
    void ShowCurveInUse();
    void ShowCurve(bool withSlope, const std::string& remark);

    CalibrationContext context_;
    CalibrationState& state_;
    CalibrationView& view_;
    CaliSession session_;
    CalibrationInUse inUse_;
    SampleForm samples_;

    std::string title_ = "Kelvo";
    FloatingText message_;
    std::vector<std::string> list_;
    bool slopeShown_ = false;
    bool recording_ = false;
    bool inFile_ = false;  ///< the calibration has been saved, or was opened
};

}  // namespace kelvo
