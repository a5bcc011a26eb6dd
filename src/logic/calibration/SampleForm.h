#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "calibration/CaliSession.h"
#include "calibration/CalibrationContext.h"
#include "calibration/DriftCheck.h"
#include "calibration/Sample.h"
#include "core/FormModel.h"
#include "core/RowFacts.h"

namespace kelvo {

/// Samples on the calibration screen: the boxes 0 potential (mV), 1 LogC, 2 mol/L, 3 ppm, 4 pH, 5 °C of the sample,
/// 6 °C of the calibration; the menu that turns them on, the road of a sample from its potential to the mark on the
/// graph and the row of the table, and the reading dialog beside the screen.
class SampleForm : public FormModel {
 public:
    static constexpr int Potential = 0, LogC = 1, Molar = 2, Ppm = 3, Ph = 4, Celsius = 5, CaliCelsius = 6, Boxes = 7;
    static constexpr int NoColour = 15;  ///< of the sixteen: the box has its own ground

    SampleForm(const CalibrationContext& context, CaliSession& session, CalibrationInUse& inUse, CalibrationView& view);

    bool Shown() const { return shown_; }
    int TemperatureColour() const { return temperatureColour_; }
    /// The 95 % interval of the sample in the boxes, or why there is none; stands until the next one.
    std::string IntervalLine() const;
    /// What that interval holds, empty without one.
    std::string IntervalBasis() const { return facts_.Get(fact::Basis); }
    /// The check standard, when that is to be measured next; which sample of the list comes next, empty without a list.
    std::string NextSample() const;
    /// The same for the value now read, empty while nothing is read.
    const std::string& LiveLine() const { return live_; }

    /// Empties the boxes and takes them away.
    void PutAway();
    /// "Potentiometry" has been opened: the reading dialog and the link end.
    void MenuOpened();
    /// "KeyBoard Input" (false) or "OnLine Reading", up to the boxes in sight.
    /// @return false when the question about a file was cancelled: nothing is begun
    bool Begin(bool onLine);
    /// Starts the link and opens the reading dialog beside the screen.
    void StartReading();
    /// Ends a reading with its dialog and the link.
    void StopReading();
    /// The next reading is that of the check standard, or a sample after all.
    void CheckDrift(bool check);
    bool ChecksDrift() const { return check_.has_value(); }
    /// What the reading dialog asks for while it is; else empty.
    std::string ReadingPrompt() const;
    /// "Quick Save": a row of the boxes as they stand, and the question for its number.
    void QuickSave();

    /// The status line: what lasts for the calibration in use, then a message.
    void SetStatus(const std::string& message);

    void Enter(int i) override;
    bool KeyAllowed(int i, char32_t key) const override;
    void KeyRefused(int i) override;

    // --- what the reading dialog tells -----------------------------------------------------------------------
    void ShowTemperature(const std::string& celsius);
    void ColourTemperature(int colour);
    void ShowPh(const std::string& text);
    /// The potential of this tick; none when there is no live one.
    void ShowLive(std::optional<float> millivolts);
    /// @return false when a message has refused the sample
    bool TakeRead(const std::string& millivolts) { return Take(millivolts, true); }
    /// The row of the sample just taken, or of the boxes as they stand.
    void AddRow();
    void ReadingCancelled();

 private:
    bool AskFile();
    /// The one road of a sample: result in the boxes, mark on the graph, status line. Read on line, ppm off a curve
    /// other than the line has four places.
    bool Take(const std::string& millivolts, bool onLine);
    bool Mark(float e, double logC);
    void JudgeSample();
    RowFacts FactsOfBoxes();
    /// The row of the check standard in the boxes, and what it says of the samples before it.
    void AddCheck(const std::string& row);
    void AskForCheck();
    /// "standards expired 2026-10-01", empty when they have not.
    std::string Expired() const;
    void OfferTemperature();

    CalibrationContext context_;
    CaliSession& session_;
    CalibrationInUse& inUse_;
    CalibrationView& view_;
    bool shown_ = false;
    int temperatureColour_ = NoColour;
    std::string live_;
    std::string assumed_;  ///< °C that stand in for a sample temperature which nobody told; empty: none do
    /// What is known of the sample in the boxes, and of which texts and curve.
    RowFacts facts_;
    struct Judged {
        std::string potential, celsius;
        Calibration::Curve curve;
    };
    std::optional<Judged> judged_;
    DriftWatch drift_;
    std::optional<CheckStandard> check_;      ///< to be measured next
    std::optional<std::string> beforeCheck_;  ///< potential in its box since before the check was asked for
};

}  // namespace kelvo
