#pragma once

#include <string>
#include <vector>

#include "calibration/CalibrationStandards.h"
#include "calibration/IseCalibration.h"

namespace kelvo {

class Prompts;

/// The dialog "Standards" without its widgets: which standards count, and what is told of them. It works on a copy.
class StandardsPresenter {
 public:
    StandardsPresenter(const IseCalibration& calibration, Prompts& prompts)
        : calibration_(calibration), prompts_(prompts) {}

    /// Takes the calibration in use.
    void Begin();
    const std::vector<StandardEntry>& Standards() const { return standards_; }
    const StandardsTold& Told() const { return told_; }

    static const std::vector<std::string>& Heads();
    /// No. (as list and quality page count), ppm, LogC, mV, why it is left out; one line a standard.
    std::vector<std::vector<std::string>> Rows() const;
    bool IsLeftOut(std::size_t i) const { return i < standards_.size() && !standards_[i].leftOut.empty(); }

    /// Asks for the reason, without which a standard stays. @return what is to be told, else empty
    std::string LeaveOut(std::size_t i);
    void TakeBack(std::size_t i);
    /// The texts as they stand in the boxes; a blank that has been read is added to them.
    void Tell(StandardsTold told) { told_ = std::move(told); }
    void AddBlank(const std::string& millivolts);
    /// The mean and scatter of the blanks, in words; why they are none; empty without any.
    std::string BlanksText() const;
    /// Why this cannot be taken, a sentence; empty when it can. The texts are tidied up.
    std::string Close();

 private:
    const IseCalibration& calibration_;
    Prompts& prompts_;
    std::vector<StandardEntry> standards_;
    StandardsTold told_;
};

}  // namespace kelvo
