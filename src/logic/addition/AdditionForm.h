#pragma once

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "addition/AdditionMethod.h"
#include "addition/SeriesForm.h"
#include "calibration/Calibration.h"
#include "core/FormModel.h"
#include "core/RowFacts.h"
#include "core/StateOf.h"
#include "core/Tables.h"
#include "statistics/StraightLine.h"
#include "text/Number.h"

namespace kelvo {

class Clock;
class Prompts;

/// What the form asks of the screen around it.
class AdditionClient {
 public:
    virtual ~AdditionClient() = default;
    /// The analyst wants to calibrate first: the screen is left for the calibration's setup.
    virtual void CalibrateFirst() = 0;
    /// The result is to be seen now, before the question about it.
    virtual void ShowNow() = 0;
    /// The analyst wants the measurement kept in the data table.
    virtual void SaveRow() = 0;
};

/// The 18 linked boxes of standard addition (`frmStanad01`) and sample addition (`frmSampa`); `AdditionMethod` is
/// what tells them apart. Every step reads the texts of the boxes, so that the rounding of a box is part of the result.
///
/// Fluoride at −58 mV per decade, 50 mL of a sample expected to hold 20 ppm: 5 mL of 400 ppm are suggested. With
/// 1000 ppm at hand 2.0 mL deliver the same; 80 mV before and 51 mV after give 17.48 ppm, "Good measurement".
class AdditionForm : public FormModel {
 public:
    enum Box {
        SampleMl,
        SampleCelsius,
        SampleFahrenheit,
        ExpectedPpm,
        ExpectedMolar,
        SuggestMl,     ///< computed
        SuggestPpm,    ///< computed
        SuggestMolar,  ///< computed
        ActualMl,      ///< worked out when empty
        ActualPpm,
        ActualMolar,
        Slope,
        CaliCelsius,
        CaliFahrenheit,
        Before,
        After,
        ResultPpm,    ///< computed
        ResultMolar,  ///< computed
        BoxCount
    };
    static constexpr int IonList = 0, CalculateButton = 0, RedoButton = 1;

    AdditionForm(StateOf<CalibrationState, const Paths, const HardwareSettings> state, Prompts& prompts,
                 const Clock& clock, const AdditionMethod& method, AdditionClient& client);

    /// The screen opens: slope and temperature of the calibration in use, or the slope box leads.
    void Load();
    /// "New": empty boxes, no ion, the first box leads.
    void New();

    void Enter(int i) override;
    void Emptied(int i) override;
    /// The pointer has been put into the box: the standard's concentration empties its volume.
    void Clicked(int i) override;
    void Select(int list, int row) override;
    int Selected(int) const override { return ion_; }
    /// A key that types something, or Enter, in the ion box, where such a key moves on.
    void KeyInIonBox(bool isEnter);
    void Press(int button) override;
    bool KeyAllowed(int i, char32_t key) const override;
    bool KeepsRefusedKeys() const override { return true; }
    void KeyRefused(int i) override;

    /// On line: the dialog has read one of the two potentials, or has been given up and hands the old text back.
    /// @param doubt  why the value was no live reading, empty when it was one
    void TakePotential(int box, const std::string& millivolts, bool leadsOn, const std::string& doubt = {});
    /// On line: the temperature that the sensor shows, or the default one.
    void ShowTemperature(const std::string& celsius, const std::string& fahrenheit);

    int Ion() const { return ion_; }
    /// mol/L of a concentration of that ion, as the boxes show it; empty without an ion.
    std::string MolarText(double ppm) const;
    /// Name of the selected ion, empty when none is.
    std::string IonName() const { return IonNameOf(ion_); }
    const std::string& Comment() const { return comment_; }
    float CommentHeight() const { return commentHeight_; }
    /// The result beside the expected value in words, "1.9 times the expected value"; empty without a comment.
    const std::string& Ratio() const { return ratio_; }
    /// Date and time of the measurement, or of the calibration whose slope is in use.
    const std::string& Date() const { return date_; }
    /// Whether the standard is known, so that potentials may be read on line.
    bool OnLineOffered() const { return onLineOffered_; }
    /// A quiet line: how sure the result is, or what could mislead; empty when there is nothing.
    std::string Status() const;

    /// The screen as its file holds it, and back. An opened one leads to its first empty box.
    MethodDump Dump() const;
    void Take(const MethodDump& dump);

    /// Whether the result, where one stands, is that of the boxes as they stand: just worked out of them, or the same
    /// when it is worked out again.
    bool ResultIsOfBoxes() const;
    /// Whether a method gives the result that stands, to the last digit.
    bool FollowsBy(const AdditionMethod& method) const;
    /// The lead goes to "Calculate".
    void LeadToButton();
    /// What a row of this measurement has no column for: slope and its temperature, 95 % interval, remarks.
    RowFacts Facts() const;

    /// What several additions begin with, as the boxes stand.
    SeriesStart Series() const;
    /// Whether the analyst has typed or read anything that the boxes alone hold.
    bool HoldsEntries() const;

 private:
    struct Rule;
    static const std::array<Rule, BoxCount> Rules;

    void GoOn(int i);
    void EnterTemperature(int i);
    void EnterExpected(int i);
    void EnterStandard(int i);
    void EnterAfter(int i);
    void Mistake(int i);

    void Calculate();
    void WorkOutResult();
    bool FillFromMemory();
    void EmptyAll();
    void ForgetResult(float height);
    void LeadTo(int i);
    /// A text of the form's own, which needs no check.
    void Fill(int i, std::string text);
    void Taken(int i);
    bool IsTyped(int i) const { return Text(i) != taken_[static_cast<std::size_t>(i)]; }
    bool LoadTemperature();
    /// @return whether the limits of Enter let the text through; else they have said so
    bool WithinLimits(int i);
    /// What has been typed without Enter goes through the checks of Enter, and its partner is worked out. @return
    /// false when one was refused
    bool TakeTyped();
    /// The partner of a box that has one, and what is suggested for an expected concentration.
    void Convert(int i);
    void ConvertTemperature(int i);
    void WarnOfTemperature();
    /// Whether the two boxes of a pair say the same; a pair of which one is empty does not.
    bool BelongTogether(int first) const;
    Addition Measured() const;
    std::string IonNameOf(int ion) const;
    std::string PpmText(double molar) const;
    /// ppm and mol/L from the one of the two boxes that has been typed.
    std::pair<std::string, std::string> BothUnits(int ppmBox, int typed) const;
    bool Holds(int i) const { return !Text(i).empty(); }
    double Value(int i) const { return Val(Text(i)); }

    // --- how good it is (AdditionFormStatus.cpp) --------------------------------------------------------------
    using Inputs = std::array<std::string, ResultPpm>;
    Inputs InputsNow() const;
    /// That of the calibration in use when it is one of the ion, of three points or more.
    std::optional<StraightLine> LineInUse() const;
    /// Its scatter about the line, but no less than a potential is good to at best; none without a calibration.
    Scatter ScatterInUse() const;
    bool SlopeIsOfCalibration() const;
    std::string Reliability() const;
    /// What its interval takes for the potentials, the volumes and the slope.
    std::string Basis() const;
    std::string ChangeStatus() const;
    std::string DoubtStatus() const;
    std::string ResultStatus() const;
    std::string FaultStatus() const;
    std::string IonStatus() const;
    /// `DoubtOf` the calibration that the slope is of.
    std::string CalibrationDoubt() const;
    std::string EntryStatus() const;

    CalibrationState& calibration_;
    mutable CalibrationInUse inUse_;  ///< made of it, anew when it has changed
    const HardwareSettings& hardware_;
    const Clock& clock_;
    const AdditionMethod& method_;
    AdditionClient& client_;

    int ion_ = NoIon;
    std::array<std::string, BoxCount> taken_;  ///< texts that a check has let through, or the form's own
    std::array<bool, BoxCount> unchecked_{};   ///< opened as they stand
    std::string comment_, ratio_, date_;
    float commentHeight_ = 0;
    bool onLineOffered_ = false;
    bool volumeDropped_ = false;    ///< a click has emptied the standard's volume
    std::string doubtful_, doubt_;  ///< a potential that was no live reading, and why
    bool surplus_ = false;          ///< the opened file held more than the boxes

    /// The last result and what it was worked out from.
    struct Outcome {
        AdditionResult result;
        Scatter scatter;
        double deltaE = 0;
        Inputs from;
        int ion = NoIon;
    };
    std::optional<Outcome> outcome_;
};

/// "1.9 times the expected value", "The expected value is 1.4 times the result", "As expected"; empty for values
/// that have no ratio.
std::string RatioInWords(double ppm, double expectedPpm);

}  // namespace kelvo
