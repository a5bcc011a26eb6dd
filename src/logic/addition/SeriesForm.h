#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "addition/AdditionSeries.h"
#include "core/DisplayList.h"
#include "core/FormModel.h"
#include "core/RowFacts.h"

namespace kelvo {

/// What several additions begin with, as the screen of the method has it.
struct SeriesStart {
    bool sampleAdded = false;
    std::string startMl, standardPpm, slope, expectedPpm;  ///< texts of boxes, the slope at the sample's temperature
    std::string celsius;                                   ///< of the sample, as text
    std::string addedMl, before, after;                    ///< the first addition, as far as it is filled in
    Scatter scatter;                                       ///< of the calibration, for that slope
    std::string ion;
};

/// Several additions worked out: the numbers and what is told of them. Window, row, file and paper take them from here.
struct SeriesOutcome {
    AdditionSeries series;
    std::optional<SeriesResult> result;
    double dilution = 1, blank = 0, blankDeviation = 0;
    double ppm = 0;  ///< (result − blank)·dilution
    std::optional<SeriesResult::Interval> interval;
    Budget budget;                   ///< that of the result, the blank with it
    std::optional<double> recovery;  ///< % of the concentration that is known
    std::string why;                 ///< why there is no result, or no interval
    std::vector<std::string> remarks;

    /// "17.48 ppm, 16.9 to 18.1 (95 %, t 2.31, 8 degrees of freedom)", or why there is none.
    std::string Line() const;
    std::string ValueText() const;
    std::string Remarks() const;
    /// Gran's plot above, the residuals below.
    DisplayList Plot() const;
    /// The plot in words, for those who do not see it.
    std::string PlotWords() const;
    /// What the row of the table has no column for.
    RowFacts Facts(const std::string& celsius) const;
};

/// The boxes of several additions: what stands in the solution, then potential, volume, potential ... in the order of
/// the work. Nothing is asked for twice: the outcome is always that of the boxes as they stand.
class SeriesForm : public FormModel {
 public:
    static constexpr int StartMl = 0, StandardPpm = 1, Slope = 2, ExpectedPpm = 3, Dilution = 4, Blank = 5,
                         BlankDeviation = 6, StandardsDeviation = 7, KnownPpm = 8, FirstMl = 9, FirstMv = 19,
                         Boxes = 30;
    static constexpr int Additions = static_cast<int>(AdditionSeries::Most);

    explicit SeriesForm(Prompts& prompts) : FormModel(Boxes, prompts) {}

    void Begin(const SeriesStart& start);
    bool SampleAdded() const { return start_.sampleAdded; }
    const SeriesStart& Start() const { return start_; }

    bool FitsSlope() const { return fitSlope_; }
    void FitSlope(bool fit) { fitSlope_ = fit; }
    /// Fills volumes, and the standard's concentration where it is empty, for so many additions. @return what speaks
    /// for and against the plan
    std::string Plan(const std::string& additions);

    void Enter(int i) override;
    void Left(int i) override;
    bool KeyAllowed(int i, char32_t key) const override;
    void KeyRefused(int i) override;
    /// A remark on the last key or box; empty when there is none.
    const std::string& Told() const { return told_; }

    /// On line: the potential of the next addition that has none. @return none when all are filled
    std::optional<int> NextPotential() const;
    void TakePotential(int box, const std::string& millivolts);

    /// Of the boxes as they stand.
    SeriesOutcome Outcome() const;
    /// Whether anything has been typed or read that the method's screen does not hold.
    bool HoldsEntries() const;

    /// The boxes as a file: {"format":"kelvo-additions","version":1, ...}, UTF-8.
    std::string Bytes() const;
    /// @return why it was not taken; empty when it was
    std::string Take(std::string_view bytes);

 private:
    std::string Refusal(int i) const;
    double Value(int i) const;

    SeriesStart start_;
    bool fitSlope_ = false;
    std::string told_;
};

}  // namespace kelvo
